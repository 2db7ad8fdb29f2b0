// Names and tags as a host may pass them on from anywhere.
#include <cstring>
#include <optional>

#include "fuzz.h"
#include "olh/support.h"
#include "shell_quote.h"
#include "url_build.h"

namespace {

std::string in_place(void (*operation)(char*), std::string text) {
  operation(text.data());
  text.resize(std::strlen(text.c_str()));
  return text;
}

// What a shell makes of a word: quotes taken away; nothing when it would act on a character of it.
std::optional<std::string> shell_word(std::string_view word) {
  std::string text;
  bool quoted = false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (word[i] == '\'') {
      quoted = !quoted;
    } else if (!quoted && word[i] == '\\' && i + 1 < word.size()) {
      text += word[++i];
    } else if (!quoted && std::strchr(" \t\n|&;<>()$`\\\"*?[]#~!{}^", word[i]) != nullptr) {
      return std::nullopt;
    } else {
      text += word[i];
    }
  }
  return quoted || word.empty() ? std::nullopt : std::optional(text);
}

void check_quoting(const std::string& text) {
  expect(shell_word(olh::shell_bare(text)) == text, "a quoted word is the word");
  expect(shell_word("'" + olh::shell_in_single_quotes(text) + "'") == text, "text in quotes is the text");
}

}  // namespace

void try_input(const std::string& input) {
  const std::string text = input.c_str();
  const std::string encoded = olh::encoded(text);
  expect(olh::encoded(encoded) == encoded, "encoding twice is encoding once");
  const std::string topic = in_place(FormatTopic, text);
  expect(in_place(FormatTopic, topic) == topic && topic.find_first_of(" &#<\"'") == std::string::npos, "a topic");
  for (const auto helper : {downcase, dirslash, urlslash, remove_leaf})
    expect(in_place(helper, text).size() <= text.size(), "a helper never lengthens");
  check_quoting(text);
}
