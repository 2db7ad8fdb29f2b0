// Text that comes from a host and text that goes into a host's buffer.
//
// Knows    that a null pointer is the empty string, and that a buffer holds OLH_BUFFER_SIZE bytes.
// Not      what a caller does when something does not fit: that is its ordinary failure.
// For      everything that reads a host's string or writes into a host's buffer; nothing else writes there.
#ifndef OLH_COMMON_BOUNDED_TEXT_H
#define OLH_COMMON_BOUNDED_TEXT_H

#include <cstddef>
#include <cstring>
#include <string_view>

#include "olh/olh.h"

namespace olh {

inline bool is_empty(const char* text) noexcept { return text == nullptr || *text == '\0'; }

// The text of a host's string; null counts as empty.
inline std::string_view text_of(const char* text) noexcept {
  return text == nullptr ? std::string_view() : std::string_view(text);
}

// Whether text and its NUL fit into a buffer of OLH_BUFFER_SIZE bytes.
inline bool fits(std::string_view text) noexcept { return text.size() < OLH_BUFFER_SIZE; }

// Empties a caller's buffer; a null buffer is left alone.
inline void clear_buffer(char* out) noexcept {
  if (out != nullptr) *out = '\0';
}

// Writes text and a NUL into a buffer of `capacity` bytes. What does not fit empties the buffer. The text may
// lie in the buffer itself. Returns whether the buffer now holds the text; false for a null buffer.
inline bool write_buffer(char* out, std::string_view text, std::size_t capacity = OLH_BUFFER_SIZE) noexcept {
  if (out == nullptr) return false;
  if (text.size() >= capacity) {
    *out = '\0';
    return false;
  }
  if (!text.empty()) std::memmove(out, text.data(), text.size());
  out[text.size()] = '\0';
  return true;
}

}  // namespace olh

#endif
