#include "generated_pages.h"

#include <algorithm>

#include "words.h"

namespace olh_import {

namespace {

constexpr std::size_t kPagesAsked = 4;  // for their generator; a folder may hold a page or two of another
constexpr std::size_t kLargestHead = 65536;
constexpr int kChildrenAsked = 4;  // for the title of what they lie in: there may be a million
constexpr std::string_view kFolderPage = "index.html";

// As much of a page as says what it is. The rest is parsed once, when it is read.
Markup head_of(const SourceTree& pages, const std::string& page) {
  return Markup::page(pages.read(page).value_or("").substr(0, kLargestHead));
}

std::string generator_of(const Markup& head) {
  const Element root = head.root();
  for (Element at = root; at; at = at.next_within(root))
    if (at.is("meta") && olh_viewers::lower_case(at.attribute("name")) == "generator")
      return olh_viewers::lower_case(at.attribute("content"));
  return "";
}

bool is_list(Element element) { return element.is("ul") || element.is("ol") || element.is("dl"); }
bool is_item(Element element) { return element.is("li") || element.is("dt"); }

// The way through lists that makes a chapter of each item. What an item says of itself ends where a list in it begins.
class Items : public Visitor {
 public:
  Items(const std::string& page, std::vector<Chapter>& contents) : page_(page), contents_(contents) {}

  bool enter(Element element) override {
    const bool is_caption = lists_ == 0 && element.has_class("caption");
    if (is_list(element) || is_item(element) || is_caption || element.is("nav")) finish_item();
    if (is_list(element)) ++lists_;
    if (is_item(element) || is_caption) begin_item(is_caption);
    if (element.is("a") && is_open_ && !has_link_) take_link(element);
    return true;
  }

  void leave(Element element) override {
    if (is_list(element) || is_item(element) || element.has_class("caption")) finish_item();
    if (is_list(element)) --lists_;
  }

  void text(std::string_view text) override {
    if (is_open_ && !has_link_) item_.title += text;
  }

 private:
  void begin_item(bool is_caption) {
    if (is_caption) captions_ = 1;
    item_ = {is_caption ? 0 : std::max(lists_ - 1, 0) + captions_, "", "", ""};
    is_open_ = true;
    has_link_ = false;
  }

  // A link to "#" is there for a script.
  void take_link(Element link) {
    const std::string href = link.attribute("href");
    if (href.empty() || href == "#") return;
    const LinkTarget target = target_of_link(page_, href);
    item_ = {item_.depth, link.text(), target.page, target.place};
    has_link_ = true;
  }

  void finish_item() {
    item_.title = folded_space(item_.title);
    const bool is_outside = has_link_ && item_.page.empty();
    if (is_open_ && !is_outside && !item_.title.empty()) contents_.push_back(item_);
    is_open_ = false;
  }

  const std::string& page_;
  std::vector<Chapter>& contents_;
  Chapter item_;
  bool is_open_ = false;
  bool has_link_ = false;
  int lists_ = 0;     // that this place lies in
  int captions_ = 0;  // 1 behind the first
};

}  // namespace

std::string page_made_by(const SourceTree& pages, std::initializer_list<std::string_view> programs) {
  std::vector<std::string> asked;
  if (pages.has(kFolderPage)) asked.emplace_back(kFolderPage);
  for (const std::string& name : pages.names())
    if (asked.size() < kPagesAsked && is_page_name(name)) asked.push_back(name);
  const auto is_wanted = [&](const std::string& name) {
    const std::string generator = generator_of(head_of(pages, name));
    return std::ranges::any_of(programs, [&](std::string_view program) { return generator.starts_with(program); });
  };
  const auto found = std::ranges::find_if(asked, is_wanted);
  return found == asked.end() ? "" : *found;
}

std::string start_named_in(const SourceTree& pages, const std::string& page) {
  const Markup head = head_of(pages, page);
  const Element root = head.root();
  for (Element at = root; at; at = at.next_within(root))
    if (at.is("link") && (at.attribute("rel") == "home" || at.attribute("rel") == "start"))
      return target_of_entry(page, at.attribute("href")).page;
  return "";
}

Element first_of_class(Element top, std::string_view wanted, std::string_view name) {
  Element at = top;
  while (at && !(at.has_class(wanted) && (name.empty() || at.is(name)))) at = at.next_within(top);
  return at;
}

void add_items(Element top, const std::string& page, std::vector<Chapter>& contents) {
  Items items(page, contents);
  visit(top, items);
}

std::string title_of_label(Element label) {
  const Element around = label.is("a") || label.is("span") ? label.parent() : label;
  if (around.is("dt")) return around.first_child() == label ? around.text() : "";
  Element child = around.first_child();
  for (int asked = 0; child && asked < kChildrenAsked && !child.has_class("title"); ++asked)
    child = child.next_sibling();
  return child.has_class("title") ? child.text() : "";
}

void add_label(Element anchor, const std::string& page, const Reader& reader, Manual& manual) {
  const std::string id = anchor.attribute(anchor.attribute("id").empty() ? "name" : "id");
  if (!id.empty() && reader.is_place(id) && anchor.attribute("href").empty())
    manual.add_topic({id, page, id, title_of_label(anchor), Rank::kLabel});
}

void ReadingOrder::take(const HtmlPage& page, const Manual& manual) {
  pages_.push_back(page.name);
  if (page.name != manual.start) return;
  for (Element at = page.main; at; at = at.next_within(page.main))
    if (at.is("a")) named_.push_back(target_of_link(page.name, at.attribute("href")).page);
}

std::vector<std::string> ReadingOrder::pages(const Manual& manual) const {
  std::vector<std::string> order;
  std::set<std::string> done;
  const auto add = [&](const std::string& page) {
    if (std::ranges::binary_search(pages_, page) && done.insert(page).second) order.push_back(page);
  };
  add(manual.start);
  std::ranges::for_each(named_, add);
  std::ranges::for_each(pages_, add);
  return order;
}

}  // namespace olh_import
