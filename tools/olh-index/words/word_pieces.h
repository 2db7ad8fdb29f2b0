// The pieces of the index that hold words: words that have a meaning in common with others by that, all others by their first letters, and one
// with the words that slips are compared with.
//
// Knows    which words share a piece, how large it gets, and which words are worth a comparison.
// For      index_maker.
#ifndef OLH_TOOLS_INDEX_WORD_PIECES_H
#define OLH_TOOLS_INDEX_WORD_PIECES_H

#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "vocabulary.h"

namespace olh_index {

// Hears of each piece: its name, "words_3" for example, and what it holds, as JSON.
using WritePiece = std::function<void(const std::string& name, std::string_view piece)>;

// Returns the rows of the head by which a word's piece is found: "meant_words" and "first_words".
nlohmann::json write_words(const Vocabulary& vocabulary, std::uint32_t sections, const WritePiece& write);

}  // namespace olh_index

#endif
