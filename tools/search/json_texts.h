// Texts as JSON has them, in lines of scripts: short ways for what an index is made from and of, by the million.
//
// For      index_sources, index_pieces; olh-index.
#ifndef OLH_TOOLS_SEARCH_JSON_TEXTS_H
#define OLH_TOOLS_SEARCH_JSON_TEXTS_H

#include <string>
#include <string_view>
#include <vector>

namespace olh_search {

// The texts in a line CALL(["A","B", ...]), "" for a value that is none; nothing for another line.
std::vector<std::string> texts_in_call(std::string_view line, std::string_view call);

// Appends a text in quotes. What is no UTF-8 becomes the sign for that.
void append_json(std::string& script, std::string_view text);

}  // namespace olh_search

#endif
