// How `olh` speaks: answers on standard output, complaints on standard error.
//
// Knows    when a terminal may get emphasis, that nothing else may play with it, and that JSON survives bytes that are no UTF-8.
// For      every verb.
#ifndef OLH_TOOLS_OUTPUT_H
#define OLH_TOOLS_OUTPUT_H

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "visible.h"
#include "words.h"

namespace olh {

// A line on standard output. Control characters in it, which titles and file names may bring along, are written
// visibly.
void say(const std::string& line);
// The same with one part in colour, by its number in an escape sequence, or in bold; only on a terminal, and not when
// NO_COLOR is set.
void say_marked(const std::string& before, const std::string& marked, const std::string& after = "",
                const std::string& code = "1");
// A root of the search path with its number; the first, which wins, in bold.
void say_numbered(std::size_t number, const std::string& root);
// A sentence on standard error, after the program's name; control characters as in say.
void complain(const std::string& sentence);
// The same, and the result that it explains.
int failure(int result, const std::string& sentence);
// A JSON answer on standard output. Bytes that are no UTF-8 appear as U+FFFD.
void say_json(const nlohmann::json& answer);

using olh_viewers::command_line;
using olh_viewers::lines_of;
using olh_viewers::visible;
// The text in double quotes; and " at "TAG"", or nothing.
std::string quoted(const std::string& text);
std::string at_tag(const std::string& tag);
// "FILE, line 3", or the file alone for 0.
std::string place_of(const std::string& file, int line);
// "FILE is ...", or "FILE, line 3: is ...".
std::string sentence_at(const std::string& file, int line, const std::string& rest);
// How many characters (of UTF-8) the text has.
std::size_t width_of(const std::string& text);
// The text with blanks behind it, up to that width.
std::string padded(const std::string& text, std::size_t width);
// How many characters fit in a line of the screen; as many as one likes where the output is none.
std::size_t width_of_screen();
// The text in pieces of at most that many characters, cut at blanks where it has some.
std::vector<std::string> folded(const std::string& text, std::size_t width);
// "1 manual", "2 manuals".
std::string counted(std::size_t number, const char* one, const char* many);
// "a", "a and b", "a, b and c".
std::string enumeration(const std::vector<std::string>& items);

// The text, or JSON's null for "".
nlohmann::json text_or_null(const std::string& text);
// The number of a line, or JSON's null for 0.
nlohmann::json line_or_null(int line);

}  // namespace olh

#endif
