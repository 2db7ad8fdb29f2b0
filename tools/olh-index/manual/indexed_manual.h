// A document as the index takes it: pages, and what stands on them section by section.
//
// For      manual_text, which reads manuals and PDFs into it, and index_maker.
#ifndef OLH_TOOLS_INDEX_INDEXED_MANUAL_H
#define OLH_TOOLS_INDEX_INDEXED_MANUAL_H

#include <string>
#include <vector>

namespace olh_index {

struct Section {
  std::string anchor;  // "" for the page itself
  std::string heading;
  std::string text;
  std::string topic;               // of this place alone, "" for the page's
  std::vector<std::string> links;  // what links to it say
};

struct Page {
  std::string address;  // below the root
  std::string title;
  std::string topic;
  std::vector<Section> sections;
  std::vector<std::string> links;  // what links to the page say
};

struct IndexedManual {
  std::string name;
  std::string title;
  bool is_pdf = false;
  std::string language;    // as a page says it, "en" for example
  std::string unsearched;  // why nothing or not all can be found in it, the end of a sentence; else ""
  std::vector<Page> pages;
};

}  // namespace olh_index

#endif
