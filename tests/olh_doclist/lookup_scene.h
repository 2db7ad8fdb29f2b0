// What the tests of the lookups share: a locator with roots of the test's choice, and the files that it asks about. All that
// is found and asked about is shortened.
#ifndef OLH_TESTS_LOOKUP_SCENE_H
#define OLH_TESTS_LOOKUP_SCENE_H

#include <functional>
#include <ostream>
#include <string>

#include "olh/support.h"
#include "olh_doclist.h"
#include "scratch.h"

namespace olh_test {

struct Found {
  int result;
  std::string location;
  std::string viewer;
  bool operator==(const Found&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Found& found) {
  return out << "{" << found.result << ", " << found.location << ", " << found.viewer << "}";
}

inline constexpr char kUntouched[] = "untouched";

class LookupScene : public Scratch {
 protected:
  // Appends a root to the search path, whether it exists or not.
  void add_root(std::string path, std::string html = "", std::string pdf = "") {
    locator.AddTail(locator.mDocPathList, path.data(), html.data(), pdf.data(), nullptr);
  }
  // Calls a lookup with buffers that are not empty.
  Found find(const std::function<int(char* out, char* viewer)>& lookup) const {
    char out[OLH_BUFFER_SIZE] = "untouched";
    char viewer[OLH_BUFFER_SIZE] = "untouched";
    const int result = lookup(out, viewer);
    return {result, shortened(out), viewer};
  }
  Found pdf(const std::string& name, int fallback = 1) {
    return find([&](char* out, char* viewer) { return locator.FindPdfDoc(out, name.c_str(), viewer, fallback); });
  }
  Found html(const std::string& name, int fallback = 1) {
    return find([&](char* out, char* viewer) { return locator.FindHtmlDoc(out, name.c_str(), viewer, fallback); });
  }
  // The names that are given to access() by `work`, in order (lookup_scene.cpp stands in for that function).
  Words tested_by(const std::function<void()>& work) const;

  std::string root_searched_last() const { return shortened(locator.mCurrentDocPath); }

  olh_docList locator;
};

}  // namespace olh_test

#endif
