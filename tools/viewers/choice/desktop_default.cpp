#include "desktop_default.h"

#include "files.h"

namespace olh_viewers {

namespace {

std::string or_else(const std::string& value, const std::string& otherwise) {
  return value.empty() ? otherwise : value;
}

// The directories for settings and for data, the user's own first.
Words directories(const char* own, const std::string& usual_own, const char* system, const char* usual_system) {
  Words all = {or_else(variable(own), variable("HOME") + usual_own)};
  for (std::string& directory : pieces_of(or_else(variable(system), usual_system), ':')) all.push_back(directory);
  return all;
}

Words data_directories() {
  return directories("XDG_DATA_HOME", "/.local/share", "XDG_DATA_DIRS", "/usr/local/share:/usr/share");
}

// Every list of defaults, the most important first: those of the desktop in use before the general one.
Words lists_of_defaults() {
  Words names;
  for (const std::string& desktop : pieces_of(variable("XDG_CURRENT_DESKTOP"), ':'))
    names.push_back(lower_case(desktop) + "-mimeapps.list");
  names.emplace_back("mimeapps.list");
  Words lists;
  for (const std::string& directory : directories("XDG_CONFIG_HOME", "/.config", "XDG_CONFIG_DIRS", "/etc/xdg"))
    for (const std::string& name : names) lists.push_back(path_in(directory, name));
  for (const std::string& directory : data_directories())
    for (const std::string& name : names) lists.push_back(path_in(directory, "applications/" + name));
  return lists;
}

// The text of an application's entry; "" when it is not installed.
std::string entry_of(const std::string& id) {
  if (id.find('/') != std::string::npos) return "";
  for (const std::string& directory : data_directories())
    if (std::string text = content_of(path_in(directory, "applications/" + id)); !text.empty()) return text;
  return "";
}

}  // namespace

std::string value_in(const std::string& text, const std::string& section, const std::string& key) {
  bool inside = false;
  for (const std::string& line : pieces_of(text, '\n')) {
    if (line.starts_with('[')) inside = line.starts_with("[" + section + "]");
    const std::size_t equals = line.find('=');
    if (!inside || equals == std::string::npos) continue;
    std::string name = line.substr(0, equals);
    name.erase(name.find_last_not_of(' ') + 1);
    if (name != key) continue;
    const std::size_t begin = line.find_first_not_of(' ', equals + 1);
    return begin == std::string::npos ? "" : line.substr(begin);
  }
  return "";
}

std::size_t place_of_program(const Words& words) {
  if (words.empty() || words[0] != "env") return 0;
  std::size_t place = 1;
  while (place < words.size() && words[place].find('=') != std::string::npos) ++place;
  return place < words.size() && words[place][0] != '-' ? place : 0;
}

Words exec_words(std::string_view line) {
  Words words;
  std::string word;
  bool in_word = false;
  bool quoted = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '"') {
      quoted = !quoted;
      in_word = true;
    } else if (quoted && c == '\\' && i + 1 < line.size()) {
      word += line[++i];
    } else if (c == ' ' && !quoted) {
      if (in_word) words.push_back(std::move(word));
      word.clear();
      in_word = false;
    } else {
      word += c;
      in_word = true;
    }
  }
  if (in_word) words.push_back(word);
  return words;
}

Words desktop_default(const std::string& kind) {
  for (const std::string& list : lists_of_defaults())
    for (const std::string& id : pieces_of(value_in(content_of(list), "Default Applications", kind), ';')) {
      Words words = exec_words(value_in(entry_of(id), "Desktop Entry", "Exec"));
      if (!words.empty() && !find_program(words[place_of_program(words)]).empty()) return words;
    }
  return {};
}

}  // namespace olh_viewers
