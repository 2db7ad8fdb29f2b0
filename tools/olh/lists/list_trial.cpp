#include "list_trial.h"

#include <cstdio>

#include "list_failure.h"
#include "olh/dmerge.h"
#include "shared.h"

namespace olh {

ListTrial try_lists(const std::string& root) {
  const ShadowRoot shadow(root);
  ListTrial trial;
  StreamInMemory memory(stdout);
  trial.run = make_lists(
      shadow.path(), [](const std::string&) {}, false);
  trial.messages = lines_of(shadow.unveiled(memory.text()));
  if (trial.run.result != DMERGE_RESULT_OK) trial.failure = shadow.unveiled(sentence_about_failure(trial.run));
  trial.changes = changes_in(shadow, root, trial.run.files);
  return trial;
}

std::string state_of(const ListChange& change) {
  if (change.is_new) return "is missing";
  if (change.is_unreadable) return "cannot be read, or is no regular file";
  return "is out of date: " + counted(static_cast<std::size_t>(change.more), "line", "lines") + " to add, " +
         counted(static_cast<std::size_t>(change.less), "line", "lines") + " to remove";
}

}  // namespace olh
