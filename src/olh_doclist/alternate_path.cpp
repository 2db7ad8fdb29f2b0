// The alternate documentation location: written into the tree's options file, read back from it, and put in front of
// the search path.
//
// Knows    the order of the steps: the file belongs to the entry that is first before them, the new front takes its
//          overrides from the entry that is first after the rebuild.
// Not      how a string splits (path_string), where the other roots come from (path_sources), how the file is written
//          (option_file_write).
// For      the wrappers.
#include <new>
#include <string>
#include <vector>

#include "bounded_text.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "option_files.h"
#include "path_list.h"
#include "root_options.h"
#include "search_path_change.h"

namespace olh {

namespace {

char kNothing[] = "";

std::string joined(const OlhPathList* list) {
  std::string paths;
  for (; list != nullptr; list = list->next) paths.append(paths.empty() ? "" : ":").append(text_of(list->path));
  return paths;
}

// Puts roots in front, in their order, with the overrides and the parent tree of the entry that was first.
void put_in_front(olh_docList& locator, const OlhPathList* roots) {
  std::vector<const OlhPathList*> order;
  for (; roots != nullptr; roots = roots->next) order.push_back(roots);
  for (auto root = order.rbegin(); root != order.rend(); ++root) {
    const OlhPathList* const first = locator.mDocPathList;
    const int pushed =
        locator.Push(locator.mDocPathList, (*root)->path, first == nullptr ? kNothing : first->html,
                     first == nullptr ? kNothing : first->pdf, first == nullptr ? kNothing : first->parent);
    if (pushed != OLH_RESULT_OK) throw std::bad_alloc();
  }
}

const char* shown(const char* text) noexcept { return is_empty(text) ? "(default)" : text; }

void show_search_path(const OlhPathList* entry) {
  for (; entry != nullptr; entry = entry->next)
    print_debug("olh_docList::SetAltDocPath: docPath: path: %s html: %s pdf: %s parent: %s\n",
                entry->path == nullptr ? "" : entry->path, shown(entry->html), shown(entry->pdf),
                shown(entry->parent));
}

}  // namespace

}  // namespace olh

int olh_docList::GetAltDocPath(char* out) {
  if (mDocPathList == nullptr) {
    olh::clear_buffer(out);
    return OLH_RESULT_OK;
  }
  const std::string_view tree = olh::tree_of(*mDocPathList);
  if (tree.empty()) return OLH_RESULT_IO;
  std::string name = std::string(tree) + pathslash + olh::kRootOptionsName;
  std::string file(name.size() + 1, '\0');
  RemoveDuplicateSlash(name.data(), file.data());
  char paths[OLH_BUFFER_SIZE] = "";
  char html[OLH_BUFFER_SIZE] = "";
  char pdf[OLH_BUFFER_SIZE] = "";
  ReadIniFile(file.data(), paths, html, pdf);
  olh::write_buffer(out, paths);
  return OLH_RESULT_OK;
}

// What was rejected outweighs what could not be written; the accepted roots are in use either way.
int olh_docList::SetAltDocPath(const char* paths) {
  if (mDocPathList == nullptr) return OLH_RESULT_NOT_FOUND;
  std::string copy(olh::text_of(paths));
  olh::TemporaryPathList accepted;
  const int split = SplitString(copy.data(), olh::kNothing, olh::kNothing, accepted.head, olh::kNothing);
  const int written = SetIniFile(3, olh::joined(accepted.head).c_str(), olh::kTreeFile);
  olh::SearchPathChange change(*this, olh::SearchPathChange::Also::kEnvironmentLists);
  olh::gather_search_path(*this, change.host_roots());
  olh::put_in_front(*this, accepted.head);
  RemoveDuplicates(mDocPathList);
  change.keep();
  olh::show_search_path(mDocPathList);
  return split != OLH_RESULT_OK ? split : written;
}
