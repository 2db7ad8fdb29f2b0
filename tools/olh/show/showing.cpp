#include "showing.h"

#include <nlohmann/json.hpp>

#include "olh/support.h"
#include "rehearsal.h"
#include "shared.h"
#include "viewers.h"

namespace olh {

namespace {

// A local PDF goes to the reader, everything else to the browser.
OlhViewer viewer_for(const Located& located) {
  const bool to_reader = located.kind == OLH_VIEWER_PDF && is_url(located.location.c_str()) == 0;
  return to_reader ? OLH_VIEWER_PDF : OLH_VIEWER_HTML;
}

ChosenViewer viewer_of(const Located& located) {
  return located.found ? choose_viewer(viewer_for(located), located.tree_program, located.tree_file) : ChosenViewer();
}

void warn_of(const ChosenViewer& viewer, OlhViewer kind) {
  if (misunderstands(kind_of(kind), viewer.program)) complain(misunderstanding_note(kind_of(kind), viewer.program));
}

void say_shown(const ShowRequest& request, const ChosenViewer& viewer) {
  const std::string& root = request.located.root;
  say("Shown: " + request.named + (root.empty() ? "" : ", from the root " + root) + ", in " + viewer.program + ".");
}

void explain_failure(int result, const ShowRequest& request, const ChosenViewer& viewer, const SearchRoots& roots) {
  if (result == OLH_RESULT_NOT_FOUND || result == OLH_RESULT_INVALID) return request.complain_of(result);
  const std::string found = "found " + request.named;
  if (viewer.program.empty()) {
    const bool reader = viewer_for(request.located) == OLH_VIEWER_PDF;
    complain(found + ", but no " + (reader ? "PDF reader" : "browser") + " is known. Run 'olh setup', or set " +
             (reader ? "QEL_PDF_READER." : "QEL_HTML_BROWSER."));
  } else {
    complain(found + ", but " + describe(viewer) + " did not take it. '" + command_line(request.print_again) +
             "' tells what it gets; 'olh setup' puts olh-browser and olh-pdf-reader in its place.");
  }
  complain_about_roots(roots);
}

int show(const ShowRequest& request, bool quiet, const SearchRoots& roots) {
  const ChosenViewer viewer = viewer_of(request.located);
  if (!quiet) warn_of(viewer, viewer_for(request.located));
  const int result = request.call();
  if (result != OLH_RESULT_OK) {
    explain_failure(result, request, viewer, roots);
  } else if (!quiet) {
    say_shown(request, viewer);
  }
  return result;
}

// ---- --print ------------------------------------------------------------------------------------------------

// Everything that there is to print, before it is put into words or JSON.
struct Plan {
  ChosenViewer viewer;
  std::string asked_whether_it_runs;  // the browser that gets the ping; the tree's choice does not count for it
  Rehearsal rehearsal;
  int result = OLH_RESULT_OK;
};

Plan make_plan(const ShowRequest& request) {
  Plan plan;
  const Located& located = request.located;
  plan.viewer = viewer_of(located);
  if (located.found && viewer_for(located) == OLH_VIEWER_HTML)
    plan.asked_whether_it_runs = choose_viewer(OLH_VIEWER_HTML, "", "").program;
  plan.rehearsal = rehearse(request.call);
  plan.result = plan.rehearsal.result;
  if (located.found && plan.viewer.program.empty())
    plan.result = viewer_for(located) == OLH_VIEWER_PDF ? OLH_RESULT_IO : OLH_RESULT_NO_PROGRAM;
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

void print_as_json(const ShowRequest& request, const Plan& plan) {
  nlohmann::json answer = request.answer();
  const Rehearsal& sent = plan.rehearsal;
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

void print_as_text(const Located& located, const Plan& plan) {
  const Rehearsal& sent = plan.rehearsal;
  print_line("location", located.location);
  print_line("root", located.root);
  print_line(located.found ? "url" : "shown instead", sent.url);
  if (!sent.in_browser && !sent.arguments.empty())
    print_line(located.found ? "file" : "shown instead", sent.arguments.back());
  print_line("destination", named_destination(sent));
  if (!located.found) return;
  print_line("viewer", describe(plan.viewer));
  if (sent.in_browser) {
    print_command("asked first", plan.asked_whether_it_runs, {"-remote", "ping()"});
    print_command("if it runs", plan.viewer.program, sent.arguments);
  }
  print_command(sent.in_browser ? "else" : "command", plan.viewer.program, words_for_start(sent));
}

int print(const ShowRequest& request, bool json, const SearchRoots& roots) {
  const Plan plan = make_plan(request);
  if (json) {
    print_as_json(request, plan);
  } else {
    print_as_text(request.located, plan);
  }
  if (plan.result != OLH_RESULT_OK) explain_failure(plan.result, request, plan.viewer, roots);
  return plan.result;
}

}  // namespace

void add_show_options(const Verb& verb, ShowOptions& options) {
  const Option print_option = verb.flag("--print", options.print, "Say what would be run, and run nothing");
  verb.flag("-q,--quiet", options.quiet, "Say nothing on success");
  verb.flag("--json", options.json, "Answer as JSON (with --print)").needs(print_option);
  add_root_option(verb, options.root);
}

int carry_out(const ShowRequest& request, const ShowOptions& options, const SearchRoots& roots) {
  return options.print ? print(request, options.json, roots) : show(request, options.quiet, roots);
}

nlohmann::json with_tag(nlohmann::json answer, const std::string& tag) {
  answer["tag"] = tag;
  return answer;
}

}  // namespace olh
