#include "html_page.h"

#include <algorithm>
#include <filesystem>

#include "url.h"
#include "words.h"

namespace olh_import {

namespace {

constexpr std::string_view kPageEndings[] = {".html", ".htm", ".xhtml"};

constexpr std::string_view kNoText[] = {"script", "style", "template", "noscript", "svg",  "math",
                                        "title",  "nav",   "footer",   "button",   "form", "select"};
constexpr std::string_view kFrameRoles[] = {"navigation", "search", "banner", "contentinfo", "complementary"};
constexpr std::string_view kFrameClasses[] = {"sphinxsidebar", "related",   "headerlink",    "header-anchor",
                                              "navheader",     "navfooter", "anchorjs-link", "nav-panel"};
// Elements whose text does not go on in the same line.
constexpr std::string_view kInLine[] = {
    "a", "abbr", "b",    "bdi",   "bdo",  "cite", "code", "dfn",    "em", "font", "i",   "ins", "kbd",     "mark",
    "q", "s",    "samp", "small", "span", "sub",  "sup",  "strong", "tt", "u",    "var", "del", "acronym", "big"};
constexpr std::string_view kWithPlace[] = {"section", "div", "article", "a", "span", "dt", "li"};

bool is_one_of(std::string_view word, const auto& words) { return std::ranges::count(words, word) != 0; }

// The links to the next nodes that makeinfo writes; other generators have their titles in such an element.
bool is_header_of_links(Element element) {
  if (!element.is("div") || !element.has_class("header")) return false;
  Element link = element;
  while (link && !link.is("a")) link = link.next_within(element);
  return !link.attribute("accesskey").empty();
}

// What belongs to the frame and not to the text.
bool is_frame(Element element) {
  if (is_one_of(element.name(), kNoText) || is_header_of_links(element)) return true;
  return element.has_class_of(kFrameClasses) || is_one_of(element.attribute("role"), kFrameRoles);
}

std::string place_of(Element element) {
  const std::string id = element.attribute("id");
  return id.empty() && element.is("a") ? element.attribute("name") : id;
}

// The signs that generators put behind a heading as a link to itself.
std::string without_link_sign(std::string text) {
  for (bool is_cut = true; is_cut;) {
    is_cut = false;
    for (const std::string_view sign : {"\u00b6", "\u00a7", "\u00b6\u00b6", "\U0001f517", "\uf0c1", " #", " "})
      if (text.ends_with(sign)) {
        text.resize(text.size() - sign.size());
        is_cut = true;
      }
  }
  return text;
}

// The text of a heading.
class HeadingText : public Visitor {
 public:
  bool enter(Element element) override {
    if (element.is("br")) text_ += ' ';
    return !is_frame(element);
  }
  void text(std::string_view text) override { text_ += text; }
  std::string text() const { return without_link_sign(folded_space(text_)); }

 private:
  std::string text_;
};

// The way through a page that gathers its passages.
class Gathering : public Visitor {
 public:
  explicit Gathering(HtmlPage& page) : page_(page) { page_.passages.emplace_back(); }

  bool enter(Element element) override {
    if (is_frame(element)) return false;
    if (const std::string place = place_of(element); !place.empty() && is_one_of(element.name(), kWithPlace))
      pending_ = place;
    add_border(element);
    if (element.is("dl")) around_lists_.push_back(owner_);
    if (element.is("dd")) is_among_terms_ = false;
    if (element.is("dt") && take_term(element)) return false;
    const int level = element.heading_level();
    if (level != 0) take_heading(element, level);
    return level == 0;
  }

  void leave(Element element) override {
    add_border(element);
    if (element.is("dl")) leave_list();
  }

  void text(std::string_view text) override {
    if (text.find_first_not_of(" \t\r\n") != std::string_view::npos) pending_.clear();
    raw_ += text;
  }

  void finish() {
    finish_passage();
    const Passage& first = page_.passages.front();
    if (first.text.empty() && first.level == 0) page_.passages.pop_front();
  }

 private:
  void add_border(Element element) {
    if (!is_one_of(element.name(), kInLine)) raw_ += ' ';
  }

  static std::string place_within(Element element) {
    std::string place = element.attribute("id");
    for (Element inner = element.next_within(element); inner && place.empty(); inner = inner.next_within(element))
      if (!is_frame(inner)) place = place_of(inner);
    return place;
  }

  static std::string heading_of(Element element) {
    HeadingText text;
    visit(element, text);
    return text.text();
  }

  void take_heading(Element heading, int level) {
    std::string place = place_within(heading);
    if (place.empty()) place = pending_;
    pending_.clear();
    begin_passage({level, place, heading_of(heading), ""});
    last_heading_ = owner_;
  }

  // The first of several terms with one definition begins a passage. What footnotes have is no term.
  bool take_term(Element term) {
    if (is_among_terms_ || around_lists_.empty() || term.has_class("label")) return false;
    const std::string place = place_within(term);
    std::string heading = heading_of(term);
    if (heading.starts_with(": ")) heading.erase(0, 2);  // Texinfo names the category in front of it
    if (place.empty() || heading.empty()) return false;
    pending_.clear();
    is_among_terms_ = true;
    begin_passage({0, place, heading, ""});
    return true;
  }

  void leave_list() {
    const std::size_t owner = around_lists_.back();
    around_lists_.pop_back();
    is_among_terms_ = false;
    if (owner == owner_ || last_heading_ > owner) return;
    const Passage around = page_.passages[owner];
    begin_passage({0, around.place, around.heading, ""});
    owner_ = owner;
    goes_on_ = true;
  }

  void begin_passage(Passage passage) {
    finish_passage();
    page_.passages.push_back(std::move(passage));
    owner_ = page_.passages.size() - 1;
  }

  void finish_passage() {
    std::string text = folded_space(raw_);
    raw_.clear();
    if (goes_on_ && text.empty())
      page_.passages.pop_back();
    else
      page_.passages.back().text = std::move(text);
    goes_on_ = false;
  }

  HtmlPage& page_;
  std::string pending_;  // an identifier right before what comes, with no text in between
  std::string raw_;
  std::size_t owner_ = 0;                  // the passage whose place and heading the text has
  std::size_t last_heading_ = 0;           // the last one that a heading began
  std::vector<std::size_t> around_lists_;  // the owners in which the lists of definitions lie
  bool is_among_terms_ = false;            // behind a term that began a passage, without its definition yet
  bool goes_on_ = false;                   // the last passage goes on behind a list
};

// What one way through a whole page finds.
class Survey {
 public:
  explicit Survey(HtmlPage& page) : page_(page), root_(page.markup.root()) {
    for (Element at = root_; at; at = at.next_within(root_)) take(at);
    page_.main = main_ ? main_ : articles_ == 1 ? article_ : root_;
  }

 private:
  void take(Element element) {
    const std::string_view name = element.name();
    if (std::string id = element.attribute("id"); !id.empty()) page_.places.insert(std::move(id));
    if (std::string place = name == "a" ? element.attribute("name") : ""; !place.empty())
      page_.places.insert(std::move(place));
    take_main(element, name);
    if (!is_redirected_ && name == "meta") take_redirection(element);
  }

  // The one element that holds the text, by what HTML and its roles say; else all of the page: in one without <body>, the
  // parser takes what it does not know for a part of the head.
  void take_main(Element element, std::string_view name) {
    if (!main_ && (name == "main" || element.attribute("role") == "main")) main_ = element;
    if (name == "article" && ++articles_ == 1) article_ = element;
  }

  // What is there for readers without scripts does not count.
  void take_redirection(Element meta) {
    if (meta.parent().is("noscript") || olh_viewers::lower_case(meta.attribute("http-equiv")) != "refresh") return;
    is_redirected_ = true;
    page_.is_redirect = olh_viewers::lower_case(meta.attribute("content")).find("url=") != std::string::npos;
  }

  HtmlPage& page_;
  const Element root_;
  Element main_;
  Element article_;
  int articles_ = 0;
  bool is_redirected_ = false;
};

}  // namespace

bool is_page_name(std::string_view name) {
  const std::string lower = olh_viewers::lower_case(name);
  return std::ranges::any_of(kPageEndings, [&lower](std::string_view end) { return lower.ends_with(end); });
}

HtmlPage read_html_page(const std::string& name, std::string_view bytes) {
  HtmlPage page = {name, "", {}, {}, Markup::page(bytes), false, false, {}};
  const Survey survey(page);
  Gathering gathering(page);
  visit(page.main, gathering);
  gathering.finish();
  const auto first = std::ranges::find(page.passages, 1, &Passage::level);
  if (first != page.passages.end()) page.title = first->heading;
  page.is_title_of_head = page.title.empty();
  if (page.is_title_of_head) page.title = page.markup.first("title").text();
  return page;
}

LinkTarget target_of_link(std::string_view from_page, std::string_view href) {
  const std::string_view path = olh_viewers::without_query_and_fragment(href);
  const std::string place = olh_viewers::decoded(olh_viewers::fragment_of(href));
  if (path.empty()) return {std::string(from_page), place};
  const bool has_scheme = path.find(':') < path.find('/');  // "./a:b.html" has none
  if (has_scheme || path.starts_with('/')) return {};
  const std::filesystem::path from = std::filesystem::path(from_page).parent_path();
  std::string page = (from / olh_viewers::decoded(path)).lexically_normal().string();
  if (page.starts_with("..") || page.starts_with('/')) return {};
  if (page == ".") page.clear();
  if (page.empty() || page.ends_with('/')) page += "index.html";
  return {page, place};
}

LinkTarget target_of_entry(std::string_view table, std::string_view href) {
  return href.empty() ? LinkTarget() : target_of_link(table, href);
}

}  // namespace olh_import
