// The index of a root, put together manual by manual.
//
// Knows    which texts speak for a section or page.
// Not      how much a word counts (stem_shares), the texts that are shown of a hit (text_pieces), and files: pieces are passed on
//          as values (index_folder writes them).
// For      main.
#ifndef OLH_TOOLS_INDEX_INDEX_MAKER_H
#define OLH_TOOLS_INDEX_INDEX_MAKER_H

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "indexed_manual.h"
#include "known_tokens.h"
#include "stem_shares.h"
#include "vocabulary.h"
#include "word_pieces.h"

namespace olh_index {

class IndexMaker {
 public:
  explicit IndexMaker(WritePiece write) : write_(std::move(write)) {}

  void add(const IndexedManual& manual);
  // Passes on the pieces of words; the head, which all pieces are found by, is returned without the place of texts.
  nlohmann::json finish();

  std::uint32_t pages() const { return pages_; }
  std::uint32_t sections() const { return sections_; }

 private:
  void take_words(std::string_view text, Field field);
  void add_title(const Page& page);
  void add_part(const Page& page, const Section& section, std::string_view text, bool is_first);

  WritePiece write_;
  Vocabulary vocabulary_;
  KnownTokens tokens_{vocabulary_};
  StemShares shares_;    // of the section or title that is read
  std::string version_;  // of what the manual that is read is about
  nlohmann::json manuals_ = nlohmann::json::array();
  std::string sections_of_pages_;
  std::uint32_t sections_ = 0;
  std::uint32_t pages_ = 0;
};

}  // namespace olh_index

#endif
