// Appending to a list of roots without walking it each time, and lists that free themselves.
//
// Knows    where a list ends.
// Not      what a root is; the exported shape of the list operations (class olh_docList).
// For      the files of this room that put a search path together.
#ifndef OLH_DOCLIST_PATH_LIST_H
#define OLH_DOCLIST_PATH_LIST_H

#include <string_view>

#include "olh_doclist.h"

namespace olh {

// Frees a node with its strings, not what follows it.
void release_node(OlhPathList* node) noexcept;

// The end of a list, found once. The list may grow only through this object while it is in use.
class PathListEnd {
 public:
  explicit PathListEnd(OlhPathList*& list) noexcept;
  // Appends a node with copies of the four strings. Returns false when memory is exhausted; nothing is linked then.
  bool try_append(std::string_view path, std::string_view html, std::string_view pdf,
                  std::string_view parent) noexcept;
  // The same, but throws std::bad_alloc then.
  void append(std::string_view path, std::string_view html, std::string_view pdf, std::string_view parent);
  // Appends a copy of each node of another list.
  void append_copy_of(const OlhPathList* list);

 private:
  OlhPathList** end_;
};

// A list that lives as long as a call.
class TemporaryPathList {
 public:
  TemporaryPathList() = default;
  ~TemporaryPathList();
  TemporaryPathList(const TemporaryPathList&) = delete;
  TemporaryPathList& operator=(const TemporaryPathList&) = delete;

  OlhPathList* head = nullptr;
};

}  // namespace olh

#endif
