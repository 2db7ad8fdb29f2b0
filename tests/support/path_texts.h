// Search paths in a form that a test can compare and print.
#ifndef OLH_TESTS_PATH_TEXTS_H
#define OLH_TESTS_PATH_TEXTS_H

#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "olh_doclist.h"

namespace olh_test {

struct Root {
  std::string path = {};
  std::string html = {};
  std::string pdf = {};
  std::string parent = {};
  bool operator==(const Root&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Root& root) {
  return out << "{" << root.path << ", " << root.html << ", " << root.pdf << ", " << root.parent << "}";
}

inline std::vector<Root> roots_of(const OlhPathList* node) {
  std::vector<Root> roots;
  for (; node != nullptr; node = node->next) roots.push_back({node->path, node->html, node->pdf, node->parent});
  return roots;
}

// The paths with a blank between them.
inline std::string paths_of(const OlhPathList* node) {
  std::string paths;
  for (; node != nullptr; node = node->next) paths += (paths.empty() ? "" : " ") + std::string(node->path);
  return paths;
}

// What follows `prefix` in each debug line that begins with it.
inline std::vector<std::string> lines_after(const std::string& prefix, const std::string& said) {
  std::vector<std::string> rests;
  std::istringstream lines(said);
  for (std::string line; std::getline(lines, line);)
    if (line.rfind(prefix, 0) == 0) rests.push_back(line.substr(prefix.size()));
  return rests;
}

}  // namespace olh_test

#endif
