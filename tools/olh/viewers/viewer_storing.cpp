#include "viewer_storing.h"

#include <algorithm>

#include "chosen_viewer.h"
#include "shared.h"

namespace olh {

namespace {

std::string named(const ViewerSource& source) {
  return source.program + (source.choice == "search" ? ", found along PATH" : ", from " + source.from);
}

// What stood in the user's file when that is not what was in use: a program that is gone.
std::string stale_choice(const ViewerKind& kind, const ChosenViewer& before) {
  const std::string written = written_value(user_option_file(), kind.key);
  if (written.empty() || before.choice == "option_file") return "";
  return "; the file named " + written + ", which is not executable";
}

void say_what_follows(const ViewerKind& kind, const SearchRoots& roots, const std::string& forgotten) {
  const std::vector<ViewerSource> sources = viewer_sources(kind, roots);
  const auto next = std::ranges::find_if(
      sources, [&](const ViewerSource& one) { return one.choice != forgotten && !one.program.empty(); });
  say(next == sources.end() ? "No " + std::string(kind.label) + " is known now; 'olh setup' chooses one."
                            : "The " + std::string(kind.label) + " is now " + named(*next) + ".");
}

// A choice in front of that of the tree wins.
void say_what_wins(const ViewerKind& kind, const SearchRoots& roots) {
  for (const ViewerSource& source : viewer_sources(kind, roots)) {
    if (source.choice == "tree") return;
    if (!source.program.empty()) return say("It does not win for you: " + named(source) + ", comes first.");
  }
}

}  // namespace

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
  say_what_wins(kind, roots);
  return result;
}

int forget_choice(const ViewerKind& kind, bool of_tree, const SearchRoots& roots) {
  const std::string label = kind.label;
  const std::string file = of_tree ? tree_options_file(roots) : user_option_file();
  const std::string written = written_value(file, kind.key);
  if (written.empty()) {
    say("No " + label + " is chosen in " + file + "; nothing is written.");
    return OLH_RESULT_OK;
  }
  const int result = of_tree ? OlhSetAltViewerPath(kind.viewer, "") : OlhSetViewerPath(kind.viewer, "");
  if (result == OLH_RESULT_OK) {
    say("The " + label + " " + written + " is forgotten, in " + file + ".");
    say_what_follows(kind, roots, of_tree ? "tree" : "option_file");
  } else if (of_tree) {
    complain_unwritten(file);
  } else {
    complain("the " + label + " " + written + " could not be taken out of " + file + ".");
  }
  return result;
}

}  // namespace olh
