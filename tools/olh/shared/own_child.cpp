#include "own_child.h"

#include "environment.h"

namespace olh {

olh_viewers::Heard heard_from_own_child(std::vector<std::string> words) {
  words.insert(words.begin(), own_program());
  return olh_viewers::heard_from(words, kSecondsOfPatience * 1000);
}

std::string no_answer_in_time() {
  return "does not answer within " + std::to_string(kSecondsOfPatience) + " seconds";
}

}  // namespace olh
