// olh topics DOC: the places in a document that a tag can name.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "destination_names.h"
#include "find.h"
#include "pdf_places.h"
#include "shared.h"
#include "topic_table.h"

namespace olh {

namespace {

constexpr const char* kTopicsExamples =
    "Examples:\n"
    "  olh topics olh_manual            name, title and page of each topic\n"
    "  olh topics --names olh_manual    the tags alone, for a script\n"
    "  olh topics /usr/share/olh/docs/pdfdocs/olh_manual.pdf\n"
    "                                   tag, page and named destination\n"
    "Exit code: 0, 3 no name, 4 no such document, 5 its topics cannot be read, 64 wrong use.\n";

struct TopicsArguments {
  std::string document;
  std::string root;
  bool names = false;
  bool json = false;
};

struct Topic {
  std::string tag;  // "" when no tag leads there
  std::string title;
  std::string page;  // of a manual: the file, beside the start page; of a PDF: its number as text
  int number = 0;    // of a PDF
  std::string destination;
};

struct Topics {
  std::vector<Topic> all;
  std::string unreadable;  // why, as the end of a sentence; "" when they could be read
};

// ---- reading ----

Topics topics_of_manual(const std::string& location) {
  const std::string table = place_beside(location, olh_viewers::kTopicTable);
  const std::optional<std::string> text = text_at(table);
  if (!text) return {{}, "its topic table " + table + " cannot be read"};
  Topics topics;
  for (const olh_viewers::TableTopic& one : olh_viewers::topics_in_table(*text))
    topics.all.push_back({one.name, one.title, one.page, 0, ""});
  return topics;
}

Topics topics_of_pdf(const std::string& file) {
  if (is_web_root(file)) return {{}, "it is on a web server: its named destinations cannot be read from here"};
  const auto places = olh_viewers::destinations_of(file);
  if (!places)
    return {{}, olh_viewers::can_read_destinations() ? "pdfinfo cannot read it" : olh_viewers::kInstallPdfinfo};
  Topics topics;
  for (const olh_viewers::NamedPlace& place : *places)
    topics.all.push_back(
        {olh_viewers::tag_for(place.name).value_or(""), "", std::to_string(place.page), place.page, place.name});
  return topics;
}

Topics topics_of(const Located& located) {
  if (located.kind == OLH_VIEWER_TOMEDECK) return {{}, "a portal has tabs, which only its own pages know"};
  return located.kind == OLH_VIEWER_PDF ? topics_of_pdf(located.location) : topics_of_manual(located.location);
}

// ---- answers ----

void print_as_json(const TopicsArguments& asked, const Located& located, const Topics& topics) {
  nlohmann::json answer = located_as_json(asked.document, located);
  answer["topics"] = topics.unreadable.empty() && located.found ? nlohmann::json::array() : nlohmann::json();
  for (const Topic& topic : topics.all)
    answer["topics"].push_back({{"tag", text_or_null(topic.tag)},
                                {"title", text_or_null(topic.title)},
                                {"page", topic.number > 0 ? nlohmann::json(topic.number) : text_or_null(topic.page)},
                                {"destination", text_or_null(topic.destination)}});
  say_json(answer);
}

// What a person sees of a topic: its tag as it is typed, its page, and its title or destination.
struct Row {
  std::string tag;
  std::string page;
  std::string rest;
};

std::vector<Row> rows_of(const Topics& topics) {
  std::vector<Row> rows;
  for (const Topic& topic : topics.all)
    rows.push_back({topic.tag.empty() ? "(no tag)" : visible(command_line({topic.tag})), visible(topic.page),
                    visible(topic.destination.empty() ? topic.title : topic.destination)});
  return rows;
}

// The column of tags takes half of the screen at most: a longer tag has a line of its own. What does not fit behind it
// goes on below its beginning.
void print_row(const Row& row, std::size_t tag_width, std::size_t page_width, std::size_t rest_width) {
  const bool is_alone = width_of(row.tag) > tag_width;
  if (is_alone) say(row.tag);
  std::string line = padded(is_alone ? "" : row.tag, tag_width) + "  " + padded(row.page, page_width) + "  ";
  for (const std::string& piece : folded(row.rest, rest_width)) {
    line += piece;
    say(line.substr(0, line.find_last_not_of(' ') + 1));
    line = std::string(tag_width + page_width + 4, ' ');
  }
}

// On a screen that has no room for columns: a line for each part of a row. A tag stays whole, so that it can be copied.
void print_in_lines(const Row& row, std::size_t screen) {
  constexpr std::size_t kIndent = 2;
  constexpr std::size_t kLeast = 10;
  say(row.tag);
  for (const std::string* part : {&row.page, &row.rest})
    for (const std::string& piece : folded(*part, std::max(screen, kIndent + kLeast) - kIndent))
      say(std::string(kIndent, ' ') + piece.substr(0, piece.find_last_not_of(' ') + 1));
}

void print_as_text(const Topics& topics) {
  constexpr std::size_t kLeast = 20;
  const std::vector<Row> rows = rows_of(topics);
  const std::size_t screen = width_of_screen();
  std::size_t tag_width = 0;
  std::size_t page_width = 0;
  for (const Row& row : rows) {
    if (width_of(row.tag) <= screen / 2) tag_width = std::max(tag_width, width_of(row.tag));
    page_width = std::max(page_width, width_of(row.page));
  }
  const std::size_t used = tag_width + page_width + 4;
  for (const Row& row : rows) {
    if (used + kLeast > screen)
      print_in_lines(row, screen);
    else
      print_row(row, tag_width, page_width, screen - used);
  }
}

void print_names(const Topics& topics) {
  for (const Topic& topic : topics.all)
    if (!topic.tag.empty()) say(topic.tag);
}

int topics(const TopicsArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.root);
  const Located located = locate(asked.document, roots);
  const Topics found = located.found ? topics_of(located) : Topics();
  if (asked.json) {
    print_as_json(asked, located, found);
  } else if (asked.names) {
    print_names(found);
  } else {
    print_as_text(found);
  }
  if (!located.found) return complain_not_found(asked.document, roots);
  if (found.unreadable.empty()) return OLH_RESULT_OK;
  return failure(OLH_RESULT_IO, "found " + located.location + ", but " + found.unreadable + ".");
}

}  // namespace

void add_topics_command(const Verb& olh) {
  const Verb verb = olh.verb("topics", "List the topics of a manual, or the destinations of a PDF", kTopicsExamples);
  TopicsArguments& asked = verb.action(topics);
  add_document(verb, asked.document);
  const Option names = verb.flag("--names", asked.names, "The tags alone, one a line");
  add_json_option(verb, asked.json).excludes(names);
  add_root_option(verb, asked.root);
}

}  // namespace olh
