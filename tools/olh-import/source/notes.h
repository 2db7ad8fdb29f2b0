// Notes for the person who imports: a line each, however much there is to tell.
//
// For      import_manual, arranged_topics, the readers.
#ifndef OLH_IMPORT_NOTES_H
#define OLH_IMPORT_NOTES_H

#include <string>
#include <vector>

namespace olh_import {

// "WHAT: 12 (a, b, c, ...)"; nothing without any.
inline void tell(std::vector<std::string>& notes, const std::string& what, const std::vector<std::string>& all) {
  constexpr std::size_t kExamples = 3;
  if (all.empty()) return;
  std::string examples;
  for (std::size_t at = 0; at < all.size() && at < kExamples; ++at) examples += (at == 0 ? "" : ", ") + all[at];
  notes.push_back(what + ": " + std::to_string(all.size()) + " (" + examples +
                  (all.size() > kExamples ? ", ...)" : ")"));
}

}  // namespace olh_import

#endif
