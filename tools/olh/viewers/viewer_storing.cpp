#include "viewer_storing.h"

#include "chosen_viewer.h"
#include "shared.h"
#include "viewer_sources.h"

namespace olh {

namespace {

std::string named(const ViewerSource& source) {
  return source.program + (source.choice == "search" ? ", found along PATH" : ", from " + source.from);
}

// What is followed when the sources up to this one are passed over; null for nothing.
const ViewerSource* first_behind(const std::vector<ViewerSource>& sources, const std::string& choice) {
  bool is_behind = false;
  for (const ViewerSource& source : sources) {
    if (is_behind && !source.program.empty()) return &source;
    is_behind = is_behind || source.choice == choice;
  }
  return nullptr;
}

// A choice in front of this one, which this one therefore cannot win against; null for none.
const ViewerSource* first_before(const std::vector<ViewerSource>& sources, const std::string& choice) {
  for (const ViewerSource& source : sources) {
    if (source.choice == choice) return nullptr;
    if (!source.program.empty()) return &source;
  }
  return nullptr;
}

// What stood in the user's file when that is not what was in use: a program that is gone.
std::string stale_choice(const ViewerKind& kind, const ChosenViewer& before) {
  const std::string written = written_value(user_option_file(), kind.key);
  if (written.empty() || before.choice == "option_file") return "";
  return "; the file named " + written + ", which is no executable";
}

void say_what_follows(const ViewerKind& kind, const SearchRoots& roots, const std::string& forgotten) {
  const std::vector<ViewerSource> sources = viewer_sources(kind, roots);
  const ViewerSource* next = first_before(sources, forgotten);
  if (next == nullptr) next = first_behind(sources, forgotten);
  say(next == nullptr ? "No " + std::string(kind.label) + " is known now; 'olh setup' chooses one."
                      : "The " + std::string(kind.label) + " is now " + named(*next) + ".");
}

}  // namespace

bool refuses_spoilt_user_file() { return refuse_change(read_option_file(user_option_file()).spoilt); }

bool refuses_spoilt_tree_file(const SearchRoots& roots) { return refuse_change(roots.spoilt); }

int store_for_user(const ViewerKind& kind, const std::string& program, const SearchRoots& roots) {
  const std::string label = kind.label;
  const ChosenViewer before = viewer_in_use(kind, roots);
  const std::string stale = stale_choice(kind, before);
  const int result = OlhSetViewerPath(kind.viewer, program.c_str());
  if (result != OLH_RESULT_OK) {
    complain("the " + label + " " + program + " could not be written to " + user_option_file() + ".");
  } else if (before.program == program) {
    say("The " + label + " is " + describe(before) + " already; nothing is written.");
  } else {
    say("The " + label + " is now " + program + ", written to " + user_option_file() +
        " (before: " + describe(before) + stale + ").");
  }
  return result;
}

int store_for_tree(const ViewerKind& kind, const std::string& program, const SearchRoots& roots) {
  const std::string file = tree_options_file(roots);
  const int result = OlhSetAltViewerPath(kind.viewer, program.c_str());
  if (result != OLH_RESULT_OK) {
    complain_unwritten(file);
    return result;
  }
  say("The " + std::string(kind.label) + " of the documentation tree is " + program + ", written to " + file + ".");
  const std::vector<ViewerSource> sources = viewer_sources(kind, roots);
  if (const ViewerSource* winner = first_before(sources, "tree"); winner != nullptr)
    say("It does not win for you: " + named(*winner) + ", comes first.");
  return result;
}

int forget_for_user(const ViewerKind& kind, const SearchRoots& roots) {
  const std::string file = user_option_file();
  const std::string written = written_value(file, kind.key);
  if (written.empty()) {
    say("No " + std::string(kind.label) + " is chosen in " + file + "; nothing is written.");
    return OLH_RESULT_OK;
  }
  const int result = OlhSetViewerPath(kind.viewer, "");
  if (result != OLH_RESULT_OK) {
    complain("the " + std::string(kind.label) + " " + written + " could not be taken out of " + file + ".");
    return result;
  }
  say("The " + std::string(kind.label) + " " + written + " is forgotten, in " + file + ".");
  say_what_follows(kind, roots, "option_file");
  return result;
}

int forget_for_tree(const ViewerKind& kind, const SearchRoots& roots) {
  const std::string file = tree_options_file(roots);
  const std::string written = written_value(file, kind.key);
  if (written.empty()) {
    say("No " + std::string(kind.label) + " is chosen in " + file + "; nothing is written.");
    return OLH_RESULT_OK;
  }
  const int result = OlhSetAltViewerPath(kind.viewer, "");
  if (result != OLH_RESULT_OK) {
    complain_unwritten(file);
    return result;
  }
  say("The " + std::string(kind.label) + " " + written + " is forgotten, in " + file + ".");
  say_what_follows(kind, roots, "tree");
  return result;
}

}  // namespace olh
