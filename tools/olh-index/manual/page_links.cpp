#include "page_links.h"

#include <algorithm>
#include <vector>

namespace olh_index {

namespace {

constexpr std::size_t kLongestTag = 2000;
constexpr std::size_t kLongestText = 400;  // of a link, with its markup
constexpr std::size_t kLongestEntity = 10;

bool is_blank(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

// The value of an attribute in quotes; "" without one.
std::string_view attribute(std::string_view tag, std::string_view name) {
  for (std::size_t at = tag.find(name); at != std::string_view::npos; at = tag.find(name, at + 1)) {
    const std::string_view rest = tag.substr(at + name.size());
    if (at == 0 || !is_blank(tag[at - 1]) || rest.size() < 2 || rest[0] != '=') continue;
    if (rest[1] != '"' && rest[1] != '\'') continue;
    return rest.substr(2, rest.find(rest[1], 2) - 2);
  }
  return {};
}

int digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

std::string decoded(std::string_view text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool is_code =
        text[at] == '%' && at + 2 < text.size() && digit(text[at + 1]) >= 0 && digit(text[at + 2]) >= 0;
    plain += is_code ? static_cast<char>(digit(text[at + 1]) * 16 + digit(text[at + 2])) : text[at];
    if (is_code) at += 2;
  }
  return plain;
}

// The way to a page from the folder, for a way from another page; "" when it leads out of the folder.
std::string way_from(std::string_view page, std::string_view way) {
  std::vector<std::string_view> names;
  const auto go = [&names](std::string_view path) {
    while (!path.empty()) {
      const std::string_view name = path.substr(0, path.find('/'));
      if (name == ".." && names.empty()) return false;
      if (name == "..")
        names.pop_back();
      else if (!name.empty() && name != ".")
        names.push_back(name);
      path.remove_prefix(std::min(name.size() + 1, path.size()));
    }
    return true;
  };
  const std::size_t slash = page.rfind('/');
  if (!go(slash == std::string_view::npos ? "" : page.substr(0, slash)) || !go(way)) return "";
  std::string whole;
  for (const std::string_view name : names) whole.append(whole.empty() ? "" : "/").append(name);
  return whole;
}

}  // namespace

void each_link(std::string_view page, const std::function<void(const Link&)>& call) {
  for (std::size_t at = page.find("<a"); at != std::string_view::npos; at = page.find("<a", at + 2)) {
    const std::string_view from = page.substr(at, kLongestTag);
    const std::size_t end = from.find('>');
    if (from.size() < 3 || !is_blank(from[2]) || end == std::string_view::npos) continue;
    const std::string_view tag = from.substr(0, end);
    const std::string_view target = attribute(tag, "href");
    if (target.empty() || target.find(':') != std::string_view::npos || target[0] == '#' || target[0] == '/')
      continue;
    if (!attribute(tag, "rel").empty() || !attribute(tag, "accesskey").empty()) continue;
    const std::string_view text = page.substr(at + end + 1, kLongestText);
    call({target, text.substr(0, text.find("</a"))});
  }
}

LinkedPlace linked_place(std::string_view from, std::string_view target) {
  const std::size_t hash = target.find('#');
  std::string page = way_from(from, decoded(target.substr(0, target.find_first_of("?#"))));
  return {page == from ? "" : std::move(page),
          hash == std::string_view::npos ? "" : decoded(target.substr(hash + 1))};
}

// A tag leaves nothing; an entity ("&amp;") is no word.
std::string text_of_link(std::string_view markup) {
  std::string text;
  for (std::size_t at = 0; at < markup.size(); ++at) {
    const char sign = markup[at] == '<' ? '>' : markup[at] == '&' ? ';' : '\0';
    const std::size_t end = sign == '\0' ? at : markup.find(sign, at);
    if (sign == '\0' || (sign == ';' && end - at > kLongestEntity)) {
      text += markup[at];
      continue;
    }
    if (sign == ';') text += ' ';
    if (end == std::string_view::npos) break;
    at = end;
  }
  return text;
}

}  // namespace olh_index
