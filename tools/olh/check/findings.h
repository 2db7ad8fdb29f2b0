// What the checks of a documentation root find.
//
// Knows    three levels: an error is what a reader runs into, a warning what will disappoint some of them, a note what
//          could not be checked. That a sentence and the values in it are two things: findings with one sentence are of
//          one kind, and the values can be shortened.
// Not      how findings are printed (check_command, findings_in_short).
// For      check_command and the checks.
#ifndef OLH_TOOLS_FINDINGS_H
#define OLH_TOOLS_FINDINGS_H

#include <string>
#include <utility>
#include <vector>

namespace olh {

enum class Level { kError, kWarning, kNote };

// A file below the root, or the root itself; its line, or 0 for the file as such.
struct FoundIn {
  std::string file;
  int line = 0;
};

struct Finding {
  Level level = Level::kNote;
  std::string check;  // the name of the check that found it
  FoundIn where;
  std::string kind;                 // goes on after the file's name, without the full stop; "{}" for each value
  std::vector<std::string> values;  // in their order
};

const char* name_of(Level level);

// "FILE is ...", or "FILE, line 3: ...". What is longer than `longest_value`, in bytes, ends in "...".
std::string sentence_of(const Finding& finding, std::size_t longest_value = std::string::npos);

class Findings {
 public:
  // What follows is found by that check.
  void begin(std::string check) { check_ = std::move(check); }

  template <typename... Values>
  void error(FoundIn where, std::string kind, const Values&... values) {
    all_.push_back({Level::kError, check_, std::move(where), std::move(kind), {std::string(values)...}});
  }
  template <typename... Values>
  void warning(FoundIn where, std::string kind, const Values&... values) {
    all_.push_back({Level::kWarning, check_, std::move(where), std::move(kind), {std::string(values)...}});
  }
  template <typename... Values>
  void note(FoundIn where, std::string kind, const Values&... values) {
    all_.push_back({Level::kNote, check_, std::move(where), std::move(kind), {std::string(values)...}});
  }

  const std::vector<Finding>& all() const { return all_; }

 private:
  std::string check_;
  std::vector<Finding> all_;
};

}  // namespace olh

#endif
