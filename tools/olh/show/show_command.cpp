// olh show DOC [TAG]: a document on the screen; with --print, what would be done to get it there.
#include <map>
#include <memory>
#include <nlohmann/json.hpp>

#include "find.h"
#include "shared.h"
#include "show.h"
#include "showing.h"

namespace olh {

namespace {

constexpr const char* kShowExamples =
    "Examples:\n"
    "  olh show olh_manual quick_start              a topic of an HTML manual\n"
    "  olh show /usr/share/olh/docs/pdfdocs/olh_manual.pdf quick_start\n"
    "                                               a named destination of a PDF\n"
    "  olh show --display popup olh_manual topics   the topic alone, in a small frame\n"
    "  olh show --print olh_manual quick_start      what would be run; nothing is\n"
    "Exit code: 0 shown, 2 the browser failed or a viewer would show nothing, 3 no name, 4 no such\n"
    "document, 5 the PDF reader failed, 7 no browser known, 64 wrong use.\n";

const std::map<std::string, int> kDisplays = {
    {"normal", OLH_DISPLAY_NORMAL}, {"topic", OLH_DISPLAY_TOPIC}, {"popup", OLH_DISPLAY_POPUP}};

struct ShowArguments {
  std::string document;
  std::string tag;
  int display = OLH_DISPLAY_NORMAL;
  ShowOptions options;
};

int show(const ShowArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.options.root);
  ShowRequest request;
  request.located = locate(asked.document, roots);
  request.named = request.located.location + at_tag(asked.tag);
  request.answer = [&] { return with_tag(located_as_json(asked.document, request.located), asked.tag); };
  request.words = {"show", asked.document, asked.tag};
  request.at_place = !asked.tag.empty();
  request.call = [&] { return OlhHelpCall(asked.document.c_str(), asked.tag.c_str(), asked.display); };
  request.complain_of = [&](int result) {
    if (result == OLH_RESULT_NOT_FOUND) return complain_not_found(asked.document, roots);
    complain("a document's name is needed, not an empty one.");
  };
  return carry_out(request, asked.options, roots);
}

}  // namespace

void add_show_command(const Verb& olh) {
  const Verb verb = olh.verb("show", "Show a document in its viewer");
  const auto asked = std::make_shared<ShowArguments>();
  verb.option("DOC", asked->document, "A name to look up, a path, or a URL").required();
  verb.option("TAG", asked->tag, "A topic, a named destination, or a portal's tab");
  verb.option("--display", asked->display, kDisplays, "normal, topic or popup: how much of an HTML manual appears");
  add_show_options(verb, asked->options);
  verb.footer(kShowExamples);
  verb.action([asked] { return show(*asked); });
}

}  // namespace olh
