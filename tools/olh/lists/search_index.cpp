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

IndexState state_of_search_index(const std::string& root) {
  const std::string sum = olh_viewers::find_beside("olh-index").empty() ? "" : olh_search::sum_of_sources(root);
  if (sum.empty()) return IndexState::kGood;
  const auto script = olh_viewers::text_of_file(root + "/" + kHeadOfIndex);
  if (!script) return IndexState::kMissing;
  const auto head = olh_search::head_in(*script);
  return head && head->sources == sum ? IndexState::kGood : IndexState::kOld;
}

}  // namespace olh
