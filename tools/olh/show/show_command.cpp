// olh show DOC [TAG]: a document, or a result of the last search by its number, on the screen; with --print, what would be
// done to get it there.
#include <map>

#include "find.h"
#include "olh/support.h"
#include "shared.h"
#include "show.h"
#include "show_result.h"
#include "showing.h"

namespace olh {

namespace {

constexpr const char* kShowExamples =
    "Examples:\n"
    "  olh show olh_manual quick_start              a topic of an HTML manual\n"
    "  olh show --pdf olh_manual quick_start        the same place in its PDF\n"
    "  olh show --display popup olh_manual topics   the topic alone, in a small frame\n"
    "  olh show --print olh_manual quick_start      what would be run; nothing is started\n"
    "  olh show 2                                   the second result that 'olh search' has listed in this\n"
    "                                               terminal, unless there is a document named 2\n"
    "Exit code: 0 shown, 2 the browser failed or a viewer would show nothing, 3 no name, 4 no such\n"
    "document or result, 5 the PDF reader failed, 7 no browser known, 64 wrong use.\n";

const std::map<std::string, int> kDisplays = {
    {"normal", OLH_DISPLAY_NORMAL}, {"topic", OLH_DISPLAY_TOPIC}, {"popup", OLH_DISPLAY_POPUP}};

struct ShowArguments {
  std::string document;
  std::string tag;
  int display = OLH_DISPLAY_NORMAL;
  bool as_pdf = false;
  bool as_html = false;
  ShowOptions options;
};

bool is_pdf(const Located& located) { return ends_in_any_pdf(located.location); }

bool has_wrong_form(const ShowArguments& asked, const Located& located) {
  return located.found && (is_pdf(located) ? asked.as_html : asked.as_pdf);
}

// The lookups in the order that the asked form wants.
Located located_in_form(const ShowArguments& asked, SearchRoots& roots) {
  if (asked.as_pdf || asked.as_html) {
    OlhSetViewerOrder(asked.as_pdf ? "pdf" : "html");
    roots.preferred = asked.as_pdf ? OLH_VIEWER_PDF : OLH_VIEWER_HTML;
  }
  return locate(asked.document, roots);
}

std::vector<std::string> options_of(const ShowArguments& asked) {
  std::vector<std::string> options;
  if (asked.as_pdf) options.emplace_back("--pdf");
  if (asked.as_html) options.emplace_back("--html");
  for (const auto& [word, display] : kDisplays)
    if (display == asked.display && display != OLH_DISPLAY_NORMAL) options.insert(options.end(), {"--display", word});
  return options;
}

void complain_of_form(const ShowArguments& asked, const Located& other) {
  complain("found " + other.location + ", but no " + (asked.as_pdf ? "PDF" : "HTML form") + " of " +
           quoted(asked.document) + ". Without " + (asked.as_pdf ? "--pdf" : "--html") + " that one is shown.");
}

// Whoever names a PDF and gets pages is told so.
void note_other_form(const ShowArguments& asked, const Located& located, const SearchRoots& roots) {
  const bool named_pdf = ends_in_any_pdf(asked.document) && !is_path_or_url(asked.document);
  if (asked.options.quiet || asked.as_html || !named_pdf || !located.found || is_pdf(located)) return;
  const std::string name = without_pdf(asked.document);
  const Located pdf = locate_with(FindPdfDoc, OLH_VIEWER_PDF, asked.document, roots);
  const std::string cure = "'" + command_line({"olh", "show", "--pdf", name}) + "' shows " + pdf.location + ".";
  complain("note: " + quoted(name) + " is there as HTML, which comes first. " +
           (is_pdf(pdf) ? cure : "There is no PDF of that name."));
}

// Whether a result of the last search may be meant: a number alone. With a tag or a form it is a document's name.
bool may_be_result(const ShowArguments& asked) {
  return result_number(asked.document) > 0 && asked.tag.empty() && !asked.as_pdf && !asked.as_html;
}

// The results that were listed last. A document whose name is a number comes before them, and so stays within reach; where
// the number is neither, that is said.
std::optional<ListedResults> results_for(const ShowArguments& asked, const Located& located) {
  std::optional<ListedResults> results = kept_results();
  if (!located.found && !results)
    complain("no results are kept in this terminal: 'olh search --text WORDS' lists some with numbers.");
  if (!located.found || !results) return results;
  if (!asked.options.quiet && result_number(asked.document) <= results->hits.size())
    complain("note: there is a document named " + quoted(asked.document) + ", which comes before results. '" +
             command_line({"olh", "search", "--open", asked.document, results->query, results->scope}) +
             "' shows the result.");
  return std::nullopt;
}

int show(const ShowArguments& asked) {
  SearchRoots roots = find_search_roots(asked.options.root);
  const Located located = located_in_form(asked, roots);
  if (may_be_result(asked))
    if (const std::optional<ListedResults> results = results_for(asked, located))
      return show_result(*results, result_number(asked.document), asked.options, asked.display);
  const bool wrong_form = has_wrong_form(asked, located);
  ShowRequest request = request_for("show", asked.document, asked.tag, wrong_form ? Located() : located);
  note_other_form(asked, request.located, roots);
  request.options = options_of(asked);
  request.call = [&] {
    return wrong_form ? OLH_RESULT_NOT_FOUND : OlhHelpCall(asked.document.c_str(), asked.tag.c_str(), asked.display);
  };
  request.complain_of = [&](int) {
    if (wrong_form) return complain_of_form(asked, located);
    complain_not_found(asked.document, roots);
  };
  return carry_out(request, asked.options, roots);
}

int print_kept_results() {
  std::size_t number = 0;
  if (const std::optional<ListedResults> results = kept_results())
    for (const ListedHit& hit : results->hits) say(std::to_string(++number) + " " + hit.title);
  return OLH_RESULT_OK;
}

}  // namespace

void add_kept_results_command(const Verb& olh) { olh.hidden_verb("kept-results").action(print_kept_results); }

void add_show_command(const Verb& olh) {
  const Verb verb = olh.verb("show", "Show a document in its viewer", kShowExamples);
  ShowArguments& asked = verb.action(show);
  verb.option("DOC", asked.document, "A name to look up, a path, a URL, or the number of a result").required();
  verb.option("TAG", asked.tag, "A topic, a named destination, or a portal's tab");
  const Option pdf = verb.flag("--pdf", asked.as_pdf, "The PDF, where there are both forms");
  verb.flag("--html", asked.as_html, "The HTML form, where there are both").excludes(pdf);
  verb.option("--display", asked.display, kDisplays, "normal, topic or popup: how much of an HTML manual appears");
  add_show_options(verb, asked.options);
}

}  // namespace olh
