// What many verbs share of their command line.
#ifndef OLH_TOOLS_VERB_H
#define OLH_TOOLS_VERB_H

#include <string>

#include "command_line.h"

namespace olh {

inline void add_root_option(const Verb& verb, std::string& root) {
  verb.option("--root", root, "Documentation roots to search first, separated by ':'").value_named("PATHS");
}
inline Option add_json_option(const Verb& verb, bool& json) { return verb.flag("--json", json, "Answer as JSON"); }
inline void add_document(const Verb& verb, std::string& document) {
  verb.option("DOC", document, "A name to look up, a path, or a URL").required();
}

}  // namespace olh

#endif
