// A request to show something: carried out, or told in every detail without starting anything.
//
// Knows    which viewer gets what was found, what is said of success and failure, and the answers of --print.
// Not      what is looked up and which public function shows it (the verbs).
// For      show, search, portal and bookcase.
#ifndef OLH_TOOLS_SHOWING_H
#define OLH_TOOLS_SHOWING_H

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "find.h"
#include "shared.h"

namespace olh {

struct ShowOptions {
  std::string root;
  bool print = false;
  bool json = false;
  bool quiet = false;
};

// The options --print, --json, --quiet and --root.
void add_show_options(const Verb& verb, ShowOptions& options);

struct ShowRequest {
  Located located;                         // what will be shown; nothing found when a substitute will be
  std::string named;                       // how a sentence names that
  std::vector<std::string> words;          // the same request on the command line: "show", the document, the tag
  std::vector<std::string> options;        // and what stands in front of them: "--pdf"
  bool at_place = false;                   // a PDF is asked for at a named destination
  std::function<nlohmann::json()> answer;  // the verb's own keys of the JSON answer
  std::string obstacle_to_text;            // why a terminal cannot show it, a sentence; "" when it can
  std::function<std::string()> text;       // what a terminal shows instead; none, or "", for what the viewer writes
  int result_of_text = OLH_RESULT_OK;      // once that is printed
  std::function<int()> call;               // the library's function that shows it
  std::function<void(int)> complain_of;    // says why nothing was found or the arguments were refused
};

// To show what was located, at the tag if it is not empty; the words and the answer name it as it was asked for.
ShowRequest request_for(const std::string& verb, const std::string& name, const std::string& tag,
                        const Located& located);

// Carries the request out, or tells what would be sent (--print). Returns the library's result.
int carry_out(const ShowRequest& request, const ShowOptions& options, const SearchRoots& roots);

}  // namespace olh

#endif
