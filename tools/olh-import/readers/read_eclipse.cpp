// Eclipse: a plug-in of documentation. Its plugin.xml names the tables of contents, the context ids that hosts pass, and
// the keywords; all addresses in them begin at the plug-in. A folder may hold several plug-ins.
#include <algorithm>
#include <map>
#include <set>

#include "nested_keywords.h"
#include "reader.h"

namespace olh_import {

namespace {

constexpr const char* kPlugin = "plugin.xml";
constexpr const char* kPluginToc = "toc.xml";
constexpr const char* kPluginContexts = "contexts.xml";
constexpr std::string_view kBundleName = "Bundle-SymbolicName:";

Markup xml_in(const SourceTree& tree, const std::string& name) { return Markup::xml(tree.read(name).value_or("")); }

// The plug-ins of documentation, by their plugin.xml.
std::vector<std::string> plugins_in(const SourceTree& tree) {
  std::vector<std::string> found = tree.ending_in(kPlugin);
  std::erase_if(found, [&tree](const std::string& name) {
    const bool has_name = name == kPlugin || name.ends_with("/plugin.xml");
    return !has_name || tree.read(name).value_or("").find("org.eclipse.help.") == std::string::npos;
  });
  return found;
}

// The name of a plug-in that its plugin.xml leaves to its manifest.
std::string bundle_name(const std::string& manifest) {
  const std::size_t at = manifest.find(kBundleName);
  if (at == std::string::npos) return "";
  const std::size_t begin = at + kBundleName.size();
  return folded_space(manifest.substr(begin, manifest.find_first_of(";\r\n", begin) - begin));
}

// What the plug-ins of a source say.
class PluginTables {
 public:
  PluginTables(const SourceTree& pages, Manual& manual) : pages_(pages), manual_(manual) {}

  void take_plugin(const std::string& plugin) {
    const Markup markup = manual_.read_xml(plugin, pages_.read(plugin));
    std::string id = markup.root().attribute("id");
    if (id.empty()) id = bundle_name(pages_.read(file_of(plugin, "META-INF/MANIFEST.MF")).value_or(""));
    for (Element at = markup.root(); at; at = at.next_within(markup.root())) {
      const std::string file = file_of(plugin, at.attribute("file"));
      const std::string owner = at.attribute("plugin");
      const bool is_table = at.is("contexts") || at.is("index") || at.is("toc");
      if (!is_table || !pages_.has(file) || !named_.insert(file).second) continue;
      if (at.is("contexts")) take_contexts(plugin, file, owner.empty() ? id : owner);
      if (at.is("index")) take_keywords(plugin, file);
      if (at.is("toc")) take_toc(plugin, file, at.attribute("primary") == "true");
    }
  }

  void take_toc(const std::string& plugin, const std::string& file, bool is_primary) {
    const Markup markup = manual_.read_xml(file, pages_.read(file));
    const LinkTarget anchor = target_of_entry(plugin, markup.root().attribute("link_to"));
    if (!anchor.place.empty()) at_anchors_[(anchor.page + "#").append(anchor.place)].push_back(file);
    if (is_primary) primary_.push_back({plugin, file});
    all_.push_back({plugin, file});
  }

  // A context leads to the first of its topics that lies in the source.
  void take_contexts(const std::string& plugin, const std::string& file, const std::string& owner) {
    const Markup markup = manual_.read_xml(file, pages_.read(file));
    const std::string before = owner.empty() || owner.size() > kLongestName ? "" : owner + ".";
    for (Element at = markup.root(); at; at = at.next_within(markup.root())) {
      const std::string id = at.is("context") ? at.attribute("id") : "";
      if (id.empty() || !leads_anywhere(at)) continue;
      const LinkTarget target = first_target(plugin, at);
      const std::string title = at.attribute("title");
      if (!before.empty()) manual_.add_topic({before + id, target.page, target.place, title, Rank::kContext});
      manual_.add_topic({id, target.page, target.place, title, Rank::kContext});
    }
  }

  // The tables of contents that stand by themselves; each has a heading where there are several.
  void finish() {
    const std::vector<Toc>& tocs = primary_.empty() ? all_ : primary_;
    for (const Toc& toc : tocs) {
      const Markup markup = manual_.read_xml(toc.file, pages_.read(toc.file));
      const LinkTarget target = target_of_entry(toc.plugin, markup.root().attribute("topic"));
      const std::string label = markup.root().attribute("label");
      if (manual_.title.empty()) manual_.title = label;
      if (manual_.start.empty()) manual_.start = target.page;
      if (tocs.size() > 1) manual_.add_chapter({0, label, target.page, target.place});
      add_chapters(toc.plugin, toc.file, tocs.size() > 1 ? 1 : 0);
    }
  }

 private:
  struct Toc {
    std::string plugin;
    std::string file;
  };

  static std::string file_of(const std::string& plugin, const std::string& name) {
    return target_of_entry(plugin, name).page;
  }

  // Whether it has a topic at all, of this source or another.
  static bool leads_anywhere(Element element) {
    for (Element at = element.next_within(element); at; at = at.next_within(element))
      if (!at.attribute("href").empty()) return true;
    return false;
  }

  static LinkTarget first_target(const std::string& plugin, Element element) {
    for (Element at = element.next_within(element); at; at = at.next_within(element))
      if (LinkTarget target = target_of_entry(plugin, at.attribute("href")); !target.page.empty()) return target;
    return {};
  }

  // An entry in an entry is called after both.
  void take_keywords(const std::string& plugin, const std::string& file) {
    const Markup markup = manual_.read_xml(file, pages_.read(file));
    NestedKeywords keywords;
    visit_nested(markup.root(), "entry", [&](Element at, int depth) {
      if (!at.is("entry")) return;
      const std::string& name = keywords.next(depth, at.attribute("keyword"));
      Element topic = at.first_child();
      while (topic && !topic.is("topic")) topic = topic.next_sibling();
      const LinkTarget target = target_of_entry(plugin, topic.attribute("href"));
      if (!target.page.empty()) manual_.add_topic({name, target.page, target.place, "", Rank::kKeyword});
    });
  }

  // A table may take others in, by its links and at its anchors. Each comes once.
  void add_chapters(const std::string& plugin, const std::string& file, int above) {
    if (links_ > kDeepestChapter || !done_.insert(file).second) return;
    const Markup markup = manual_.read_xml(file, pages_.read(file));
    ++links_;
    visit_nested(markup.root(), "topic", [&](Element at, int depth) {
      depth += above;
      if (at.is("topic")) {
        const LinkTarget target = target_of_entry(plugin, at.attribute("href"));
        manual_.add_chapter({depth, at.attribute("label"), target.page, target.place});
      }
      if (at.is("link")) add_chapters(plugin, file_of(plugin, at.attribute("toc")), depth);
      if (at.is("anchor"))
        for (const std::string& other : at_anchors_[(file + "#").append(at.attribute("id"))])
          add_chapters(plugin, other, depth);
    });
    --links_;
  }

  const SourceTree& pages_;
  Manual& manual_;
  std::vector<Toc> primary_;
  std::vector<Toc> all_;
  std::map<std::string, std::vector<std::string>> at_anchors_;  // tables of contents by "FILE#ANCHOR"
  std::set<std::string> named_;                                 // tables that were read: each is, once
  std::set<std::string> done_;                                  // of those of contents, the ones that stand there
  int links_ = 0;                                               // tables of contents in each other
};

class EclipseReader : public Reader {
 public:
  const char* kind() const override { return "Eclipse"; }

  bool recognises(const Source& source) const override {
    if (!plugins_in(source.tree).empty()) return true;
    const Markup toc = xml_in(source.tree, kPluginToc);
    const bool has_toc = toc.root().is("toc") && toc.first("topic");
    return has_toc || xml_in(source.tree, kPluginContexts).root().is("contexts");
  }

  void read(const Source&, const SourceTree& pages, Manual& manual) override {
    PluginTables tables(pages, manual);
    const std::vector<std::string> plugins = plugins_in(pages);
    for (const std::string& plugin : plugins) tables.take_plugin(plugin);
    if (plugins.empty()) {
      if (pages.has(kPluginToc)) tables.take_toc(kPlugin, kPluginToc, true);
      if (pages.has(kPluginContexts)) tables.take_contexts(kPlugin, kPluginContexts, "");
    }
    tables.finish();
  }
};

}  // namespace

std::unique_ptr<Reader> eclipse_reader() { return std::make_unique<EclipseReader>(); }

}  // namespace olh_import
