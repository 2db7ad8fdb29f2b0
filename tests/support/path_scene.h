// A locator and its search path, in a form that a test can compare and print: shortened.
#ifndef OLH_TESTS_PATH_SCENE_H
#define OLH_TESTS_PATH_SCENE_H

#include <ostream>
#include <string>
#include <vector>

#include "olh_doclist.h"
#include "scratch.h"

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

using Roots = std::vector<Root>;

class PathScene : public Scratch {
 protected:
  std::string at(const std::string& relative) const { return dir + "/" + relative; }

  // The whole search path, or the list that is given.
  Roots roots() const { return roots_in(list); }
  Roots roots_in(const OlhPathList* node) const {
    Roots all;
    for (; node != nullptr; node = node->next)
      all.push_back({shortened(node->path), shortened(node->html), shortened(node->pdf), shortened(node->parent)});
    return all;
  }
  // Its paths with a blank between them.
  std::string paths() const { return paths_in(list); }
  std::string paths_in(const OlhPathList* node) const {
    std::string all;
    for (; node != nullptr; node = node->next) all += (all.empty() ? "" : " ") + shortened(node->path);
    return all;
  }

  olh_docList locator;
  OlhPathList*& list = locator.mDocPathList;
};

}  // namespace olh_test

#endif
