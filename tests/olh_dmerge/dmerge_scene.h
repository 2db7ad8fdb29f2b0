// A documentation root to be made up by a test, and what the generator says and tells.
#ifndef OLH_TESTS_DMERGE_SCENE_H
#define OLH_TESTS_DMERGE_SCENE_H

#include <filesystem>
#include <string>
#include <vector>

#include "olh/dmerge.h"
#include "scratch.h"

namespace olh_test {

// What the callback heard, as paths below the root.
inline Words heard;
inline std::string heard_root;

extern "C" inline int hear(char* path) {
  heard.push_back(std::filesystem::path(path).lexically_relative(heard_root).string());
  return 7;
}

class DmergeScene : public Scratch {
 protected:
  DmergeScene() : root(make_directory("docs")) {
    heard.clear();
    heard_root = root;
  }
  ~DmergeScene() override { dmerge_init(); }

  std::string in_root(const std::string& relative) const { return root + "/" + relative; }
  std::string put(const std::string& relative, std::string_view text) const {
    return write("docs/" + relative, text);
  }
  std::string get(const std::string& relative) const { return read_file(in_root(relative)); }
  void make(const std::string& relative) const { make_directory("docs/" + relative); }

  // Everything that `work` prints, shortened.
  std::string printed_by(const std::function<void()>& work) const {
    testing::internal::CaptureStdout();
    work();
    return shortened(testing::internal::GetCapturedStdout());
  }
  // The same of a call that has to have this result.
  std::string printed_with(int result, const std::function<int()>& call) const {
    return printed_by([&] { EXPECT_EQ(call(), result); });
  }

  std::string root;
};

}  // namespace olh_test

#endif
