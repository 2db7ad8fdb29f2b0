// olh alt-path [PATHS]: the alternate location of a documentation tree, shown or set.
#include <array>
#include <memory>
#include <nlohmann/json.hpp>

#include "find.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kAltPathExamples =
    "The first documentation root (or its parent tree) keeps its alternate location in its file\n"
    "qel_doc_options.ini; the roots that it names come first for everybody who uses that tree.\n"
    "Examples:\n"
    "  olh alt-path                                   what is stored, and where\n"
    "  olh alt-path --root docs /usr/share/olh/docs   stored for the tree docs of 'olh new'\n"
    "  olh alt-path --root docs --forget\n"
    "Exit code: 0, 3 no path, 4 no root is known or an element was rejected (the library counts one\n"
    "for each http:// URL), 5 the options file cannot be written, 64 wrong use.\n";

constexpr int kAlternateKey = 3;
constexpr int kTreeFile = 2;

struct AltPathArguments {
  std::string paths;
  std::string root;
  bool set = false;
  bool forget = false;
  bool json = false;
};

std::string stored_paths() {
  std::array<char, OLH_BUFFER_SIZE> paths{};
  return OlhGetAltDocPath(paths.data()) == OLH_RESULT_OK ? paths.data() : "";
}

int show(const AltPathArguments& asked, const SearchRoots& roots) {
  const std::string stored = stored_paths();
  const std::string file = tree_options_file(roots);
  if (asked.json) {
    say_json({{"file", file}, {"paths", text_or_null(stored)}});
  } else {
    say(stored.empty() ? "No alternate location is stored in " + file + "." : stored);
  }
  complain_about(roots.spoilt);
  return OLH_RESULT_OK;
}

int forget(const SearchRoots& roots) {
  const std::string file = tree_options_file(roots);
  if (stored_paths().empty()) {
    say("No alternate location is stored in " + file + "; nothing is written.");
    return OLH_RESULT_OK;
  }
  const int result = SetIniFile(kAlternateKey, "", kTreeFile);
  if (result == OLH_RESULT_OK) {
    say("The alternate location is forgotten, in " + file + ".");
  } else {
    complain_unwritten(file);
  }
  return result;
}

void explain(int result, const std::string& file, const std::vector<JudgedRoot>& rejected) {
  for (const JudgedRoot& one : rejected)
    complain((one.path.empty() ? "an empty path" : one.path) + " was left out: " + one.reason + ".");
  if (result == OLH_RESULT_INVALID) complain("a directory or URL is needed, not an empty one; --forget stores none.");
  if (result == OLH_RESULT_IO) complain_unwritten(file);
  if (result == OLH_RESULT_NOT_FOUND && rejected.empty())
    complain(
        "every root was accepted; the exit code is 4 because a path is split at each colon, that of http:// too.");
}

int set(const AltPathArguments& asked, const SearchRoots& roots) {
  const std::string file = tree_options_file(roots);
  if (refuse_change(roots.spoilt)) return OLH_RESULT_IO;
  int result = OLH_RESULT_OK;
  const std::vector<JudgedRoot> rejected =
      rejected_by_split(debug_lines_of([&] { result = OlhSetAltDocPath(asked.paths.c_str()); }), "alt-path");
  const std::string stored = stored_paths();
  if (result == OLH_RESULT_OK || result == OLH_RESULT_NOT_FOUND)
    say(stored.empty() ? "No root was accepted; " + file + " names no alternate location now."
                       : "Stored in " + file + ": " + stored);
  explain(result, file, rejected);
  return result;
}

int alt_path(const AltPathArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.root);
  if (roots.roots.empty())
    return failure(
        OLH_RESULT_NOT_FOUND,
        "no documentation root is known whose options file could hold it. Set QEL_DOC_PATH, or give --root PATH.");
  if (asked.forget) return forget(roots);
  return asked.set ? set(asked, roots) : show(asked, roots);
}

}  // namespace

void add_alt_path_command(const Verb& olh) {
  const Verb verb =
      olh.verb("alt-path", "Show or set the roots that are searched before a documentation tree", kAltPathExamples);
  const auto asked = std::make_shared<AltPathArguments>();
  const Option paths = verb.option("PATHS", asked->paths, "Directories or http:// URLs, separated by ':'");
  const Option json = verb.flag("--json", asked->json, "Answer as JSON (without PATHS)").excludes(paths);
  verb.flag("--forget", asked->forget, "Store none any more").excludes(paths).excludes(json);
  add_root_option(verb, asked->root);
  verb.action([asked, paths] {
    asked->set = paths.given();
    return alt_path(*asked);
  });
}

}  // namespace olh
