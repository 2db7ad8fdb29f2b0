// Strings of the plain records that a host may look at.
//
// Knows    that these strings, and the records themselves, are made with malloc and released with free.
// Not      which record owns which string.
// For      the variable store, the search path and the context name; everything else uses std::string.
#ifndef OLH_DOCLIST_OWNED_TEXT_H
#define OLH_DOCLIST_OWNED_TEXT_H

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace olh {

struct Free {
  void operator()(void* memory) const noexcept { std::free(memory); }
};
using OwnedText = std::unique_ptr<char, Free>;

// A copy of `text`; null when memory is exhausted.
inline OwnedText own_text(std::string_view text) noexcept {
  OwnedText copy(static_cast<char*>(std::malloc(text.size() + 1)));
  if (copy == nullptr) return copy;
  if (!text.empty()) std::memcpy(copy.get(), text.data(), text.size());
  copy.get()[text.size()] = '\0';
  return copy;
}

// A zeroed record; null when memory is exhausted.
template <class Record>
std::unique_ptr<Record, Free> own_record() noexcept {
  return std::unique_ptr<Record, Free>(static_cast<Record*>(std::calloc(1, sizeof(Record))));
}

}  // namespace olh

#endif
