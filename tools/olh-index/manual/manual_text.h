// What a document of a root says, for the index.
//
// Knows    the two scripts of a manual: its topic table, and the text of its topics (QELdata/QELSearchText.js).
// Not      how words are counted (index_maker).
// For      main.
#ifndef OLH_TOOLS_INDEX_MANUAL_TEXT_H
#define OLH_TOOLS_INDEX_MANUAL_TEXT_H

#include <string>
#include <string_view>
#include <vector>

#include "index_sources.h"
#include "indexed_manual.h"

namespace olh_index {

// The pages of an HTML manual in `folder`, by its scripts; addresses begin with `below`.
void read_manual(const std::string& folder, olh_search::ManualScripts scripts, const std::string& below,
                 IndexedManual& manual);

// The same without what its pages say.
void take_topics(std::string_view table, std::string_view texts, const std::string& below, IndexedManual& manual);

// What the pages in the folder say of each other.
void take_links(const std::string& folder, const std::string& below, IndexedManual& manual);

}  // namespace olh_index

#endif
