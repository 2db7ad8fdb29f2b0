/* A host in C that loads the library by hand. Usage: c_host LIBRARY [load | lookup NAME | set PROGRAM | start READER DOCUMENT BROWSER | unload] */
#include <dlfcn.h>
#include <stdio.h>
#include <string.h>
#include <sys/auxv.h>
#include <unistd.h>

/* Seen in a trace of system calls: where the part that is looked at begins and ends. */
static void mark(const char* what) { (void)access(what, F_OK); }

static int lookup(void* library, const char* name) {
  int (*find)(char*, const char*, char*);
  char out[4096] = "";
  char viewer[4096] = "";
  void (*initialise)(void);
  *(void**)&initialise = dlsym(library, "OlhDocListInit");
  *(void**)&find = dlsym(library, "FindHtmlDoc");
  if (initialise == NULL || find == NULL) return 1;
  initialise();
  mark("/mark/begin");
  find(out, name, viewer);
  mark("/mark/end");
  return 0;
}

/* Asked by the leak checker, which cannot look into a process with borrowed rights. */
int __lsan_is_turned_off(void);
int __lsan_is_turned_off(void) { return getauxval(AT_SECURE) != 0; }

/* Whether it has borrowed rights, what came of setting the browser, and which reader is in use. */
static int set_browser(void* library, const char* program) {
  int (*set)(int, const char*);
  int (*get)(int, char*);
  char reader[4096] = "";
  *(void**)&set = dlsym(library, "OlhSetViewerPath");
  *(void**)&get = dlsym(library, "OlhGetViewerPath");
  if (set == NULL || get == NULL) return 1;
  printf("%lu %d ", getauxval(AT_SECURE), set(1, program));
  get(0, reader);
  printf("%s\n", reader);
  return 0;
}

/* Opens a document in a reader, and a page in a browser. */
static int start(void* library, const char* reader, const char* document, const char* browser) {
  int (*open_document)(const char*, const char*, const char*);
  int (*set_browser_path)(const char*);
  int (*open_url)(const char*, const char*);
  *(void**)&open_document = dlsym(library, "OlhAcroDocOpen");
  *(void**)&set_browser_path = dlsym(library, "OlhBrowserSetPath");
  *(void**)&open_url = dlsym(library, "OlhBrowserOpenURL");
  if (open_document == NULL || set_browser_path == NULL || open_url == NULL) return 1;
  set_browser_path(browser);
  printf("%d", open_document(document, "", reader));
  printf(" %d\n", open_url("http://x/", NULL));
  return 0;
}

int main(int argc, char** argv) {
  void* library;
  int result = 0;
  if (argc < 3) return 64;
  mark("/mark/begin-load");
  library = dlopen(argv[1], RTLD_NOW);
  mark("/mark/end-load");
  if (library == NULL) {
    fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  if (strcmp(argv[2], "lookup") == 0 && argc > 3) result = lookup(library, argv[3]);
  if (strcmp(argv[2], "set") == 0 && argc > 3) result = set_browser(library, argv[3]);
  if (strcmp(argv[2], "start") == 0 && argc > 5) result = start(library, argv[3], argv[4], argv[5]);
  dlclose(library);
  if (dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) != NULL) {
    fprintf(stderr, "still loaded after dlclose\n");
    return 2;
  }
  return result;
}
