// The search path while it is put together anew.
//
// Knows    that a change which does not come to its end (memory is exhausted) leaves the roots of before, and the one in use.
// Not      where the new roots come from (path_sources, alternate_path).
// Owns     the old lists, until they are put back or the change is kept.
// For      first use, path_sources and alternate_path.
#ifndef OLH_DOCLIST_SEARCH_PATH_CHANGE_H
#define OLH_DOCLIST_SEARCH_PATH_CHANGE_H

#include <string>
#include <utility>

#include "bounded_text.h"
#include "olh_doclist.h"
#include "path_list.h"

namespace olh {

class SearchPathChange {
 public:
  // What goes, besides the search path itself.
  enum class Also { kNothing, kEnvironmentLists };

  // Leaves the locator without roots.
  explicit SearchPathChange(olh_docList& locator, Also also = Also::kNothing)
      : locator_(locator),
        also_(also),
        host_roots_(text_of(locator.mLastDocPath)),
        current_root_(text_of(locator.mCurrentDocPath)),
        environment_added_(locator.mbEnvironmentAdded) {
    exchange_lists();
  }
  ~SearchPathChange() {
    if (kept_) return;
    exchange_lists();
    write_buffer(locator_.mLastDocPath, host_roots_);
    write_buffer(locator_.mCurrentDocPath, current_root_);
    locator_.mbEnvironmentAdded = environment_added_;
  }
  SearchPathChange(const SearchPathChange&) = delete;
  SearchPathChange& operator=(const SearchPathChange&) = delete;

  // What SetOlhDocPath was last given before the change.
  const std::string& host_roots() const noexcept { return host_roots_; }
  // The new search path stays.
  void keep() noexcept { kept_ = true; }

 private:
  void exchange_lists() noexcept {
    std::swap(locator_.mDocPathList, roots_.head);
    if (also_ == Also::kNothing || locator_.mDefaultPathList == nullptr) return;
    std::swap(locator_.mDefaultPathList->overrideList, override_.head);
    std::swap(locator_.mDefaultPathList->environmentList, environment_.head);
  }

  olh_docList& locator_;
  const Also also_;
  const std::string host_roots_;
  const std::string current_root_;
  const int environment_added_;
  TemporaryPathList roots_;
  TemporaryPathList override_;
  TemporaryPathList environment_;
  bool kept_ = false;
};

// Puts the search path together from its sources: the environment, read anew, then the host's own roots. The locator is
// left without roots by a change, which also has these.
void gather_search_path(olh_docList& locator, const std::string& host_roots);

}  // namespace olh

#endif
