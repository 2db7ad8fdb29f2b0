// Words that everybody uses and nobody looks for: "the", "und".
//
// For      stems.
#ifndef OLH_TOOLS_INDEX_COMMON_WORDS_H
#define OLH_TOOLS_INDEX_COMMON_WORDS_H

#include <string_view>

namespace olh_index {

// The words of a language, "de" for example, small and without accents, with a blank between two; "" for a language
// without a list. A word that people look for in English manuals ("man") is in no list.
std::string_view common_words_of(std::string_view language);

}  // namespace olh_index

#endif
