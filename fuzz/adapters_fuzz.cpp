// What the adapters and the recorder are handed and read: command lines, addresses, desktop entries, pdfinfo's listings,
// noted calls.
#include <algorithm>
#include <cstring>

#include "call_records.h"
#include "desktop_default.h"
#include "fuzz.h"
#include "olh-browser/browser.h"
#include "olh-pdf-reader/reader.h"
#include "pdf_places.h"
#include "url.h"

namespace {

using namespace olh_viewers;

void check_requests(const std::string& text, const Words& words) {
  expect(browser_request({"-remote", "openURL(" + text + ",new-tab)"}).document == text, "an address arrives whole");
  expect(browser_request({text}).document == text, "a word is an address");
  const Request place = reader_request({"-openInNewWindow", "/a", "nameddest=" + text, words[0]});
  expect(place.destination == text && place.document == words[0], "a destination and a file arrive whole");
  const std::string address = browser_request(words).document;
  const bool is_word = address.empty() || std::any_of(words.begin(), words.end(), [&](const std::string& word) {
                         return word.find(address) != std::string::npos;
                       });
  expect(is_word, "no address is made up");
  const std::string file = reader_request(words).document;
  expect(file.empty() || file == words.back(), "the file comes last");
}

void check_address(const std::string& text) {
  expect(decoded(percent_encoded(text)) == text, "encoded and back");
  if (text.find('\0') == std::string::npos) expect(file_of(url_of("/" + text)) == "/" + text, "a file and back");
  const bool has_controls =
      std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
  const bool is_address = text.starts_with("http://") || text.starts_with("https://") || text.starts_with("file://");
  expect(objection_to(text).empty() == (is_address && !has_controls), "what a browser may have");
  const std::string queried = with_query(text);
  expect(without_query_and_fragment(queried) == without_query_and_fragment(text) &&
             fragment_of(queried) == fragment_of(text),
         "a query changes nothing else");
  expect(with_query(queried) == queried, "one query is enough");
}

void check_readers(const std::string& text, const Words& words) {
  std::string line;
  for (const std::string& word : words) {
    line += " \"";
    for (const char c : word) line += std::string(c == '"' || c == '\\' ? "\\" : "") + c;
    line += '"';
  }
  expect(exec_words(line) == words, "quoted words are the words");
  const std::string listing = text + "\n  3 [ Fit ] \"" + words[0] + "\"";
  const std::vector<NamedPlace> places = places_in_listing(listing);
  for (const NamedPlace& place : places)
    expect(place.page >= 1 && place_in_listing(listing, place.name).found == Found::kYes,
           "a place is found by its name");
  if (words[0].find('\n') == std::string::npos)
    expect(!places.empty() && places.back().name == words[0], "the last place");
}

// Noted behind what is no whole call, a call may get lost, but none is made up.
void check_records(const std::string& text, const Words& words) {
  const std::string file = scratch() + "/calls";
  write_file(file, "");
  const Call call = {words, "3 ", "0", "0"};
  const bool is_whole = std::none_of(words.begin(), words.end(),
                                     [](const std::string& word) { return word.find('\0') != std::string::npos; });
  expect(append_call(file, call, false), "a call is noted");
  const std::vector<Call> calls = read_calls(file);
  if (is_whole) expect(calls.size() == 1 && calls[0].arguments == words, "a noted call is read back");
  write_file(file, text);
  const auto ends = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\0'));
  expect(read_calls(file).size() * 4 <= ends, "a call has four fields at least");
}

}  // namespace

void try_input(const std::string& input) {
  std::vector<std::string> words = parts_of(input, 4);
  const std::string text = words.back();
  words.pop_back();
  check_requests(text, words);
  check_address(text);
  check_readers(text, words);
  check_records(text, words);
}
