#include "markup.h"

#include <libxml/HTMLparser.h>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <algorithm>

#include "bounds.h"
#include "utf8.h"
#include "words.h"

namespace olh_import {

namespace {

constexpr int kPageOptions =
    HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET | HTML_PARSE_COMPACT;
constexpr unsigned kDeepestElement = 1024;  // a browser stops at 512; generators leave elements open that it closes
constexpr int kXmlOptions = XML_PARSE_RECOVER | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET |
                            XML_PARSE_COMPACT | XML_PARSE_NOCDATA;

std::string_view text_of(const xmlChar* text) {
  return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

// What browsers read in place of an encoding that a page names: more characters, none of them different.
struct Wider {
  const char* named;
  const char* meant;
};
constexpr Wider kWider[] = {{"iso-8859-1", "WINDOWS-1252"},
                            {"us-ascii", "WINDOWS-1252"},
                            {"ascii", "WINDOWS-1252"},
                            {"html", "WINDOWS-1252"},
                            {"latin1", "WINDOWS-1252"},
                            {"iso-8859-9", "WINDOWS-1254"},
                            {"iso-8859-11", "WINDOWS-874"},
                            {"tis-620", "WINDOWS-874"},
                            {"shift_jis", "CP932"},
                            {"shift-jis", "CP932"},
                            {"sjis", "CP932"},
                            {"x-sjis", "CP932"},
                            {"windows-31j", "CP932"},
                            {"gb2312", "GB18030"},
                            {"gbk", "GB18030"},
                            {"euc-kr", "CP949"},
                            {"ks_c_5601-1987", "CP949"}};

const char* wider_than(std::string_view encoding) {
  const std::string named = olh_viewers::lower_case(encoding);
  const auto found = std::ranges::find_if(kWider, [&named](const Wider& one) { return named == one.named; });
  return found == std::end(kWider) ? nullptr : found->meant;
}

// The parser compares each attribute with all that stand before it in its element. Whether that ends soon: every word of
// a tag may be one, and one in quotes, where a ">" ends nothing, counts too.
bool has_few_attributes(std::string_view bytes) {
  constexpr std::size_t kMostComparisons = 1'000'000'000;
  std::size_t comparisons = 0;
  std::size_t words = 0;
  bool is_in_tag = false;
  char quote = '\0';
  char last = '\0';  // that is no blank
  for (const char c : bytes) {
    const bool is_blank = c == ' ' || (c >= '\t' && c <= '\r');
    if (!is_in_tag) {
      is_in_tag = c == '<';
      words = 0;
    } else if (is_blank || c == '/') {
      ++words;
      if (comparisons + words * words > kMostComparisons) return false;
    } else if (quote != '\0') {
      if (c == quote) quote = '\0';
    } else if ((c == '"' || c == '\'') && last == '=') {
      quote = c;
    } else if (c == '>') {
      comparisons += words * words;
      is_in_tag = false;
    }
    if (!is_blank) last = c;
  }
  return true;
}

// In place of the parser's own: stops where a page has more elements than anybody reads.
void start_element(void* context, const xmlChar* name, const xmlChar** attributes) {
  const auto parser = static_cast<htmlParserCtxtPtr>(context);
  std::size_t& room = *static_cast<std::size_t*>(parser->_private);
  std::size_t taken = 1;
  for (const xmlChar** one = attributes; one != nullptr && *one != nullptr; one += 2) ++taken;
  if (taken > room) return xmlStopParser(parser);
  room -= taken;
  xmlSAX2StartElement(context, name, attributes);
}

xmlDoc* parsed_page(std::string_view bytes, const char* encoding, bool* is_cut) {
#if LIBXML_VERSION < 21400  // later ones have a bound like this by themselves
  xmlParserMaxDepth = kDeepestElement;
#endif
  htmlParserCtxtPtr context = htmlNewParserCtxt();
  if (context == nullptr) return nullptr;
  std::size_t room = kMostElements;
  context->_private = &room;
  context->sax->startElement = start_element;
  context->sax->comment = nullptr;
  context->sax->processingInstruction = nullptr;
  xmlDoc* const document =
      htmlCtxtReadMemory(context, bytes.data(), static_cast<int>(bytes.size()), nullptr, encoding, kPageOptions);
  *is_cut = context->disableSAX != 0 || context->instate == XML_PARSER_EOF;
  htmlFreeParserCtxt(context);
  return document;
}

// Escape sequences of ISO-2022 are ASCII too, and mean other characters.
bool is_utf8(std::string_view bytes) { return bytes.find('\x1b') == std::string_view::npos && is_whole_utf8(bytes); }

// The next node of any kind in the order of the document, within `top`.
const xmlNode* next_node(const xmlNode* node, const xmlNode* top, bool into) {
  if (into && node->type == XML_ELEMENT_NODE && node->children != nullptr) return node->children;
  while (node != top && node->next == nullptr) node = node->parent;
  return node == top || node == nullptr ? nullptr : node->next;
}

}  // namespace

std::string folded_space(std::string_view text) {
  std::string folded;
  for (const char c : text) {
    const bool is_space = c == ' ' || (c >= '\t' && c <= '\r');
    if (!is_space)
      folded += c;
    else if (!folded.empty() && folded.back() != ' ')
      folded += ' ';
  }
  if (folded.ends_with(' ')) folded.pop_back();
  return folded;
}

std::string_view Element::name() const { return node_ == nullptr ? std::string_view() : text_of(node_->name); }

std::string Element::attribute(const char* name) const {
  for (const xmlAttr* one = node_ == nullptr ? nullptr : node_->properties; one != nullptr; one = one->next)
    if (text_of(one->name) == name) {
      std::string value;
      for (const xmlNode* part = one->children; part != nullptr; part = part->next) value += text_of(part->content);
      return value;
    }
  return "";
}

bool Element::has_class(std::string_view word) const {
  const std::string words = " " + folded_space(attribute("class")) + " ";
  return words.find(" " + std::string(word) + " ") != std::string::npos;
}

std::string Element::text() const {
  struct : Visitor {
    void text(std::string_view more) override { all += more; }
    std::string all;
  } gathering;
  visit(*this, gathering);
  return folded_space(gathering.all);
}

Element Element::parent() const {
  const xmlNode* const above = node_ == nullptr ? nullptr : node_->parent;
  return above != nullptr && above->type == XML_ELEMENT_NODE ? Element(above) : Element();
}

int Element::heading_level() const {
  const std::string_view name = this->name();
  return name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6' ? name[1] - '0' : 0;
}

Element Element::first_child() const {
  const xmlNode* node = node_ == nullptr ? nullptr : node_->children;
  while (node != nullptr && node->type != XML_ELEMENT_NODE) node = node->next;
  return Element(node);
}

Element Element::next_sibling() const {
  const xmlNode* node = node_ == nullptr ? nullptr : node_->next;
  while (node != nullptr && node->type != XML_ELEMENT_NODE) node = node->next;
  return Element(node);
}

Element Element::next_within(Element top, bool into) const {
  const xmlNode* node = node_ == nullptr ? nullptr : next_node(node_, top.node_, into);
  while (node != nullptr && node->type != XML_ELEMENT_NODE) node = next_node(node, top.node_, true);
  return Element(node);
}

void visit(Element top, Visitor& visitor) {
  for (const xmlNode* node = top.node_; node != nullptr;) {
    const bool is_element = node->type == XML_ELEMENT_NODE;
    if (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) visitor.text(text_of(node->content));
    const bool into = is_element && visitor.enter(Element(node));
    if (into && node->children != nullptr) {
      node = node->children;
      continue;
    }
    if (into) visitor.leave(Element(node));
    while (node != top.node_ && node->next == nullptr) visitor.leave(Element(node = node->parent));
    node = node == top.node_ ? nullptr : node->next;
  }
}

void visit_nested(Element top, std::string_view nesting, const std::function<void(Element, int)>& take) {
  struct Nested : Visitor {
    Nested(Element top, std::string_view nesting, const std::function<void(Element, int)>& take)
        : top_(top), nesting_(nesting), take_(take) {}
    bool enter(Element element) override {
      if (element == top_) return true;
      take_(element, depth_);
      depth_ += element.is(nesting_) ? 1 : 0;
      return true;
    }
    void leave(Element element) override { depth_ -= element != top_ && element.is(nesting_) ? 1 : 0; }

    const Element top_;
    const std::string_view nesting_;
    const std::function<void(Element, int)>& take_;
    int depth_ = 0;
  } nested(top, nesting, take);
  visit(top, nested);
}

std::string text_without(Element element, std::initializer_list<std::string_view> classes) {
  struct GatheringWithout : Visitor {
    bool enter(Element inner) override {
      return std::ranges::none_of(left_out, [inner](std::string_view one) { return inner.has_class(one); });
    }
    void text(std::string_view more) override { all += more; }
    std::initializer_list<std::string_view> left_out;
    std::string all;
  } gathering;
  gathering.left_out = classes;
  visit(element, gathering);
  constexpr std::string_view kHardBlank = "\u00a0";
  for (std::size_t at = 0; (at = gathering.all.find(kHardBlank, at)) != std::string::npos;)
    gathering.all.replace(at, kHardBlank.size(), " ");
  return folded_space(gathering.all);
}

Markup Markup::page(std::string_view bytes) {
  const bool is_bounded = has_few_attributes(bytes);
  if (!is_bounded) bytes = bytes.substr(0, 0);
  bool is_cut = false;
  Markup markup(parsed_page(bytes, is_utf8(bytes) ? "UTF-8" : nullptr, &is_cut));
  if (const xmlDoc* document = markup.document_.get(); document != nullptr && !is_utf8(bytes))
    if (const char* wider = document->encoding == nullptr ? "WINDOWS-1252" : wider_than(text_of(document->encoding)))
      markup = Markup(parsed_page(bytes, wider, &is_cut));
  markup.is_cut_ = is_cut || !is_bounded;
  return markup;
}

Markup Markup::xml(std::string_view bytes) {
  if (!has_few_attributes(bytes)) bytes = bytes.substr(0, 0);
  return Markup(xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, kXmlOptions));
}

Element Markup::root() const { return document_ ? Element(xmlDocGetRootElement(document_.get())) : Element(); }

Element Markup::first(std::string_view name) const {
  Element at = root();
  while (at && !at.is(name)) at = at.next_within(root());
  return at;
}

void Markup::Free::operator()(xmlDoc* document) const { xmlFreeDoc(document); }

}  // namespace olh_import
