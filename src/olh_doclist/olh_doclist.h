// The locator: the one object that knows where documentation lives and how it is shown.
//
// Knows    the variables, the search path, the lookups, the URLs, the option files; a file of this room for each.
// Not      how a browser or reader is started (browser, acrobat_dde), what an entry point answers (client).
// Owns     every string, list and buffer in its fields.
// For      this room. Everybody else comes through the exported functions of olh/support.h (olh_doclist_capi).
#ifndef OLH_DOCLIST_OLH_DOCLIST_H
#define OLH_DOCLIST_OLH_DOCLIST_H

#include <cstdio>

#include "olh/olh.h"

// One variable of the store, newest first. The strings are made with malloc; value is never empty.
struct OlhVariable {
  char* name;
  char* value;
  OlhVariable* next;
};

// One documentation root of the search path. The four strings are made with malloc and owned by the node.
struct OlhPathList {
  char* path;  // a directory or an http:// URL, without a "/" at its end
  char* html;  // the browser that the root prescribes, "" when none
  char* pdf;   // the reader that the root prescribes, "" when none
  OlhPathList* next;
  char* parent;  // the root whose options file named this one as its alternate, "" when named directly
};

// What every search path is put together from, besides the host's own roots.
struct OlhDefaultPathList {
  OlhPathList* overrideList;     // in front of the host's roots
  OlhPathList* environmentList;  // behind them
};

class olh_docList {
 public:
  olh_docList();
  ~olh_docList();
  olh_docList(const olh_docList&) = delete;
  olh_docList& operator=(const olh_docList&) = delete;

  // variables: the store, and what first use reads from it
  int GetOlhVariable(char* value, const char* name);
  const char* FindOlhVariable(const char* name);
  int SetOlhVariable(const char* name, const char* value);
  void ClearOlhVariables(OlhVariable*& head);
  void CheckOlhVariables();

  // path_list: nodes and lists
  int AddTail(OlhPathList*& list, char* path, char* html, char* pdf, char* parent);
  int Push(OlhPathList*& list, char* path, char* html, char* pdf, char* parent);
  int Pop(OlhPathList*& list, OlhPathList*& node);
  void ClearPathList(OlhPathList*& list);
  void ClearDefaultPathList();
  void CopyEnvironmentDefaults(int which);
  void RemoveDuplicates(OlhPathList*& list);

  // path_string: from a string to roots
  void RemoveDuplicateSlash(char* in, char* out);
  int SplitString(char* paths, char* html, char* pdf, OlhPathList*& list, char* parent);

  // path_sources: the host's roots and the environment's
  int SetOlhDocPath(const char* paths);
  void AddEnvironmentVariables();

  // root_options: what makes a root, and its options file
  int ValidDocPath(const char* path);
  int ReadQelDocOptions(const char* file);

  // url_probe
  int ParseURL(const char* url, char* host, int* port, char* path);
  int ValidURL(const char* url);

  // lookup_pdf, lookup_html, lookup_portal, topic
  int FindPdfDoc(char* out, const char* name, char* viewerPath, int fallback);
  int FindHtmlDoc(char* out, const char* name, char* viewerPath, int fallback);
  int FindDocHelper(char* out, const char* name, OlhPathList*& entry, char* viewerPath, int kind);
  int FindTomeDeck(char* out, const char* name, char* viewerPath);
  int FindPath(char* out, const char* name);
  int FindHtmlTopic(const char* docLocation, const char* topic, char* out);

  // url_build
  void EncodeSpecialCharsInURL(char* url);
  void FormatTopic(char* topic);
  void FormatNewlink(char* tag);
  void BuildPDFNewlinkURL(char* url, const char* doc, const char* newlink);
  void BuildFullURL(char* url, const char* doc, const char* topic);

  // show
  int showDocGotoTag(const char* doc, const char* tag, char* viewer_path);
  int HtmlSearch(const char* query, const char* scope, const char* name);
  int isViewerRunning(int viewer);
  int startViewer();
  int exitViewer();

  // option_file_read, option_file_write
  int ReadIniFile(char* fileName, char* altDocPath, char* htmlBrowser, char* pdfReader);
  int GetAltDocPath(char* out);
  int GetDocTreeViewerOverride(OlhViewer viewer, char* out);
  int SetIniFile(int key, const char* value, int file);
  void writeNewIniFile(FILE* stream, int key, const char* value, int file);
  int modifyOldIniFile(FILE* stream, char* fileName, int key, const char* value);
  const char* strstrip(char* s);
  int SetAltViewerPath(OlhViewer viewer, const char* path);
  int SetAltDocPath(const char* paths);

  // program_search
  int GetHomeDirectory(char* out);
  int search_path(char* out, const char* program, const char* envName);

  char* mCurrentDocPath;   // OLH_BUFFER_SIZE bytes: the root in use, left there by the last lookup
  char* mContext;          // the value of "context=" in a topic's URL, or null
  int mDisplayType;        // an OlhDisplayType
  int mbDisplayTypeFixed;  // 1 once QEL_OLH_DISPLAY_TYPE has chosen it
  OlhVariable* mVariableList;
  OlhPathList* mDocPathList;             // the search path, in order of precedence
  int mbAddingEnvironment;               // 1 while the environment's roots go through SetOlhDocPath
  int mbEnvironmentAdded;                // 1 once they have been gathered
  OlhDefaultPathList* mDefaultPathList;  // null until the first gathering
  char* mLastDocPath;                    // OLH_BUFFER_SIZE bytes: what SetOlhDocPath was last given
};

#endif
