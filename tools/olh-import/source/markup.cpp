#include "markup.h"

#include <libxml/HTMLparser.h>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

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

bool is_space(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

const xmlAttr* attribute_of(const xmlNode* node, const char* name) {
  for (const xmlAttr* one = node == nullptr ? nullptr : node->properties; one != nullptr; one = one->next)
    if (std::strcmp(reinterpret_cast<const char*>(one->name), name) == 0) return one;
  return nullptr;
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

// What ends a word or a tag, and quotes: few of the characters in tags.
constexpr std::array<bool, 256> kInTags = [] {
  std::array<bool, 256> in_tags{};
  for (const char c : {' ', '\t', '\n', '\v', '\f', '\r', '/', '"', '\'', '>'})
    in_tags[static_cast<unsigned char>(c)] = true;
  return in_tags;
}();

// The parser compares each attribute with all that stand before it in its element. Whether that ends soon: every word of
// a tag may be one, and one in quotes, where a ">" ends nothing, counts too.
bool has_few_attributes(std::string_view bytes) {
  constexpr std::size_t kMostComparisons = 1'000'000'000;
  std::size_t comparisons = 0;
  for (std::size_t at = bytes.find('<'); at < bytes.size(); at = bytes.find('<', at)) {
    std::size_t words = 0;
    char quote = '\0';
    char last = '<';  // that is no blank
    for (++at; at < bytes.size() && (quote != '\0' || bytes[at] != '>'); ++at) {
      const char c = bytes[at];
      if (!kInTags[static_cast<unsigned char>(c)]) {
        last = c;
        continue;
      }
      if (is_space(c) || c == '/') {
        ++words;
        if (comparisons + words * words > kMostComparisons) return false;
      } else if (quote != '\0') {
        if (c == quote) quote = '\0';
      } else if ((c == '"' || c == '\'') && last == '=') {
        quote = c;
      }
      if (!is_space(c)) last = c;
    }
    comparisons += words * words;
  }
  return true;
}

constexpr std::size_t kAttribute = sizeof(xmlAttr) + sizeof(xmlNode);

// Takes from the memory that the tree of a page may have; stops the parser where there is none left.
bool has_room(void* context, std::size_t bytes) {
  const auto parser = static_cast<xmlParserCtxtPtr>(context);
  std::size_t& room = *static_cast<std::size_t*>(parser->_private);
  if (bytes > room) return xmlStopParser(parser), false;
  room -= bytes;
  return true;
}

// In place of the parser's own. An element is counted with what becomes of it later: a heading's is a passage.
void start_element(void* context, const xmlChar* name, const xmlChar** attributes) {
  std::size_t bytes = 2 * sizeof(xmlNode);
  for (const xmlChar** one = attributes; one != nullptr && *one != nullptr; one += 2)
    bytes += kAttribute + text_of(one[1]).size();
  if (has_room(context, bytes)) xmlSAX2StartElement(context, name, attributes);
}

void start_xml_element(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* address,
                       int name_spaces, const xmlChar** pairs, int size, int defaulted, const xmlChar** attributes) {
  std::size_t bytes = 2 * sizeof(xmlNode) + static_cast<std::size_t>(name_spaces) * sizeof(xmlNs);
  for (const xmlChar** one = attributes; one < attributes + 5 * size; one += 5)
    bytes += kAttribute + static_cast<std::size_t>(one[4] - one[3]);
  if (has_room(context, bytes))
    xmlSAX2StartElementNs(context, name, prefix, address, name_spaces, pairs, size, defaulted, attributes);
}

void characters(void* context, const xmlChar* text, int size) {
  if (has_room(context, sizeof(xmlNode) + static_cast<std::size_t>(size))) xmlSAX2Characters(context, text, size);
}

xmlDoc* parsed_page(std::string_view bytes, const char* encoding, bool* is_cut) {
#if LIBXML_VERSION < 21400  // later ones have a bound like this by themselves
  xmlParserMaxDepth = kDeepestElement;
#endif
  htmlParserCtxtPtr context = htmlNewParserCtxt();
  if (context == nullptr) return nullptr;
  std::size_t room = kLargestTree;
  context->_private = &room;
  context->sax->startElement = start_element;
  context->sax->characters = characters;
  context->sax->cdataBlock = [](void*, const xmlChar*, int) {};  // scripts and styles
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

// A text of 16-bit characters, which says so with its first one, as UTF-8; nothing for every other. What is no character becomes
// U+FFFD.
std::optional<std::string> utf8_of_wide(std::string_view bytes) {
  const bool is_big = bytes.starts_with("\xfe\xff");
  if (!is_big && !bytes.starts_with("\xff\xfe")) return std::nullopt;
  const auto unit_at = [&](std::size_t at) -> std::uint32_t {
    if (at + 1 >= bytes.size()) return 0;
    const std::uint32_t first = static_cast<unsigned char>(bytes[at]);
    const std::uint32_t second = static_cast<unsigned char>(bytes[at + 1]);
    return is_big ? first << 8 | second : second << 8 | first;
  };
  std::string text;
  for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
    std::uint32_t point = unit_at(at);
    const std::uint32_t next = unit_at(at + 2);
    if (point >= 0xd800 && point < 0xdc00 && next >= 0xdc00 && next < 0xe000) {
      point = 0x10000 + ((point - 0xd800) << 10) + (next - 0xdc00);
      at += 2;
    }
    text += point == 0 || (point >= 0xd800 && point < 0xe000) ? "\ufffd" : utf8_of(point);
  }
  return text;
}

// The next node of any kind in the order of the document, within `top`.
const xmlNode* next_node(const xmlNode* node, const xmlNode* top, bool into) {
  if (into && node->type == XML_ELEMENT_NODE && node->children != nullptr) return node->children;
  while (node != top && node->next == nullptr) node = node->parent;
  return node == top || node == nullptr ? nullptr : node->next;
}

}  // namespace

void add_folded(std::string& folded, std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    std::size_t end = at;
    while (end < text.size() && !is_space(text[end])) ++end;
    folded.append(text, at, end - at);
    at = end;
    while (at < text.size() && is_space(text[at])) ++at;
    if (at != end && !folded.empty() && folded.back() != ' ') folded += ' ';
  }
}

std::string folded_space(std::string_view text) {
  std::string folded;
  add_folded(folded, text);
  if (folded.ends_with(' ')) folded.pop_back();
  return folded;
}

std::string_view Element::name() const { return node_ == nullptr ? std::string_view() : text_of(node_->name); }

std::string Element::attribute(const char* name) const {
  std::string value;
  if (const xmlAttr* const found = attribute_of(node_, name))
    for (const xmlNode* part = found->children; part != nullptr; part = part->next) value += text_of(part->content);
  return value;
}

bool Element::has_class(std::string_view word) const { return has_class_of({&word, 1}); }

bool Element::has_class_of(std::span<const std::string_view> words) const {
  const xmlAttr* const found = attribute_of(node_, "class");
  if (found == nullptr || found->children == nullptr) return false;
  std::string pieces;
  std::string_view rest = text_of(found->children->content);
  if (found->children->next != nullptr) rest = pieces = attribute("class");
  while (!rest.empty()) {
    const auto end = static_cast<std::size_t>(std::ranges::find_if(rest, is_space) - rest.begin());
    if (std::ranges::find(words, rest.substr(0, end)) != words.end()) return true;
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return false;
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
  if (const std::optional<std::string> text = utf8_of_wide(bytes)) return page(*text);
  const bool is_bounded = has_few_attributes(bytes);
  if (!is_bounded) bytes = bytes.substr(0, 0);
  bool is_cut = false;
  const bool is_plain = is_utf8(bytes);
  Markup markup(parsed_page(bytes, is_plain ? "UTF-8" : nullptr, &is_cut));
  if (const xmlDoc* document = markup.document_.get(); document != nullptr && !is_plain)
    if (const char* wider = document->encoding == nullptr ? "WINDOWS-1252" : wider_than(text_of(document->encoding)))
      markup = Markup(parsed_page(bytes, wider, &is_cut));
  markup.is_cut_ = is_cut || !is_bounded;
  return markup;
}

Markup Markup::xml(std::string_view bytes) {
  if (!has_few_attributes(bytes)) bytes = bytes.substr(0, 0);
  const std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxtPtr)> context(xmlNewParserCtxt(), xmlFreeParserCtxt);
  if (!context) return Markup(nullptr);
  std::size_t room = kLargestTree;
  context->_private = &room;
  context->sax->startElementNs = start_xml_element;
  context->sax->characters = characters;
  context->sax->comment = nullptr;
  context->sax->processingInstruction = nullptr;
  Markup markup(
      xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr, kXmlOptions));
  markup.is_cut_ = context->wellFormed == 0;
  return markup;
}

Element Markup::root() const { return document_ ? Element(xmlDocGetRootElement(document_.get())) : Element(); }

Element Markup::first(std::string_view name) const {
  Element at = root();
  while (at && !at.is(name)) at = at.next_within(root());
  return at;
}

void Markup::Free::operator()(xmlDoc* document) const { xmlFreeDoc(document); }

}  // namespace olh_import
