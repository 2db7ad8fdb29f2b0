// olh viewers [set|forget]: who chooses the browser and the PDF reader, which program that comes to, whether it runs.
#include <nlohmann/json.hpp>

#include "find.h"
#include "olh/support.h"
#include "shared.h"
#include "viewer_storing.h"
#include "viewers.h"

namespace olh {

namespace {

constexpr const char* kViewersExamples =
    "A viewer is chosen by the first of four places that names an executable program: your option file,\n"
    "the variable, the options file of the documentation tree, a search along PATH.\n"
    "Examples:\n"
    "  olh viewers                         what each place says, and which one wins\n"
    "  olh viewers set browser olh-browser\n"
    "  olh viewers set pdf olh-pdf-reader\n"
    "  olh viewers forget browser\n"
    "Exit code: 0, of set and forget also what their --help says: 4, 5, 7; 64 wrong use.\n";
constexpr const char* kExitCodes =
    "Exit code: 0, 4 --tree and no root is known, 5 the file cannot be read or written, 7 no such\n"
    "executable, 64 wrong use.\n";

// ---- olh viewers -------------------------------------------------------------------------------------------------

// Everything that is told of one kind of viewer.
struct ViewerStory {
  const ViewerKind* kind = nullptr;
  ChosenViewer in_use;
  std::vector<ViewerSource> sources;
  std::string asked;  // the program that is asked whether it runs; a tree's choice does not count for a browser
  std::optional<bool> runs;
  bool is_adapter = false;
  Driven driven;
};

ViewerStory story_of(const ViewerKind& kind, const SearchRoots& roots) {
  ViewerStory story;
  story.kind = &kind;
  story.in_use = viewer_in_use(kind, roots);
  story.sources = viewer_sources(kind, roots);
  story.asked = kind.viewer == OLH_VIEWER_HTML ? choose_viewer(kind.viewer, "", "").program : story.in_use.program;
  story.runs = is_viewer_running(kind, story.asked);
  story.is_adapter = is_adapter(kind, story.in_use.program);
  if (story.is_adapter) story.driven = driven_by(kind, story.in_use.program);
  return story;
}

std::string label_of(const std::string& choice) { return choice == "option_file" ? "option file" : choice; }

void print_row(const std::string& mark, const std::string& label, const std::string& text) {
  say("  " + mark + " " + padded(label, 13) + text);
}

std::string words_of(const ViewerSource& source, const std::vector<SpoiltFile>& spoilt) {
  for (const SpoiltFile& one : spoilt)
    if (one.file == source.from) return "unreadable (" + one.reason + ")";
  if (source.value.empty()) return "not set";
  return source.value + (source.program.empty() ? ", which is not executable and is ignored" : "");
}

void print_source(const ViewerSource& source, bool wins, const std::vector<SpoiltFile>& spoilt) {
  print_row(wins ? "*" : " ", label_of(source.choice),
            source.from.empty() ? "no documentation root is known" : source.from + ": " + words_of(source, spoilt));
}

void print_as_text(const ViewerStory& story, const std::vector<SpoiltFile>& spoilt) {
  say_marked(padded(story.kind->word, 16), describe(story.in_use));
  for (const ViewerSource& source : story.sources) print_source(source, source.choice == story.in_use.choice, spoilt);
  const std::string asked = story.asked == story.in_use.program ? "" : " (" + story.asked + ", which is asked first)";
  if (!story.asked.empty()) print_row(" ", "runs", (!story.runs ? "unknown" : *story.runs ? "yes" : "no") + asked);
  if (!story.is_adapter) return;
  print_row(" ", "opens",
            story.driven.program.empty() ? "nothing: it finds no program"
                                         : story.driven.command + " (" + story.driven.source + ")");
}

nlohmann::json as_json(const ViewerStory& story) {
  nlohmann::json sources = nlohmann::json::array();
  for (const ViewerSource& source : story.sources)
    sources.push_back({{"choice", source.choice},
                       {"from", text_or_null(source.from)},
                       {"value", text_or_null(source.value)},
                       {"program", text_or_null(source.program)},
                       {"wins", source.choice == story.in_use.choice}});
  return {{"program", text_or_null(story.in_use.program)},
          {"choice", text_or_null(story.in_use.choice)},
          {"from", text_or_null(story.in_use.from)},
          {"sources", sources},
          {"asked_whether_it_runs", text_or_null(story.asked)},
          {"running", story.runs ? nlohmann::json(*story.runs) : nlohmann::json()},
          {"adapter", story.is_adapter},
          {"opens", text_or_null(story.driven.command)},
          {"opens_from", text_or_null(story.driven.source)}};
}

int tell(const bool& json) {
  const SearchRoots roots = find_search_roots("");
  std::vector<ViewerStory> stories;
  stories.reserve(kViewerKinds.size());
  for (const ViewerKind& kind : kViewerKinds) stories.push_back(story_of(kind, roots));
  std::vector<SpoiltFile> spoilt = roots.spoilt;
  for (SpoiltFile& one : user_file_faults()) spoilt.push_back(std::move(one));
  nlohmann::json answer;
  for (const ViewerStory& story : stories) {
    answer[story.kind->word] = as_json(story);
    if (!json) print_as_text(story, spoilt);
  }
  if (json) say_json(answer);
  for (const ViewerStory& story : stories)
    if (!story.in_use.program.empty() && misunderstands(*story.kind, story.in_use.program))
      complain(misunderstanding_note(*story.kind, story.in_use.program));
  complain_about(spoilt);
  return OLH_RESULT_OK;
}

// ---- set and forget ----------------------------------------------------------------------------------------------

struct Change {
  std::string word;
  std::string program;
  bool tree = false;
};

const ViewerKind& asked_kind(const Change& change) {
  return kViewerKinds[change.word == kViewerKinds[0].word ? 0 : 1];
}

// What keeps a change from being made at all: a result of the library, or OLH_RESULT_OK for nothing.
int objection(const Change& change, const SearchRoots& roots) {
  if (change.tree && roots.roots.empty())
    return failure(OLH_RESULT_NOT_FOUND,
                   "no documentation root is known whose options file could hold it. Set QEL_DOC_PATH.");
  return refuse_change(change.tree ? roots.spoilt : user_file_faults()) ? OLH_RESULT_IO : OLH_RESULT_OK;
}

int set(const Change& change) {
  const ViewerKind& kind = asked_kind(change);
  const SearchRoots roots = find_search_roots("");
  const std::string program = executable_named(change.program);
  if (program.empty()) {
    const bool is_path = change.program.find('/') != std::string::npos;
    return failure(OLH_RESULT_NO_PROGRAM, quoted(change.program) +
                                              (is_path ? " is not executable" : " is in no directory of PATH") +
                                              "; nothing is changed.");
  }
  if (const int refused = objection(change, roots); refused != OLH_RESULT_OK) return refused;
  const int result = change.tree ? store_for_tree(kind, program, roots) : store_for_user(kind, program, roots);
  if (result == OLH_RESULT_OK && misunderstands(kind, program))
    complain(misunderstanding_note(kind, program) + " It then opens " + change.program + " with " + kind.setting +
             "=" + command_line({change.program}) + ".");
  return result;
}

int forget(const Change& change) {
  const SearchRoots roots = find_search_roots("");
  if (const int refused = objection(change, roots); refused != OLH_RESULT_OK) return refused;
  return forget_choice(asked_kind(change), change.tree, roots);
}

Change& add_change(const Verb& verb, int (*work)(const Change&)) {
  Change& change = verb.action(work);
  verb.option("KIND", change.word, "Which viewer").required().one_of({kViewerKinds[0].word, kViewerKinds[1].word});
  verb.flag("--tree", change.tree, "In the options file of the documentation tree, for everybody who uses it");
  return change;
}

}  // namespace

void add_viewers_command(const Verb& olh) {
  const Verb verb = olh.verb("viewers", "Show or choose the browser and the PDF reader", kViewersExamples);
  add_json_option(verb, verb.action(tell));
  verb.take_one_verb_at_most();
  const Verb choose = verb.verb("set", "Choose a program", kExitCodes);
  Change& change = add_change(choose, set);
  choose.option("PROGRAM", change.program, "An executable: its path, or a name to look for along PATH").required();
  add_change(verb.verb("forget", "Remove a choice", kExitCodes), forget);
}

}  // namespace olh
