#include "search_index.h"

#include "child.h"
#include "files.h"
#include "shared.h"

namespace olh {

std::string make_search_index(const std::string& root) {
  const std::string program = olh_viewers::find_beside("olh-index");
  if (program.empty()) return "";
  if (olh_viewers::run_and_wait({program, "--quiet", "--", root}) == 0) return root + "/" + kSearchIndex + "/head.js";
  complain(
      "warning: the search index is not made. The pages of this root are searched without one, or with an old one.");
  return "";
}

}  // namespace olh
