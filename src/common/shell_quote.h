// Text inside a shell command line.
//
// Knows    which characters the shell acts on, bare and inside either kind of quotes.
// Not      the commands themselves: each caller has its template.
// For      whoever puts a command together for command.h. Ordinary text comes back as it is, so that a command has
//          its documented form; any other text reaches the program byte for byte and never runs anything.
#ifndef OLH_COMMON_SHELL_QUOTE_H
#define OLH_COMMON_SHELL_QUOTE_H

#include <string>
#include <string_view>

namespace olh {

// A word of its own: as it is when it has ordinary characters only (letters, digits, _ . / + , : @ % = - and bytes
// above 127), else in single quotes. Also quoted: "", what would be an assignment (NAME=...), what begins with "%" (a job)
// and the shell's reserved words.
std::string shell_bare(std::string_view word);

// Text for a place between single quotes.
std::string shell_in_single_quotes(std::string_view text);

// Text for a place between double quotes.
std::string shell_in_double_quotes(std::string_view text);

}  // namespace olh

#endif
