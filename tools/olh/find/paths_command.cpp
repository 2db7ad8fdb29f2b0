// olh paths: the search path, where each root comes from, and what is no root and why.
#include <nlohmann/json.hpp>

#include "find.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kPathsExamples =
    "Examples:\n"
    "  olh paths                                the roots in order, the first wins\n"
    "  olh paths --root /usr/share/olh/docs     as it would be with that root in front\n"
    "  olh paths --json\n"
    "Exit code: 0, or 4 when there is no root; 64 wrong use.\n";

struct PathsArguments {
  std::string root;
  bool json = false;
};

// "QEL_DOC_PATH", or "QEL_ALT_DOC_PATH in FILE (QEL_DOC_PATH)".
std::string origin(const std::string& source, const std::string& options_file) {
  if (source == kOwnSource) return "olh itself; other programs do not search it";
  return options_file.empty() ? source : "QEL_ALT_DOC_PATH in " + options_file + " (" + source + ")";
}

void print_override(const char* label, const std::string& program, const std::string& from) {
  if (!program.empty()) say("     " + std::string(label) + program + " (" + from + ")");
}

void print_as_text(const SearchRoots& roots) {
  std::size_t number = 0;
  for (const SearchRoot& root : roots.roots) {
    ++number;
    say_numbered(number, root.path);
    say("     from    " + origin(root.source, root.options_file));
    if (!root.parent.empty()) say("     tree    " + root.parent);
    print_override("browser ", root.browser, root.browser_from);
    print_override("reader  ", root.reader, root.reader_from);
  }
  if (!roots.rejected.empty()) say("Not used:");
  for (const JudgedRoot& one : roots.rejected)
    say("   " + (one.path.empty() ? "(an empty path)" : one.path) + ": " + one.reason + " [" +
        origin(one.source, one.options_file) + "]");
}

nlohmann::json root_as_json(const SearchRoot& root) {
  return {{"path", root.path},
          {"kind", is_web_root(root.path) ? "url" : "directory"},
          {"source", root.source},
          {"options_file", text_or_null(root.options_file)},
          {"parent", text_or_null(root.parent)},
          {"browser", text_or_null(root.browser)},
          {"browser_from", text_or_null(root.browser_from)},
          {"reader", text_or_null(root.reader)},
          {"reader_from", text_or_null(root.reader_from)}};
}

void print_as_json(const SearchRoots& roots, const std::vector<SpoiltFile>& spoilt) {
  nlohmann::json answer = {{"roots", nlohmann::json::array()},
                           {"rejected", nlohmann::json::array()},
                           {"spoilt_option_files", nlohmann::json::array()}};
  for (const SearchRoot& root : roots.roots) answer["roots"].push_back(root_as_json(root));
  for (const JudgedRoot& one : roots.rejected)
    answer["rejected"].push_back({{"path", one.path},
                                  {"source", one.source},
                                  {"options_file", text_or_null(one.options_file)},
                                  {"reason", one.reason}});
  for (const SpoiltFile& one : spoilt)
    answer["spoilt_option_files"].push_back(
        {{"file", one.file}, {"line", line_or_null(one.line)}, {"reason", one.reason}});
  say_json(answer);
}

int paths(const PathsArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.root);
  std::vector<SpoiltFile> spoilt = roots.spoilt;
  for (SpoiltFile& one : user_file_faults()) spoilt.push_back(std::move(one));
  asked.json ? print_as_json(roots, spoilt) : print_as_text(roots);
  complain_about(spoilt);
  if (!roots.roots.empty()) return OLH_RESULT_OK;
  return failure(
      OLH_RESULT_NOT_FOUND,
      "no documentation root is known. Set QEL_DOC_PATH to a directory that holds htmldocs or pdfdocs, or to the "
      "http:// URL of one; QEL_OVERRIDE_DOC_PATH, QEL_PRODUCT_DOC_PATH, TRV_HOME, QEL_HOME and OLH_SYSTEM_DOC_PATH "
      "are read too.");
}

}  // namespace

void add_paths_command(const Verb& olh) {
  const Verb verb = olh.verb("paths", "Print the directories and web addresses that are searched", kPathsExamples);
  PathsArguments& asked = verb.action(paths);
  add_root_option(verb, asked.root);
  add_json_option(verb, asked.json);
}

}  // namespace olh
