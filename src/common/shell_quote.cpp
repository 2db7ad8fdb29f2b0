#include "shell_quote.h"

#include <algorithm>
#include <iterator>

namespace olh {

namespace {

// By ASCII, whatever the host's locale says of a byte.
constexpr std::string_view kNameCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
constexpr std::string_view kOtherOrdinary = "./+,:@%=-";

bool is_name(char c) { return kNameCharacters.find(c) != std::string_view::npos; }

bool is_ordinary(char c) {
  return is_name(c) || kOtherOrdinary.find(c) != std::string_view::npos || static_cast<unsigned char>(c) > 127;
}

// As the first word of a command, NAME=VALUE and NAME+=VALUE set a variable and the next word becomes the program.
bool is_assignment(std::string_view word) {
  std::string_view name = word.substr(0, word.find('='));
  if (name.size() == word.size()) return false;
  if (name.ends_with('+')) name.remove_suffix(1);
  return !name.empty() && std::all_of(name.begin(), name.end(), is_name);
}

// A program of such a name would begin a compound command instead.
bool is_reserved(std::string_view word) {
  constexpr std::string_view kReserved[] = {"case",  "do",   "done",   "elif",   "else",    "esac",
                                            "fi",    "for",  "if",     "in",     "then",    "until",
                                            "while", "time", "coproc", "select", "function"};
  return std::find(std::begin(kReserved), std::end(kReserved), word) != std::end(kReserved);
}

}  // namespace

std::string shell_bare(std::string_view word) {
  const bool bare = !word.empty() && word.front() != '%' && !is_assignment(word) && !is_reserved(word) &&
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
