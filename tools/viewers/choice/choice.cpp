#include "choice.h"

#include <algorithm>
#include <cctype>

#include "browser_list.h"
#include "desktop_default.h"
#include "display.h"
#include "files.h"
#include "platform.h"
#include "url.h"

namespace olh_viewers {

namespace {

// Whether a start script that breaks words apart leaves this one whole.
bool is_plain_name(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](unsigned char c) { return std::isalnum(c) != 0 || c == '.' || c == '-' || c == '_'; });
}

Choice of_program(const std::string& name, const std::string& source) {
  Choice choice;
  choice.program = find_program(name);
  if (!choice) return choice;
  choice.row = program_at(choice.program);
  if (choice.row == nullptr) choice.row = opener_at(choice.program);
  choice.source = source;
  return choice;
}

// The first of BROWSER that is installed. The bare name of a known program is taken as that program.
Choice of_list() {
  for (const Words& words : browser_list(variable(kListVariable))) {
    Choice choice = of_program(words[0], kListVariable);
    if (!choice) continue;
    if (choice.row == nullptr || words.size() > 1) choice.exec = words;
    return choice;
  }
  return {};
}

// A desktop entry that only calls a known program is taken as that program; flatpak and the like need all their words.
Choice of_desktop(const std::string& kind) {
  const Words words = desktop_default(kind);
  if (words.empty()) return {};
  const auto program = words.begin() + static_cast<std::ptrdiff_t>(place_of_program(words));
  Choice choice = of_program(*program, "the desktop's default");
  if (!choice) return choice;
  choice.before.assign(words.begin(), program);
  const bool is_wrapper = std::find(words.begin(), words.end(), "run") != words.end();
  if (choice.row == nullptr || is_wrapper) choice.exec = words;
  return choice;
}

Choice of_table(std::span<const Program> table, const std::string& source = "found along PATH") {
  for (const Program& program : table)
    if (Choice choice = of_program(std::string(program.name), source)) return choice;
  return {};
}

// Windows' own programs may be missing along PATH.
Choice of_windows() {
  if (Choice choice = of_table(windows_openers(), "of Windows")) return choice;
  return of_program("/mnt/c/Windows/explorer.exe", "of Windows");
}

// The program of the user's variable: one that is not there is as good as none.
Choice of_variable(const char* name) {
  const std::string program = variable(name);
  return program.empty() ? Choice() : of_program(program, name);
}

// Whether the document goes into this word.
bool has_place(const std::string& word) {
  constexpr std::string_view kOfDocument = "uUfF";
  for (std::size_t i = 0; i + 1 < word.size(); ++i)
    if (word[i] == '%' && kOfDocument.find(word[++i]) != std::string_view::npos) return true;
  return false;
}

// The words of a desktop entry; the document stands at the end when the entry leaves no place for it.
Words exec_command(const Choice& choice, const Place& place) {
  const bool is_placed = std::any_of(choice.exec.begin(), choice.exec.end(), has_place);
  Words words = filled(choice.exec, place);
  words.erase(std::remove(words.begin() + 1, words.end(), ""), words.end());
  const std::string& document = place.url.empty() ? place.file : place.url;
  if (!is_placed && !document.empty()) words.push_back(document);
  return words;
}

Words with_program(const Choice& choice, const Words& arguments) {
  Words words = choice.before;
  words.push_back(choice.program);
  words.insert(words.end(), arguments.begin(), arguments.end());
  return words;
}

Words row_command(const Choice& choice, const Words& form, const Place& place) {
  if (choice.row == nullptr || !choice.exec.empty() || form.empty()) return {};
  return with_program(choice, filled(form, place));
}

Choice first_browser() {
  if (Choice choice = of_variable(kBrowserVariable)) return choice;
  if (Choice choice = of_list()) return choice;
  const bool has_windows = is_in_wsl();
  if (Choice choice = has_windows && !has_display() ? of_windows() : Choice()) return choice;
  if (Choice choice = of_desktop("x-scheme-handler/http")) return choice;
  if (Choice choice = of_program("x-www-browser", "the system's x-www-browser")) return choice;
  if (Choice choice = of_table(browsers())) return choice;
  if (Choice choice = has_windows ? of_windows() : Choice()) return choice;
  return of_table(openers(), "the desktop chooses");
}

}  // namespace

Choice choose_browser() {
  Choice choice = first_browser();
  choice.is_of_browsers = true;
  return choice;
}

Choice choose_reader() {
  if (Choice choice = of_variable(kReaderVariable)) return choice;
  if (Choice choice = of_desktop("application/pdf")) return choice;
  if (Choice choice = of_table(pdf_readers())) return choice;
  return choose_browser();
}

Words open_command(const Choice& choice, const Place& place) {
  if (!choice.exec.empty()) return exec_command(choice, place);
  if (choice.row != nullptr) return row_command(choice, choice.row->open, place);
  return {choice.program, place.file.empty() || is_browser(choice) ? place.url : place.file};
}

// One in a sandbox is known by the name of its application, such as "org.mozilla.firefox".
bool is_browser(const Choice& choice) {
  const auto rows = browsers();
  if (choice.is_of_browsers || (choice.row != nullptr && choice.row->asks_desktop)) return true;
  if (choice.row != nullptr) return choice.row >= rows.data() && choice.row < rows.data() + rows.size();
  return std::any_of(choice.exec.begin(), choice.exec.end(), [&rows](const std::string& word) {
    const std::string name = lower_case(word.substr(word.find_last_of("/.") + 1));
    constexpr std::size_t kShortest = 4;
    return name.size() >= kShortest && std::any_of(rows.begin(), rows.end(), [&name](const Program& row) {
             return row.name.find(name) != std::string_view::npos;
           });
  });
}

Words destination_command(const Choice& choice, const Place& place) {
  const bool is_own_way = choice.row == nullptr || !choice.exec.empty();
  if (is_own_way && is_browser(choice) && !is_file_url(place.url)) {
    Place at_destination = place;
    at_destination.url += "#nameddest=" + percent_encoded(place.destination);
    return open_command(choice, at_destination);
  }
  const bool is_refused =
      choice.row == nullptr || (choice.row->takes_plain_names_only && !is_plain_name(place.destination));
  return is_refused ? Words() : row_command(choice, choice.row->at_destination, place);
}

Words page_command(const Choice& choice, const Place& place) {
  return choice.row == nullptr ? Words() : row_command(choice, choice.row->at_page, place);
}

Words start_command(const Choice& choice) {
  return choice.exec.empty() ? with_program(choice, {}) : exec_command(choice, {});
}

}  // namespace olh_viewers
