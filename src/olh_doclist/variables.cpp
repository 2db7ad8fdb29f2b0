// The variable store, and what first use reads through it.
//
// Knows    that a stored variable shadows the environment, and that an empty value is no value.
// Not      the variables that are read past the store: OLH_DEBUG, HOME, PATH.
// Owns     every OlhVariable node with its two strings.
#include <cstdlib>

#include "ascii_case.h"
#include "bounded_text.h"
#include "environment.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "owned_text.h"

namespace {

// The link that points to the node of that name; the link at the end of the list when there is none.
OlhVariable** find_link(OlhVariable*& head, std::string_view name) noexcept {
  OlhVariable** link = &head;
  while (*link != nullptr && olh::text_of((*link)->name) != name) link = &(*link)->next;
  return link;
}

void release(OlhVariable* node) noexcept {
  std::free(node->name);
  std::free(node->value);
  std::free(node);
}

void unlink(OlhVariable** link) noexcept {
  OlhVariable* const node = *link;
  *link = node->next;
  release(node);
}

bool replace_value(OlhVariable& node, const char* value) noexcept {
  olh::OwnedText copy = olh::own_text(value);
  if (copy == nullptr) return false;
  std::free(node.value);
  node.value = copy.release();
  return true;
}

bool put_in_front(OlhVariable*& head, const char* name, const char* value) noexcept {
  auto node = olh::own_record<OlhVariable>();
  olh::OwnedText name_copy = olh::own_text(name);
  olh::OwnedText value_copy = olh::own_text(value);
  if (node == nullptr || name_copy == nullptr || value_copy == nullptr) return false;
  node->name = name_copy.release();
  node->value = value_copy.release();
  node->next = head;
  head = node.release();
  return true;
}

// Returns false when memory is exhausted; the store is then as it was.
bool store(OlhVariable*& head, const char* name, const char* value) noexcept {
  OlhVariable** const link = find_link(head, name);
  if (!olh::is_empty(value)) return *link != nullptr ? replace_value(**link, value) : put_in_front(head, name, value);
  if (*link != nullptr) unlink(link);
  return true;
}

}  // namespace

int olh_docList::GetOlhVariable(char* value, const char* name) {
  if (value == nullptr || olh::is_empty(name)) {
    olh::clear_buffer(value);
    print_debug("olh_docList::GetOlhVariable: failed: invalid args\n");
    return 0;
  }
  print_debug("olh_docList::GetOlhVariable: %s\n", name);
  const char* const found = FindOlhVariable(name);
  // A value that does not fit counts as not set: half a path would be another path.
  if (!olh::is_empty(found) && olh::write_buffer(value, found)) {
    print_debug("olh_docList::GetOlhVariable: done\n");
    return 1;
  }
  olh::clear_buffer(value);
  print_debug("olh_docList::GetOlhVariable: failed\n");
  return 0;
}

// The value itself, which the next change may free; null for none. Writes no debug lines.
const char* olh_docList::FindOlhVariable(const char* name) {
  const OlhVariable* const stored = *find_link(mVariableList, name);
  return stored != nullptr ? stored->value : olh::environment_variable(name);
}

int olh_docList::SetOlhVariable(const char* name, const char* value) {
  print_debug("olh_docList::SetOlhVariable\n");
  if (olh::is_empty(name) || !store(mVariableList, name, value)) {
    print_debug("olh_docList::SetOlhVariable: failed\n");
    return 0;
  }
  print_debug("olh_docList::SetOlhVariable: done\n");
  return 1;
}

void olh_docList::ClearOlhVariables(OlhVariable*& head) {
  print_debug("olh_docList::ClearOlhVariables\n");
  while (head != nullptr) unlink(&head);
  print_debug("olh_docList::ClearOlhVariables: done\n");
}

// Runs once per process. The trace log comes first, so that it shows what the settings after it cause.
void olh_docList::CheckOlhVariables() {
  static constexpr std::string_view kDisplayTypes[] = {"normal", "topic", "popup"};
  print_debug("olh_docList::CheckOlhVariables\n");
  char value[OLH_BUFFER_SIZE];
  if (GetOlhVariable(value, "OLH_LOG_HELP") == 1) StartOlhLog(value);
  if (GetOlhVariable(value, "QEL_DOC_TYPE") == 1) OlhSetViewerOrder(value);
  if (GetOlhVariable(value, "QEL_OLH_DISPLAY_TYPE") == 1) {
    olh::lower_ascii(value);
    for (int type = OLH_DISPLAY_NORMAL; type <= OLH_DISPLAY_POPUP; ++type) {
      if (kDisplayTypes[type] != value) continue;
      if (mbDisplayTypeFixed == 0) mDisplayType = type;
      mbDisplayTypeFixed = 1;
    }
  }
  print_debug("olh_docList::CheckOlhVariables: done\n");
}
