// olh where DOC: the place of a document; with --all, every place that is tried for it.
#include <map>
#include <nlohmann/json.hpp>

#include "find.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kWhereExamples =
    "Examples:\n"
    "  olh where olh_manual         the location, its kind and its root\n"
    "  olh where --all olh_manual   every place that is tried, in order:\n"
    "                               * is opened, + exists too, - does not exist, ? is unknown\n"
    "  olh where --json olh_td\n"
    "Exit code: 0 found, 3 no name, 4 not found, 64 wrong use.\n";

struct WhereArguments {
  std::string document;
  std::string root;
  bool all = false;
  bool json = false;
};

struct Tried {
  Place place;
  Presence presence = Presence::kNo;
  bool wins = false;
};

// Asks each URL root once for all the places below it.
std::map<std::string, Presence> ask_url_roots(const std::vector<Place>& places) {
  std::map<std::string, std::vector<std::string>> urls;
  for (const Place& place : places)
    if (!place.root.empty() && is_web_root(place.tested)) urls[place.root].push_back(place.tested);
  std::map<std::string, Presence> answers;
  for (const auto& [root, list] : urls) answers.merge(probe_url_root(root, list));
  return answers;
}

Presence presence_of(const Place& place, const std::map<std::string, Presence>& answers) {
  const auto answer = answers.find(place.tested);
  if (answer != answers.end()) return answer->second;
  if (place.tested.empty()) return Presence::kCannotTell;  // a URL is taken as it is
  return path_exists(place.tested.c_str()) == 1 ? Presence::kYes : Presence::kNo;
}

std::vector<Tried> try_all(const WhereArguments& asked, const Located& located, const SearchRoots& roots) {
  const std::vector<Place> places = places_of(asked.document, roots.preferred, paths_of(roots));
  const std::map<std::string, Presence> answers = ask_url_roots(places);
  std::vector<Tried> list;
  for (const Place& place : places) {
    const bool wins = located.found && place.location == located.location;
    list.push_back({place, wins ? Presence::kYes : presence_of(place, answers), wins});
  }
  return list;
}

nlohmann::json places_as_json(const std::vector<Tried>& list) {
  nlohmann::json places = nlohmann::json::array();
  for (const Tried& tried : list)
    places.push_back({{"location", tried.place.location},
                      {"kind", kind_name(tried.place.kind)},
                      {"root", text_or_null(tried.place.root)},
                      {"exists", presence_as_json(tried.presence)},
                      {"winner", tried.wins}});
  return places;
}

void print_places(const std::string& document, const std::vector<Tried>& list) {
  say("Every place that is tried for " + quoted(document) +
      ", in order (* is opened, + exists too, - does not exist, ? is unknown):");
  for (const Tried& tried : list) {
    const char mark = tried.wins                                ? '*'
                      : tried.presence == Presence::kYes        ? '+'
                      : tried.presence == Presence::kCannotTell ? '?'
                                                                : '-';
    const std::string line = std::string(1, mark) + " " + tried.place.location;
    tried.wins ? say_marked("", line) : say(line);
  }
}

void print_one(const Located& located) {
  say("location  " + located.location);
  say(std::string("kind      ") + kind_name(located.kind));
  say("root      " + (located.root.empty() ? "none: outside the search path" : located.root));
}

int where(const WhereArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.root);
  const Located located = locate(asked.document, roots);
  if (asked.json) {
    nlohmann::json answer = located_as_json(asked.document, located);
    if (asked.all) answer["places"] = places_as_json(try_all(asked, located, roots));
    say_json(answer);
  } else if (asked.all) {
    print_places(asked.document, try_all(asked, located, roots));
  } else if (located.found) {
    print_one(located);
  }
  return located.found ? OLH_RESULT_OK : complain_not_found(asked.document, roots);
}

}  // namespace

void add_where_command(const Verb& olh) {
  const Verb verb = olh.verb("where", "Find where a document is", kWhereExamples);
  WhereArguments& asked = verb.action(where);
  add_document(verb, asked.document);
  verb.flag("-a,--all", asked.all, "Every place that is tried, in order");
  add_root_option(verb, asked.root);
  add_json_option(verb, asked.json);
}

}  // namespace olh
