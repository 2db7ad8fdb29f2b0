// What olh check and olh list read of a root, from its disk or from a web server.
#include <algorithm>
#include <charconv>
#include <set>

#include "destination_names.h"
#include "fuzz.h"
#include "script_line.h"
#include "script_lists.h"
#include "web.h"
#include "web_text.h"

namespace {

void check_lists(const std::string& script) {
  const std::vector<std::string> lines = pieces_in(script, std::string::npos);
  for (const std::string& line : lines)
    for (const int index : {0, 1, 2})
      if (line.find('\0') == std::string::npos)
        expect(olh::quoted_in(line, index) == olh::quoted(line, index), "a line is read as the generator reads it");
  std::set<std::string> names;
  for (const olh::ListedDocument& one : olh::documents_in_list(script))
    expect(!one.name.empty() && (one.html || one.pdf) && names.insert(one.name).second,
           "each document once, in a form");
  int last = 0;
  for (const olh::ListedItem& one : olh::items_in_list(script)) {
    expect(one.line > last && one.line <= static_cast<int>(lines.size()), "the items in their order");
    last = one.line;
    expect(lines[static_cast<std::size_t>(last) - 1].find(one.name) != std::string::npos, "an item is in its line");
  }
}

void check_web(const std::string& answer, std::size_t piece) {
  answer_with(answer, piece);
  const std::optional<std::string> text = olh::web_text("http://h:8080/a.js");
  expect(text == olh::body_of(answer), "pieces are one answer");
  expect(web.sent == "GET /a.js HTTP/1.0\r\nHost: h:8080\r\n\r\n", "the request");
  const std::size_t head = answer.find("\r\n\r\n");
  if (!text) return;
  expect(answer.substr(head + 4) == *text && answer.substr(8, 4) == " 200", "all of a body that is there");
  constexpr std::string_view kLength = "HTTP/1.1 200 OK\r\nContent-Length: ";
  if (!answer.starts_with(kLength)) return;
  const std::size_t number = std::min(answer.find_first_not_of(' ', kLength.size()), answer.size());
  std::size_t announced = 0;
  std::from_chars(answer.data() + number, answer.data() + answer.size(), announced);
  expect(text->size() >= announced, "as much as was announced");
}

}  // namespace

void try_input(const std::string& input) {
  const std::vector<std::string> parts = parts_of(input, 2);
  check_lists(parts[1]);
  check_web(parts[1], parts[0].size() + 1);
  if (const auto tag = olh_viewers::tag_for(parts[1]))
    expect(olh_viewers::destination_of(*tag) == parts[1], "a tag asks for its destination");
  answer_with("");
  const bool is_asked = olh::web_text(parts[1]).has_value() || !web.sent.empty();
  if (is_asked)
    expect(parts[1].starts_with("http://") && std::count(web.sent.begin(), web.sent.end(), '\n') == 3, "one request");
}
