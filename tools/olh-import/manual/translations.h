// The same pages in several languages side by side: "index.de.html", "index.en.html".
//
// Knows    which languages a folder has, and which one a manual is made of: all would give each topic several times.
// Not      what is in a page; in which language it is says its name.
// For      import_manual.
#ifndef OLH_IMPORT_TRANSLATIONS_H
#define OLH_IMPORT_TRANSLATIONS_H

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "source_tree.h"

namespace olh_import {

class Translations {
 public:
  // No translations at all.
  Translations() = default;
  // A folder has those languages in which there is an index page, where these are several. That of the page `start` is
  // taken, else English, else the first.
  Translations(const SourceTree& pages, std::string_view start);

  // "en"; "" where there are no translations.
  const std::string& taken() const { return taken_; }
  // Whether a page is there for another language only.
  bool is_other(std::string_view page) const;
  // The name that a page has in the language that is taken.
  std::string counterpart(const std::string& page) const;
  // The languages that are not taken.
  std::vector<std::string> others() const;

 private:
  std::set<std::string, std::less<>> languages_;
  std::string taken_;
};

}  // namespace olh_import

#endif
