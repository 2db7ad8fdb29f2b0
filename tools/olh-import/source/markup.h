// Pages and XML files as trees of elements.
//
// Knows    the parser (libxml2): how encodings are found, that nothing is ever fetched and no entity of a document's own
//          is filled in, that elements nested too deeply are cut off.
// Not      what the elements mean.
// Owns     the tree; an Element is a place in it and lives as long.
// For      html_page, the readers.
#ifndef OLH_IMPORT_MARKUP_H
#define OLH_IMPORT_MARKUP_H

#include <libxml/tree.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace olh_import {

class Element {
 public:
  Element() = default;
  explicit Element(const xmlNode* node) : node_(node) {}

  // Whether there is one.
  explicit operator bool() const { return node_ != nullptr; }
  bool operator==(const Element&) const = default;

  // In a page in lower case; without a prefix ("toc:topic" is a "topic").
  std::string_view name() const;
  bool is(std::string_view name) const { return this->name() == name; }
  // "" without it.
  std::string attribute(const char* name) const;
  // Whether the attribute "class" has this word.
  bool has_class(std::string_view word) const;
  bool has_class_of(std::span<const std::string_view> words) const;
  // 1 to 6 for a heading of a page, else 0.
  int heading_level() const;
  bool is_heading() const { return heading_level() != 0; }
  // All text in it, white space folded to single blanks and none at the ends.
  std::string text() const;

  Element parent() const;
  Element first_child() const;
  Element next_sibling() const;
  // The next element in the order of the document that lies within `top`; without `into` its own children are passed over.
  Element next_within(Element top, bool into = true) const;

 private:
  friend void visit(Element top, class Visitor& visitor);
  const xmlNode* node_ = nullptr;
};

class Markup {
 public:
  // A page: always a tree, if an empty one. The encoding is what the page says; what is UTF-8 is taken for that.
  static Markup page(std::string_view bytes);
  // An XML file; without an element when it is none.
  static Markup xml(std::string_view bytes);

  Element root() const;
  // The first element of that name, in the order of the document.
  Element first(std::string_view name) const;
  // Whether the parser gave up before the end, or an XML file is none from some place on.
  bool is_cut() const { return is_cut_; }

 private:
  explicit Markup(xmlDoc* document) : document_(document) {}
  struct Free {
    void operator()(xmlDoc* document) const;
  };
  std::unique_ptr<xmlDoc, Free> document_;
  bool is_cut_ = false;
};

// A way through what is below an element, in the order of the document. Nothing nests on the stack.
class Visitor {
 public:
  virtual ~Visitor() = default;
  // Whether its children come too.
  virtual bool enter(Element) { return true; }
  virtual void leave(Element) {}  // of those whose children came
  virtual void text(std::string_view) {}
};
void visit(Element top, Visitor& visitor);

// Calls `take` with each element below `top`, and with how many elements of the name `nesting` it lies in below `top`.
void visit_nested(Element top, std::string_view nesting, const std::function<void(Element, int)>& take);

// The text of an element without that of some classes in it, and with plain blanks.
std::string text_without(Element element, std::initializer_list<std::string_view> classes);

// Text with its white space folded to single blanks, and none at the ends.
std::string folded_space(std::string_view text);
// The same piece by piece, where the last blank stays.
void add_folded(std::string& folded, std::string_view text);

}  // namespace olh_import

#endif
