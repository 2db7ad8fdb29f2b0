// Documentation roots made for measuring.
#ifndef OLH_BENCH_DMERGE_MADE_TREE_H
#define OLH_BENCH_DMERGE_MADE_TREE_H

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

// A root of `documents` HTML libraries and as many PDFs. Half of the PDFs share a library's name, a third of the rest
// stands in a portal's list, and the others have their titles behind random bytes.
struct TreeSize {
  std::size_t documents;
  std::size_t portals;
  std::size_t pdf_bytes;
};

struct MadeTree {
  std::filesystem::path root;
  std::filesystem::path needed_files;   // a list: what the rules need to read
  std::filesystem::path scanned_files;  // a list: the PDFs of these that are searched for a title
  std::size_t scanned;
};
MadeTree make_tree(const std::filesystem::path& directory, const TreeSize& size);

// Installs one more library in a tree, or removes it again.
void change_tree(const MadeTree& tree);

// Removes what a run of the generator has written.
void remove_lists(const MadeTree& tree);

// A list of PDFs that repeat one text.
std::filesystem::path make_repeats(const std::filesystem::path& directory, std::string_view text, std::size_t files,
                                   std::size_t bytes);

#endif
