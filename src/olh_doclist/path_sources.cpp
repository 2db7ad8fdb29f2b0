// Where roots come from: the environment, read once, and the host.
//
// Knows    the order of the sources, which is the order of precedence.
// Not      how a string splits (path_string), what an options file adds (root_options), how lists merge (path_list).
// For      first use, the wrappers, and SetAltDocPath of this room.
//
//   search path    overrideList, the host's roots, environmentList; the first occurrence of a root wins
//   overrideList   QEL_OVERRIDE_DOC_PATH
//   environmentList, in this order
//     QEL_DOC_PATH, QEL_PRODUCT_DOC_PATH
//     TRV_HOME     "docs" beside the directory that it names
//     QEL_HOME     "docs", "shared" and "doc" in the directory that it names, then "docs" beside it
//     OLH_SYSTEM_DOC_PATH, for packages of the system, which shadow nobody's documents; unset, it leaves no trace
//
// Within each source, the alternates that a root's options file names come before the root.
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "bounded_text.h"
#include "directory_list.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "owned_text.h"
#include "path_list.h"
#include "path_string.h"
#include "root_options.h"
#include "search_path_change.h"

namespace olh {

namespace {

constexpr const char* kSystemRoots = "OLH_SYSTEM_DOC_PATH";

// Appends the named roots, each with what its options file adds. Returns false at a root that repeats the one
// before it: there the caller's whole call ends.
bool add_named_roots(olh_docList& locator, const OlhPathList* named) {
  PathListEnd end(locator.mDocPathList);
  for (; named != nullptr; named = named->next) {
    const char* const current = locator.mCurrentDocPath;
    if (!is_empty(current) && text_of(current) == named->path) return false;
    if (locator.ValidDocPath(named->path) == 1) {
      write_buffer(locator.mCurrentDocPath, named->path);
      const std::string options = path_in(named->path, kRootOptionsName);
      if (path_exists(options.c_str()) == 1) add_roots_of_options(locator, options.c_str(), end);
    }
    end.append(named->path, named->html, named->pdf, {});
  }
  return true;
}

// While one lives, SetOlhDocPath only appends. What it was given meanwhile does not count as the host's.
class AddingEnvironment {
 public:
  explicit AddingEnvironment(olh_docList& locator) : locator_(locator) {
    locator_.mbAddingEnvironment = 1;
    locator_.mbEnvironmentAdded = 1;
  }
  ~AddingEnvironment() {
    locator_.mbAddingEnvironment = 0;
    clear_buffer(locator_.mLastDocPath);
  }
  AddingEnvironment(const AddingEnvironment&) = delete;
  AddingEnvironment& operator=(const AddingEnvironment&) = delete;

 private:
  olh_docList& locator_;
};

bool add_variable(olh_docList& locator, const char* name) {
  char value[OLH_BUFFER_SIZE];
  if (locator.GetOlhVariable(value, name) == 0) return false;
  dirslash(value);
  locator.SetOlhDocPath(value);
  return true;
}

void add_directory(olh_docList& locator, const char* parent, const char* name) {
  locator.SetOlhDocPath((std::string(parent) + pathslash + name).c_str());
}

void add_home_variables(olh_docList& locator) {
  char home[OLH_BUFFER_SIZE];
  if (locator.GetOlhVariable(home, "TRV_HOME") == 1) {
    remove_leaf(home);
    add_directory(locator, home, "docs");
  }
  if (locator.GetOlhVariable(home, "QEL_HOME") == 1) {
    dirslash(home);
    for (const char* const name : {"docs", "shared", "doc"}) add_directory(locator, home, name);
    remove_leaf(home);
    add_directory(locator, home, "docs");
  }
}

void move_search_path(olh_docList& locator, OlhPathList*& to) {
  locator.ClearPathList(to);
  to = std::exchange(locator.mDocPathList, nullptr);
}

void gather_environment(olh_docList& locator) {
  {
    const AddingEnvironment adding(locator);
    if (add_variable(locator, "QEL_OVERRIDE_DOC_PATH") && locator.mDocPathList != nullptr)
      move_search_path(locator, locator.mDefaultPathList->overrideList);
    add_variable(locator, "QEL_DOC_PATH");
    add_variable(locator, "QEL_PRODUCT_DOC_PATH");
    add_home_variables(locator);
    if (!is_empty(locator.FindOlhVariable(kSystemRoots))) add_variable(locator, kSystemRoots);
  }
  move_search_path(locator, locator.mDefaultPathList->environmentList);
  locator.CopyEnvironmentDefaults(1);
  locator.CopyEnvironmentDefaults(2);
  locator.RemoveDuplicates(locator.mDocPathList);
}

}  // namespace

void gather_search_path(olh_docList& locator, const std::string& host_roots) {
  locator.mbAddingEnvironment = 0;
  locator.mbEnvironmentAdded = 0;
  locator.AddEnvironmentVariables();
  if (!host_roots.empty()) locator.SetOlhDocPath(host_roots.c_str());
}

}  // namespace olh

// What does not fit is refused: nothing changes.
int olh_docList::SetOlhDocPath(const char* paths) {
  print_debug("olh_docList::SetOlhDocPath\n");
  // A copy: the host may hand in what GetOlhDocPath returned, which dies with the list.
  const std::string given(olh::text_of(paths));
  if (!olh::fits(given)) return 1;
  std::optional<olh::SearchPathChange> change;
  if (mbAddingEnvironment == 0) change.emplace(*this);
  olh::write_buffer(mLastDocPath, given);
  olh::clear_buffer(mCurrentDocPath);
  if (change) {
    mbEnvironmentAdded = 0;
    CopyEnvironmentDefaults(1);
  }
  olh::TemporaryPathList named;
  olh::PathListEnd end(named.head);
  olh::split_roots(*this, given, {}, end);
  if (olh::add_named_roots(*this, named.head)) {
    if (change) CopyEnvironmentDefaults(2);
    RemoveDuplicates(mDocPathList);
  }
  if (change) change->keep();
  print_debug("olh_docList::SetOlhDocPath: done\n");
  return 1;
}

void olh_docList::AddEnvironmentVariables() {
  if (mDefaultPathList == nullptr) mDefaultPathList = olh::own_record<OlhDefaultPathList>().release();
  if (mDefaultPathList == nullptr) throw std::bad_alloc();
  if (mbEnvironmentAdded == 1) return;
  if (mbEnvironmentAdded == 0) olh::gather_environment(*this);
  olh::clear_buffer(mLastDocPath);
}
