/*
 * libolh: shows the documentation of a host application in the user's browser or PDF reader.
 *
 * Conventions, which no function repeats:
 *
 *  1. Strings are NUL-terminated byte strings; no character set is converted, and where upper and lower case do
 *     not matter they are those of ASCII, whatever the locale. A null pointer counts as "".
 *  2. Names, paths, URLs, tags and values are shorter than OLH_BUFFER_SIZE characters. What is longer is
 *     refused as that function's ordinary failure: never cut, never written past a buffer.
 *  3. Output buffers belong to the caller and hold OLH_BUFFER_SIZE bytes. Strings that the library returns
 *     by pointer belong to the library.
 *  4. Results are the codes of enum OlhResult, as int. Nothing throws, exits, or prints, except the debug
 *     lines that the environment variable OLH_DEBUG asks for (standard error), what the INI reader says of an
 *     option file that it cannot parse, and what mkdir says of a home directory that it cannot make.
 *  5. The first call reads the environment once (the string helpers, OlhGetCurrentViewer, the functions that do
 *     nothing, and those of the debug lines and the trace log do not): the documentation roots
 *     (QEL_OVERRIDE_DOC_PATH, QEL_DOC_PATH, QEL_PRODUCT_DOC_PATH, TRV_HOME, QEL_HOME, OLH_SYSTEM_DOC_PATH), the
 *     trace log (OLH_LOG_HELP), the viewer order (QEL_DOC_TYPE) and the display type (QEL_OLH_DISPLAY_TYPE).
 *  6. Calls block. A documentation root on a web server is asked over the network, without a time limit of the
 *     library's own unless the variable OLH_PROBE_TIMEOUT gives one (in seconds, for each question: connection and
 *     reply together, without the name look-up); starting a viewer takes about two seconds.
 *  7. All state is process-wide and unguarded: call from one thread at a time. A library built with the CMake
 *     option OLH_DETECT_THREADS names calls from two at once in the debug lines. The library starts no thread,
 *     installs no signal handler and leaves the environment, the locale and the directory alone.
 *  8. In a process with more rights than its caller (setuid, setgid, file capabilities) nothing from the
 *     environment counts: no roots but the host's, no trace log but one that the host starts, no home
 *     directory, and no file of the user's is written (OLH_RESULT_IO). Programs are looked for in the
 *     system's directories alone, and viewers and commands run with the caller's rights: the real user and
 *     group.
 *  9. A library may be built without a support portal. Then nothing is opened where the portal is named below
 *     (the browser becomes the current viewer all the same), and it cannot be searched (OLH_RESULT_NOT_FOUND).
 */
#ifndef OLH_OLH_H
#define OLH_OLH_H

#if defined(__cplusplus) && __cplusplus >= 201103L
#define OLH_NOEXCEPT noexcept
#else
#define OLH_NOEXCEPT
#endif

#ifdef __cplusplus
extern "C" {
#endif

#if defined(__GNUC__)
#define OLH_API __attribute__((visibility("default")))
#else
#define OLH_API
#endif

/* Size in bytes of every output buffer that a caller supplies, the terminating NUL included. */
#define OLH_BUFFER_SIZE 4096

/* What every public function returns. Code 1 is not used. */
enum OlhResult {
  OLH_RESULT_OK = 0,        /* shown, stored, returned; for OlhIsViewerRunning: it runs */
  OLH_RESULT_FAILED = 2,    /* the viewer did not start or take the document; no URL; not running */
  OLH_RESULT_INVALID = 3,   /* a required argument is null, empty or not one of the values it may have */
  OLH_RESULT_NOT_FOUND = 4, /* no such document, portal, scope or root; help entry points showed a substitute */
  OLH_RESULT_IO = 5,        /* the PDF reader did not open the document, or an option file was not written */
  OLH_RESULT_NO_TOPIC = 6,  /* the HTML document has no such topic (OlhHelpTest) */
  OLH_RESULT_NO_PROGRAM = 7 /* no viewer program is known, or the one named is not an executable */
};

/* Kinds of viewer. An int, since a host may hand in any value: what is none of these is refused, not undefined. */
typedef int OlhViewer;
enum {
  OLH_VIEWER_TOMEDECK = -2, /* the documentation portal, shown in the browser */
  OLH_VIEWER_DEFAULT = -1,  /* only for OlhSetViewer: back to the configured order */
  OLH_VIEWER_PDF = 0,       /* the PDF reader */
  OLH_VIEWER_HTML = 1       /* the HTML browser */
};

/* How a topic of an HTML manual is shown. */
typedef int OlhDisplayType;
enum {
  OLH_DISPLAY_NORMAL = 0, /* with the manual's navigation around it */
  OLH_DISPLAY_TOPIC = 1,  /* the topic alone */
  OLH_DISPLAY_POPUP = 2   /* the topic alone, in a small frame */
};

/* ---- showing help ---------------------------------------------------------------------------------- */

/*
 * Shows the help for a document at one place in it, or the best substitute for what is missing.
 *
 *   docName      a bare name ("manual", or "manual_td" for a portal), looked up along the search path in the
 *                viewer order; or, with a slash or backslash in it, a path or a URL
 *   tag          a PDF's named destination, an HTML manual's topic, a portal's tab; null or "": the start
 *   displayType  an OlhDisplayType, unless QEL_OLH_DISPLAY_TYPE has fixed it; it stays until it is set again
 *
 * Returns
 *   OLH_RESULT_OK          0  shown
 *   OLH_RESULT_FAILED      2  found, but its viewer could not be started or did not take it
 *   OLH_RESULT_INVALID     3  no document name; nothing is shown
 *   OLH_RESULT_NOT_FOUND   4  not found; the general help "qel_html_help" at its topic "qel_help_014", else
 *                             "qeldoc_notfound.pdf", else the support portal's page was shown
 *   OLH_RESULT_IO          5  a local PDF, and the PDF reader is unknown or did not open it
 *   OLH_RESULT_NO_PROGRAM  7  found, but no browser is known: the bookcase "_bk_qel.pdf" was tried, and PDF now
 *                             leads the viewer order; for a PDF on a web server the portal was tried instead
 *
 * Changes the current viewer to the kind of document it showed. Reads OLH_DEBUG again.
 */
OLH_API int OlhHelpCall(const char* docName, const char* tag, int displayType) OLH_NOEXCEPT;

/* OlhHelpCall with OLH_DISPLAY_NORMAL. Same arguments, same results. */
OLH_API int OlhDocGotoTag(const char* docName, const char* tag) OLH_NOEXCEPT;

/*
 * Checks whether OlhHelpCall would find the document and, in an HTML manual on this machine, the topic.
 * Shows nothing. For a PDF or a portal the tag is not looked at; of a manual on a web server no topic is known.
 *
 * Returns
 *   OLH_RESULT_OK         0  found
 *   OLH_RESULT_INVALID    3  no document name
 *   OLH_RESULT_NOT_FOUND  4  no such document
 *   OLH_RESULT_NO_TOPIC   6  the document is there, the topic is not in its topic table, or the manual is on a
 *                            web server and a topic was asked for
 *
 * Changes the current viewer to the kind of document it found. Reads OLH_DEBUG again.
 */
OLH_API int OlhHelpTest(const char* docName, const char* tag) OLH_NOEXCEPT;

/*
 * Opens a documentation portal in the browser.
 *
 *   portal  the portal's directory name below "tomedecks"; null or "": the portal's main page
 *   tag     the tab to open; null or "": the first
 *
 * Returns
 *   OLH_RESULT_OK          0  shown
 *   OLH_RESULT_FAILED      2  found, but the browser did not take it
 *   OLH_RESULT_NOT_FOUND   4  not found; the main page, "qeldoc_notfound.pdf" or the support portal was shown
 *   OLH_RESULT_NO_PROGRAM  7  found, but no browser is known
 *
 * Changes the current viewer to what it showed.
 */
OLH_API int OlhTomeDeck(const char* portal, const char* tag) OLH_NOEXCEPT;

/*
 * Opens the bookcase, a PDF that lists the documentation.
 *
 *   bookcase  a PDF's name, with or without ".pdf"; null or "": "_bk_qel.pdf"
 *   tag       a named destination; null or "": the first page
 *
 * Returns
 *   OLH_RESULT_OK          0  shown
 *   OLH_RESULT_FAILED      2  found on a web server, but the browser did not take it
 *   OLH_RESULT_NOT_FOUND   4  not found; "qeldoc_notfound.pdf" or the support portal was shown
 *   OLH_RESULT_IO          5  found, but the PDF reader is unknown or did not open it
 *   OLH_RESULT_NO_PROGRAM  7  found on a web server, but no browser is known
 *
 * Changes the current viewer to what it showed.
 */
OLH_API int OlhBookcase(const char* bookcase, const char* tag) OLH_NOEXCEPT;

/*
 * Searches the documentation and shows the results in the browser.
 *
 *   query  the words to look for
 *   scope  null or "": everything installed; "orvane": the support portal; else the name of an HTML manual
 *          or, ending in "_td", of a portal
 *
 * Returns
 *   OLH_RESULT_OK          0  shown
 *   OLH_RESULT_FAILED      2  the browser did not take it
 *   OLH_RESULT_INVALID     3  no query
 *   OLH_RESULT_NOT_FOUND   4  no such scope, a PDF as scope, or no portal to search everything with
 *   OLH_RESULT_NO_PROGRAM  7  no browser is known
 */
OLH_API int OlhSearch(const char* query, const char* scope) OLH_NOEXCEPT;

/* ---- viewers --------------------------------------------------------------------------------------- */

/* Returns the viewer with which the next document is shown; OLH_VIEWER_HTML at start. Reads nothing. */
OLH_API int OlhGetCurrentViewer(void) OLH_NOEXCEPT;

/*
 * Puts a viewer at the front of the viewer order and makes it the current one.
 *
 *   viewer  an OlhViewer; OLH_VIEWER_DEFAULT: the order of QEL_DOC_TYPE, else HTML before PDF
 *   start   not 0: also start it when it is a browser or PDF reader that does not run
 *
 * Returns OLH_RESULT_OK in every case. A value that is no OlhViewer goes to the front too, and lookups skip it.
 */
OLH_API int OlhSetViewer(OlhViewer viewer, int start) OLH_NOEXCEPT;

/*
 * Sets the order in which a bare document name is looked up.
 *
 *   order  "html" or "pdf" (any case), or a list with ":" of "html", "htm" and "pdf", the first one preferred
 *
 * Returns
 *   OLH_RESULT_OK       0  applied
 *   OLH_RESULT_INVALID  3  null, empty, or nothing recognised; the order is unchanged
 */
OLH_API int OlhSetViewerOrder(const char* order) OLH_NOEXCEPT;

/*
 * Checks whether a viewer runs. A PDF reader always counts as not running; a browser is asked.
 *
 * Returns
 *   OLH_RESULT_OK      0  running
 *   OLH_RESULT_FAILED  2  not running, or neither OLH_VIEWER_PDF nor OLH_VIEWER_HTML
 */
OLH_API int OlhIsViewerRunning(OlhViewer viewer) OLH_NOEXCEPT;

/*
 * Gives the viewer program in use: the user's choice, else the choice of the first documentation root, else
 * the one found along PATH.
 *
 *   viewer  OLH_VIEWER_PDF or OLH_VIEWER_HTML
 *   path    buffer for the program
 *
 * Returns
 *   OLH_RESULT_OK          0  path holds the program
 *   OLH_RESULT_FAILED      2  it does not fit into the buffer, which is emptied
 *   OLH_RESULT_INVALID     3  another viewer, or a null buffer; path is untouched
 *   OLH_RESULT_NO_PROGRAM  7  none is known; path is untouched
 */
OLH_API int OlhGetViewerPath(OlhViewer viewer, char* path) OLH_NOEXCEPT;

/*
 * Chooses the user's viewer program, now and for later processes (file ~/.qel_viewer_config.ini).
 *
 *   viewer  OLH_VIEWER_PDF or OLH_VIEWER_HTML
 *   path    an executable with a slash in it, or a bare name that is looked up along PATH; null or "": forget
 *           the stored choice (this process keeps the program it has)
 *
 * Returns
 *   OLH_RESULT_OK          0  stored, or it is the program in use already and nothing was written
 *   OLH_RESULT_INVALID     3  another viewer
 *   OLH_RESULT_IO          5  the file could not be written, or the path cannot be read back from it (a double
 *                             quote, a line feed, or too long for its line, see SetIniFile in support.h); this process
 *                             uses the program all the same; or memory is exhausted and this process keeps the program
 *                             it has, nothing was written
 *   OLH_RESULT_NO_PROGRAM  7  no such executable; nothing changes
 */
OLH_API int OlhSetViewerPath(OlhViewer viewer, const char* path) OLH_NOEXCEPT;

/*
 * Chooses the viewer program for a whole documentation tree: writes qel_doc_options.ini in the first
 * documentation root (or in the tree that names that root as its alternate). Takes effect when a process
 * builds its search path from that file; this process keeps the program it has.
 *
 *   viewer, path  as for OlhSetViewerPath
 *
 * Returns
 *   OLH_RESULT_OK          0  stored
 *   OLH_RESULT_FAILED      2  another viewer
 *   OLH_RESULT_NOT_FOUND   4  no documentation root is known
 *   OLH_RESULT_IO          5  the file could not be written, or the root is a URL
 *   OLH_RESULT_NO_PROGRAM  7  no such executable
 */
OLH_API int OlhSetAltViewerPath(OlhViewer viewer, const char* path) OLH_NOEXCEPT;

/* ---- documentation roots ---------------------------------------------------------------------------- */

/*
 * Replaces the host's part of the search path. The roots of QEL_OVERRIDE_DOC_PATH stay in front of it, those of
 * the other variables behind it.
 *
 *   paths  directories or http:// URLs, separated by ":"; what is no documentation root is dropped
 *
 * Returns
 *   OLH_RESULT_OK       0  applied, also when nothing was accepted
 *   OLH_RESULT_INVALID  3  null, empty or too long; nothing changes
 */
OLH_API int OlhSetDocPath(const char* paths) OLH_NOEXCEPT;

/*
 * Gives the first root of the search path.
 *
 * Returns
 *   OLH_RESULT_OK       0  path holds it
 *   OLH_RESULT_FAILED   2  there is none; path is untouched
 *   OLH_RESULT_INVALID  3  null buffer
 */
OLH_API int OlhGetDocPath(char* path) OLH_NOEXCEPT;

/*
 * Stores an alternate documentation location in the options file of the first root (or of its parent tree) and
 * puts its roots in front of the search path.
 *
 *   paths  directories or http:// URLs, separated by ":"
 *
 * Returns
 *   OLH_RESULT_OK         0  stored, every element accepted
 *   OLH_RESULT_INVALID    3  null or empty
 *   OLH_RESULT_NOT_FOUND  4  no documentation root is known (nothing changes), or at least one element was
 *                            rejected (an http:// URL always counts one, its "http"); the rest is in use
 *   OLH_RESULT_IO         5  the file could not be written; the roots are in use all the same
 */
OLH_API int OlhSetAltDocPath(const char* paths) OLH_NOEXCEPT;

/*
 * Gives the alternate documentation location that the first root's options file names; "" when it names none,
 * and without a root.
 *
 * Returns
 *   OLH_RESULT_OK       0  path holds it
 *   OLH_RESULT_INVALID  3  null buffer
 *   OLH_RESULT_IO       5  the first root has no name; path is untouched
 */
OLH_API int OlhGetAltDocPath(char* path) OLH_NOEXCEPT;

/* ---- the rest --------------------------------------------------------------------------------------- */

/* Returns the version of the interface, "v4.3_2.1"; the string is static. */
OLH_API const char* OlhVersion(void) OLH_NOEXCEPT;

/*
 * Kept so that older hosts link. They take nothing, do nothing and return OLH_RESULT_FAILED (2). In C any
 * arguments may be passed.
 */
#ifdef __cplusplus
#define OLH_NO_ARGUMENTS ...
#else
#define OLH_NO_ARGUMENTS
#endif
OLH_API int OlhAppExit(OLH_NO_ARGUMENTS) OLH_NOEXCEPT;
OLH_API int OlhDocGotoPage(OLH_NO_ARGUMENTS) OLH_NOEXCEPT;
OLH_API int OlhCheckForPlugins(OLH_NO_ARGUMENTS) OLH_NOEXCEPT;
OLH_API int OlhCloseAllDocs(OLH_NO_ARGUMENTS) OLH_NOEXCEPT;
OLH_API int OlhDocClose(OLH_NO_ARGUMENTS) OLH_NOEXCEPT;
OLH_API int OlhDocFind(OLH_NO_ARGUMENTS) OLH_NOEXCEPT;
OLH_API int OlhMenuItemExecute(OLH_NO_ARGUMENTS) OLH_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
