// The same pages in several languages side by side: "index.de.html", "index.en.html".
//
// Knows    which languages a folder has, and which one a manual is made of: all would give each topic several times.
// Not      what is in a page; in which language it is says its name.
// For      import_manual.
#ifndef OLH_IMPORT_TRANSLATIONS_H
#define OLH_IMPORT_TRANSLATIONS_H

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
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
  // The index page in it.
  std::string index() const;
  // Whether a page is there in the language that is taken, too.
  bool is_other(const std::string& page) const { return counterparts_.contains(page); }
  // Its name in that language; that of any other page is its own.
  const std::string& counterpart(const std::string& page) const;
  // The languages that are not taken.
  std::vector<std::string> others() const;

 private:
  std::map<std::string, std::string, std::less<>> languages_;  // with their index pages
  std::string taken_;
  std::unordered_map<std::string, std::string> counterparts_;
};

}  // namespace olh_import

#endif
