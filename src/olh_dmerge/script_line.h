// Lines of the JavaScript files that the generator reads.
//
// Knows    how long a line may be, where it ends, and how its quoted arguments are found.
// Not      which lines matter: each step has its own words for them.
// For      the other files of this room.
#ifndef OLH_DMERGE_SCRIPT_LINE_H
#define OLH_DMERGE_SCRIPT_LINE_H

#include <cstddef>
#include <optional>
#include <string_view>

namespace olh {

// A longer line is read as several, each of this length and the last one shorter.
inline constexpr std::size_t kLongestLine = 2047;

// The word that both lists of portals and portals' lists of documents add an item with.
inline constexpr std::string_view kAddItem = "List.fAddItem";

inline bool contains(std::string_view line, std::string_view word) {
  return line.find(word) != std::string_view::npos;
}

// Text that becomes a C string ends at its first NUL.
inline std::string_view until_nul(std::string_view text) { return text.substr(0, text.find('\0')); }

// The line without its line end: cut at the first carriage return or line feed.
inline std::string_view without_line_end(std::string_view line) { return line.substr(0, line.find_first_of("\r\n")); }

// The text between the first and second double quote (index 0), the third and fourth (index 1), and so on;
// nothing when the line has no such pair.
std::optional<std::string_view> quoted(std::string_view line, int index);

}  // namespace olh

#endif
