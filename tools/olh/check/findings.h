// What a check of a documentation root has to say, one finding after the other.
//
// Knows    three levels: an error is what a reader runs into, a warning what will disappoint some of them, a note what
//          could not be told.
// Not      how findings are printed (check_command).
// For      check and its checks.
#ifndef OLH_TOOLS_FINDINGS_H
#define OLH_TOOLS_FINDINGS_H

#include <string>
#include <utility>
#include <vector>

namespace olh {

enum class Level { kNote, kWarning, kError };

struct Finding {
  Level level = Level::kNote;
  std::string check;     // the name of the check that found it
  std::string file;      // below the root, or the root itself
  int line = 0;          // 0: the file as such
  std::string sentence;  // goes on after the file's name, without the full stop
};

class Findings {
 public:
  // What follows is found by that check.
  void begin(std::string check) { check_ = std::move(check); }

  void error(std::string file, std::string sentence, int line = 0) {
    add(Level::kError, std::move(file), std::move(sentence), line);
  }
  void warning(std::string file, std::string sentence, int line = 0) {
    add(Level::kWarning, std::move(file), std::move(sentence), line);
  }
  void note(std::string file, std::string sentence, int line = 0) {
    add(Level::kNote, std::move(file), std::move(sentence), line);
  }

  const std::vector<Finding>& all() const { return all_; }

 private:
  void add(Level level, std::string file, std::string sentence, int line) {
    all_.push_back({level, check_, std::move(file), line, std::move(sentence)});
  }

  std::string check_;
  std::vector<Finding> all_;
};

}  // namespace olh

#endif
