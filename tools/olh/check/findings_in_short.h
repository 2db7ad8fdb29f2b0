// Findings as a person reads them: at most a screen for each document.
//
// Knows    that a manual and the PDF of its name are one document, how many lines a screen has left for one, and that a
//          longer list is cut to a few examples of each kind, with the number of the others.
// For      check_command.
#ifndef OLH_TOOLS_FINDINGS_IN_SHORT_H
#define OLH_TOOLS_FINDINGS_IN_SHORT_H

#include <string>
#include <vector>

#include "findings.h"

namespace olh {

struct ShortFindings {
  std::vector<std::string> lines;  // document by document, errors first
  bool is_cut = false;             // whether findings, or parts of their values, are left out
};

ShortFindings findings_in_short(const Findings& findings);

// "error    FILE is ..."
std::string line_of(const Finding& finding, std::size_t longest_value = std::string::npos);

}  // namespace olh

#endif
