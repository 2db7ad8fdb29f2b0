#include "section_portals.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "carried_text.h"
#include "files.h"
#include "output_folder.h"
#include "words.h"

namespace olh_import {

namespace {

constexpr const char* kPortalPage = "index.html";
constexpr const char* kPortalList = "js/doclist.js";
constexpr const char* kLineMark = "  // olh import --doc-base";
constexpr std::string_view kPortalMark = "// Made by olh import --doc-base: the registered documents of a section.\n";

// "programming-python" of "Programming/Python", "programming-cpp" of "Programming/C++".
std::string word_of(const std::string& section) {
  std::string name;
  for (const char c : section) {
    const bool is_upper = c >= 'A' && c <= 'Z';
    const bool stays = is_upper || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    if (stays) name += is_upper ? static_cast<char>(c - 'A' + 'a') : c;
    if (c == '+') name += 'p';
    if (!stays && c != '+' && !name.empty() && name.back() != '-') name += '-';
  }
  if (name.ends_with('-')) name.pop_back();
  return name.empty() ? "other" : name;
}

bool is_made_here(const std::string& portal) {
  return olh_viewers::content_of(olh_viewers::path_in(portal, kPortalList)).starts_with(kPortalMark);
}

void replace_all(std::string& text, const std::string& before, const std::string& after) {
  for (std::size_t at = text.find(before); at != std::string::npos; at = text.find(before, at + after.size()))
    text.replace(at, before.size(), after);
}

// The page of the root's own portal, with another name and title.
std::string portal_page(std::string page, const std::string& name, const std::string& title) {
  constexpr std::string_view kTitle = "<title>";
  const std::size_t begin = page.find(kTitle);
  const std::size_t end = page.find('<', begin + kTitle.size());
  if (begin != std::string::npos && end != std::string::npos) {
    const std::string own = page.substr(begin + kTitle.size(), end - begin - kTitle.size());
    if (!own.empty()) replace_all(page, '>' + own + '<', '>' + as_markup(title) + '<');
  }
  replace_all(page, "tomedeck=qel_td", "tomedeck=" + name);
  return page;
}

std::string list_item(const std::string& title, const std::string& name) {
  return "List.fAddItem( \"" + title + "\", \"" + name + "\" );";
}

bool is_listed(const olh_viewers::Words& lines, const std::string& portal) {
  return std::ranges::any_of(
      lines, [&](const std::string& line) { return line.find('"' + portal + '"') != std::string::npos; });
}

bool is_before(const std::string& title, const std::string& other) {
  return olh_viewers::lower_case(title) < olh_viewers::lower_case(other);
}

}  // namespace

void SectionPortals::add(const std::string& section, const std::string& title, const std::string& document) {
  const std::string word = word_of(section);
  Portal& portal = portals_.try_emplace(word, Portal{word + "_td", carried_title(section), {}}).first->second;
  portal.documents.push_back({carried_title(title), document});
}

std::string SectionPortals::documents_of(const Portal& portal) {
  std::vector<Document> documents = portal.documents;
  std::ranges::stable_sort(documents, is_before, &Document::title);
  std::string list = std::string(kPortalMark) + "mTomeDeckName = \"" + portal.title +
                     "\";\n\n"
                     "var Entry;\n"
                     "var List;\n\n"
                     "TDTab_Documents.fVisible( true );\n\n"
                     "Entry = new TabEntry_Object( \"Documents\" );\n"
                     "List = new List_Object(\"doc\");\n";
  for (const Document& one : documents) list += list_item(one.title, one.name) + "\n";
  return list +
         "Entry.fAddList( List );\n"
         "TDTab_Documents.fAddEntry( Entry );\n";
}

// Portals that no line names are listed in the order in which the file system gives them. Lines of somebody else stay.
void SectionPortals::list_portals(const std::string& folder) const {
  const std::string file = folder + "/qel_td/js/tdklist.js";
  const std::string before = olh_viewers::content_of(file);
  olh_viewers::Words lines = olh_viewers::lines_of(before);
  std::erase_if(lines, [](const std::string& line) { return line.ends_with(kLineMark); });
  const auto end_of_list = std::ranges::find_if(
      lines, [](const std::string& line) { return line.find("Entry.fAddList") != std::string::npos; });
  olh_viewers::Words ours;
  for (const auto& [word, portal] : portals_)
    if (is_made_here(olh_viewers::path_in(folder, portal.name)) && !is_listed(lines, portal.name))
      ours.push_back(list_item(portal.title, portal.name) + kLineMark);
  if (end_of_list != lines.end()) lines.insert(end_of_list, ours.begin(), ours.end());
  std::string list;
  for (const std::string& line : lines) list += line + "\n";
  if (list == before) return;
  const OutputFolder made(file);
  made.write("list", list);
  made.put("list", file);
}

void SectionPortals::write(const std::string& root, std::vector<std::string>& problems) const {
  const std::string folder = root + "/tomedecks";
  const std::string model = olh_viewers::content_of(folder + "/qel_td/" + kPortalPage);
  if (model.empty() && !portals_.empty())
    problems.push_back("the sections' portals have no page of their own: " + folder + "/qel_td/" + kPortalPage +
                       " cannot be read");
  std::set<std::string> names;
  for (const auto& [word, portal] : portals_) {
    names.insert(portal.name);
    const std::string place = olh_viewers::path_in(folder, portal.name);
    std::error_code failed;
    if (std::filesystem::exists(place, failed) && !is_made_here(place)) {
      problems.push_back(place + " is there already, and no portal of a section: \"" + portal.title + "\" has none");
      continue;
    }
    OutputFolder made(place);
    if (!model.empty()) made.write(kPortalPage, portal_page(model, portal.name, portal.title));
    made.write(kPortalList, documents_of(portal));
    made.take_place();
  }
  for (const std::string& name : olh_viewers::names_in(folder).names) {
    const std::string place = olh_viewers::path_in(folder, name);
    if (!names.contains(name) && is_made_here(place)) OutputFolder(place).take_away(place);
  }
  list_portals(folder);
}

}  // namespace olh_import
