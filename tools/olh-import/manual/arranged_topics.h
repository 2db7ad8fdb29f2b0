// The topics of a manual in the order of its table, no two of them equal to the library.
//
// Knows    which name wins, and what becomes of names that the library would see nothing of.
// Not      where topics come from (the readers, import_manual).
// For      import_manual.
#ifndef OLH_IMPORT_ARRANGED_TOPICS_H
#define OLH_IMPORT_ARRANGED_TOPICS_H

#include <functional>
#include <string>
#include <vector>

#include "reader.h"

namespace olh_import {

// A line of the table, each text in the form in which it is written there.
struct TableLine {
  std::string name;
  std::string address;
  std::string title;
};

// Two topics with names that the library cannot tell apart.
struct SameName {
  std::string name;
  std::string kept;  // addresses
  std::string left_out;
};

struct ArrangedTopics {
  std::vector<TableLine> lines;
  std::vector<SameName> same_names;
  std::vector<std::string> notes;  // sentences about topics that are left out or have another name
};

// The name of a page as a topic: "library/json" of "library/json.html".
std::string name_of_page(std::string_view page);

// `title_at` gives the title of a place, or of a page.
ArrangedTopics arranged_topics(std::vector<Topic> topics, const SourceTree& pages,
                               const std::function<std::string(const Topic&)>& title_at);

}  // namespace olh_import

#endif
