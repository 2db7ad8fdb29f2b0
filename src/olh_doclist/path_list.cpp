// The search path: the ordered list of documentation roots, and the two lists it is rebuilt from.
//
// Knows    how nodes are added, moved and freed, and when two roots are the same: byte for byte.
// Not      how a path string splits (path_string), where roots come from (path_sources), whether one answers (url_probe).
// Owns     every OlhPathList node and its four strings. What GetOlhDocPath hands out points into the first node.
#include "path_list.h"

#include <cstdlib>
#include <new>
#include <unordered_map>
#include <utility>

#include "bounded_text.h"
#include "owned_text.h"

namespace olh {

namespace {

// A node with copies of the four strings; null when memory is exhausted.
OlhPathList* make_node(std::string_view path, std::string_view html, std::string_view pdf,
                       std::string_view parent) noexcept {
  auto node = own_record<OlhPathList>();
  OwnedText copies[] = {own_text(path), own_text(html), own_text(pdf), own_text(parent)};
  if (node == nullptr) return nullptr;
  for (const OwnedText& copy : copies)
    if (copy == nullptr) return nullptr;
  node->path = copies[0].release();
  node->html = copies[1].release();
  node->pdf = copies[2].release();
  node->parent = copies[3].release();
  return node.release();
}

// An override that only the later of two equal roots has goes to the earlier one.
void inherit(char*& earlier, char*& later) noexcept {
  if (is_empty(earlier) && !is_empty(later)) std::swap(earlier, later);
}

void clear_list(OlhPathList*& list) noexcept {
  while (list != nullptr) release_node(std::exchange(list, list->next));
}

}  // namespace

void release_node(OlhPathList* node) noexcept {
  if (node == nullptr) return;
  std::free(node->path);
  std::free(node->html);
  std::free(node->pdf);
  std::free(node->parent);
  std::free(node);
}

PathListEnd::PathListEnd(OlhPathList*& list) noexcept : end_(&list) {
  while (*end_ != nullptr) end_ = &(*end_)->next;
}

bool PathListEnd::try_append(std::string_view path, std::string_view html, std::string_view pdf,
                             std::string_view parent) noexcept {
  if (path.ends_with('/')) path.remove_suffix(1);
  OlhPathList* const node = make_node(path, html, pdf, parent);
  if (node == nullptr) return false;
  *end_ = node;
  end_ = &node->next;
  return true;
}

void PathListEnd::append(std::string_view path, std::string_view html, std::string_view pdf,
                         std::string_view parent) {
  if (!try_append(path, html, pdf, parent)) throw std::bad_alloc();
}

void PathListEnd::append_copy_of(const OlhPathList* list) {
  for (; list != nullptr; list = list->next)
    append(text_of(list->path), text_of(list->html), text_of(list->pdf), text_of(list->parent));
}

TemporaryPathList::~TemporaryPathList() { clear_list(head); }

}  // namespace olh

int olh_docList::AddTail(OlhPathList*& list, char* path, char* html, char* pdf, char* parent) {
  const std::string_view root = olh::text_of(path);
  const bool linked =
      olh::PathListEnd(list).try_append(root, olh::text_of(html), olh::text_of(pdf), olh::text_of(parent));
  if (root.ends_with('/')) path[root.size() - 1] = '\0';
  return linked ? OLH_RESULT_OK : OLH_RESULT_FAILED;
}

int olh_docList::Push(OlhPathList*& list, char* path, char* html, char* pdf, char* parent) {
  OlhPathList* const node =
      olh::make_node(olh::text_of(path), olh::text_of(html), olh::text_of(pdf), olh::text_of(parent));
  if (node == nullptr) return OLH_RESULT_FAILED;
  node->next = list;
  list = node;
  return OLH_RESULT_OK;
}

int olh_docList::Pop(OlhPathList*& list, OlhPathList*& node) {
  node = list;
  if (list != nullptr) list = list->next;
  return OLH_RESULT_OK;
}

void olh_docList::ClearPathList(OlhPathList*& list) { olh::clear_list(list); }

void olh_docList::ClearDefaultPathList() {
  if (mDefaultPathList == nullptr) return;
  ClearPathList(mDefaultPathList->overrideList);
  ClearPathList(mDefaultPathList->environmentList);
}

void olh_docList::CopyEnvironmentDefaults(int which) {
  if (mDefaultPathList == nullptr) return;
  if (which == 1) olh::PathListEnd(mDocPathList).append_copy_of(mDefaultPathList->overrideList);
  if (which == 2) olh::PathListEnd(mDocPathList).append_copy_of(mDefaultPathList->environmentList);
}

// The first occurrence of a root keeps its place and gains, in order, the overrides that only its repetitions have.
void olh_docList::RemoveDuplicates(OlhPathList*& list) {
  std::unordered_map<std::string_view, OlhPathList*> first_of;
  for (OlhPathList** link = &list; *link != nullptr;) {
    OlhPathList* const node = *link;
    const auto [found, is_first] = first_of.try_emplace(olh::text_of(node->path), node);
    if (is_first) {
      link = &node->next;
      continue;
    }
    olh::inherit(found->second->html, node->html);
    olh::inherit(found->second->pdf, node->pdf);
    *link = node->next;
    olh::release_node(node);
  }
  for (OlhPathList* node = list; node != nullptr; node = node->next)
    if (!olh::is_empty(node->parent) && olh::text_of(node->path) == node->parent) *node->parent = '\0';
}
