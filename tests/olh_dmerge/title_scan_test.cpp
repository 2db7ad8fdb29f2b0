#include "title_scan.h"

#include <random>

#include "dmerge_scene.h"
#include "line_reader.h"
#include "pair_search.h"
#include "script_line.h"

namespace {

class TitleScan : public olh_test::DmergeScene {
 protected:
  std::string title_of(const std::string& bytes) {
    blocks.start(olh::open_regular_file(put("x.pdf", bytes).c_str()));
    return olh::pdf_title(blocks);
  }

  olh::PieceBlocks blocks;
};

// The rule, piece by piece and slowly: the text behind the attribute up to the next "'", else behind the element up to the
// next "<"; neither goes beyond a line feed, and an empty one does not count.
std::string plain_title_of(const std::string& bytes) {
  for (std::size_t begin = 0; begin < bytes.size();) {
    std::size_t end = std::min(begin + olh::kLongestLine, bytes.size());
    const std::size_t feed = bytes.find('\n', begin);
    if (feed < end) end = feed + 1;
    const std::string piece = bytes.substr(begin, end - begin);
    begin = end;
    for (const auto& [mark, closing] : {std::pair("pdf:Title='", "'\n"), std::pair("<pdf:Title>", "<\n")}) {
      const std::size_t at = piece.find(mark);
      if (at == std::string::npos) continue;
      const std::string rest = piece.substr(at + std::string(mark).size());
      std::string title = rest.substr(0, rest.find_first_of(closing));
      if (!title.empty()) return title;
    }
  }
  return "";
}

TEST_F(TitleScan, Titles) {
  const std::string filler(3000, 'x');
  const std::pair<std::string, const char*> cases[] = {
      {"pdf:Title='A b'", "A b"},
      {"<pdf:Title>A b</pdf:Title>", "A b"},
      {"<pdf:Title>A</pdf:Title> pdf:Title='B'", "B"},
      {"pdf:Title=''\n<pdf:Title>A</pdf:Title>", "A"},
      {"pdf:Title='' <pdf:Title>A<", "A"},
      {"pdf:Title='A\nB'", "A"},
      {"pdf:Title='\nA'", ""},
      {"pdf:title='A' PDF:Title='B' pdf:Title=\"C\" <pdf:Title >D<", ""},
      {"pdf:Title", ""},
      {"", ""},
      {std::string("a\0pdf:Title='A\x1a\xff'", 17), "A\x1a\xff"},
      {filler + "pdf:Title='A'", "A"},
      {std::string(2040, 'x') + "pdf:Title='A'", ""},  // the mark lies across two pieces
      {std::string(2035, 'x') + "pdf:Title='Abc'", "A"},
  };
  for (const auto& [bytes, title] : cases) EXPECT_EQ(title_of(bytes), title) << bytes.substr(0, 60);
}

// Whole, cut and false marks at every distance from the ends of pieces and blocks.
TEST_F(TitleScan, AgreesWithTheSlowRule) {
  std::minstd_rand random(20261124);
  const char* const parts[] = {"pdf:Title='", "<pdf:Title>", "pdf:Title", "pdf:", ":", "'",
                               "<",           "\n",          "p",         "=''",  "T", ">"};
  for (int round = 0; round < 300; ++round) {
    // A title is rare: most rounds look at what comes before one.
    std::string bytes(random() % 3 == 0 ? 256 * 1024 - random() % 5000 : random() % 5000, 'x');
    for (int i = 0; i < 400; ++i) {
      bytes += parts[random() % std::size(parts)];
      if (random() % 4 == 0) bytes.append(random() % 2100, random() % 2 == 0 ? ':' : 'y');
    }
    ASSERT_EQ(title_of(bytes), plain_title_of(bytes)) << "round " << round;
  }
}

// With vectors of each width that this processor has.
TEST_F(TitleScan, EverySearchFindsThePairsOfPdf) {
  constexpr std::size_t kStrides = 3;
  const std::string word = "pdf";
  EXPECT_GE(olh::pair_searches().size(), 1U);
  for (const olh::PairSearch search : olh::pair_searches()) {
    const std::string nothing(kStrides * olh::kStride, 'x');
    EXPECT_EQ(search(nothing.data(), kStrides), kStrides);
    for (std::size_t p = 0; p + word.size() <= nothing.size(); ++p) {
      std::string bytes = nothing;
      bytes.replace(p, word.size(), word);
      ASSERT_EQ(search(bytes.data(), kStrides), (p + 1) / olh::kStride) << p;
    }
  }
}

// A file may end with a block, and grow while it is read.
TEST_F(TitleScan, ReadsToTheEndOfTheFile) {
  constexpr std::size_t kBlock = 256 * 1024;
  const std::string title = "pdf:Title='A'";
  for (const std::size_t size : {kBlock - 1, kBlock, kBlock + 1, 2 * kBlock})
    EXPECT_EQ(title_of(std::string(size - title.size(), '\n') + title), "A") << size;
  const std::string path = put("growing.pdf", std::string(kBlock + 1, '\n'));
  blocks.start(olh::open_regular_file(path.c_str()));
  std::string_view block;
  EXPECT_TRUE(blocks.next(block));
  put("growing.pdf", std::string(kBlock + 2, '\n') + title);
  EXPECT_EQ(olh::pdf_title(blocks), "A");
  EXPECT_FALSE(blocks.failed());
}

TEST_F(TitleScan, LibraryTitle) {
  const std::pair<std::string, std::optional<std::string>> cases[] = {
      {"QELAddBookVar(\"DocTitle\",\"A\");\nQELAddBookVar(\"DocTitle\" , \"B\");", "B"},
      {"QELAddBookVar(\"DocTitle\",\"A\");\nQELAddBookVar(\"DocTitle\");\n", "A"},
      {"\"x\" QELAddBookVar(\"DocTitle\",\"A\");", "DocTitle"},
      {"QELAddBookVar(\"Doctitle\",\"A\");", std::nullopt},
      {"QELAddBookVar(\"DocTitle\",\"\");", ""},
      {"", std::nullopt},
  };
  for (const auto& [table, title] : cases) {
    blocks.start(olh::open_regular_file(put("t.js", table).c_str()));
    EXPECT_EQ(olh::library_title(blocks), title) << table;
  }
}

}  // namespace
