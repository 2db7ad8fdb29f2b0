// A command line as words: no shell ever sees one.
#ifndef OLH_TOOLS_VIEWERS_WORDS_H
#define OLH_TOOLS_VIEWERS_WORDS_H

#include <string>
#include <string_view>
#include <vector>

namespace olh_viewers {

using Words = std::vector<std::string>;

// The pieces of a list, without the empty ones.
Words pieces_of(std::string_view list, char separator);

// ASCII letters in lower case; other bytes as they are.
std::string lower_case(std::string_view text);

// The lines of a text, without their line feeds.
Words lines_of(std::string_view text);

// Every `what` becomes `by`.
void replace_all(std::string& text, std::string_view what, std::string_view by);

// The words as a person would type them to a shell.
std::string command_line(const Words& words);

// A file's name as a word: one that a program could take for an option gets its directory.
std::string as_argument(const std::string& file);

// What both adapters end with. A launcher of the library takes 2 for "there is no such program".
enum ExitStatus : int { kExitShown = 0, kExitFailed = 1, kExitNoProgram = 2, kExitWrongUse = 64 };

}  // namespace olh_viewers

#endif
