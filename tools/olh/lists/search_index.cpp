#include "search_index.h"

#include "child.h"
#include "files.h"
#include "index_pieces.h"
#include "index_sources.h"
#include "shared.h"

namespace olh {

std::string make_search_index(const std::string& root) {
  const std::string program = olh_viewers::find_beside("olh-index");
  if (program.empty()) return "";
  if (olh_viewers::run_and_wait({program, "--quiet", "--", root}) == 0) return root + "/" + kHeadOfIndex;
  complain(
      "warning: the search index is not made. The pages of this root are searched without one, or with an old one.");
  return "";
}

bool is_search_index_old(const std::string& root) {
  const auto script = olh_viewers::text_of_file(root + "/" + kHeadOfIndex);
  if (!script || olh_viewers::find_beside("olh-index").empty()) return false;
  const auto head = olh_search::head_in(*script);
  return !head || head->sources != olh_search::sum_of_sources(root);
}

}  // namespace olh
