// olh new ROOT NAME: a manual to begin with, in a documentation root that is there or is made for it.
#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "find.h"
#include "lists.h"
#include "manual_name.h"
#include "new_root.h"
#include "olh/support.h"
#include "root_place.h"
#include "search_index.h"
#include "shared.h"

namespace olh {

namespace fs = std::filesystem;

namespace {

constexpr const char* kNewExamples =
    "Nothing that is there is overwritten. The pages are plain HTML, made to be edited.\n"
    "Examples:\n"
    "  olh new docs handbook\n"
    "  olh new --title \"The guide to My Product\" docs product_guide   one more in it\n"
    "Exit code: 0 made, 4 the pages to copy are not installed, 5 ROOT is something else, has the\n"
    "manual already or cannot be written, 64 wrong use.\n";

struct NewArguments {
  std::string root;
  NewManual manual;
  bool json = false;
};

// ---- what will do: "" or the end of a sentence, for the parser of the command line ----

// The lists take a title as it is, between double quotes and as markup.
std::string refusal_of_title(const std::string& title) {
  if (title.find_first_not_of(' ') == std::string::npos) return "the title is empty.";
  if (std::ranges::any_of(title, is_more_than_text))
    return "a title has no double quote, backslash, '<', '&' or control character: the lists take it as it is.";
  return "";
}

// ---- answers ----

std::vector<std::vector<std::string>> next_commands(const std::string& root, const std::string& name) {
  return {{"olh", "check", root}, {"olh", "show", "--root", root, name}};
}

bool has_not_found_pdf(const fs::path& root) {
  std::error_code failed;
  return fs::exists(root / kNotFoundPdf, failed);
}

void say_what_came_with_it(const std::string& root) {
  say("It has the general help and a portal too.");
  if (!has_not_found_pdf(root))
    say("It has no pdfdocs/qeldoc_notfound.pdf, for those who have only a PDF reader: this olh was built without "
        "PDFs.");
}

// The portal's own list is a person's file.
void say_how_it_is_listed(const NewArguments& asked, const std::string& root) {
  std::error_code failed;
  const std::string list = root + "/" + kPortalDocuments;
  if (fs::exists(list, failed))
    say("The portal shows it when " + list + " has this line: List.fAddItem( \"" + asked.manual.title + "\", \"" +
        asked.manual.name + "\" );");
}

void print_as_text(const NewArguments& asked, const std::string& root, bool is_new_root) {
  say(root + " holds the manual " + asked.manual.name + ", \"" + asked.manual.title + "\".");
  is_new_root ? say_what_came_with_it(root) : say_how_it_is_listed(asked, root);
  say("Write in " + root + "/htmldocs/" + asked.manual.name + "; its first topic explains how. Then:");
  for (const auto& words : next_commands(root, asked.manual.name)) say("  " + command_line(words));
  if (is_new_root)
    say("A bookcase, pdfdocs/_bk_qel.pdf, is made when the root holds what it should list: olh show olh_manual "
        "root_layout");
}

void print_as_json(const NewArguments& asked, const std::string& root, int result) {
  nlohmann::json answer = {
      {"root", root}, {"name", asked.manual.name}, {"title", asked.manual.title}, {"result", result}};
  if (result == OLH_RESULT_OK) answer["directory"] = root + "/htmldocs/" + asked.manual.name;
  say_json(answer);
}

// Why nothing can be made there, as a sentence; "" when it can.
std::string objection_to_place(const std::string& root, const std::string& manual) {
  std::error_code failed;
  if (takes_new_root(root, failed)) return "";
  if (failed) return root + " cannot be made: " + failed.message() + ".";
  if (!is_root_directory(root)) return no_root(root);
  const std::string directory = root + "/htmldocs/" + manual;
  return is_nothing(directory, failed) ? "" : directory + " is there already, and nothing is overwritten.";
}

int make_from_pages(const std::string& root, const NewManual& manual, bool is_new_root) {
  if (const std::string objection = objection_to_place(root, manual.name); !objection.empty())
    return failure(OLH_RESULT_IO, objection);
  const auto pages = shipped_pages();
  if (!pages) return failure(OLH_RESULT_NOT_FOUND, kPagesAreMissing);
  try {
    is_new_root ? make_root(root, *pages, manual) : add_manual(root, *pages, manual);
    make_search_index(root);
    return OLH_RESULT_OK;
  } catch (const std::runtime_error& error) {
    return failure(OLH_RESULT_IO, root + (is_new_root ? " cannot be made: " : ": ") + error.what() + ".");
  }
}

int make_new(const NewArguments& given) {
  NewArguments asked = given;
  const std::string root = path_of_root(asked.root);
  if (asked.manual.title.empty()) asked.manual.title = asked.manual.name;
  const bool is_new_root = !is_root_directory(root);
  const int result = make_from_pages(root, asked.manual, is_new_root);
  if (asked.json) {
    print_as_json(asked, root, result);
  } else if (result == OLH_RESULT_OK) {
    print_as_text(asked, root, is_new_root);
  }
  return result;
}

}  // namespace

void add_new_command(const Verb& olh) {
  const Verb verb = olh.verb("new", "Create a manual, and a documentation root for it", kNewExamples);
  NewArguments& asked = verb.action(make_new);
  verb.option("ROOT", asked.root, "A documentation root; if it is not there, it is made")
      .required()
      .refused_by(olh_viewers::refusal_of_root);
  verb.option("NAME", asked.manual.name, "The name of the manual, as help calls will ask for it")
      .required()
      .refused_by(olh_viewers::refusal_of_manual_name);
  verb.option("--title", asked.manual.title, "The title of the manual, else its name")
      .refused_by(refusal_of_title)
      .value_named("TEXT");
  add_json_option(verb, asked.json);
}

}  // namespace olh
