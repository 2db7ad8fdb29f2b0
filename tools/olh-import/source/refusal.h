// What ends an import: a sentence for the person who asked, and the exit code.
//
// For      every file of this room; main prints it.
#ifndef OLH_IMPORT_REFUSAL_H
#define OLH_IMPORT_REFUSAL_H

#include <stdexcept>
#include <string>

namespace olh_import {

enum ExitCode : int { kDone = 0, kNoSource = 4, kCannotWrite = 5, kWrongUse = 64 };

class Refusal : public std::runtime_error {
 public:
  Refusal(ExitCode code, const std::string& sentence) : std::runtime_error(sentence), code_(code) {}
  ExitCode code() const { return code_; }

 private:
  ExitCode code_;
};

}  // namespace olh_import

#endif
