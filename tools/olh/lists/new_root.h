// Documentation made from the pages that came with this program: a root, or a manual in one that is there.
//
// Knows    where those pages lie, which of them every root wants, and how the template of a manual is filled in.
// Not      which names and titles will do (new_command).
// Owns     the directory beside the new root in which it is put together, until the root is whole.
// For      new, prepare-root.
#ifndef OLH_TOOLS_NEW_ROOT_H
#define OLH_TOOLS_NEW_ROOT_H

#include <filesystem>
#include <optional>
#include <string>

namespace olh {

struct ShippedPages {
  std::filesystem::path docs;             // the documentation root of the project
  std::filesystem::path template_manual;  // a manual to fill in, and the document list of a portal
  std::filesystem::path tools;            // the scripts for contents and PDFs
};

struct NewManual {
  std::string name;
  std::string title;
};

// What is said where they are not installed.
inline constexpr const char* kPagesAreMissing =
    "the pages that a manual is made from are not installed beside this program: the package olh-doc has them.";

// The pages in the installation, or the build, that this program belongs to; nothing when they are not there.
std::optional<ShippedPages> shipped_pages();

// The PDF that a root shows to those who have only a PDF reader and ask for what is missing; a build may be without it.
inline constexpr const char* kNotFoundPdf = "pdfdocs/qeldoc_notfound.pdf";

// The file in which a portal names its documents.
inline constexpr const char* kPortalDocuments = "tomedecks/qel_td/js/doclist.js";

// Makes `root`, which must not exist, its lists included, and the directories above it. It appears in one step: when that
// fails nothing but those is left, and a std::runtime_error says why.
void make_root(const std::filesystem::path& root, const ShippedPages& pages, const NewManual& manual);

// Makes `root` without a manual, as above; or puts into a root that is there what the pages of a manual read and it lacks,
// and what else every root wants, portals first of all.
void make_bare_root(const std::filesystem::path& root, const ShippedPages& pages);
void complete_root(const std::filesystem::path& root, const ShippedPages& pages, bool with_portals);

// Puts the manual into `root`, which is one and must not have it, with what its pages read and the root lacks, and makes
// the root's lists anew. What is there stays as it is; a std::runtime_error says what failed.
void add_manual(const std::filesystem::path& root, const ShippedPages& pages, const NewManual& manual);

}  // namespace olh

#endif
