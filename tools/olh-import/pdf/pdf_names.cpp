#include "pdf_names.h"

#include <map>

#include "bounds.h"
#include "destination_names.h"
#include "notes.h"

namespace olh_import {

namespace {

std::string page_of(const PdfPlace& place) { return "page " + std::to_string(place.page); }

class Naming {
 public:
  // A name that the library asks for already stays where it leads.
  void keep(const PdfPlace& place) {
    const auto tag = olh_viewers::tag_for(place.name);
    if (tag && taken_.try_emplace(place.name, &place).second) made_.known_tags.push_back(*tag);
  }

  void take(const PdfPlace& place) {
    if (taken_.contains(place.name)) return;
    if (place.page == 0) return nowhere_.push_back(place.name);
    if (place.name.size() > kLongestName) return too_long_.push_back(page_of(place));
    const std::string name = olh_viewers::destination_of(place.name);
    if (!has_letter_or_digit(name)) return name_after_page(place);
    const auto found = taken_.find(name);
    if (found == taken_.end()) return add(name, place);
    if (found->second->where != place.where)
      made_.same_names.push_back({place.name, page_of(*found->second), page_of(place)});
  }

  PdfNames finished() {
    std::vector<std::string> same;
    for (const SameName& one : made_.same_names)
      same.push_back(one.name + ": " + one.kept + " and not " + one.left_out);
    tell(made_.notes, "places of the PDF with names that the library cannot tell from others, left out", same);
    tell(made_.notes, "places that lead to no page of the PDF, left out", nowhere_);
    tell(made_.notes, "places of the PDF with too long a name, left out", too_long_);
    tell(made_.notes, "places of the PDF without a letter or digit in their names, named after their page",
         unnameable_);
    return std::move(made_);
  }

 private:
  static bool has_letter_or_digit(const std::string& name) {
    return name.find_first_not_of('.', olh_viewers::destination_of("").size()) != std::string::npos;
  }

  void add(const std::string& name, const PdfPlace& place) {
    taken_.emplace(name, &place);
    made_.added.push_back({name, &place});
  }

  // "page 2", "page 2 1", ...: the first that is free; none where one leads there already.
  void name_after_page(const PdfPlace& place) {
    int& number = last_numbers_[place.page];
    std::string name = olh_viewers::destination_of(page_of(place));
    for (auto found = taken_.find(name); found != taken_.end(); found = taken_.find(name)) {
      if (found->second->where == place.where) return;
      name = olh_viewers::destination_of(page_of(place) + " " + std::to_string(++number));
    }
    unnameable_.push_back(page_of(place));
    add(name, place);
  }

  PdfNames made_;
  std::map<std::string, const PdfPlace*> taken_;
  std::map<int, int> last_numbers_;
  std::vector<std::string> nowhere_;
  std::vector<std::string> too_long_;
  std::vector<std::string> unnameable_;
};

}  // namespace

PdfNames names_for_library(const PdfFile& pdf, const std::vector<PdfPlace>& given) {
  Naming naming;
  for (const PdfPlace& place : given) naming.take(place);
  for (const PdfPlace& place : pdf.named()) naming.keep(place);
  for (const PdfPlace& place : pdf.named()) naming.take(place);
  for (const PdfPlace& line : pdf.outline()) naming.take(line);
  return naming.finished();
}

}  // namespace olh_import
