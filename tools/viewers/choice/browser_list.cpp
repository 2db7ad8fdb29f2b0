#include "browser_list.h"

#include <algorithm>
#include <array>

#include "desktop_default.h"

namespace olh_viewers {

namespace {

constexpr std::array<std::string_view, 7> kOfTheTerminal = {"w3m",    "lynx",   "links",      "links2",
                                                            "elinks", "browsh", "www-browser"};

bool is_of_the_terminal(std::string_view program) {
  const std::string_view name = program.substr(program.rfind('/') + 1);
  return std::find(kOfTheTerminal.begin(), kOfTheTerminal.end(), name) != kOfTheTerminal.end();
}

// The word with the placeholder of a desktop entry. A "%" before anything else is itself.
std::string as_entry(const std::string& word) {
  std::string entry;
  for (std::size_t i = 0; i < word.size(); ++i) {
    const char next = word[i] == '%' && i + 1 < word.size() ? word[i + 1] : '\0';
    if (next == 's' || next == 'c' || next == '%') {
      entry += next == 's' ? "%u" : next == 'c' ? ":" : "%%";
      ++i;
    } else {
      entry += word[i] == '%' ? std::string("%%") : std::string(1, word[i]);
    }
  }
  return entry;
}

}  // namespace

// Other programs start a browser whose words end in "&" without waiting for it, as all are started here.
std::vector<Words> browser_list(std::string_view value) {
  std::vector<Words> browsers;
  for (const std::string& browser : pieces_of(value, ':')) {
    Words words = exec_words(browser);
    if (!words.empty() && words.back() == "&") words.pop_back();
    if (words.empty() || is_of_the_terminal(words[0])) continue;
    std::transform(words.begin(), words.end(), words.begin(), as_entry);
    browsers.push_back(std::move(words));
  }
  return browsers;
}

}  // namespace olh_viewers
