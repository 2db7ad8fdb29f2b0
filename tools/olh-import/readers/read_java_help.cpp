// Java help: a help set (.hs) names the maps of its ids, which hosts pass, and its views: contents, an index, a glossary.
// Every file names others from where it lies. A help set may take in more of them.
#include <algorithm>
#include <deque>
#include <map>
#include <set>

#include "nested_keywords.h"
#include "notes.h"
#include "reader.h"

namespace olh_import {

namespace {

constexpr std::string_view kHelpSet = ".hs";

// What the help sets of a source say.
class HelpSets {
 public:
  // A help set that is named beside the folder lies, to its own mind, at the beginning of the folder.
  explicit HelpSets(const Source& source) : source_(source) {
    if (const std::string named = source.find(kHelpSet); !source.tree.has(named)) keep_if_help_set(named);
    for (const std::string& file : source.tree.ending_in(kHelpSet)) keep_if_help_set(file);
  }

  bool are_there() const { return !found_.empty(); }

  void read(Manual& manual) {
    choose_sets();
    std::vector<std::string> views;
    for (std::size_t at = 0; at < sets_.size(); ++at) take_set(sets_[at], views, manual);
    for (const std::string& view : views) take_view(manual.read_xml(view, source_.read_file(view)), manual);
    std::erase_if(found_, [this](const std::string& file) { return named_.contains(file); });
    tell(manual.notes, "help sets that " + sets_.front() + " does not take in, left out", found_);
  }

 private:
  Markup xml_of(const std::string& file) const { return Markup::xml(source_.read_file(file).value_or("")); }

  void keep_if_help_set(const std::string& file) {
    if (xml_of(file).root().is("helpset")) found_.push_back(file);
  }

  LinkTarget target_from(const std::string& file, const std::string& href) const {
    return target_of_entry(source_.tree.has(file) ? file : "", href);
  }

  // The first that no other takes in. Those that it takes in come behind it, in their turn.
  void choose_sets() {
    std::set<std::string> taken_in;
    for (const std::string& file : found_) {
      const Markup set = xml_of(file);
      for (Element at = set.root(); at; at = at.next_within(set.root()))
        if (at.is("subhelpset")) taken_in.insert(target_from(file, at.attribute("location")).page);
    }
    const auto first =
        std::ranges::find_if(found_, [&](const std::string& file) { return !taken_in.contains(file); });
    sets_ = {first == found_.end() ? found_.front() : *first};
    named_ = {sets_.front()};
  }

  void take_set(const std::string& file, std::vector<std::string>& views, Manual& manual) {
    const Markup set = manual.read_xml(file, source_.read_file(file));
    std::string home;
    for (Element at = set.root(); at; at = at.next_within(set.root())) {
      const std::string named = target_from(file, at.is("data") ? at.text() : at.attribute("location")).page;
      const bool is_new = source_.tree.has(named) && named_.insert(named).second;
      if (at.is("title") && at.parent() == set.root() && manual.title.empty()) manual.title = at.text();
      if (at.is("homeID")) home = at.text();
      if (at.is("mapref") && is_new) take_map(named, manual);
      if (at.is("data") && is_new) views.push_back(named);
      if (at.is("subhelpset") && is_new) sets_.push_back(named);
    }
    if (manual.start.empty()) manual.start = target_of_id(home).page;
  }

  // Ids also name the pictures of the contents, which are no topics.
  void take_map(const std::string& file, Manual& manual) {
    const Markup map = manual.read_xml(file, source_.read_file(file));
    for (Element at = map.root(); at; at = at.next_within(map.root())) {
      const std::string id = at.is("mapID") ? at.attribute("target") : "";
      if (id.empty()) continue;
      const LinkTarget target = target_from(file, at.attribute("url"));
      const bool is_picture = !target.page.empty() && !is_page_name(target.page);
      if (is_picture || !targets_.try_emplace(id, target).second) continue;
      manual.add_topic({id, target.page, target.place, "", Rank::kContext});
    }
  }

  LinkTarget target_of_id(const std::string& id) const {
    const auto found = targets_.find(id);
    return found == targets_.end() ? LinkTarget() : found->second;
  }

  // Contents, or an index; the glossary is written like one. What the search has made for itself is none of them.
  void take_view(const Markup& view, Manual& manual) const {
    NestedKeywords keywords;
    visit_nested(view.root(), view.root().is("toc") ? "tocitem" : "indexitem", [&](Element at, int depth) {
      const LinkTarget target = target_of_id(at.attribute("target"));
      const std::string text = at.attribute("text");
      if (at.is("tocitem")) manual.add_chapter({depth, text, target.page, target.place});
      if (!at.is("indexitem")) return;
      const std::string& name = keywords.next(depth, text);
      if (!target.page.empty()) manual.add_topic({name, target.page, target.place, "", Rank::kKeyword});
    });
  }

  const Source& source_;
  std::vector<std::string> found_;  // all help sets
  std::deque<std::string> sets_;    // those that are read; grows meanwhile
  std::set<std::string> named_;     // what others name: each is read once
  std::map<std::string, LinkTarget> targets_;
};

class JavaHelpReader : public Reader {
 public:
  const char* kind() const override { return "Java help"; }

  bool recognises(const Source& source) const override { return HelpSets(source).are_there(); }

  void read(const Source& source, const SourceTree&, Manual& manual) override { HelpSets(source).read(manual); }
};

}  // namespace

std::unique_ptr<Reader> java_help_reader() { return std::make_unique<JavaHelpReader>(); }

}  // namespace olh_import
