// Birth and death of the locator. The one instance has static storage (olh_doclist_capi).
//
// Knows    that the constructor runs while the library is loaded: it reads OLH_DEBUG, opens nothing, looks nothing up.
// Not      the environment's roots and settings, which the first call reads (path_sources, variables).
#include "olh_doclist.h"

#include <cstdlib>

#include "olh/support.h"

namespace {

// An empty caller-style buffer; null when memory is exhausted, which every user of the two buffers copes with.
char* make_buffer() noexcept { return static_cast<char*>(std::calloc(OLH_BUFFER_SIZE, 1)); }

}  // namespace

olh_docList::olh_docList()
    : mCurrentDocPath(nullptr),
      mContext(nullptr),
      mDisplayType(OLH_DISPLAY_NORMAL),
      mbDisplayTypeFixed(0),
      mVariableList(nullptr),
      mDocPathList(nullptr),
      mbAddingEnvironment(0),
      mbEnvironmentAdded(0),
      mDefaultPathList(nullptr),
      mLastDocPath(nullptr) {
  setDebugVariable();
  print_debug("olh_docList::olh_docList\n");
  mLastDocPath = make_buffer();
  mCurrentDocPath = make_buffer();
  print_debug("olh_docList::olh_docList: done\n");
}

olh_docList::~olh_docList() {
  print_debug("olh_docList::~olh_docList()\n");
  CloseOlhLog();
  ClearPathList(mDocPathList);
  ClearDefaultPathList();
  if (mVariableList != nullptr) ClearOlhVariables(mVariableList);
  std::free(mCurrentDocPath);
  std::free(mContext);
  std::free(mDefaultPathList);
  std::free(mLastDocPath);
}
