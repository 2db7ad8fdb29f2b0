// A search path from the environment or an options file, over directories of the disk and web servers: what it offers, in
// which order, and what is left of repeated roots.
#include <algorithm>

#include "fuzz.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "web.h"

namespace {

using Roots = std::vector<std::string>;

std::string without_double_slashes(std::string text) {
  const auto begin = text.begin() + (text.starts_with("http://") ? 7 : 0);
  text.erase(std::unique(begin, text.end(), [](char a, char b) { return a == '/' && b == '/'; }), text.end());
  return text;
}

std::string cleaned(std::string element) {
  element.erase(0, std::min(element.find_first_not_of(' '), element.size()));
  element.erase(element.find_last_not_of(' ') + 1);
  dirslash(element.data());
  return without_double_slashes(element.c_str());
}

Roots elements_of(const std::string& paths) {
  Roots elements(1);
  for (const char c : paths) {
    if (c == ':')
      elements.emplace_back();
    else
      elements.back() += c;
  }
  std::erase(elements, "");
  for (std::string& element : elements) element = cleaned(element);
  return elements;
}

// What the rule for torn URLs offers, element by element.
Roots plain_roots(olh_docList& locator, const std::string& paths, int& result) {
  Roots roots;
  std::string host;  // that was rejected by itself
  bool behind_scheme = false;
  bool behind_host = false;
  for (std::string element : elements_of(paths)) {
    if (element == "http" || element.starts_with("http://")) {
      behind_scheme = true;
    } else if (behind_scheme) {
      host = element = "http:/" + element;
      behind_scheme = false;
      behind_host = true;
    } else if (behind_host) {
      behind_host = false;
      if (!element.empty() && std::isdigit(static_cast<unsigned char>(element[0])) != 0) {
        element = host + ":" + element;
        host.clear();
      }
    }
    if (locator.ValidDocPath(element.c_str()) != 1) {
      result = OLH_RESULT_NOT_FOUND;
      continue;
    }
    if (!host.empty()) behind_host = false;
    host.clear();
    if (element.ends_with('/')) element.pop_back();
    roots.push_back(element);
  }
  return roots;
}

Roots roots_in(const OlhPathList* list) {
  Roots roots;
  for (; list != nullptr; list = list->next) roots.emplace_back(list->path);
  return roots;
}

// "@" stands for a directory in which some names are roots.
std::string with_directory(const std::string& text) {
  static const std::string directory = [] {
    for (const char* root : {"a", "b b", "8080"})
      std::filesystem::create_directories(scratch() + "/" + root + "/pdfdocs");
    return scratch() + "/";
  }();
  std::string paths;
  for (const char c : text) paths += c == '@' ? directory : std::string(1, c);
  return paths;
}

}  // namespace

void try_input(const std::string& input) {
  const std::vector<std::string> parts = parts_of(input, 2);
  const std::string paths = with_directory(parts[1].c_str());
  answer_with(parts[0].size() % 2 == 0 ? "HTTP/1.1 200 OK\r\n" : "HTTP/1.1 404 Not Found\r\n");
  olh_docList locator;
  std::string copy = paths;
  std::vector<char> single(paths.size() + 1);
  locator.RemoveDuplicateSlash(copy.data(), single.data());
  expect(single.data() == without_double_slashes(paths), "no slash follows another");

  int expected = OLH_RESULT_OK;
  const Roots roots = plain_roots(locator, paths, expected);
  expect(locator.SplitString(copy.data(), nullptr, nullptr, locator.mDocPathList, nullptr) == expected, "the result");
  expect(roots_in(locator.mDocPathList) == roots, "the roots in their order");
  locator.RemoveDuplicates(locator.mDocPathList);
  Roots once;
  for (const std::string& root : roots)
    if (std::find(once.begin(), once.end(), root) == once.end()) once.push_back(root);
  expect(roots_in(locator.mDocPathList) == once, "each root once");
}
