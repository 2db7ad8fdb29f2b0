// The parts of the search that turn one text into another.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "index_pieces.h"
#include "json_texts.h"
#include "near_words.h"
#include "packed_numbers.h"
#include "query.h"
#include "word_groups.h"
#include "words_in_text.h"

namespace {

using namespace olh_search;
using Words = std::vector<std::string>;

TEST(WordsInText, WordsAndSymbols) {
  struct Row {
    std::string text;
    Words parts;
    Words wholes;
  };
  const Row rows[] = {
      {"Fl\xc3\xbcsse, STRASSE stra\xc3\x9f"
       "e",
       {"flusse", "strasse", "strasse"},
       {}},
      {"os.path.join(a)", {"os", "path", "join", "a"}, {"os.path.join"}},
      {"OLH_DEBUG=1", {"olh", "debug", "1"}, {"olh_debug"}},
      {"use --print-all.", {"use", "print", "all"}, {"--print-all"}},
      {"a-b", {"a", "b"}, {"a-b"}},
      {"5-3 -5 - x", {"5", "3", "5", "x"}, {"5-3"}},
      {"OlhHelpCall PDFs HTMLPage", {"olh", "help", "call", "pdfs", "html", "page"}, {"olhhelpcall", "htmlpage"}},
      {"xMin", {"x", "min"}, {"xmin"}},
      {"LibList.js", {"lib", "list", "js"}, {"liblist.js", "liblist"}},
      {"C++ g++-12 C#", {"c", "g", "12", "c"}, {"c++", "g++", "c#"}},
      {"std::vector a:b", {"std", "vector", "a", "b"}, {"std::vector"}},
      {"__init__", {"init"}, {"__init__"}},
      {"\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e x", {"\xe6\x97\xa5\xe6\x9c\xac", "\xe6\x9c\xac\xe8\xaa\x9e", "x"}, {}},
      {"\xe8\xaa\x9e", {"\xe8\xaa\x9e"}, {}},
      {"\xe0\xb9\x88\xe0\xb9\x89", {}, {}},  // marks without a letter
      {"\xff\xfe bad \xc3", {"bad"}, {}},
      {std::string(100, 'x'), {}, {}},
  };
  for (const Row& row : rows) {
    Words parts;
    Words wholes;
    each_word(row.text, [&](const Symbol& symbol) {
      parts.insert(parts.end(), symbol.parts.begin(), symbol.parts.end());
      wholes.insert(wholes.end(), symbol.wholes.begin(), symbol.wholes.end());
    });
    EXPECT_EQ(parts, row.parts) << row.text;
    EXPECT_EQ(wholes, row.wholes) << row.text;
  }
}

TEST(WordsInText, ACutIsBetweenTwoCharactersAndAlwaysGoesOn) {
  EXPECT_EQ(cut_to("ab\xc3\xbc", 3), "ab");
  EXPECT_EQ(cut_to(std::string(9, '\x80'), 4).size(), 4U) << "what is no text is cut anywhere";
}

TEST(JsonTexts, ThereAndBack) {
  const std::vector<std::string> texts = {"", "plain", "\u00fcber \U0001f600", "a \"quote\" and \\ in it",
                                          "line\nand tab\t end"};
  std::string script = "call([";
  for (const std::string& text : texts) {
    if (&text != &texts.front()) script += ',';
    append_json(script, text);
  }
  EXPECT_EQ(texts_in_call(script + "])", "call("), texts);
  for (std::size_t at = 0; at < 17; ++at)
    for (const char* const character : {"\"", "\\", "\x1f", " ", "\x7f", "\u00e9"}) {
      std::string text(17, 'a');
      text.replace(at, 1, character);
      std::string row;
      append_json(row, text);
      EXPECT_EQ(nlohmann::json::parse(row).get<std::string>(), text);
      EXPECT_EQ(texts_in_call("call([" + row + "])", "call("), std::vector<std::string>{text});
    }
  std::string spoilt;
  append_json(spoilt, "a\xff\"");
  EXPECT_EQ(spoilt, "\"a\ufffd\\\"\"");
}

TEST(PackedNumbers, ThereAndBack) {
  std::string packed;
  const std::vector<std::uint32_t> numbers = {0, 44, 45, 89, 90, 2024, 2025, 1000000, 16777215};
  for (const std::uint32_t number : numbers) append_number(packed, number);
  for (std::uint32_t number = 0; number <= kMostInOneCharacter; ++number) append_character(packed, number);
  EXPECT_EQ(packed.find_first_of("\"\\\x7f"), std::string::npos) << "it stands in a script";
  PackedNumbers back(packed);
  for (const std::uint32_t number : numbers) EXPECT_EQ(back.next(), number);
  for (std::uint32_t number = 0; number <= kMostInOneCharacter; ++number) EXPECT_EQ(back.next_character(), number);
  EXPECT_TRUE(back.at_end());
}

TEST(WordGroups, ThereAndBack) {
  const std::vector<WordGroup> groups = {{"option options", 40, "#M$N", "#M"},
                                         {"optionally", 1000, "$P", ""},
                                         {"\xc3\xb6"
                                          "de \xc3\xb6"
                                          "dnis",
                                          45, "%Q", "%Q"}};
  const std::string packed = packed_groups(groups);
  EXPECT_EQ(packed.find_first_of("\"\\"), std::string::npos) << "it stands in a script";
  EXPECT_LT(packed.size(), 60U) << "letters that words share are written once";
  const char* const words[] = {"options", "optionally",
                               ("\xc3\xb6"
                                "dnis")};
  for (std::size_t at = 0; at < groups.size(); ++at) {
    const std::vector<WordGroup> back = groups_with(words[at], packed);
    ASSERT_EQ(back.size(), 1U);
    EXPECT_EQ(back[0].words, groups[at].words);
    EXPECT_EQ(back[0].weight, groups[at].weight);
    EXPECT_EQ(back[0].postings + "|" + back[0].titles, groups[at].postings + "|" + groups[at].titles);
  }
  EXPECT_TRUE(groups_with("opt", packed).empty());
  EXPECT_EQ(groups_with("optional", packed, Wanted::kBeginning).size(), 1U);
}

TEST(WordGroups, AHostilePieceUnpacksToLittle) {
  std::string packed = "#" + std::string(89, 'a');
  for (int more = 0; more < 100000; ++more) packed += " }";  // each shares all letters
  const std::vector<WordGroup> one = groups_with(std::string(89, 'a'), packed);
  ASSERT_EQ(one.size(), 1U);
  EXPECT_LT(one[0].words.size(), std::size_t{66} * 1024);
  std::string many;
  for (int more = 0; more < 100000; ++more) many += "#a!~";
  EXPECT_EQ(groups_with("a", many).size(), 100U);
}

TEST(NearWords, TheOneThatWasMeant) {
  const Words words = {"option", "environment", "configure", "set", "viewer", "plot", "plots", "differences", "free"};
  const std::pair<const char*, const char*> rows[] = {
      {"enviroment", "environment"},
      {"configuring", "configure"},
      {"veiwer", "viewer"},
      {"conf", "configure"},
      {"pliot", "plot"},
      {"diferencs", "differences"},
      {"zathura", ""},
      {"p", ""},
      {"xet", ""},
      {"optoin", "option"},
  };
  for (const auto& [word, near] : rows) {
    const Words found = near_words(word, words, 1);
    EXPECT_EQ(found.empty() ? "" : found[0], near) << word;
  }
}

TEST(IndexPieces, ListsInListsAreNotTakenApart) {
  EXPECT_EQ(text_in_script(script_of_piece("near", "\"a b\"")), "a b");
  EXPECT_EQ(text_in_script(script_of_piece("near", "[\"a b\"]")), "");
  const auto rows = value_in_script(script_of_piece("texts_0", R"({"rows":[["kept",["left out"]]]})"));
  EXPECT_EQ(rows.value_or(nullptr).dump(), R"({"rows":[["kept",[]]]})");
}

TEST(Query, WordsWholesAndPhrases) {
  const Words common = {"how", "do", "i"};
  EXPECT_EQ(query_in("How do I start?", common).words, Words{"start"});
  EXPECT_EQ(query_in("how do i", common).words, (Words{"how", "do", "i"})) << "there are no others";
  EXPECT_EQ(query_in("OLH_DEBUG debug", common).words, (Words{"olh", "debug"}));
  const Query query = query_in("\xe2\x80\x9eOption Files\xe2\x80\x9c \"x\" \"open", common);
  EXPECT_EQ(query.phrases, (std::vector<Words>{{"option", "files"}}));
  EXPECT_EQ(query_in(std::string(500, 'a') + " a b c d e f g h j k l m n o p q r s t", {}).words.size(), 16U);
}

}  // namespace
