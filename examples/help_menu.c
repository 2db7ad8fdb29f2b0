/* A terminal program with a help menu: the user picks a line, and the browser shows that topic of the manual. */
#include <olh/olh.h>
#include <stdio.h>
#include <stdlib.h>

struct Line {
  const char* text;
  const char* topic; /* of the manual below */
};

static const char kManual[] = "olh_manual";
static const struct Line kMenu[] = {
    {"Quick start", "quick_start"},
    {"Where documents are looked for", "search_path"},
    {"Browsers and PDF readers", "viewers"},
};
enum { kLines = sizeof kMenu / sizeof kMenu[0] };

static const char* explain(int result) {
  switch (result) {
    case OLH_RESULT_OK:
      return "see your browser";
    case OLH_RESULT_NOT_FOUND:
      return "the manual is not installed; a substitute was shown";
    case OLH_RESULT_NO_PROGRAM:
      return "there is no browser; set QEL_HTML_BROWSER";
    default:
      return "the viewer did not start";
  }
}

/* A line whose topic is not there is not offered: a menu that cannot keep its promise is worse than none. */
static int is_there(int i) { return OlhHelpTest(kManual, kMenu[i].topic) == OLH_RESULT_OK; }

static void print_menu(void) {
  int i;
  for (i = 0; i < kLines; ++i)
    if (is_there(i)) printf("  %d  %s\n", i + 1, kMenu[i].text);
  printf("  p  All manuals\n  q  Back to work\n? ");
  fflush(stdout);
}

/* Returns 0 when the user wants to leave. */
static int answer(const char* choice) {
  const int line = atoi(choice);
  if (choice[0] == 'q') return 0;
  if (choice[0] == 'p')
    printf("%s\n", explain(OlhTomeDeck(NULL, NULL)));
  else if (line >= 1 && line <= kLines && is_there(line - 1))
    printf("%s\n", explain(OlhHelpCall(kManual, kMenu[line - 1].topic, OLH_DISPLAY_NORMAL)));
  else
    printf("There is no such line.\n");
  return 1;
}

int main(int argc, char** argv) {
  char choice[16];
  if (argc > 1) OlhSetDocPath(argv[1]); /* where this program's own documentation lies */
  do print_menu();
  while (fgets(choice, sizeof choice, stdin) != NULL && answer(choice));
  return 0;
}
