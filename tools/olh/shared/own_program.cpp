#include "own_program.h"

#include "environment.h"

namespace olh {

namespace fs = std::filesystem;

fs::path own_data() {
  const fs::path programs = fs::path(own_program()).parent_path();
  for (const fs::path& data : {programs / OLH_DATA_FROM_PROGRAMS, programs / ".."}) {
    std::error_code failed;
    if (fs::exists(data / "docs/htmldocs/olh_manual/index.htm", failed)) return fs::canonical(data, failed);
  }
  return {};
}

std::string own_root() {
  const fs::path data = own_data();
  return data.empty() ? "" : (data / "docs").string();
}

olh_viewers::Heard heard_from_own_child(std::vector<std::string> words) {
  words.insert(words.begin(), own_program());
  return olh_viewers::heard_from(words, kSecondsOfPatience * 1000);
}

std::string no_answer_in_time() {
  return "does not answer within " + std::to_string(kSecondsOfPatience) + " seconds";
}

}  // namespace olh
