// Doxygen: a tag file names classes, members, files, groups and anchors with their places; without one, its pages do.
#include <algorithm>
#include <map>

#include "reader.h"

namespace olh_import {

namespace {

constexpr std::string_view kTagEnding = ".tag";
constexpr std::string_view kMainPage = "index.html";
constexpr std::size_t kHashLength = 32;

// Lists of names, code with line numbers and folders: nothing that another page does not say.
constexpr std::string_view kListPages[] = {
    "annotated", "classes",   "dir_",    "files.",  "functions", "globals",          "graph_legend",
    "hierarchy", "inherits.", "modules", "topics.", "pages.",    "namespacemembers", "namespaces."};
constexpr std::string_view kListEndings[] = {"_source.html", "-members.html"};

// The parts of the contents: what the names of their pages begin with.
struct DoxygenPart {
  const char* title;
  std::vector<std::string_view> beginnings;
};
const DoxygenPart kGroupPart = {"Groups", {"group__"}};
const DoxygenPart kNamespacePart = {"Namespaces", {"namespace"}};
const DoxygenPart kClassPart = {"Classes", {"class", "struct", "union", "interface", "concept"}};
const DoxygenPart kFilePart = {"Files", {}};

bool begins_with_one(std::string_view text, const auto& words) {
  return std::ranges::any_of(words, [text](std::string_view word) { return text.starts_with(word); });
}

// Pages may be spread over folders ("d3/d41/classA.html").
std::string_view without_folder(std::string_view page) { return page.substr(page.rfind('/') + 1); }

const DoxygenPart* part_of(std::string_view page) {
  page = without_folder(page);
  for (const DoxygenPart* part : {&kGroupPart, &kNamespacePart, &kClassPart})
    if (begins_with_one(page, part->beginnings)) return part;
  return page.find("_8") != std::string_view::npos ? &kFilePart
                                                   : nullptr;  // "_8" stands for the dot of a file's name
}

bool is_hexadecimal(std::string_view text) {
  return text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

// Old tag files name pages without their ending.
std::string page_of_tag(const std::string& written) {
  return written.empty() || is_page_name(written) ? written : written + ".html";
}

std::string text_of_child(Element above, std::string_view name) {
  Element child = above.first_child();
  while (child && !child.is(name)) child = child.next_sibling();
  return child ? child.text() : "";
}

// The scope that members of a compound are written with: "Eigen::Matrix::".
std::string scope_of(std::string_view kind, const std::string& name) {
  const bool is_scope = begins_with_one(kind, kClassPart.beginnings) || kind == "namespace";
  return is_scope ? name + "::" : "";
}

class DoxygenReader : public Reader {
 public:
  const char* kind() const override { return "Doxygen"; }

  bool recognises(const Source& source) const override {
    return is_tag_file(tags_in(source)) || is_main_page(source, source.find(kMainPage));
  }

  // Pages lie where the main page does: often in "html".
  std::string folder(const Source& source) override {
    const std::string page = source.find(kMainPage);
    return source.tree.has(page) && page.find('/') != std::string::npos ? page.substr(0, page.rfind('/')) : "";
  }

  void read(const Source& source, const SourceTree&, Manual& manual) override {
    const std::string file = source.find(kTagEnding);
    const Markup tags = manual.read_xml(file, source.read_file(file));
    is_tagged_ = is_tag_file(tags);
    for (Element at = tags.root().first_child(); is_tagged_ && at; at = at.next_sibling())
      if (at.is("compound")) take_compound(at, manual);
    put_members_last(manual);
  }

  bool is_content(std::string_view page) const override {
    const auto ends = [page](std::string_view end) { return page.ends_with(end); };
    const bool is_list =
        begins_with_one(without_folder(page), kListPages) || page.find("search/") != std::string_view::npos;
    return !is_list && std::ranges::none_of(kListEndings, ends);
  }

  // Members have their hash, lines of code their number, and parts of a class the same words on each page.
  bool is_place(std::string_view identifier) const override {
    const bool is_line =
        identifier.starts_with('l') && identifier.find_first_not_of("0123456789", 1) == std::string_view::npos;
    const bool is_hash =
        identifier.size() > kHashLength && is_hexadecimal(identifier.substr(identifier.size() - kHashLength));
    const bool is_part =
        identifier == "details" || identifier.starts_with("autotoc_md") || begins_with_one(identifier, kPartsOfClass);
    return !is_line && !is_hash && !is_part;
  }

  void read_page(const HtmlPage& page, Manual& manual) override {
    std::string title;
    std::string project;
    std::vector<Element> members;
    const Element root = page.markup.root();
    for (Element at = root; at; at = at.next_within(root)) {
      const std::string id = at.attribute("id");
      if (id == "projectname" && project.empty()) project = text_without(at, {});
      if (at.has_class("title") && title.empty()) title = text_without(at, {"ingroups"});
      if (at.has_class("memtitle")) members.push_back(at);
    }
    if (manual.title.empty()) manual.title = project;
    if (title.empty()) title = page.title;
    const DoxygenPart* const part = part_of(page.name);
    parts_[part].push_back({part == nullptr ? 0 : 1, title, page.name, ""});
    if (!is_tagged_) take_page(page.name, part, title, members, manual);
  }

  void finish(Manual& manual) override {
    if (!is_tagged_) put_members_last(manual);
    for (const DoxygenPart* part :
         {static_cast<const DoxygenPart*>(nullptr), &kGroupPart, &kNamespacePart, &kClassPart, &kFilePart}) {
      std::vector<Chapter>& chapters = parts_[part];
      if (part == nullptr)
        std::stable_partition(chapters.begin(), chapters.end(),
                              [](const Chapter& one) { return one.page == kMainPage; });
      else if (!chapters.empty())
        manual.add_chapter({0, part->title, "", ""});
      manual.contents.insert(manual.contents.end(), chapters.begin(), chapters.end());
    }
  }

 private:
  static constexpr std::string_view kPartsOfClass[] = {"pub-",    "pro-",    "pri-",   "nested-", "inherited",
                                                       "related", "friends", "func-",  "enum-",   "typedef-",
                                                       "define-", "var-",    "groups", "header-"};

  static Markup tags_in(const Source& source) {
    return Markup::xml(source.read_file(source.find(kTagEnding)).value_or(""));
  }
  static bool is_tag_file(const Markup& tags) { return tags.root().is("tagfile"); }

  static bool is_main_page(const Source& source, const std::string& page) {
    const Markup markup = Markup::page(source.read_file(page).value_or(""));
    const Element root = markup.root();
    for (Element at = root; at; at = at.next_within(root))
      if (at.is("meta") && at.attribute("name") == "generator") return at.attribute("content").starts_with("Doxygen");
    return false;
  }

  static void add(Manual& manual, Topic topic) {
    if (!topic.name.empty() && !topic.page.empty()) manual.add_topic(std::move(topic));
  }

  // A class is often called as a typedef in another one is: of equal names that with a page of its own is kept.
  static void put_members_last(Manual& manual) {
    std::stable_partition(manual.topics.begin(), manual.topics.end(),
                          [](const Topic& topic) { return topic.place.empty(); });
  }

  // What an author names (groups, pages, anchors) comes before what the code defines.
  static void take_compound(Element compound, Manual& manual) {
    const std::string kind = compound.attribute("kind");
    const std::string name = text_of_child(compound, "name");
    if (kind == "dir") return;
    const Rank rank = kind == "group" || kind == "page" ? Rank::kLabel : Rank::kObject;
    add(manual, {name, page_of_tag(text_of_child(compound, "filename")), "", text_of_child(compound, "title"), rank});
    for (Element at = compound.first_child(); at; at = at.next_sibling()) {
      if (at.is("docanchor"))
        add(manual, {at.text(), page_of_tag(at.attribute("file")), at.text(), at.attribute("title"), Rank::kLabel});
      if (!at.is("member")) continue;
      const std::string member = scope_of(kind, name) + text_of_child(at, "name");
      add(manual, {member, page_of_tag(text_of_child(at, "anchorfile")), text_of_child(at, "anchor"),
                   member + text_of_child(at, "arglist"), Rank::kObject});
    }
  }

  // "Eigen::Matrix< Scalar > Class Template Reference" is about Eigen::Matrix.
  static void take_page(const std::string& page, const DoxygenPart* part, const std::string& title,
                        const std::vector<Element>& members, Manual& manual) {
    const bool is_scope = part == &kClassPart || part == &kNamespacePart;
    const std::string name = title.substr(0, title.find_first_of(" <"));
    if (is_scope || part == &kFilePart) add(manual, {name, page, "", title, Rank::kObject});
    for (const Element heading : members) {
      Element link = heading;
      while (link && !link.is("a")) link = link.next_within(heading);
      const std::string written = (is_scope ? name + "::" : "") + text_without(heading, {"permalink", "overload"});
      const std::string member = written.ends_with("()") ? written.substr(0, written.size() - 2) : written;
      add(manual, {member, page, target_of_link(page, link.attribute("href")).place, written, Rank::kObject});
    }
  }

  bool is_tagged_ = false;
  std::map<const DoxygenPart*, std::vector<Chapter>> parts_;
};

}  // namespace

std::unique_ptr<Reader> doxygen_reader() { return std::make_unique<DoxygenReader>(); }

}  // namespace olh_import
