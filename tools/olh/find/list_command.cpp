// olh list: the documents and portals that the search path holds.
#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>

#include "find.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kListExamples =
    "Of a root on a web server only its lists are read, which 'olh dmerge' makes.\n"
    "Examples:\n"
    "  olh list                          each root with its documents; what an earlier root shadows is marked\n"
    "  olh list --root /usr/share/olh/docs --json\n"
    "  olh list --names --kind portal    the names alone, for a script\n"
    "Exit code: 0; 2 a directory cannot be read to its end; 4 when there is no root; 64 wrong use.\n";

struct ListArguments {
  std::string root;
  std::string kind;
  bool names = false;
  bool json = false;
};

std::vector<std::string> forms_of(const Holding& one) {
  std::vector<std::string> forms;
  if (one.html) forms.emplace_back(kind_name(OLH_VIEWER_HTML));
  if (one.pdf) forms.emplace_back(kind_name(OLH_VIEWER_PDF));
  if (one.portal) forms.emplace_back(kind_name(OLH_VIEWER_TOMEDECK));
  return forms;
}

std::vector<Holdings> gather(const SearchRoots& roots, const std::string& kind) {
  std::vector<Holdings> gathered;
  for (const std::string& root : paths_of(roots)) gathered.push_back(holdings_of(root));
  mark_shadowed(gathered, roots.preferred);
  if (kind.empty()) return gathered;
  for (Holdings& root : gathered)
    std::erase_if(root.all, [&](const Holding& one) {
      const auto forms = forms_of(one);
      return std::find(forms.begin(), forms.end(), kind) == forms.end();
    });
  return gathered;
}

// ---- answers ----

// What cannot be told of a root; "" for nothing.
std::string unknown_part(const Holdings& root) {
  std::vector<std::string> parts;
  if (!root.documents_known) parts.emplace_back("documents");
  if (!root.portals_known) parts.emplace_back("portals");
  if (parts.empty()) return "";
  if (!is_web_root(root.root)) return "may hold more " + enumeration(parts);
  return "unknown which " + enumeration(parts) + " it holds: its lists cannot be read";
}

void print_root(const Holdings& root, std::size_t number, std::size_t width) {
  say_numbered(number, root.root);
  for (const Holding& one : root.all) {
    std::string forms;
    for (const std::string& form : forms_of(one)) forms += (forms.empty() ? "" : ", ") + form;
    std::string line =
        "     " + padded(visible(one.name), width) + "  " + padded(forms, std::string("html, pdf").size());
    if (!one.title.empty()) line += "  " + one.title;
    if (!one.shadowed_by.empty()) line += "  [shadowed by " + one.shadowed_by + "]";
    say(line.substr(0, line.find_last_not_of(' ') + 1));
  }
  const std::string unknown = unknown_part(root);
  if (!unknown.empty()) say("     (" + unknown + ")");
  if (unknown.empty() && root.all.empty()) say("     (nothing)");
}

void print_as_text(const std::vector<Holdings>& roots) {
  std::size_t width = 0;
  for (const Holdings& root : roots)
    for (const Holding& one : root.all) width = std::max(width, width_of(visible(one.name)));
  std::size_t number = 0;
  for (const Holdings& root : roots) print_root(root, ++number, width);
}

void print_names(const std::vector<Holdings>& roots) {
  std::set<std::string> names;
  for (const Holdings& root : roots)
    for (const Holding& one : root.all) names.insert(one.name);
  for (const std::string& name : names) say(name);
}

void print_as_json(const std::vector<Holdings>& roots) {
  nlohmann::json answer = {{"roots", nlohmann::json::array()}};
  for (const Holdings& root : roots) {
    nlohmann::json documents = nlohmann::json::array();
    for (const Holding& one : root.all)
      documents.push_back({{"name", one.name},
                           {"title", text_or_null(one.title)},
                           {"kinds", forms_of(one)},
                           {"shadowed_by", text_or_null(one.shadowed_by)}});
    answer["roots"].push_back({{"path", root.root},
                               {"kind", is_web_root(root.root) ? "url" : "directory"},
                               {"documents_known", root.documents_known},
                               {"portals_known", root.portals_known},
                               {"documents", documents}});
  }
  say_json(answer);
}

// Returns whether all directories could be read to their end.
bool complain_about_half_read(const std::vector<Holdings>& roots) {
  bool are_whole = true;
  for (const Holdings& root : roots)
    for (const HalfRead& one : root.half_read) {
      complain(root.root + "/" + one.directory + " cannot be read to its end: " + one.reason +
               ". What else it holds is not listed.");
      are_whole = false;
    }
  return are_whole;
}

int list(const ListArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.root);
  const std::vector<Holdings> gathered = gather(roots, asked.kind);
  if (asked.json) {
    print_as_json(gathered);
  } else if (asked.names) {
    print_names(gathered);
  } else {
    print_as_text(gathered);
  }
  for (const Holdings& root : gathered)
    for (const std::string& manual : root.unreachable)
      complain(root.root + "/htmldocs/" + manual + " is not listed: it " + kWrongStartPage + ".");
  complain_about_roots(roots);
  if (!complain_about_half_read(gathered)) return OLH_RESULT_FAILED;
  if (!roots.roots.empty()) return OLH_RESULT_OK;
  return failure(OLH_RESULT_NOT_FOUND, kNoRoot);
}

}  // namespace

void add_list_command(const Verb& olh) {
  const Verb verb = olh.verb("list", "List the documents and portals that are installed", kListExamples);
  ListArguments& asked = verb.action(list);
  verb.option("--kind", asked.kind, "Only what exists in that form")
      .one_of({"html", "pdf", "portal"})
      .value_named("KIND");
  const Option names = verb.flag("--names", asked.names, "The names alone, each once, one a line");
  add_json_option(verb, asked.json).excludes(names);
  add_root_option(verb, asked.root);
}

}  // namespace olh
