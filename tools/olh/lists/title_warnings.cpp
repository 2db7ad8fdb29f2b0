#include "title_warnings.h"

#include <algorithm>

#include "shared.h"

namespace olh {

bool is_more_than_text(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == 127 || c == '"' || c == '\\' || c == '<' || c == '&';
}

namespace {

class Warnings {
 public:
  void look_at(const std::string& file, const std::string& how, const std::string& text) {
    const auto found = std::find_if(text.begin(), text.end(), is_more_than_text);
    if (found == text.end()) return;
    all_.push_back({file, how + " \"" + text + "\": the lists take '" + visible(std::string(1, *found)) +
                              "' as it is, and a page may run what is there as script"});
  }
  std::vector<TitleWarning> all_;
};

// What gives a document its title.
std::string source_of(const ListedDocument& one, const ListRun& run) {
  if (one.html) return "htmldocs/" + one.name + "/QELdata/QELAllData.js";
  const auto& portals = run.titled_by_portals;
  return std::find(portals.begin(), portals.end(), one.name) != portals.end() ? "tomedecks/*/js/doclist.js"
                                                                              : "pdfdocs/" + one.name + ".pdf";
}

}  // namespace

std::vector<TitleWarning> title_warnings(const ListRun& run) {
  Warnings warnings;
  for (const ListedDocument& one : run.documents) {
    warnings.look_at(one.html ? "htmldocs/" + one.name : "pdfdocs/" + one.name + ".pdf", "is named", one.name);
    const bool is_own_name = one.title == one.name || one.title == one.name + ".pdf";
    if (!is_own_name) warnings.look_at(source_of(one, run), "gives the title", one.title);
  }
  for (const ListedItem& portal : run.listed_portals)
    warnings.look_at("tomedecks/" + portal.name + "/js/doclist.js", "gives the title", portal.title);
  warnings.look_at("tomedecks/qel_td/js/tdklist.js", "gives the release name", run.release);
  return warnings.all_;
}

}  // namespace olh
