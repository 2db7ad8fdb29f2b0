#include "show_result.h"

#include <charconv>
#include <nlohmann/json.hpp>

#include "find.h"
#include "olh/support.h"
#include "shared.h"
#include "url.h"
#include "viewers.h"

namespace olh {

namespace {

std::string search_again(const ListedResults& results) {
  std::vector<std::string> words = {"olh", "search", "--text", results.query};
  if (!results.scope.empty()) words.push_back(results.scope);
  return command_line(words);
}

// The library asks a reader for a destination by its name; olh-pdf-reader takes this one for a page.
std::string destination_for(const ListedHit& hit, const Located& located, bool quiet) {
  if (hit.place.empty()) return "";
  const ViewerKind& kind = kind_of(OLH_VIEWER_PDF);
  const ChosenViewer reader = settle_viewer(OLH_VIEWER_PDF, located.tree_program, located.tree_file);
  if (!misunderstands(kind, reader.program)) return hit.place;
  if (!quiet)
    complain("note: the result is at \"" + hit.place + "\", but " + describe(reader) +
             " opens the first page. 'olh setup' puts " + kind.adapter + " in its place.");
  return "";
}

ShowRequest request_for_pdf(const ListedHit& hit, const SearchRoots& roots, bool quiet) {
  Located located = locate_with(FindPdfDoc, OLH_VIEWER_PDF, hit.document, roots);
  const std::string destination = located.found ? destination_for(hit, located, quiet) : "";
  ShowRequest request = request_for("show", hit.document, destination, located);
  request.call = [=] {
    if (!located.found) return OlhHelpCall(hit.document.c_str(), "", OLH_DISPLAY_NORMAL);
    return OlhAcroDocOpen(located.location.c_str(), destination.c_str(), located.tree_program.c_str());
  };
  return request;
}

// The address of a heading within a topic, which a help call cannot name.
std::string url_of_place(const ListedHit& hit, const std::string& root, int display) {
  const char* const query = display == OLH_DISPLAY_TOPIC   ? "?single=true"
                            : display == OLH_DISPLAY_POPUP ? "?single=popup"
                                                           : "";
  return olh_viewers::url_of(root + "/" + olh_viewers::decoded(hit.page)) + query + "#" +
         olh_viewers::percent_encoded(olh_viewers::decoded(hit.place));
}

ShowRequest request_for_topic(const ListedHit& hit, const std::string& root, const SearchRoots& roots, int display) {
  const Located located = locate(hit.document, roots);
  ShowRequest request = request_for("show", hit.document, hit.topic, located);
  request.call = [=] {
    if (hit.page.empty() || !located.found || located.root != root)
      return OlhHelpCall(hit.document.c_str(), hit.topic.c_str(), display);
    return OlhBrowserOpenURL(url_of_place(hit, root, display).c_str(), located.tree_program.c_str());
  };
  return request;
}

}  // namespace

std::size_t result_number(const std::string& text) {
  constexpr std::size_t kMostDigits = 3;
  std::size_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = error == std::errc() && end == text.data() + text.size() && text.size() <= kMostDigits;
  return is_number ? number : 0;
}

int show_result(const ListedResults& results, std::size_t number, const ShowOptions& asked, int display) {
  if (number > results.hits.size())
    return failure(OLH_RESULT_NOT_FOUND,
                   "the search for " + quoted(results.query) + " has " +
                       (results.hits.empty() ? "no results" : counted(results.hits.size(), "result", "results")) +
                       ".");
  const ListedHit& hit = results.hits[number - 1];
  if (!asked.quiet && index_at(results.root) != results.index)
    complain("note: the search index of " + results.root + " is not the one that gave the results; '" +
             search_again(results) + "' lists them again.");
  ShowOptions options = asked;
  options.root = results.root + (options.root.empty() ? "" : ":" + options.root);
  const SearchRoots roots = find_search_roots(options.root);
  ShowRequest request =
      hit.is_pdf ? request_for_pdf(hit, roots, asked.quiet) : request_for_topic(hit, results.root, roots, display);
  request.named =
      "result " + std::to_string(number) + " of the search for " + quoted(results.query) + ", " + request.named;
  request.complain_of = [&](int) { complain_not_found(hit.document, roots); };
  request.answer = [&, of_document = request.answer] {
    nlohmann::json answer = of_document();
    answer["search"] = {{"query", results.query}, {"number", number}};
    return answer;
  };
  return carry_out(request, options, roots);
}

}  // namespace olh
