#include "synonyms.h"

namespace olh_index {

namespace {

// A word may stand in two.
constexpr std::string_view kEnglishSynonyms[] = {
    "add append insert",
    "argument parameter option switch flag",
    "begin start getting tutorial introduction",
    "bug defect trouble troubleshooting problem fault fail failure wrong",
    "build compile make",
    "call invoke run execute",
    "cancel abort stop quit exit terminate kill",
    "change modify edit alter customize configure set",
    "check verify validate test",
    "choose select pick",
    "color colour",
    "combine join merge concatenate",
    "command program process subprocess",
    "compare comparison equal difference",
    "convert conversion transform translate",
    "copy duplicate clone",
    "count number",
    "create make new define generate build",
    "debug trace diagnose",
    "delete remove erase unlink clear discard",
    "dictionary dict mapping",
    "directory folder",
    "download fetch retrieve url",
    "draw plot graph chart diagram figure",
    "duration elapsed timing time",
    "email mail message",
    "error exception failure",
    "example sample demo",
    "fast speed performance quick efficient",
    "find search locate lookup",
    "fit regression approximate",
    "fix repair correct solve solution",
    "freeze hang block wait",
    "function method procedure routine",
    "handle catch trap",
    "help documentation manual guide",
    "image picture photo bitmap",
    "install setup installation",
    "integer int",
    "list array sequence",
    "loop iterate iteration repeat",
    "measure profile profiling",
    "meaning means description",
    "name identifier",
    "open load read",
    "parallel concurrent thread simultaneous",
    "password secret credential",
    "path directory",
    "print output display show",
    "protect secure safe security safety trust",
    "read load input import parse",
    "release unlock free",
    "result return value code",
    "save write store export",
    "screen display",
    "shell terminal console",
    "split divide separate tokenize",
    "string text character",
    "update upgrade refresh",
    "web http internet url",
    "window gui dialog",
};

}  // namespace

std::span<const std::string_view> english_synonyms() { return kEnglishSynonyms; }

}  // namespace olh_index
