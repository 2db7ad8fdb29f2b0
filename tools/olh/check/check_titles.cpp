// The check of titles and names, which stand in the lists as they are.
#include "checks.h"
#include "lists.h"

namespace olh {

void check_titles(const CheckedRoot& root, Findings& findings) {
  if (!root.trial) return;
  for (const TitleWarning& one : title_warnings(root.trial->run)) findings.warning(one.file, one.sentence);
}

}  // namespace olh
