// Sphinx: the inventory objects.inv names every object, label, option and term with its place; toctrees give contents.
#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "inflated.h"
#include "reader.h"
#include "refusal.h"
#include "url.h"

namespace olh_import {

namespace {

constexpr const char* kInventory = "objects.inv";
constexpr std::string_view kOpening = "# Sphinx inventory version 2";

// Cuts the next line off, without its end.
std::string_view next_line(std::string_view& rest) {
  const std::string_view line = rest.substr(0, rest.find('\n'));
  rest.remove_prefix(std::min(line.size() + 1, rest.size()));
  return line.ends_with('\r') ? line.substr(0, line.size() - 1) : line;
}

// What a line says behind these words; "" for another line.
std::string said_in(std::string_view line, std::string_view words) {
  return line.starts_with(words) ? std::string(line.substr(words.size())) : "";
}

// NAME DOMAIN:ROLE PRIORITY ADDRESS TITLE, where NAME may hold blanks: the fields behind it are found from the first
// one that looks like a role and has a number behind it.
struct Entry {
  std::string_view name;
  std::string_view role;
  std::string_view priority;
  std::string_view address;
  std::string_view title;
};

bool is_number(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::optional<Entry> entry_in(std::string_view line) {
  for (std::size_t blank = line.find(' '); blank != std::string_view::npos; blank = line.find(' ', blank + 1)) {
    Entry entry = {line.substr(0, blank), {}, {}, {}, {}};
    std::string_view rest = line.substr(blank + 1);
    for (std::string_view* field : {&entry.role, &entry.priority, &entry.address}) {
      *field = rest.substr(0, rest.find(' '));
      rest.remove_prefix(std::min(field->size() + 1, rest.size()));
    }
    entry.title = rest;
    if (entry.role.find(':') != std::string_view::npos && is_number(entry.priority)) return entry;
  }
  return std::nullopt;
}

// Parameters of functions, and whatever the generator itself does not search for, come last.
Rank rank_of(const Entry& entry) {
  if (entry.role == "std:label") return Rank::kLabel;
  return entry.role.ends_with("Param") ? Rank::kDetail : Rank::kObject;
}

// "set" of "command:set", as some domains name their objects of the role "command"; else "".
std::string_view short_name_of(const Entry& entry) {
  const std::string_view role = entry.role.substr(entry.role.find(':') + 1);
  const bool has_role = entry.name.starts_with(role) && entry.name.substr(role.size()).starts_with(':');
  return has_role ? entry.name.substr(role.size() + 1) : std::string_view();
}

// How soon one of several objects is meant by the name alone: "CMAKE_BUILD_TYPE" is a variable and of the environment, too.
std::size_t place_among_same(const Entry& entry) {
  constexpr std::string_view kFirst[] = {"command", "variable", "module", "prop_tgt"};
  const auto* const found = std::ranges::find(kFirst, entry.role.substr(entry.role.find(':') + 1));
  return static_cast<std::size_t>(found - std::begin(kFirst));
}

// An entry without a title is called by its name, with what it is: "json.dumps (function)".
std::string title_of(const Entry& entry) {
  if (entry.title != "-" && !entry.title.empty()) return std::string(entry.title);
  const std::string_view name = short_name_of(entry).empty() ? entry.name : short_name_of(entry);
  return std::string(name) + " (" + std::string(entry.role.substr(entry.role.find(':') + 1)) + ")";
}

class SphinxReader : public Reader {
 public:
  const char* kind() const override { return "Sphinx"; }

  bool recognises(const Source& source) const override { return source.tree.has(kInventory); }

  void read(const Source&, const SourceTree& pages, Manual& manual) override {
    const std::string file = pages.read(kInventory).value_or("");
    std::string_view rest = file;
    if (next_line(rest) != kOpening) {
      manual.notes.emplace_back("objects.inv is of a version that is not known, and is not read");
      return;
    }
    const std::string project = said_in(next_line(rest), "# Project: ");
    const std::string version = said_in(next_line(rest), "# Version: ");
    manual.title = version.empty() ? project : project + " " + version;
    next_line(rest);
    const std::optional<Inflated> entries = inflated(rest, kLargestTable);
    if (!entries) throw Refusal(kNoSource, "objects.inv unpacks to more than an inventory holds.");
    if (!entries->is_whole) manual.notes.emplace_back("objects.inv is damaged, and only read in part");
    for (std::string_view lines = entries->text; !lines.empty();)
      if (const auto entry = entry_in(next_line(lines))) take(*entry, manual);
    if (pages.has("contents.html")) root_ = "contents.html";
  }

  // What the generator makes for its own search and for looking at code is no part of the text.
  bool is_content(std::string_view page) const override {
    return page.find("genindex") == std::string_view::npos && page != "search.html" && !page.starts_with("_");
  }

  void read_page(const HtmlPage& page, Manual& manual) override {
    if (root_.empty()) root_ = manual.start;
    std::vector<Chapter>& below = children_[page.name];
    for (Element at = page.main; at; at = at.next_within(page.main)) {
      if (!at.has_class("toctree-wrapper")) continue;
      for (Element inner = at; inner; inner = inner.next_within(at)) take_of_toctree(page.name, inner, below);
    }
  }

  void finish(Manual& manual) override {
    for (auto& [name, objects] : short_names_) {
      std::ranges::stable_sort(objects, {}, &ShortName::place);
      for (const ShortName& object : objects) manual.add_topic(object.topic);
    }
    std::set<std::string> done = {root_};
    add_below(root_, 0, done, manual.contents);
  }

 private:
  void take(const Entry& entry, Manual& manual) {
    if (entry.role == "std:doc") return;  // pages have topics anyway
    std::string address(entry.address);
    if (address.ends_with('$')) address.replace(address.size() - 1, 1, entry.name);
    const LinkTarget target = target_of_link("", address);
    manual.add_topic({std::string(entry.name), target.page, target.place, title_of(entry), rank_of(entry)});
    if (const std::string name(short_name_of(entry)); !name.empty())
      short_names_[name].push_back(
          {place_among_same(entry), {name, target.page, target.place, title_of(entry), Rank::kDetail}});
  }

  // Entries for pages, and the captions over them.
  static void take_of_toctree(const std::string& page, Element element, std::vector<Chapter>& below) {
    if (element.has_class("caption")) {
      below.push_back({0, element.text(), "", ""});
    } else if (element.is("a") && element.parent().has_class("toctree-l1")) {
      const LinkTarget target = target_of_link(page, element.attribute("href"));
      if (target.place.empty()) below.push_back({0, element.text(), target.page, ""});
    }
  }

  // Depth first over the pages that pages name. A page is listed where it is named first.
  void add_below(const std::string& page, int depth, std::set<std::string>& done, std::vector<Chapter>& contents) {
    if (depth > kDeepestChapter) return;
    int own_depth = depth;
    for (Chapter chapter : children_[page]) {
      const bool is_caption = chapter.page.empty();
      if (!is_caption && !done.insert(chapter.page).second) continue;
      chapter.depth = is_caption ? depth : own_depth;
      contents.push_back(chapter);
      if (is_caption)
        own_depth = depth + 1;
      else
        add_below(chapter.page, chapter.depth + 1, done, contents);
    }
  }

  struct ShortName {
    std::size_t place;
    Topic topic;
  };
  std::map<std::string, std::vector<ShortName>> short_names_;  // all objects of the name
  std::string root_;                                           // the page at which the contents begin
  std::map<std::string, std::vector<Chapter>> children_;
};

}  // namespace

std::unique_ptr<Reader> sphinx_reader() { return std::make_unique<SphinxReader>(); }

}  // namespace olh_import
