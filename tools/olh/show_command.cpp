// olh show DOC [TAG]: a document on the screen; with --print, what would be done to get it there.
#include <cstdlib>
#include <map>
#include <memory>

#include "chosen_viewer.h"
#include "commands.h"
#include "locate.h"
#include "olh/support.h"
#include "output.h"
#include "places.h"
#include "rehearsal.h"

namespace olh {

namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  olh show olh_manual quick_start            a topic of an HTML manual\n"
    "  olh show guide 'Getting Started'           a named destination of a PDF\n"
    "  olh show --display popup olh_manual roots  the topic alone, in a small frame\n"
    "  olh show --print olh_manual quick_start    what would be run; nothing is\n"
    "Exit code: 0 shown, 2 the viewer failed, 4 no such document, 5 the PDF reader failed,\n"
    "7 no browser known, 64 wrong use.\n";

struct Arguments {
  std::string document;
  std::string tag;
  std::string root;
  OlhDisplayType display = OLH_DISPLAY_NORMAL;
  bool print = false;
  bool json = false;
  bool quiet = false;
};

std::string quoted(const std::string& text) { return '"' + text + '"'; }

std::string at_tag(const std::string& tag) { return tag.empty() ? "" : " at " + quoted(tag); }

// A local PDF goes to the reader, everything else to the browser.
OlhViewer viewer_for(const Located& located) {
  const bool to_reader = located.kind == OLH_VIEWER_PDF && is_url(located.location.c_str()) == 0;
  return to_reader ? OLH_VIEWER_PDF : OLH_VIEWER_HTML;
}

ChosenViewer viewer_of(const Located& located) {
  return choose_viewer(viewer_for(located), located.tree_program, located.tree_file);
}

void warn_of_browser(const ChosenViewer& viewer) {
  if (!misunderstands_remote(viewer.program)) return;
  complain("note: today's browsers do not understand the command line that " + viewer.program +
           " gets: it may hang, or show an empty window. 'olh setup' puts olh-browser in its place.");
}

void say_shown(const Arguments& asked, const Located& located, const ChosenViewer& viewer) {
  const std::string from = located.root.empty() ? "" : ", from the root " + located.root;
  say("Shown: " + located.location + at_tag(asked.tag) + from + ", in " + viewer.program + ".");
}

void explain_failure(int result, const Arguments& asked, const Located& located, const ChosenViewer& viewer,
                     const SearchRoots& roots) {
  if (result == OLH_RESULT_NOT_FOUND) return complain_not_found(asked.document, roots);
  if (result == OLH_RESULT_INVALID) return complain("a document's name is needed, not an empty one.");
  const std::string found = "found " + located.location + at_tag(asked.tag);
  if (viewer.program.empty()) {
    const bool reader = viewer_for(located) == OLH_VIEWER_PDF;
    complain(found + ", but no " + (reader ? "PDF reader" : "browser") + " is known. Run 'olh setup', or set " +
             (reader ? "QEL_PDF_READER." : "QEL_HTML_BROWSER."));
  } else {
    complain(found + ", but " + describe(viewer) + " did not take it. 'olh show --print " +
             command_line({asked.document}) + "' tells what it gets; 'olh setup' puts olh-browser and " +
             "olh-pdf-reader in its place.");
  }
  complain_about_roots(roots);
}

int show(const Arguments& asked) {
  const SearchRoots roots = find_search_roots(asked.root);
  const Located located = locate(asked.document, roots);
  const ChosenViewer viewer = located.found ? viewer_of(located) : ChosenViewer();
  if (!asked.quiet) warn_of_browser(viewer);
  const int result = OlhHelpCall(asked.document.c_str(), asked.tag.c_str(), asked.display);
  if (result != OLH_RESULT_OK) {
    explain_failure(result, asked, located, viewer, roots);
  } else if (!asked.quiet) {
    say_shown(asked, located, viewer);
  }
  return result;
}

// ---- --print ------------------------------------------------------------------------------------------------

// Everything that there is to print, before it is put into words or JSON.
struct Plan {
  Located located;
  ChosenViewer viewer;
  std::string asked_whether_it_runs;  // the browser that gets the ping; the tree's choice does not count for it
  Rehearsal rehearsal;
  int result = OLH_RESULT_OK;
};

Plan make_plan(const Arguments& asked, const SearchRoots& roots) {
  Plan plan;
  plan.located = locate(asked.document, roots);
  if (plan.located.found) {
    plan.viewer = viewer_of(plan.located);
    if (viewer_for(plan.located) == OLH_VIEWER_HTML)
      plan.asked_whether_it_runs = choose_viewer(OLH_VIEWER_HTML, "", "").program;
  }
  plan.rehearsal = rehearse_help_call(asked.document, asked.tag, asked.display);
  plan.result = plan.rehearsal.result;
  if (plan.located.found && plan.viewer.program.empty())
    plan.result = viewer_for(plan.located) == OLH_VIEWER_PDF ? OLH_RESULT_IO : OLH_RESULT_NO_PROGRAM;
  return plan;
}

std::string named_destination(const Rehearsal& rehearsal) {
  const std::string option = "nameddest=";
  for (const std::string& word : rehearsal.arguments)
    if (!rehearsal.in_browser && word.rfind(option, 0) == 0) return word.substr(option.size());
  return "";
}

// What is sent: the words for a browser that runs, and those for a viewer that has to be started.
std::vector<std::string> words_for_start(const Rehearsal& rehearsal) {
  return rehearsal.in_browser ? std::vector<std::string>{rehearsal.url} : rehearsal.arguments;
}

void print_as_json(const Arguments& asked, const Plan& plan) {
  nlohmann::json answer = located_as_json(asked.document, plan.located);
  const Rehearsal& sent = plan.rehearsal;
  answer["tag"] = asked.tag;
  answer["result"] = plan.result;
  answer["url"] = text_or_null(sent.url);
  answer["file"] = text_or_null(sent.in_browser || sent.arguments.empty() ? "" : sent.arguments.back());
  answer["destination"] = text_or_null(named_destination(sent));
  answer["viewer"] = {{"program", text_or_null(plan.viewer.program)},
                      {"choice", text_or_null(plan.viewer.choice)},
                      {"from", text_or_null(plan.viewer.from)}};
  answer["asked_whether_it_runs"] = text_or_null(plan.asked_whether_it_runs);
  answer["arguments"] = {
      {"running", sent.in_browser ? nlohmann::json(sent.arguments) : nlohmann::json()},
      {"start", sent.arguments.empty() ? nlohmann::json() : nlohmann::json(words_for_start(sent))}};
  say_json(answer);
}

void print_line(const std::string& label, const std::string& text) {
  if (!text.empty()) say(label + std::string(14 - label.size(), ' ') + text);
}

void print_command(const std::string& label, const std::string& program, const std::vector<std::string>& words) {
  if (program.empty() || words.empty()) return;
  std::vector<std::string> line = {program};
  line.insert(line.end(), words.begin(), words.end());
  print_line(label, command_line(line));
}

void print_as_text(const Plan& plan) {
  const Rehearsal& sent = plan.rehearsal;
  print_line("location", plan.located.location);
  print_line("root", plan.located.root);
  print_line(plan.located.found ? "url" : "shown instead", sent.url);
  if (!sent.in_browser && !sent.arguments.empty())
    print_line(plan.located.found ? "file" : "shown instead", sent.arguments.back());
  print_line("destination", named_destination(sent));
  if (!plan.located.found) return;
  print_line("viewer", describe(plan.viewer));
  if (sent.in_browser) {
    print_command("asked first", plan.asked_whether_it_runs, {"-remote", "ping()"});
    print_command("if it runs", plan.viewer.program, sent.arguments);
  }
  print_command(sent.in_browser ? "else" : "command", plan.viewer.program, words_for_start(sent));
}

int print(const Arguments& asked) {
  const SearchRoots roots = find_search_roots(asked.root);
  const Plan plan = make_plan(asked, roots);
  if (asked.json) {
    print_as_json(asked, plan);
  } else {
    print_as_text(plan);
  }
  if (plan.result != OLH_RESULT_OK) explain_failure(plan.result, asked, plan.located, plan.viewer, roots);
  return plan.result;
}

}  // namespace

CLI::App* add_show_command(CLI::App& app, int& exit_code) {
  CLI::App* verb = app.add_subcommand("show", "Show a document in its viewer");
  const auto asked = std::make_shared<Arguments>();
  const std::map<std::string, OlhDisplayType> displays = {
      {"normal", OLH_DISPLAY_NORMAL}, {"topic", OLH_DISPLAY_TOPIC}, {"popup", OLH_DISPLAY_POPUP}};
  verb->add_option("DOC", asked->document, "A name to look up, a path, or a URL")->required();
  verb->add_option("TAG", asked->tag, "A topic, a named destination, or a portal's tab");
  verb->add_option("--display", asked->display, "normal, topic or popup: how much of an HTML manual appears")
      ->transform(CLI::CheckedTransformer(displays).description("KIND"));
  CLI::Option* print_option = verb->add_flag("--print", asked->print, "Say what would be run, and run nothing");
  verb->add_flag("-q,--quiet", asked->quiet, "Say nothing on success");
  verb->add_flag("--json", asked->json, "Answer as JSON (with --print)")->needs(print_option);
  add_root_option(*verb, asked->root);
  verb->footer(kExamples);
  verb->callback([asked, &exit_code] { exit_code = asked->print ? print(*asked) : show(*asked); });
  return verb;
}

}  // namespace olh
