// olh search QUERY [SCOPE]: the page with what a search of the documentation finds.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "child.h"
#include "find.h"
#include "olh/support.h"
#include "search_hits.h"
#include "shared.h"
#include "show.h"
#include "show_result.h"
#include "showing.h"

namespace olh {

namespace {

constexpr const char* kSearchExamples =
    "Without a display, and with --text, the results are listed as text.\n"
    "If the last word is the name of a manual, PDF or portal, only that is searched; \"orvane\" is the support\n"
    "portal. Else everything below the first root with a portal is searched. Results in a PDF are always text.\n"
    "Examples:\n"
    "  olh search change the browser\n"
    "  olh search destinations olh_manual         in one manual\n"
    "  olh search --text pdf reader olh_manual    the results as text\n"
    "  olh show 2                                 shows the second of them\n"
    "  olh search --open 2 pdf reader olh_manual  the same in one step\n"
    "  olh search --print destinations olh_td     what would be run; nothing is started\n"
    "Exit code: 0 shown, 2 the browser failed or would show nothing, or there is no display, or --root is no\n"
    "documentation root, 3 no query, 4 nothing of that name can be searched, or nothing is found (--text, --open),\n"
    "7 no browser known, 64 wrong use.\n";

constexpr const char* kSupportPortal = "orvane";
constexpr std::size_t kListed = 10;

struct SearchArguments {
  std::vector<std::string> words;
  bool as_text = false;
  std::string limit;
  std::string open;
  ShowOptions options;
  std::string query;  // of the words,
  std::string scope;  // and where to look for it
};

// Where the results come from: the root, and which of its documents are searched (all without one).
struct SearchPlace {
  Located located;
  std::vector<std::string> documents;
};

// What is searched, in a word: for the JSON answer.
const char* kind_of_scope(const std::string& scope, const Located& located) {
  if (scope.empty()) return "everything";
  if (scope == kSupportPortal) return "support_portal";
  return kind_name(located.kind);
}

// Where the results will come from. The page that answers is another one than the scope's own, so only the root is
// kept; and the browser is always the user's, whatever the tree prescribes.
SearchPlace locate_scope(const std::string& scope, const SearchRoots& roots) {
  SearchPlace place;
  Located& located = place.located;
  if (scope == kSupportPortal) {
    located.found = true;
    return place;
  }
  located = scope.empty() ? locate_with(FindTomeDeck, OLH_VIEWER_TOMEDECK, scope, roots) : locate(scope, roots);
  if (located.found && located.kind == OLH_VIEWER_PDF)
    place.documents = {std::filesystem::path(located.location).stem().string()};
  else if (located.found && located.kind == OLH_VIEWER_HTML)
    place.documents = {std::filesystem::path(located.location).parent_path().filename().string()};
  else if (located.found && !scope.empty())
    place.documents = documents_of_portal(located.root, scope);
  if (!scope.empty() && place.documents.empty()) place.documents = {""};  // none, not all
  located.location.clear();
  located.tree_program.clear();
  located.tree_file.clear();
  return place;
}

bool names_something(const std::string& scope, const SearchRoots& roots) {
  return scope == kSupportPortal || (!scope.empty() && locate(scope, roots).found);
}

// The last of several words is where to search if it names something; else all are looked for.
SearchArguments with_scope_of_words(SearchArguments asked, const SearchRoots& roots) {
  std::vector<std::string>& words = asked.words;
  const std::string last = words.back();
  if (words.size() > 1 && names_something(last, roots)) {
    asked.scope = last;
    words.pop_back();
  } else if (words.size() == 2 && !asked.options.quiet) {
    complain("note: there is no manual or portal " + quoted(last) + ": the search is for both words.");
  }
  for (const std::string& word : words) asked.query += (asked.query.empty() ? "" : " ") + word;
  return asked;
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

void complain_of_scope(const SearchArguments& asked, const SearchRoots& roots) {
  if (asked.scope == kSupportPortal) {
    complain("there is no support portal that could be searched: the library was built without one.");
  } else if (asked.scope.empty() && roots.roots.empty()) {
    complain(kNoRoot);
    complain_about_roots(roots);
  } else {
    complain("everything is searched through the portals, and there is no tomedecks/index.html below " +
             enumeration(paths_of(roots)) + ". Name an HTML manual to search in; 'olh list' prints what there is.");
  }
}

// Whether the caller named roots and none of them is one: the results would come from elsewhere.
bool are_named_roots_none(const SearchRoots& roots) {
  const auto is_named = [](const auto& root) { return root.source == kRootOption; };
  return std::ranges::any_of(roots.rejected, is_named) && std::ranges::none_of(roots.roots, is_named);
}

// What the index of the root answers; nothing without one, or where the root is no directory of this machine.
std::optional<SearchHits> hits_at(const SearchPlace& place, const SearchArguments& asked) {
  const bool is_here = place.located.found && !place.located.root.empty() && is_url(place.located.root.c_str()) == 0;
  const std::size_t wanted =
      std::max(asked.limit.empty() ? kListed : result_number(asked.limit), result_number(asked.open));
  return is_here ? search_hits(place.located.root, asked.query, place.documents, wanted) : std::nullopt;
}

// The end of a sentence that says why no text answers.
std::string without_index(const Located& located) {
  return is_url(located.root.c_str()) != 0 ? "and a root on a web server is searched only in a browser."
                                           : "and this root has no search index here. 'olh dmerge ROOT' makes it; "
                                             "'olh topics DOC' lists the topics "
                                             "of a manual.";
}

// The results as text, which show takes by their numbers from here on.
std::string listed_as_text(const SearchHits& found, const SearchArguments& asked) {
  keep_results(listed_results(found, asked.query, asked.scope));
  return as_text(found, asked.query);
}

int print_hits(const std::optional<SearchHits>& found, const SearchArguments& asked, const Located& located) {
  if (!found) return failure(OLH_RESULT_NOT_FOUND, "the results were asked for as text, " + without_index(located));
  olh_viewers::print_text(listed_as_text(*found, asked), true);
  return found->hits.empty() ? OLH_RESULT_NOT_FOUND : OLH_RESULT_OK;
}

int open_hit(const std::optional<SearchHits>& found, const SearchArguments& asked, const Located& located) {
  if (!found) return failure(OLH_RESULT_NOT_FOUND, "a result was asked for, " + without_index(located));
  return show_result(listed_results(*found, asked.query, asked.scope), result_number(asked.open), asked.options);
}

// No page shows what is found in one PDF: its results are text, also where there is a display.
int search_pdf(const std::optional<SearchHits>& found, const SearchArguments& asked, const Located& located) {
  if (!found)
    return failure(OLH_RESULT_NOT_FOUND, quoted(asked.scope) + " is a PDF, which only a search index can search, " +
                                             without_index(located));
  if (!asked.open.empty()) return open_hit(found, asked, located);
  if (!asked.options.json) return print_hits(found, asked, located);
  nlohmann::json answer = scope_as_json(asked, located);
  answer["results"] = as_json(*found);
  answer["result"] = found->hits.empty() ? OLH_RESULT_NOT_FOUND : OLH_RESULT_OK;
  say_json(answer);
  return answer["result"];
}

int search(const SearchArguments& given) {
  const SearchRoots roots = find_search_roots(given.options.root);
  if (are_named_roots_none(roots)) {
    complain_about_roots(roots);
    return OLH_RESULT_FAILED;
  }
  const SearchArguments asked = with_scope_of_words(given, roots);
  const SearchPlace place = locate_scope(asked.scope, roots);
  const std::optional<SearchHits> found = hits_at(place, asked);
  if (place.located.found && place.located.kind == OLH_VIEWER_PDF) return search_pdf(found, asked, place.located);
  ShowRequest request;
  request.located = place.located;
  if (request.located.found && asked.as_text) return print_hits(found, asked, place.located);
  if (request.located.found && !asked.open.empty()) return open_hit(found, asked, place.located);
  request.named = "the search for " + quoted(asked.query) + " in " + scope_in_words(asked.scope);
  request.answer = [&] {
    nlohmann::json answer = scope_as_json(asked, request.located);
    answer["results"] = found ? as_json(*found) : nlohmann::json::array();
    return answer;
  };
  if (!found) request.obstacle_to_text = "there is no display, " + without_index(place.located);
  request.text = [&] { return listed_as_text(*found, asked); };
  if (found && found->hits.empty()) request.result_of_text = OLH_RESULT_NOT_FOUND;
  request.words = {"search", asked.query, asked.scope};
  request.call = [&] { return OlhSearch(asked.query.c_str(), asked.scope.c_str()); };
  request.complain_of = [&](int result) {
    if (result == OLH_RESULT_INVALID) return complain("words to search for are needed, not an empty query.");
    complain_of_scope(asked, roots);
  };
  return carry_out(request, asked.options, roots);
}

std::string refusal_of_number(const std::string& number) {
  return result_number(number) > 0 ? "" : "'" + number + "' is not a number from 1 to 999.";
}

}  // namespace

void add_search_command(const Verb& olh) {
  const Verb verb = olh.verb("search", "Search the documentation", kSearchExamples);
  SearchArguments& asked = verb.action(search);
  verb.option("WORDS", asked.words, "The words to look for, and where: a manual, a portal, or orvane").required();
  const Option text = verb.flag("--text", asked.as_text, "List the results as text, also where there is a display");
  verb.option("--limit", asked.limit, "How many results are listed: 1 to 999, 10 by default")
      .refused_by(refusal_of_number)
      .value_named("NUMBER");
  verb.option("--open", asked.open, "Show the result of that number")
      .refused_by(refusal_of_number)
      .value_named("NUMBER")
      .excludes(text);
  add_show_options(verb, asked.options);
}

}  // namespace olh
