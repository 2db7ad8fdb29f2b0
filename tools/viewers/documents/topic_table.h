// The topic table of an HTML manual, QELdata/QELAllData.js beside its start page.
//
// Knows    which lines name a topic, as the library reads them, and what of a topic's name counts.
// Not      where a table lies and whether its pages are there.
// For      topic_page; olh, which lists and checks topics.
#ifndef OLH_TOOLS_VIEWERS_TOPIC_TABLE_H
#define OLH_TOOLS_VIEWERS_TOPIC_TABLE_H

#include <string>
#include <string_view>
#include <vector>

namespace olh_viewers {

inline constexpr const char* kTopicTable = "QELdata/QELAllData.js";

// QELAddTopic(["NAME","PAGE","TITLE", at the beginning of a line. PAGE and TITLE are "" where they are missing.
struct TableTopic {
  int line = 0;  // from 1
  std::string name;
  std::string page;
  std::string title;
};

// In the order of the table. Of equal names the first one counts.
std::vector<TableTopic> topics_in_table(std::string_view table);

// Only letters, digits, "-" and "_" of a name count, in any case.
std::string normal_topic(std::string_view name);

}  // namespace olh_viewers

#endif
