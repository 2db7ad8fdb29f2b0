// A documentation root whose lists can be made without touching it.
//
// Knows    which files of a root the generator writes: those are missing in the shadow; everything else is there as a
//          symbolic link, so that nothing is copied.
// Not      what is in a list.
// Owns     a directory for temporary files, gone at the end of its life.
// For      list_trial; new_root, which copies pages without their lists.
#ifndef OLH_TOOLS_SHADOW_ROOT_H
#define OLH_TOOLS_SHADOW_ROOT_H

#include <filesystem>
#include <string>
#include <vector>

namespace olh {

// Whether the generator writes this file, given by its place below the root.
bool is_generated_list(const std::filesystem::path& relative);

class ShadowRoot {
 public:
  // Throws std::filesystem::filesystem_error when the directory cannot be made, or the root not be listed.
  explicit ShadowRoot(const std::string& root);
  ShadowRoot(const ShadowRoot&) = delete;
  ShadowRoot& operator=(const ShadowRoot&) = delete;
  ~ShadowRoot();

  const std::string& path() const { return path_; }
  // A text in which the shadow is called by the root's name.
  std::string unveiled(std::string text) const;

 private:
  std::string root_;
  std::string path_;
};

// How a list differs from the one that would be written.
struct ListChange {
  std::string file;  // below the root
  bool is_new = false;
  bool is_unreadable = false;  // no regular file, too large, or not to be read: nothing was compared
  int more = 0;                // lines that would be added
  int less = 0;                // lines that would go
};

// What making the lists would change: of each file that was written into the shadow, when it says something else in the
// root. The order of lines does not count, since it follows the order in which a file system lists names.
std::vector<ListChange> changes_in(const ShadowRoot& shadow, const std::string& root,
                                   const std::vector<std::string>& written);

}  // namespace olh

#endif
