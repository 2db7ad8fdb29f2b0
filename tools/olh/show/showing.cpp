#include "showing.h"

#include <cstdlib>
#include <nlohmann/json.hpp>

#include "browser_reach.h"
#include "child.h"
#include "olh/support.h"
#include "rehearsal.h"
#include "shared.h"
#include "url.h"
#include "viewers.h"

namespace olh {

namespace {

// A local PDF goes to the reader, everything else to the browser.
OlhViewer viewer_for(const Located& located) {
  const bool to_reader = located.kind == OLH_VIEWER_PDF && is_url(located.location.c_str()) == 0;
  return to_reader ? OLH_VIEWER_PDF : OLH_VIEWER_HTML;
}

// Which programs show what was found, or the substitute for what was not, from now on.
struct Viewers {
  ChosenViewer browser;
  ChosenViewer reader;
  const ChosenViewer& for_kind(OlhViewer kind) const { return kind == OLH_VIEWER_PDF ? reader : browser; }
};

Viewers settle_viewers(const Located& located) {
  const auto settle = [&](OlhViewer kind) {
    const bool is_prescribed = located.found && viewer_for(located) == kind;
    return settle_viewer(kind, is_prescribed ? located.tree_program : "", is_prescribed ? located.tree_file : "");
  };
  return {settle(OLH_VIEWER_HTML), settle(OLH_VIEWER_PDF)};
}

// Whether nobody would see anything: today's browsers take the page for something else, today's readers refuse a
// destination.
bool is_in_vain(OlhViewer kind, const ChosenViewer& viewer, bool at_place) {
  return misunderstands(kind_of(kind), viewer.program) && (kind == OLH_VIEWER_HTML || at_place);
}

std::string why_in_vain(OlhViewer kind, const ChosenViewer& viewer) {
  return misunderstanding(kind_of(kind), viewer.program) + " So nothing is started. 'olh setup' puts " +
         kind_of(kind).adapter + " in its place.";
}

// The request as it would be typed with other options in front.
std::vector<std::string> again(const ShowRequest& request, const std::vector<std::string>& options) {
  std::vector<std::string> words = {request.words.front()};
  words.insert(words.end(), request.options.begin(), request.options.end());
  words.insert(words.end(), options.begin(), options.end());
  words.insert(words.end(), request.words.begin() + 1, request.words.end());
  while (words.back().empty()) words.pop_back();
  return words;
}

std::string print_again(const ShowRequest& request) {
  std::vector<std::string> words = again(request, {"--print"});
  words.insert(words.begin(), "olh");
  return command_line(words);
}

// How a page fares in the browser behind the adapter: a Snap, say, may not see what lies on the disk.
std::string fate_of(const ShowRequest& request, const ChosenViewer& viewer) {
  const std::string& location = request.located.location;
  const bool is_file = is_url(location.c_str()) == 0 || olh_viewers::is_file_url(location);
  if (viewer_for(request.located) != OLH_VIEWER_HTML || !is_file ||
      !is_adapter(kind_of(OLH_VIEWER_HTML), viewer.program))
    return "Shown";
  const olh_viewers::Choice browser = olh_viewers::choose_browser();
  const olh_viewers::Way way = olh_viewers::way_to(browser);
  if (way.barrier.empty() || way.is_served) return "Shown";
  return "Given to " + olh_viewers::name_of(browser) + ", which " + way.effect + " it";
}

void say_shown(const ShowRequest& request, const ChosenViewer& viewer) {
  const std::string& root = request.located.root;
  say(fate_of(request, viewer) + ": " + request.named + (root.empty() ? "" : ", from the root " + root) + ", in " +
      viewer.program + ".");
}

void explain_failure(int result, const ShowRequest& request, const ChosenViewer& viewer, const SearchRoots& roots) {
  if (result == OLH_RESULT_NOT_FOUND || result == OLH_RESULT_INVALID) return request.complain_of(result);
  const std::string found = "found " + request.named;
  if (viewer.program.empty()) {
    const ViewerKind& kind = kind_of(viewer_for(request.located));
    complain(found + ", but no " + kind.label + " is known. Run 'olh setup', or set " + kind.key + ".");
  } else {
    complain(found + ", but " + describe(viewer) + " did not take it. '" + print_again(request) +
             "' prints what it gets; 'olh setup' puts olh-browser and olh-pdf-reader in its place.");
  }
  complain_about_roots(roots);
}

void complain_in_vain(const ShowRequest& request, const ChosenViewer& viewer) {
  complain("found " + request.named + ", but " + describe(viewer) +
           " would not show it: " + why_in_vain(viewer_for(request.located), viewer));
}

// ---- showing ------------------------------------------------------------------------------------------------

bool print_as_list(const std::string& text) {
  if (!text.empty()) olh_viewers::print_text(text, true);
  return !text.empty();
}

// The text, as the adapter that the library would use writes it. The library would start it again when there is none, and
// look after it for two seconds; a pager would end with this command.
int show_text(const ShowRequest& request, const ChosenViewer& viewer) {
  const Rehearsal sent = rehearse(request.call);
  if (sent.result != OLH_RESULT_OK) return sent.result;
  std::vector<std::string> words = {viewer.program};
  if (!sent.in_browser) words.emplace_back("--text");
  words.insert(words.end(), sent.arguments.begin(), sent.arguments.end());
  if (olh_viewers::run_and_wait(words) == EXIT_SUCCESS) return OLH_RESULT_OK;
  return sent.in_browser ? OLH_RESULT_FAILED : OLH_RESULT_IO;
}

int show_found(const ShowRequest& request, const ChosenViewer& viewer, bool quiet, const SearchRoots& roots) {
  const OlhViewer kind = viewer_for(request.located);
  if (is_in_vain(kind, viewer, request.at_place)) {
    complain_in_vain(request, viewer);
    return OLH_RESULT_FAILED;
  }
  const bool as_text = shows_text(kind_of(kind), viewer.program);
  if (as_text && !request.obstacle_to_text.empty()) return failure(OLH_RESULT_FAILED, request.obstacle_to_text);
  if (as_text && request.text && print_as_list(request.text())) return request.result_of_text;
  const int result = as_text ? show_text(request, viewer) : request.call();
  if (result != OLH_RESULT_OK) {
    explain_failure(result, request, viewer, roots);
  } else if (!quiet) {
    say_shown(request, viewer);
  }
  return result;
}

// What the library will show instead of what was not found.
struct Substitute {
  std::string named;  // "" for nothing, or when that could not be told in time
  OlhViewer kind = OLH_VIEWER_HTML;
};

Substitute substitute_for(const ShowRequest& request, const std::string& host_roots) {
  std::vector<std::string> options = {"--print", "--json"};
  if (!host_roots.empty()) options.insert(options.end(), {"--root", host_roots});
  options.emplace_back("--");
  const nlohmann::json plan =
      nlohmann::json::parse(heard_from_own_child(again(request, options)).text, nullptr, false);
  if (!plan.is_object()) return {};
  if (plan["url"].is_string()) return {plan["url"].get<std::string>(), OLH_VIEWER_HTML};
  return {plan["file"].is_string() ? plan["file"].get<std::string>() : "", OLH_VIEWER_PDF};
}

int show_substitute(const ShowRequest& request, const Viewers& viewers, const ShowOptions& options) {
  const Substitute instead = substitute_for(request, options.root);
  const ChosenViewer& viewer = viewers.for_kind(instead.kind);
  const bool in_vain = !instead.named.empty() && is_in_vain(instead.kind, viewer, false);
  const int result = in_vain ? OLH_RESULT_NOT_FOUND : request.call();
  request.complain_of(result);
  if (in_vain) {
    complain(describe(viewer) + " would not show " + instead.named +
             " instead: " + why_in_vain(instead.kind, viewer));
  } else if (!options.quiet && result == OLH_RESULT_NOT_FOUND && !instead.named.empty() && !viewer.program.empty()) {
    say("Opened instead: " + instead.named + ", in " + viewer.program + ".");
  }
  return result;
}

int show(const ShowRequest& request, const ShowOptions& options, const SearchRoots& roots) {
  const Viewers viewers = settle_viewers(request.located);
  if (!request.located.found) return show_substitute(request, viewers, options);
  return show_found(request, viewers.for_kind(viewer_for(request.located)), options.quiet, roots);
}

// ---- --print ------------------------------------------------------------------------------------------------

// Everything that there is to print, before it is put into words or JSON.
struct Plan {
  ChosenViewer viewer;
  std::string asked_whether_it_runs;  // the browser that gets the ping; the tree's choice does not count for it
  Rehearsal rehearsal;
  int result = OLH_RESULT_OK;
  bool in_vain = false;
  std::string obstacle;  // to text, where there is only text
};

Plan make_plan(const ShowRequest& request) {
  Plan plan;
  const Located& located = request.located;
  const Viewers viewers = settle_viewers(located);
  if (located.found) plan.viewer = viewers.for_kind(viewer_for(located));
  if (located.found && viewer_for(located) == OLH_VIEWER_HTML)
    plan.asked_whether_it_runs = choose_viewer(OLH_VIEWER_HTML, "", "").program;
  plan.rehearsal = rehearse(request.call);
  plan.result = plan.rehearsal.result;
  if (located.found && plan.viewer.program.empty())
    plan.result = viewer_for(located) == OLH_VIEWER_PDF ? OLH_RESULT_IO : OLH_RESULT_NO_PROGRAM;
  plan.in_vain = located.found && is_in_vain(viewer_for(located), plan.viewer, request.at_place);
  if (located.found && shows_text(kind_of(viewer_for(located)), plan.viewer.program))
    plan.obstacle = request.obstacle_to_text;
  if (plan.in_vain || !plan.obstacle.empty()) plan.result = OLH_RESULT_FAILED;
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
  if (!text.empty()) say(padded(label, 14) + text);
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
  json ? print_as_json(request, plan) : print_as_text(request.located, plan);
  if (plan.in_vain) {
    complain_in_vain(request, plan.viewer);
  } else if (!plan.obstacle.empty()) {
    complain(plan.obstacle);
  } else if (plan.result != OLH_RESULT_OK) {
    explain_failure(plan.result, request, plan.viewer, roots);
  }
  return plan.result;
}

}  // namespace

void add_show_options(const Verb& verb, ShowOptions& options) {
  const Option print_option = verb.flag("--print", options.print, "Say what would be run, and run nothing");
  verb.flag("-q,--quiet", options.quiet, "Say nothing on success");
  verb.flag("--json", options.json, "Answer as JSON (with --print)").needs(print_option);
  add_root_option(verb, options.root);
}

ShowRequest request_for(const std::string& verb, const std::string& name, const std::string& tag,
                        const Located& located) {
  ShowRequest request;
  request.located = located;
  request.named = located.location + at_tag(tag);
  request.words = {verb, name, tag};
  request.at_place = !tag.empty();
  request.answer = [name, tag, located] {
    nlohmann::json answer = located_as_json(name, located);
    answer["tag"] = tag;
    return answer;
  };
  return request;
}

int carry_out(const ShowRequest& request, const ShowOptions& options, const SearchRoots& roots) {
  return options.print ? print(request, options.json, roots) : show(request, options, roots);
}

}  // namespace olh
