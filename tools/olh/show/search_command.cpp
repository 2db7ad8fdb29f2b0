// olh search QUERY [SCOPE]: the page with what a search of the documentation finds.
#include <nlohmann/json.hpp>

#include "find.h"
#include "olh/support.h"
#include "shared.h"
#include "show.h"
#include "showing.h"

namespace olh {

namespace {

constexpr const char* kSearchExamples =
    "Without a scope everything below the first root with a portal is searched; \"orvane\" is the\n"
    "support portal; else the scope is an HTML manual or a portal.\n"
    "Examples:\n"
    "  olh search 'viewer order'\n"
    "  olh search destinations olh_manual\n"
    "  olh search --print destinations olh_td    what would be run; nothing is\n"
    "Exit code: 0 shown, 2 the browser failed or would show nothing, or there is no display, 3 no query,\n"
    "4 nothing of that name can be searched, 7 no browser known, 64 wrong use.\n";

constexpr const char* kSupportPortal = "orvane";

struct SearchArguments {
  std::string query;
  std::string scope;
  ShowOptions options;
};

// What is searched, in a word: for the JSON answer.
const char* kind_of_scope(const std::string& scope, const Located& located) {
  if (scope.empty()) return "everything";
  if (scope == kSupportPortal) return "support_portal";
  return kind_name(located.kind);
}

// Where the results will come from. The page that answers is another one than the scope's own, so only the root is
// kept; and the browser is always the user's, whatever the tree prescribes.
Located locate_scope(const std::string& scope, const SearchRoots& roots) {
  Located located;
  if (scope == kSupportPortal) {
    located.found = true;
    return located;
  }
  located = scope.empty() ? locate_with(FindTomeDeck, OLH_VIEWER_TOMEDECK, scope, roots) : locate(scope, roots);
  if (located.kind == OLH_VIEWER_PDF) located.found = false;
  located.location.clear();
  located.tree_program.clear();
  located.tree_file.clear();
  return located;
}

std::string scope_in_words(const std::string& scope) {
  return scope.empty() ? "everything" : scope == kSupportPortal ? "the support portal" : scope;
}

nlohmann::json scope_as_json(const SearchArguments& asked, const Located& located) {
  return {{"query", asked.query},
          {"scope", text_or_null(asked.scope)},
          {"searched", located.found ? nlohmann::json(kind_of_scope(asked.scope, located)) : nlohmann::json()},
          {"root", text_or_null(located.root)}};
}

void complain_of_scope(const SearchArguments& asked, const Located& located, const SearchRoots& roots) {
  if (asked.scope == kSupportPortal) {
    complain("there is no support portal that could be searched: the library was built without one.");
  } else if (asked.scope.empty() && roots.roots.empty()) {
    complain(kNoRoot);
    complain_about_roots(roots);
  } else if (asked.scope.empty()) {
    complain("everything is searched through the portals, and there is no tomedecks/index.html below " +
             enumeration(paths_of(roots)) + ". Name an HTML manual to search in; 'olh list' tells which there are.");
  } else if (located.kind == OLH_VIEWER_PDF) {
    complain(quoted(asked.scope) + " is a PDF, which cannot be searched: name an HTML manual or a portal.");
  } else {
    complain_not_found(asked.scope, roots);
  }
}

int search(const SearchArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.options.root);
  ShowRequest request;
  request.located = locate_scope(asked.scope, roots);
  request.named = "the search for " + quoted(asked.query) + " in " + scope_in_words(asked.scope);
  request.answer = [&] { return scope_as_json(asked, request.located); };
  request.obstacle_to_text =
      "there is no display, and what a search finds cannot be shown as text yet. "
      "'olh topics DOC' lists the topics of a manual.";
  request.words = {"search", asked.query, asked.scope};
  request.call = [&] { return OlhSearch(asked.query.c_str(), asked.scope.c_str()); };
  request.complain_of = [&](int result) {
    if (result == OLH_RESULT_INVALID) return complain("words to search for are needed, not an empty query.");
    complain_of_scope(asked, request.located, roots);
  };
  return carry_out(request, asked.options, roots);
}

}  // namespace

void add_search_command(const Verb& olh) {
  const Verb verb = olh.verb("search", "Search the documentation", kSearchExamples);
  SearchArguments& asked = verb.action(search);
  verb.option("QUERY", asked.query, "The words to look for").required();
  verb.option("SCOPE", asked.scope, "An HTML manual, a portal, or orvane");
  add_show_options(verb, asked.options);
}

}  // namespace olh
