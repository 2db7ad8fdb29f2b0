// olh dmerge [ROOT]: the lists that the pages of a documentation root read; with --check, whether they are true.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <nlohmann/json.hpp>

#include "list_failure.h"
#include "lists.h"
#include "olh/dmerge.h"
#include "olh/support.h"
#include "search_index.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kDmergeExamples =
    "Without ROOT: the first root of the search path. Run it after documentation was installed or removed.\n"
    "Examples:\n"
    "  olh dmerge docs                           of the root that 'olh new docs handbook' makes\n"
    "  olh dmerge --check /usr/share/olh/docs    which lists are out of date; nothing is written\n"
    "  olh dmerge --no-index docs                the lists only; 'olh index docs' makes the index later\n"
    "Exit code: 0 the lists are made (--check: they are up to date), 1 --check: a list is out of date,\n"
    "2 the portals cannot be listed, 4 no such root, 5 a list cannot be written, 64 wrong use.\n";

constexpr int kOutOfDate = 1;

struct DmergeArguments {
  std::string root;
  bool check = false;
  bool no_index = false;
  bool quiet = false;
  bool json = false;
};

int exit_code_of(const ListRun& run) {
  if (!run.has_root) return OLH_RESULT_NOT_FOUND;
  switch (run.result) {
    case DMERGE_RESULT_OK:
      return OLH_RESULT_OK;
    case DMERGE_RESULT_UNLISTABLE:
      return OLH_RESULT_FAILED;
    default:
      return OLH_RESULT_IO;  // the list of portals, or one of the others
  }
}

std::string totals(const ListRun& run) {
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%.2f", run.seconds);
  return counted(run.libraries, "library", "libraries") + ", " + counted(run.pdfs, "PDF", "PDFs") + ", " +
         std::to_string(run.both) + " in both forms, " + counted(run.portals, "portal", "portals") + ", " + seconds +
         " seconds";
}

nlohmann::json run_as_json(const std::string& root, const ListRun& run) {
  nlohmann::json warnings = nlohmann::json::array();
  for (const TitleWarning& one : title_warnings(run, root))
    warnings.push_back({{"file", one.file}, {"line", line_or_null(one.line)}, {"sentence", sentence_of(one)}});
  return {{"root", root},           {"result", exit_code_of(run)}, {"libraries", run.libraries},
          {"pdfs", run.pdfs},       {"both_forms", run.both},      {"portals", run.portals},
          {"seconds", run.seconds}, {"messages", run.messages},    {"warnings", warnings}};
}

void complain_of_titles(const std::string& root, const ListRun& run) {
  for (const TitleWarning& one : title_warnings(run, root))
    complain("warning: " + sentence_at(one.file, one.line, sentence_of(one)));
}

// ---- making the lists ------------------------------------------------------------------------------------------

int make(const std::string& root, const DmergeArguments& asked) {
  const auto tell = [&asked](const std::string& file) {
    if (asked.quiet) return;
    say(file);
    std::fflush(stdout);
  };
  const bool shows_progress = !asked.quiet && isatty(STDERR_FILENO) == 1;
  const ListRun run = asked.json ? make_lists_silently(root) : make_lists(root, tell, shows_progress);
  const bool is_made = run.result == DMERGE_RESULT_OK;
  const std::string index = is_made && !asked.no_index ? make_search_index(run.root) : "";
  if (asked.json) {
    nlohmann::json answer = run_as_json(root, run);
    answer["files"] = run.files;
    if (is_made) answer["index"] = text_or_null(index);
    say_json(answer);
  } else if (is_made) {
    if (!index.empty()) tell(index);
    if (!asked.quiet) say(totals(run));
  }
  if (!is_made) complain(sentence_about_failure(run));
  if (!asked.json) complain_of_titles(root, run);
  return exit_code_of(run);
}

// ---- --check -----------------------------------------------------------------------------------------------------

int check(const std::string& root, const DmergeArguments& asked) {
  const ListTrial trial = try_lists(root, !asked.no_index);
  const ListRun& run = trial.run;
  const int code = run.result != DMERGE_RESULT_OK ? exit_code_of(run)
                   : trial.changes.empty()        ? static_cast<int>(OLH_RESULT_OK)
                                                  : kOutOfDate;
  if (asked.json) {
    nlohmann::json answer = run_as_json(root, run);
    answer["result"] = code;
    answer["out_of_date"] = nlohmann::json::array();
    for (const ListChange& change : trial.changes)
      answer["out_of_date"].push_back({{"file", change.file},
                                       {"missing", change.is_new},
                                       {"unreadable", change.is_unreadable},
                                       {"more", change.more},
                                       {"less", change.less}});
    say_json(answer);
  } else {
    for (const std::string& message : run.messages) say(message);
    if (!asked.quiet)
      for (const ListChange& change : trial.changes) say(change.file + " " + state_of(change) + ".");
    if (!asked.quiet && code == OLH_RESULT_OK) say("The lists of " + root + " are up to date: " + totals(run) + ".");
  }
  if (!asked.json) complain_of_titles(root, run);
  const auto can_be_compared = [](const ListChange& change) { return !change.is_unreadable; };
  if (code == kOutOfDate && !asked.quiet && std::ranges::any_of(trial.changes, can_be_compared))
    complain("'" + command_line({"olh", "dmerge", root}) + "' updates them.");
  if (!trial.failure.empty()) complain(trial.failure);
  return code;
}

int dmerge_verb(const DmergeArguments& asked) {
  const char* first = asked.root.empty() ? GetOlhDocPath() : nullptr;
  std::string root = first == nullptr ? asked.root : first;
  cleanPath(root.data());
  root.resize(std::strlen(root.c_str()));
  if (root.empty())
    return failure(OLH_RESULT_NOT_FOUND, "no documentation root is known. Name one, or set QEL_DOC_PATH.");
  if (is_url(root.c_str()) != 0)
    return failure(OLH_RESULT_NOT_FOUND,
                   root + " is an address: the lists are made where the files lie, in a directory.");
  if (asked.check && pathExists(root.c_str()) == 0)
    return failure(OLH_RESULT_NOT_FOUND, "there is no readable directory " + root + ".");
  return asked.check ? check(root, asked) : make(root, asked);
}

}  // namespace

void add_dmerge_command(const Verb& olh) {
  const Verb verb =
      olh.verb("dmerge", "Update the lists and the search index of a documentation root", kDmergeExamples);
  DmergeArguments& asked = verb.action(dmerge_verb);
  verb.option("ROOT", asked.root, "The directory of the documentation root");
  verb.flag("--check", asked.check, "Write nothing; say which lists are out of date, and whether the index is");
  verb.flag("--no-index", asked.no_index, "Leave the search index as it is; make or check the lists only");
  verb.flag("-q,--quiet", asked.quiet, "Say nothing but the generator's own messages");
  add_json_option(verb, asked.json);
}

}  // namespace olh
