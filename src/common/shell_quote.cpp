#include "shell_quote.h"

#include <algorithm>

namespace olh {

namespace {

// By ASCII, whatever the host's locale says of a byte.
constexpr std::string_view kNameCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
constexpr std::string_view kOtherOrdinary = "./+,:@%=-";

bool is_name(char c) { return kNameCharacters.find(c) != std::string_view::npos; }

bool is_ordinary(char c) {
  return is_name(c) || kOtherOrdinary.find(c) != std::string_view::npos || static_cast<unsigned char>(c) > 127;
}

// As the first word of a command, NAME=VALUE sets a variable and the next word becomes the program.
bool is_assignment(std::string_view word) {
  const std::size_t equals = word.find('=');
  return equals != std::string_view::npos && equals > 0 &&
         std::all_of(word.begin(), word.begin() + static_cast<std::ptrdiff_t>(equals), is_name);
}

}  // namespace

std::string shell_bare(std::string_view word) {
  const bool bare = !word.empty() && word.front() != '%' && !is_assignment(word) &&
                    std::all_of(word.begin(), word.end(), is_ordinary);
  return bare ? std::string(word) : "'" + shell_in_single_quotes(word) + "'";
}

std::string shell_in_single_quotes(std::string_view text) {
  std::string quoted;
  for (const char c : text) {
    if (c == '\'')
      quoted += "'\\''";
    else
      quoted += c;
  }
  return quoted;
}

std::string shell_in_double_quotes(std::string_view text) {
  std::string quoted;
  for (const char c : text) {
    if (c == '\\' || c == '"' || c == '$' || c == '`') quoted += '\\';
    quoted += c;
  }
  return quoted;
}

}  // namespace olh
