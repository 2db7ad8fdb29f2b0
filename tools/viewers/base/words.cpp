#include "words.h"

#include <algorithm>

namespace olh_viewers {

namespace {

std::string quoted(const std::string& word) {
  constexpr const char* kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789%+,-./:=@_#";
  if (!word.empty() && word[0] != '#' && word.find_first_not_of(kPlain) == std::string::npos) return word;
  std::string text = "'";
  for (const char c : word) text += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return text + "'";
}

}  // namespace

Words pieces_of(std::string_view list, char separator) {
  Words pieces;
  while (!list.empty()) {
    const std::size_t end = list.find(separator);
    if (end != 0) pieces.emplace_back(list.substr(0, end));
    if (end == std::string_view::npos) break;
    list.remove_prefix(end + 1);
  }
  return pieces;
}

std::string lower_case(std::string_view text) {
  std::string lowered(text);
  std::transform(lowered.begin(), lowered.end(), lowered.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return lowered;
}

Words lines_of(std::string_view text) {
  Words lines;
  while (!text.empty()) {
    lines.emplace_back(text.substr(0, text.find('\n')));
    text.remove_prefix(std::min(lines.back().size() + 1, text.size()));
  }
  return lines;
}

void replace_all(std::string& text, std::string_view what, std::string_view by) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
}

std::string command_line(const Words& words) {
  std::string line;
  for (const std::string& word : words) line += (line.empty() ? "" : " ") + quoted(word);
  return line;
}

std::string as_argument(const std::string& file) {
  return file.starts_with('-') || file.starts_with('+') ? "./" + file : file;
}

}  // namespace olh_viewers
