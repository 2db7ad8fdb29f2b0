// What an adapter tells: to the person, and to the trace log that OLH_LOG_HELP names, after the library's own lines.
//
// Knows    the shape of the log's lines: NAME( "ARGUMENT", ... ); then NAME: what was decided; then NAME returned STATUS.
// For      both adapters.
#ifndef OLH_TOOLS_VIEWERS_TRACE_H
#define OLH_TOOLS_VIEWERS_TRACE_H

#include <string>

#include "words.h"

namespace olh_viewers {

class Trace {
 public:
  // Writes the call line.
  Trace(std::string adapter, const Words& arguments);

  // Notes a decision.
  void note(const std::string& what) const;
  // Says a sentence on standard error, and notes it.
  void complain(const std::string& sentence) const;
  // Writes the result line and gives the status back.
  int result(int status) const;

 private:
  void write(const std::string& line) const;

  std::string adapter_;
};

}  // namespace olh_viewers

#endif
