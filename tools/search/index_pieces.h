// The pieces of a search index, as they are written in scripts: a call with a name and a value.
//
// Knows    their form, and what of it must hold.
// Not      what a search makes of them (index_search), and where they lie.
// For      index_search; olh-index writes them. Pieces of words: word_groups.
#ifndef OLH_TOOLS_SEARCH_INDEX_PIECES_H
#define OLH_TOOLS_SEARCH_INDEX_PIECES_H

#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace olh_search {

// Below the root: the head, and beside it the folder that it names, with all other pieces.
inline constexpr const char* kIndexFolder = "htmldocs/QEL/search";
inline constexpr int kIndexVersion = 3;
// Of an index; one that says that it has more is none.
inline constexpr std::uint32_t kMostSections = 1U << 22;

// What a script says, with the value as JSON; the value, nothing when it is no such script.
std::string script_of_piece(const std::string& name, std::string_view value);
std::optional<nlohmann::json> value_in_script(std::string_view script);
// The same where the value has to be a text; "" for anything else, which is not taken apart: lists in lists take eighty
// times as much memory as room in a file.
std::string text_in_script(std::string_view script);

// A short name for texts, one after the other: other texts have another one, as do the same cut in other places.
class Sum {
 public:
  void add(std::string_view text);
  std::string name() const;

 private:
  void add_number(std::uint64_t number);

  std::uint64_t sum_ = 0;
};

struct ManualInIndex {
  std::string name;
  std::string title;
  bool is_pdf = false;
  std::uint32_t pages = 0;
  std::string unsearched;  // why nothing or not all can be found in it, the end of a sentence; else ""
};

struct IndexHead {
  std::string folder;
  std::string sources;  // the sum of what the index was made from
  std::uint32_t sections = 0;
  std::vector<ManualInIndex> manuals;
  std::vector<std::uint32_t> first_sections;  // of each page, and of the page behind the last one
  std::vector<std::uint32_t> first_of_texts;  // of each piece of texts
  // Of each piece with words that mean the same: all words, with a blank between two. One may be in several.
  std::vector<std::string> meant_words;
  std::vector<std::string> first_words;  // of each piece of words that are in none of these; these come behind
  std::vector<std::string> common;       // words that nobody looks for
};
std::optional<IndexHead> head_in(std::string_view script);

struct IndexedPage {
  std::uint32_t number = 0;
  std::string address;  // below the root
  std::string title;
  std::string topic;
};
struct IndexedSection {
  std::string anchor;
  std::string heading;
  std::string text;
  std::string topic;
};
struct TextPiece {
  std::vector<IndexedPage> pages;
  std::vector<IndexedSection> sections;
};
TextPiece texts_in(std::string_view script);

// One text with a blank between two words, the most frequent first.
std::vector<std::string> near_words_in(std::string_view script);

std::vector<std::string> words_with_blanks(std::string_view text);

}  // namespace olh_search

#endif
