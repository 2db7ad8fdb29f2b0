// The search path when memory runs out while it is put together anew.
#include <functional>
#include <new>
#include <string>

#include "bounded_text.h"
#include "failing_allocator.h"
#include "path_scene.h"

namespace {

class SearchPathMemory : public olh_test::PathScene {
 protected:
  SearchPathMemory() {
    for (const char* const name : {"first", "env", "host", "new"}) make_root(name);
    set("QEL_OVERRIDE_DOC_PATH", at("first"));
    set("QEL_DOC_PATH", at("env"));
    locator.AddEnvironmentVariables();
    locator.SetOlhDocPath(at("host").c_str());
    olh::write_buffer(locator.mCurrentDocPath, at("host"));  // as a lookup leaves it
  }

  // Lets each allocation of a change fail in turn, until none is left to fail.
  void exhaust(const std::function<void()>& change) {
    const std::string before = state();
    for (long successes = 0;; ++successes) {
      bool whole = true;
      olh_test::fail_allocations_after(successes);
      try {
        change();
      } catch (const std::bad_alloc&) {
        whole = false;
      }
      const bool failed = olh_test::allocations_asked() > successes;
      olh_test::fail_allocations_after(-1);
      if (!failed) return;
      ASSERT_FALSE(whole) << "after " << successes;
      ASSERT_EQ(state(), before) << "after " << successes;
    }
  }
  std::string state() const {
    return paths() + ", host " + locator.mLastDocPath + ", in use " + locator.mCurrentDocPath + ", environment " +
           paths_in(locator.mDefaultPathList->overrideList) + " " +
           paths_in(locator.mDefaultPathList->environmentList) + " " + std::to_string(locator.mbEnvironmentAdded) +
           std::to_string(locator.mbAddingEnvironment);
  }
};

TEST_F(SearchPathMemory, AHostPathThatCouldNotBeSetLeavesTheOldOne) {
  exhaust([this] { locator.SetOlhDocPath(at("new").c_str()); });
  EXPECT_EQ(paths(), "@/first @/new @/env");
}

TEST_F(SearchPathMemory, ARootThatCouldNotBeAppendedIsAFailure) {
  OlhPathList* roots = nullptr;
  char path[] = "/opt/docs/";
  olh_test::fail_allocations_after(0);
  const int result = locator.AddTail(roots, path, nullptr, nullptr, nullptr);
  olh_test::fail_allocations_after(-1);
  EXPECT_EQ(result, OLH_RESULT_FAILED);
  EXPECT_EQ(roots, nullptr);
}

TEST_F(SearchPathMemory, AnAlternatePathThatCouldNotBeSetLeavesTheHostsRoots) {
  exhaust([this] { locator.SetAltDocPath(at("new").c_str()); });
  EXPECT_EQ(paths(), "@/new @/first @/host @/env");
}

TEST_F(SearchPathMemory, AnEnvironmentThatCouldNotBeReadIsNotTheHosts) {
  bool whole = false;
  for (long successes = 0; !whole; ++successes) {
    olh_docList other;
    olh_test::fail_allocations_after(successes);
    try {
      other.AddEnvironmentVariables();
    } catch (const std::bad_alloc&) {
    }
    whole = olh_test::allocations_asked() <= successes;
    olh_test::fail_allocations_after(-1);
    ASSERT_STREQ(other.mLastDocPath, "") << "after " << successes;
  }
}

}  // namespace
