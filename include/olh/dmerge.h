/*
 * The document list generator of libolh: makes, inside an installed documentation root, the lists that the pages
 * of the root read: which portals are installed, which HTML libraries and PDF documents there are and under
 * which titles. Run it after documentation was installed or removed.
 *
 * A host calls OlhDmerge (or dmerge); the rest are the steps of a run, for tools that want one of them.
 * The conventions of olh.h hold here too, but for these:
 *
 *  1. Results are those of enum DmergeResult, as int, where nothing else is said. A failure prints one message to
 *     standard output that names the file; a root that is null or empty and exhausted memory print none. There are
 *     no debug lines.
 *  2. A root is a directory of this machine; all paths are the root, a fixed relative part and, for documents and
 *     portals, their names, in one string, with every "\" turned into "/". For a step "" is the root directory; a null
 *     root is none, and the step fails.
 *  3. A list is written beside the old file (NAME.new) and takes its place in one step: a page never reads
 *     half a list, and a failed write leaves the old file as it was. Right after that the callback hears of it.
 *     An old file that says the same gets a new date only, and the callback hears of it all the same. A list that
 *     this process may not read is written and not told. One that is write-protected cannot be written. One that
 *     may be written, in a directory that refuses a new file or the exchange, is written in place, if no symbolic link
 *     has that: a page may meet half of it. A full disk leaves it as it was, where the file system can reserve room.
 *     Two runs at one time write each list one after the other; the second waits for about a second. One that was
 *     killed may leave NAME.new, which goes when the list is next replaced.
 *     A symbolic link in a list's place stays one if its owner is root or the caller; else the list takes its place.
 *     A directory of which the names break off in an error ends the run: half of them make no list.
 *  4. Only regular files are read; anything else in a file's place is unreadable where it is read, and is
 *     there where only its being there counts (the script of a portal, a PDF that a portal names). Lines are read
 *     in pieces of at most 2047 bytes, at bytes: a NUL is a byte of its line, but ends a title or name that holds it.
 *  5. The records and their strings belong to the library, each from malloc; lists grow at their heads. Whoever
 *     changes them keeps it so. A callback may look at them, not change them; it must not start another run.
 *  6. Quoted arguments of script lines, titles and names are taken and inserted as they are, without escapes.
 *
 * Files, relative to the root:
 *   htmldocs/NAME/QELdata/QELAllData.js     read     an HTML library, and its title
 *   pdfdocs/NAME.pdf                        read     a PDF document, and the title in its metadata
 *   tomedecks/NAME/js/doclist.js            read     a portal: its name, and the titles of its documents
 *   tomedecks/qel_td/js/tdklist.js          read     the list of portals; created when it is missing
 *   tomedecks/qel_td/js/tdklist_installed.js  written  the portals that are installed
 *   htmldocs/QEL/lib/LibList.js             written  libraries and PDFs, for the pages of the libraries
 *   tomedecks/qel_td/js/LibList.js          written  all documents, for the portals
 *   tomedecks/common/html/basic.htm         read     template of the basic page
 *   tomedecks/basic.htm                     written  the basic page: a table of all documents
 *   htmldocs/QEL/lib/LibraryAvailable.js    written  says that there is a library
 */
#ifndef OLH_DMERGE_H
#define OLH_DMERGE_H

#include "olh/olh.h"

#ifdef __cplusplus
extern "C" {
#endif

enum DmergeResult {
  DMERGE_RESULT_OK = 0,          /* done, or there was nothing to do */
  DMERGE_RESULT_FAILED = 1,      /* no root, or the list of portals could not be read or written */
  DMERGE_RESULT_UNWRITABLE = 21, /* a list could not be written, or the documents not be listed to their end */
  DMERGE_RESULT_UNLISTABLE = 42  /* the portal directory is there, but cannot be listed */
};

/* Hears the full path of each list, right after it was written or found true. Its result does not matter to the run. */
typedef int (*OlhDmergeCallback)(char* path);

/* A document, or a title that a portal gives to one. */
typedef struct LibListEntry {
  char* title;   /* as it is displayed */
  char* docName; /* the library's directory, or the PDF without ".pdf"; null: listed nowhere */
  char* type;    /* "html" or "pdf": the only form it exists in; null: both */
  struct LibListEntry* next;
} LibListEntry;

/* A portal that the list of portals names, by its directory. */
typedef struct FoundName {
  char* name;
  struct FoundName* next;
} FoundName;

/* A list that this run has written or found true. */
typedef struct RegisteredFile {
  char* path; /* cleaned with cleanPath */
  struct RegisteredFile* next;
} RegisteredFile;

/* ---- a whole run ------------------------------------------------------------------------------------ */

/*
 * Makes all lists of a documentation root, as a public entry point: with debug and trace lines.
 *
 *   docRoot   the root; null or "": the first root of the search path
 *   callback  hears of each list; may be null
 *
 * Returns
 *   OLH_RESULT_OK         0  the lists are made
 *   OLH_RESULT_FAILED     2  dmerge failed; a message says why
 *   OLH_RESULT_NOT_FOUND  4  no root was given and the search path is empty; no file was touched
 */
OLH_API int OlhDmerge(const char* docRoot, OlhDmergeCallback callback) OLH_NOEXCEPT;

/*
 * Makes all lists of a documentation root: the installed portals, the titles that portals give, the library lists
 * with the basic page, the library flag, in this order. The first step that fails ends the run; what was written
 * before stays.
 *
 *   root      the root
 *   callback  hears, in this order, of tdklist.js (when it had to be created), tdklist_installed.js, the two
 *             LibList.js, basic.htm and LibraryAvailable.js; may be null
 *
 * Returns
 *   DMERGE_RESULT_OK           0  the lists are made
 *   DMERGE_RESULT_FAILED       1  the root is null, empty or unreadable, or as generateTdInstalledList
 *   DMERGE_RESULT_UNWRITABLE  21  as extractLibList or writeLibAvail
 *   DMERGE_RESULT_UNLISTABLE  42  as generateDocLists
 *
 * Leaves no record behind, whatever the result.
 */
OLH_API int dmerge(const char* root, OlhDmergeCallback callback) OLH_NOEXCEPT;

/* Does what dmerge_free does and forgets the callback. */
OLH_API void dmerge_init(void) OLH_NOEXCEPT;

/* Empties doc_root, releaseName and the four lists. */
OLH_API void dmerge_free(void) OLH_NOEXCEPT;

/* ---- state of a run: null and 0 before and after it; only the callback stays until the next --------------- */

OLH_API extern char* doc_root;                   /* the root, cleaned with cleanPath */
OLH_API extern char* releaseName;                /* for the basic page; null: none was found */
OLH_API extern OlhDmergeCallback dmergeCallback; /* null: nobody is called */

OLH_API extern LibListEntry* lleHead; /* the documents of the root */
OLH_API extern int numLleEntries;

OLH_API extern LibListEntry* pdfTitlesHead; /* titles that the portals give to PDFs, the one read last first */
OLH_API extern int numpdfTitlesEntries;

OLH_API extern FoundName* foundHandleListHead; /* portals that the list of portals names, installed or not */

OLH_API extern RegisteredFile* registeredFilesHead; /* the lists made so far */
OLH_API extern int numRegisteredFiles;

/* Each frees every record of one list with its strings. */
OLH_API void clearLibList(void) OLH_NOEXCEPT;
OLH_API void clearpdfTitlesList(void) OLH_NOEXCEPT;
OLH_API void clearFoundList(void) OLH_NOEXCEPT;
OLH_API void clearRegisteredFiles(void) OLH_NOEXCEPT;

/* ---- steps of a run ------------------------------------------------------------------------------------------ */

/*
 * Writes tdklist_installed.js: tdklist.js (created with an empty tab when it is missing) without the
 *     List.fAddItem( "Display name", "directory" );     or     List.fAddItem( "Display name", "...tomedeck=directory" );
 * lines of portals that are not installed, and with such lines, before the first "Entry.fAddList", for installed ones
 * that it does not name: directories with "_td" in their names, other than qel_td, whose getTitle gives a name.
 * A portal is installed when its js/doclist.js is readable. Lines that begin with "//" stay as they are.
 *
 * Adds every name to foundHandleListHead, and makes the text between the first two quotes of the last line with
 * "mReleaseName" the releaseName; a call that fails does neither.
 *
 * Returns DMERGE_RESULT_OK (0), also without a portal directory; DMERGE_RESULT_FAILED (1): tdklist.js could not be
 * created or read, the portal directory not be read to its end, or tdklist_installed.js not written.
 */
OLH_API int generateTdInstalledList(char* root) OLH_NOEXCEPT;

/*
 * Returns a portal's display name, to be freed with free(): the text between the first two quotes of the first
 * line with
 *     mTomeDeckName = "
 * in its js/doclist.js; "" is a name that no list shows. Null when there is no such line, when an argument is null, and,
 * with a message, when the file cannot be opened.
 */
OLH_API char* getTitle(char* root, char* portal) OLH_NOEXCEPT;

/* Adds a copy of a portal's directory name to foundHandleListHead. */
OLH_API void addToFoundTdList(char* name) OLH_NOEXCEPT;

/* Returns 1 when foundHandleListHead holds the name, else 0. */
OLH_API int inFoundList(const char* name) OLH_NOEXCEPT;

/*
 * Adds to pdfTitlesHead what the portals say of PDFs that are there: for each line
 *     List.fAddItem( "Title", "name" ...
 * of each js/doclist.js that is not commented out and whose name holds no "/". Every entry of the portal directory is
 * looked at: of any name, "." and ".." as well.
 *
 * Returns DMERGE_RESULT_OK (0), also without a portal directory; DMERGE_RESULT_UNLISTABLE (42), also without a root.
 */
OLH_API int generateDocLists(char* root) OLH_NOEXCEPT;

/*
 * Adds the documents of the root to lleHead and calls writeLibList. An entry that was there before stands for its
 * document: when pdfdocs has a PDF of its name, its type becomes null, without being freed.
 *
 * An HTML library's title is the second quoted argument of the last line of its data file with
 *     QELAddBookVar("DocTitle", "Title"
 * and its directory name without such a line. A PDF of the same name makes it exist in both forms. Any other PDF has the
 * title that pdfTitlesHead gives, else the first in its metadata (pdf:Title='Title' or <pdf:Title>Title<), else its
 * file name. PDFs that begin with "_bk_", what cannot be read, and a second PDF that differs only in the case of
 * ".pdf", are left out.
 *
 * Returns what writeLibList returns; DMERGE_RESULT_UNWRITABLE (21), without a list written, when the directory of the
 * libraries or of the PDFs breaks off.
 */
OLH_API int extractLibList(char* root) OLH_NOEXCEPT;

/*
 * Writes both LibList.js and the basic page from lleHead, by title; of entries with the same docName the first keeps
 * it, that of the others becomes null, without being freed. Without a portal directory only the list of the libraries is
 * written; without a template, or when it cannot be written, there is silently no basic page. In the template, a line with
 *     <!-- Insert document list here -->     becomes the rows of the table,
 *     <!-- Insert release name here -->      becomes the releaseName, or nothing without one.
 *
 * Returns DMERGE_RESULT_OK (0) or DMERGE_RESULT_UNWRITABLE (21).
 */
OLH_API int writeLibList(const char* root) OLH_NOEXCEPT;

/* Orders two LibListEntry by the bytes of their titles: below, equal to or above 0, as strcmp. */
OLH_API int compare_entries(const void* a, const void* b) OLH_NOEXCEPT;

/* Writes LibraryAvailable.js. Returns DMERGE_RESULT_OK (0) or DMERGE_RESULT_UNWRITABLE (21). */
OLH_API int writeLibAvail(const char* root) OLH_NOEXCEPT;

/* Adds a file that is there to registeredFilesHead and calls the callback. Returns the callback's result; 0 without
 * a callback, and when the file cannot be read. */
OLH_API int registerNewFile(char* path) OLH_NOEXCEPT;

/* ---- strings -------------------------------------------------------------------------------------------------- */

/* Turns every "\" of a path into "/", then removes one "/" from its end; in place. */
OLH_API void cleanPath(char* path) OLH_NOEXCEPT;

/* Returns 1 when this process may read path, a file or a directory, else 0. */
OLH_API int pathExists(const char* path) OLH_NOEXCEPT;

/* Lower-cases every byte by the current locale, in place. */
OLH_API void lcStr(char* s) OLH_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
