/* What a host does with the library: each operation once, with the results that its header names. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "host.h"
#include "olh/dmerge.h"
#include "olh/olh.h"
#include "olh/support.h"

#define GUARD_SIZE 512
static struct {
  char before[GUARD_SIZE];
  char text[OLH_BUFFER_SIZE];
  char after[GUARD_SIZE];
} guarded;

int buffer_is_whole(void) {
  int i;
  for (i = 0; i < GUARD_SIZE; ++i)
    if (guarded.before[i] != 0 || guarded.after[i] != 0) return 0;
  return memchr(guarded.text, '\0', sizeof guarded.text) != NULL;
}

const char* buffer_text(void) { return guarded.text; }

static int help(const char* a, const char* b) { return OlhHelpCall(a, b, OLH_DISPLAY_NORMAL); }
static int help_test(const char* a, const char* b) { return OlhHelpTest(a, b); }
static int portal(const char* a, const char* b) { return OlhTomeDeck(a, b); }
static int bookcase(const char* a, const char* b) { return OlhBookcase(a, b); }
static int search(const char* a, const char* b) { return OlhSearch(a, b); }
static int running(const char* a, const char* b) { return (void)a, (void)b, OlhIsViewerRunning(OLH_VIEWER_HTML); }
static int start(const char* a, const char* b) { return (void)a, (void)b, OlhSetViewer(OLH_VIEWER_PDF, 1); }
static int order(const char* a, const char* b) { return (void)b, OlhSetViewerOrder(a); }
static int get_viewer(const char* a, const char* b) {
  return (void)b, OlhGetViewerPath(*a == 'p' ? OLH_VIEWER_PDF : OLH_VIEWER_HTML, guarded.text);
}
static int set_viewer(const char* a, const char* b) { return (void)b, OlhSetViewerPath(OLH_VIEWER_HTML, a); }
static int set_reader(const char* a, const char* b) { return (void)b, OlhSetViewerPath(OLH_VIEWER_PDF, a); }
static int set_alt_viewer(const char* a, const char* b) { return (void)b, OlhSetAltViewerPath(OLH_VIEWER_HTML, a); }
static int set_path(const char* a, const char* b) { return (void)b, OlhSetDocPath(a); }
static int get_path(const char* a, const char* b) { return (void)a, (void)b, OlhGetDocPath(guarded.text); }
static int set_alt_path(const char* a, const char* b) { return (void)b, OlhSetAltDocPath(a); }
static int get_alt_path(const char* a, const char* b) { return (void)a, (void)b, OlhGetAltDocPath(guarded.text); }
static int find_html(const char* a, const char* b) { return (void)b, FindHtmlDoc(guarded.text, a, NULL); }
static int dmerge_lists(const char* a, const char* b) { return (void)b, OlhDmerge(a, NULL); }
static int version(const char* a, const char* b) { return (void)a, (void)b, strcmp(OlhVersion(), "v4.3_2.1"); }

/* Sets the key A of the user's file ("1" or "2") or of the root's ("3") again and again; each value has to be there after it
   was set, whatever another process sets meanwhile. A refusal is no loss: it is asked again. */
static int edit(const char* a, const char* b) {
  const int key = atoi(a);
  const int file = key == 3 ? 2 : 1;
  long i;
  for (i = 0; i < atol(b); ++i) {
    char values[3][OLH_BUFFER_SIZE] = {"", "", ""}; /* alternate path, browser, reader, as ReadIniFile has them */
    char name[OLH_BUFFER_SIZE], value[OLH_BUFFER_SIZE];
    int tries = 0;
    snprintf(name, sizeof name, "%s", getenv(file == 1 ? "TORTURE_USER_FILE" : "TORTURE_ROOT_FILE"));
    /* A program that is an executable, each time under another name. */
    snprintf(value, sizeof value, "/%.*s%s", (int)(i % 60),
             "./././././././././././././././././././././././././././././.",
             i % 60 % 2 == 0 ? "bin/true" : "/bin/true");
    while (SetIniFile(key, value, file) != 0)
      if (++tries == 20) return found("result an edit was refused 20 times"), 1;
    ReadIniFile(name, values[0], values[1], values[2]);
    if (strcmp(values[key % 3], value) != 0) return found("torn an edit was lost: %.100s", values[key % 3]), 1;
  }
  return 0;
}

/* Makes the lists of root A, B times. */
static int dmerge_often(const char* a, const char* b) {
  long i;
  int refused = 0;
  for (i = 0; i < atol(b); ++i) refused += OlhDmerge(a, NULL) != 0;
  return refused == 0 ? 0 : 2;
}

static const struct operation operations[] = {
    {"help_html", help, "02457", "guide", "intro"},
    {"help_pdf", help, "02457", "element", "dest"},
    {"help_portal", help, "02457", "extra_td", "tab"},
    {"help_url", help, "02457", "remote", "intro"},
    {"help_missing", help, "47", "nowhere", ""},
    {"help_test", help_test, "046", "guide", "intro"},
    {"portal", portal, "0247", "extra_td", ""},
    {"bookcase", bookcase, "02457", "", "dest"},
    {"search", search, "0247", "words", "guide"},
    {"running", running, "02", "", ""},
    {"start", start, "0", "", ""},
    {"order", order, "03", "pdf:html", ""},
    {"get_viewer", get_viewer, "027", "html", ""},
    {"set_viewer", set_viewer, "057", "other", ""},
    {"set_reader", set_reader, "057", "other", ""},
    {"set_alt_viewer", set_alt_viewer, "0457", "other", ""},
    {"set_path", set_path, "03", "alt", ""},
    {"get_path", get_path, "02", "", ""},
    {"set_alt_path", set_alt_path, "045", "alt", ""},
    {"get_alt_path", get_alt_path, "05", "", ""},
    {"find_html", find_html, "01", "guide", ""},
    {"dmerge", dmerge_lists, "024", "", ""},
    {"version", version, "0", "", ""},
    {"edit", edit, "0", "1", "100"},
    {"dmerge_often", dmerge_often, "0", "", "100"},
};
#define COUNT (sizeof operations / sizeof *operations)

const struct operation* operation_named(const char* name) {
  size_t i;
  for (i = 0; i < COUNT; ++i)
    if (strcmp(operations[i].name, name) == 0) return &operations[i];
  fprintf(stderr, "no such operation: %s\n", name);
  exit(64);
}

void print_operations(void) {
  size_t i;
  for (i = 0; i < COUNT; ++i) printf("%s\n", operations[i].name);
}
