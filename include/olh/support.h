/*
 * The lower level of libolh: string helpers, diagnostics, the documentation locator and the viewer launchers.
 * A host needs none of it to show help (olh.h does that); it serves tools that look into the steps of a help
 * request. The conventions of olh.h hold here too.
 */
#ifndef OLH_SUPPORT_H
#define OLH_SUPPORT_H

#include "olh/olh.h"

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define OLH_PRINTF_FORMAT __attribute__((format(printf, 1, 2)))
#else
#define OLH_PRINTF_FORMAT
#endif

/* ---- strings and files: in place on the caller's string, nothing happens for null or "" ------------------ */

OLH_API extern const char pathslash;    /* '/', put between the parts of a path */
OLH_API extern const char PATHSLASH;    /* '/' */
OLH_API extern const char NONPATHSLASH; /* '\\' */
OLH_API extern const char* pathsep;     /* ":", between the directories of a list */

/* Lower-cases every byte by the current locale. */
OLH_API void downcase(char* s) OLH_NOEXCEPT;

/* Turns every backslash of a path into "/", then removes one "/" from its end. */
OLH_API void dirslash(char* s) OLH_NOEXCEPT;

/* The same for a URL. */
OLH_API void urlslash(char* s) OLH_NOEXCEPT;

/* Returns 1 when this process may execute path and it is no directory (links are followed), else 0. */
OLH_API int exe_exists(const char* path) OLH_NOEXCEPT;

/* Returns 1 when this process may read path, a file or a directory, else 0. */
OLH_API int path_exists(const char* path) OLH_NOEXCEPT;

/* Cuts the last "/" of path and what follows it; without a "/" nothing changes. */
OLH_API void remove_leaf(char* path) OLH_NOEXCEPT;

/* Returns 1 when s begins with "http://", "file://" or "https://" (lower case), else 0. */
OLH_API int is_url(const char* s) OLH_NOEXCEPT;

/* Returns the offset of needle in s, or 99 when it is not there or s is null or "". */
OLH_API long string_pos(char* s, const char* needle) OLH_NOEXCEPT;

/* ---- diagnostics ----------------------------------------------------------------------------------------- */

/* Switches debug lines on when OLH_DEBUG is set and not empty, else off. */
OLH_API void setDebugVariable(void) OLH_NOEXCEPT;

/* Writes a message to standard error while debug lines are on. Takes a printf format and its arguments. */
OLH_API void print_debug(const char* format, ...) OLH_NOEXCEPT OLH_PRINTF_FORMAT;

/* Opens the trace log for appending and closes an earlier one; a new file has mode 0600. Without a name, or when it cannot be
 * opened, there is no trace log. One line a call: NAME( "arg", "arg" ); and one a result: NAME returned CODE. */
OLH_API void StartOlhLog(char* name) OLH_NOEXCEPT;

/* Closes the trace log, if there is one. */
OLH_API void CloseOlhLog(void) OLH_NOEXCEPT;

/* ---- locator: variables and state ------------------------------------------------------------------------ */

/* Reads the environment (convention 5) unless that has happened. Every function below does it first. */
OLH_API void OlhDocListInit(void) OLH_NOEXCEPT;

/* Looks a variable up: the library's own store, then the environment, where "" counts as unset.
 * Returns 1 and fills value, or 0 and empties it (also for a value that does not fit). */
OLH_API int GetOlhVariable(char* value, const char* name) OLH_NOEXCEPT;

/* Stores how HTML topics are shown, unless QEL_OLH_DISPLAY_TYPE has fixed it. Any int is taken. */
OLH_API void SetOlhDisplayType(int type) OLH_NOEXCEPT;

/* Returns the display type in use. */
OLH_API int GetOlhDisplayType(void) OLH_NOEXCEPT;

/* ---- locator: search path -------------------------------------------------------------------------------- */

/* As OlhSetDocPath, but "" (or null) is taken: only the environment's roots remain. Returns 1. */
OLH_API int SetOlhDocPath(const char* paths) OLH_NOEXCEPT;

/* Returns the first root, owned by the library and valid until the search path changes; null without one. */
OLH_API const char* GetOlhDocPath(void) OLH_NOEXCEPT;

/* ---- locator: lookups. Return 1 found, 0 not found. ---------------------------------------------------------
 *
 * out receives the location and is emptied when nothing is found (untouched when an argument is null or the
 * name is empty); viewerPath receives the viewer program that the root prescribes, "" without one. */

/* A PDF: below "pdfdocs" or "system_admin_docs" of a root; on a web server the HTML form is the substitute. */
OLH_API int FindPdfDoc(char* out, const char* name, char* viewerPath) OLH_NOEXCEPT;

/* An HTML manual's start page, as a URL; the PDF of the same root is the substitute. */
OLH_API int FindHtmlDoc(char* out, const char* name, char* viewerPath) OLH_NOEXCEPT;

/* A portal, as a URL; the name "" is the portals' main page. */
OLH_API int FindTomeDeck(char* out, const char* name, char* viewerPath) OLH_NOEXCEPT;

/* Any file by its path below a root; name begins with "/". out is untouched when nothing is found. */
OLH_API int FindPath(char* out, const char* name) OLH_NOEXCEPT;

/* A topic in the topic table of a manual on this machine: docLocation is the start page's file:// URL. out, which
 * may be null, receives the topic's page, relative to the manual; it is untouched when nothing is found. */
OLH_API int FindHtmlTopic(const char* docLocation, const char* topic, char* out) OLH_NOEXCEPT;

/* ---- locator: showing ------------------------------------------------------------------------------------ */

/*
 * Shows a location at a tag with the current viewer.
 *
 *   doc          a lookup's result
 *   tag          destination, topic or tab; null or "": the start
 *   viewer_path  the program that the documentation tree prescribes, or null or ""
 *
 * Returns OLH_RESULT_OK (0); OLH_RESULT_FAILED (2): no URL, too long a URL or destination, a URL that no viewer
 * may get, a failed browser, or a viewer that shows nothing; OLH_RESULT_IO (5): the PDF reader failed;
 * OLH_RESULT_NO_PROGRAM (7): no browser is known.
 */
OLH_API int showDocGotoTag(const char* doc, const char* tag, char* viewer_path) OLH_NOEXCEPT;

/*
 * Opens the search page.
 *
 *   query  the words
 *   scope  "lib" everything, "doc" one manual, "tdk" one portal, "orvn" the support portal
 *   name   the manual or portal; null or "" for none
 *
 * Returns OLH_RESULT_OK (0); OLH_RESULT_FAILED (2): no query or scope, no root looked up before, or a failed
 * browser; OLH_RESULT_NOT_FOUND (4): the root is gone; OLH_RESULT_NO_PROGRAM (7): no browser is known.
 */
OLH_API int HtmlSearch(const char* query, const char* scope, const char* name) OLH_NOEXCEPT;

/* Keeps the letters, digits, "-" and "_" of a topic, in place. */
OLH_API void FormatTopic(char* topic) OLH_NOEXCEPT;

/* Returns 0 when the viewer runs, 2 when it does not or is neither OLH_VIEWER_PDF nor OLH_VIEWER_HTML. */
OLH_API int isViewerRunning(int viewer) OLH_NOEXCEPT;

/* Starts the current viewer without a document. Returns the launcher's result; 2 for any other viewer. */
OLH_API int startViewer(void) OLH_NOEXCEPT;

/* Does nothing and returns 2. */
OLH_API int exitViewer(void) OLH_NOEXCEPT;

/* ---- locator: option files ----------------------------------------------------------------------------------
 *
 * Two INI files with three keys outside any section, written as KEY="value":
 *   ~/.qel_viewer_config.ini   the user's QEL_HTML_BROWSER and QEL_PDF_READER
 *   qel_doc_options.ini        in a documentation root: the same two for the tree, and QEL_ALT_DOC_PATH */

/*
 * Writes one key; everything else in the file stays as it is. A home directory that is missing is made with mkdir,
 * whose message reaches standard error when it cannot be made.
 *
 *   key    1 QEL_HTML_BROWSER, 2 QEL_PDF_READER, 3 QEL_ALT_DOC_PATH
 *   value  at most 1,003 bytes (key 2: 1,005), in a file that is not there yet one less; without a double quote or
 *          line feed, and with iniparser 4.2 or later without a backslash; "" clears the choice
 *   file   1 the user's file, 2 the file of the first root (or of its parent tree)
 *
 * Returns 0 written; 4 file 2 and no root; 5 not written, another key or file, a value that cannot be read back,
 * a root that is a URL, a symbolic link of a stranger's (neither root's nor this user's) in the file's place, or
 * file 1 in a process with borrowed rights (convention 8).
 */
OLH_API int SetIniFile(int key, const char* value, int file) OLH_NOEXCEPT;

/* Reads the three values. A key that is absent leaves its buffer as it was; a program that is not executable is
 * read as "". Returns 0, or 4 when there is no file (the two programs are emptied). */
OLH_API int ReadIniFile(char* fileName, char* altDocPath, char* htmlBrowser, char* pdfReader) OLH_NOEXCEPT;

/* Gives HOME. Returns 1 when that directory exists, else 0; without HOME out is emptied. */
OLH_API int GetHomeDirectory(char* out) OLH_NOEXCEPT;

/* Gives the first root's browser (OLH_VIEWER_HTML) or reader (OLH_VIEWER_PDF), "" without one; without any root
 * out is emptied, for another viewer it is untouched. Returns 0. */
OLH_API int GetDocTreeViewerOverride(int viewer, char* out) OLH_NOEXCEPT;

/* Writes a browser or reader into the options file of the first root. Returns 0; 2 another viewer; 4 no root;
 * 5 not written. */
OLH_API int SetAltViewerPath(int viewer, const char* path) OLH_NOEXCEPT;

/* As OlhGetAltDocPath. */
OLH_API int GetAltDocPath(char* out) OLH_NOEXCEPT;

/* As OlhSetAltDocPath. Returns 0, 4 or 5. */
OLH_API int SetAltDocPath(const char* paths) OLH_NOEXCEPT;

/* Finds an executable in the directories of an environment variable (null or "": PATH). Returns 1 and fills out,
 * or 0 and empties it. */
OLH_API int search_path(char* out, const char* program, const char* envName) OLH_NOEXCEPT;

/* ---- browser launcher ---------------------------------------------------------------------------------------
 *
 * The program is the user's (option file, else QEL_HTML_BROWSER), else viewer_path, else the first firefox along
 * PATH, /usr/bin and /usr/local/bin, else a mozilla, else a netscape; chosen once, at the first call. */

/* Asks the user's or the found browser with -remote 'ping()'. Returns 0 running, 2 not running. */
OLH_API int OlhBrowserRunning(void) OLH_NOEXCEPT;

/* Hands a URL (null or "": none) to the running browser, else starts one. Returns 0; 2 failed; 7 none known. */
OLH_API int OlhBrowserOpenURL(const char* url, const char* viewer_path) OLH_NOEXCEPT;

/* Gives the program. Returns 0; 2 when it does not fit, dst is then emptied; 7 when none is known, dst is then
 * untouched. */
OLH_API int OlhBrowserGetPath(char* dst, const char* viewer_path) OLH_NOEXCEPT;

/* Makes path, unchecked, the user's choice for this process; null or "" changes nothing. Returns 0. */
OLH_API int OlhBrowserSetPath(const char* path) OLH_NOEXCEPT;

/* ---- PDF reader launcher ------------------------------------------------------------------------------------
 *
 * The program is the user's (option file, else QEL_PDF_READER), else viewer_path, else the first acroread along
 * PATH, /bin, /usr/bin and /usr/local/bin; chosen once, at the first call. */

/* A reader cannot be asked: returns 2. */
OLH_API int OlhAcroIsViewerRunning(void) OLH_NOEXCEPT;

/* Starts the reader: with doc at the destination newlink, with doc alone, or (doc null or "") empty. The first
 * argument is not used. Returns 0 started, 2 not. */
OLH_API int OlhAcroViewerStart(const char* unused, const char* doc, const char* newlink,
                               const char* viewer_path) OLH_NOEXCEPT;

/* As OlhAcroViewerStart, but returns 5 when the reader was not started. */
OLH_API int OlhAcroDocOpen(const char* doc, const char* newlink, const char* viewer_path) OLH_NOEXCEPT;

/* Gives the program. Returns 0; 2 when it does not fit, dst is then emptied; 7 when none is known, dst is then
 * untouched. */
OLH_API int OlhAcroGetViewerPath(char* dst, const char* viewer_path) OLH_NOEXCEPT;

/* Makes path, unchecked, the user's choice for this process; null or "" changes nothing. Returns 0. */
OLH_API int OlhAcroSetPath(const char* path) OLH_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
