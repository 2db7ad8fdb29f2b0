// The checks of a documentation root: each finds one kind of fault, and says so in findings, one after the other.
//
// Knows    three levels: an error is what a reader runs into, a warning what will disappoint some of them, a note what
//          could not be told.
// Not      how findings are printed (check_command).
// For      check_command, whose table names every check once, and the checks themselves.
#ifndef OLH_TOOLS_CHECKS_H
#define OLH_TOOLS_CHECKS_H

#include <string>
#include <utility>
#include <vector>

#include "checked_root.h"

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

using Check = void (*)(const CheckedRoot& root, Findings& findings);

// check_manuals.cpp
void check_start_pages(const CheckedRoot& root, Findings& findings);
void check_topic_tables(const CheckedRoot& root, Findings& findings);
void check_topic_lines(const CheckedRoot& root, Findings& findings);
void check_topic_pages(const CheckedRoot& root, Findings& findings);

// check_pdfs.cpp
void check_destinations(const CheckedRoot& root, Findings& findings);
void check_pdf_titles(const CheckedRoot& root, Findings& findings);
void check_pdf_endings(const CheckedRoot& root, Findings& findings);

// check_portals.cpp
void check_portal_list(const CheckedRoot& root, Findings& findings);
void check_portal_files(const CheckedRoot& root, Findings& findings);
void check_portal_documents(const CheckedRoot& root, Findings& findings);

// check_root.cpp
void check_titles(const CheckedRoot& root, Findings& findings);
void check_lists(const CheckedRoot& root, Findings& findings);
void check_options(const CheckedRoot& root, Findings& findings);
void check_letter_case(const CheckedRoot& root, Findings& findings);

// check_tags.cpp
void check_tags(const CheckedRoot& root, Findings& findings);

}  // namespace olh

#endif
