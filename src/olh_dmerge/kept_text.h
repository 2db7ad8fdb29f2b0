// Texts in one piece of memory, however many there are.
//
// Knows    that many small texts are found faster side by side than each where malloc put it.
// Owns     nothing: the memory resource has the texts, and frees all of them at its end.
// For      the steps that go through the names of a large root several times.
#ifndef OLH_DMERGE_KEPT_TEXT_H
#define OLH_DMERGE_KEPT_TEXT_H

#include <memory_resource>
#include <string_view>

namespace olh {

// A copy, with a NUL behind it.
inline std::string_view kept_text(std::pmr::memory_resource& memory, std::string_view text) {
  char* const copy = static_cast<char*>(memory.allocate(text.size() + 1, 1));
  text.copy(copy, text.size());
  copy[text.size()] = '\0';
  return {copy, text.size()};
}

}  // namespace olh

#endif
