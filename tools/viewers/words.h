// A command line as words: no shell ever sees one.
#ifndef OLH_TOOLS_VIEWERS_WORDS_H
#define OLH_TOOLS_VIEWERS_WORDS_H

#include <string>
#include <vector>

namespace olh_viewers {

using Words = std::vector<std::string>;

// What both adapters end with. A launcher of the library takes 2 for "there is no such program".
enum ExitStatus : int { kExitShown = 0, kExitFailed = 1, kExitNoProgram = 2, kExitWrongUse = 64 };

}  // namespace olh_viewers

#endif
