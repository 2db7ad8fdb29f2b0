#include "manual_name.h"

#include <algorithm>

#include "words.h"

namespace olh_viewers {

namespace {

// Directories below htmldocs that are no manual, or not the one of whoever makes a root.
constexpr const char* kTakenNames[] = {"QEL", "qel_html_help", "qelhelp.htm", "_a_search_tips"};

bool is_name_character(unsigned char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_' ||
         c == '.';
}

}  // namespace

std::string refusal_of_manual_name(const std::string& name) {
  if (name.empty() || !std::ranges::all_of(name, is_name_character) || name.starts_with('.') || name.starts_with('-'))
    return "'" + name + "' names no document: letters, digits, '-', '_' and '.' do, not beginning with '-' or '.'.";
  if (name.ends_with("_td")) return "'" + name + "' would be looked for among the portals: their names end in '_td'.";
  if (lower_case(name).ends_with(".pdf")) return "'" + name + "' would be looked for among the PDFs.";
  if (std::ranges::count(kTakenNames, name) != 0)
    return "'" + name + "' has another meaning in a documentation root.";
  return "";
}

std::string refusal_of_root(const std::string& root) {
  if (root.empty()) return "the name of the root is empty.";
  if (root.starts_with("http://") || root.starts_with("https://"))
    return root + " is an address: a root is made where its files lie, in a directory.";
  if (root.find(':') != std::string::npos)
    return "':' separates the roots of a search path: no root has it in its name.";
  return "";
}

}  // namespace olh_viewers
