// olh test DOC [TAG]: whether a help call would find the document and its topic.
#include <nlohmann/json.hpp>

#include "find.h"
#include "olh/support.h"
#include "shared.h"
#include "topic_table.h"

namespace olh {

namespace {

constexpr const char* kTestExamples =
    "Examples:\n"
    "  olh test olh_manual               is the manual there?\n"
    "  olh test olh_manual quick_start   and its topic?\n"
    "  olh test --json olh_manual search_path\n"
    "Exit code: 0 found, 3 no name, 4 no such document, 6 the topic is not in the manual's topic\n"
    "table on this machine, 64 wrong use.\n";

struct TestArguments {
  std::string document;
  std::string tag;
  std::string root;
  bool json = false;
};

// A topic can only be looked up in an HTML manual on this machine.
Presence topic_answer(int result, const TestArguments& asked, const Located& located) {
  const bool can_tell = located.kind == OLH_VIEWER_HTML && located.location.starts_with("file://");
  if (asked.tag.empty() || !can_tell) return Presence::kCannotTell;
  return result == OLH_RESULT_OK ? Presence::kYes : Presence::kNo;
}

void print_as_json(int result, const TestArguments& asked, const Located& located) {
  nlohmann::json answer = located_as_json(asked.document, located);
  const Presence topic = topic_answer(result, asked, located);
  answer["tag"] = asked.tag;
  answer["result"] = result;
  answer["topic"] = presence_as_json(topic);
  say_json(answer);
}

void print_as_text(int result, const TestArguments& asked, const Located& located) {
  const Presence topic = topic_answer(result, asked, located);
  std::string line = "Found: " + located.location;
  if (topic == Presence::kYes) line += ", with the topic \"" + asked.tag + "\"";
  if (topic == Presence::kCannotTell && !asked.tag.empty())
    line += "; whether it holds \"" + asked.tag + "\" cannot be checked from here";
  if (result == OLH_RESULT_OK) say(line + ".");
}

void explain_failure(int result, const TestArguments& asked, const Located& located, const SearchRoots& roots) {
  if (result != OLH_RESULT_NO_TOPIC) return void(complain_not_found(asked.document, roots));
  if (topic_answer(result, asked, located) == Presence::kCannotTell)
    return complain("found " + located.location + ", but it is on a web server: whether it holds \"" + asked.tag +
                    "\" cannot be checked from here.");
  complain("found " + located.location + ", but no topic \"" + asked.tag + "\" in its topic table, " +
           olh_viewers::kTopicTable + " beside that page.");
}

int test(const TestArguments& asked) {
  const SearchRoots roots = find_search_roots(asked.root);
  const Located located = locate(asked.document, roots);
  const int result = OlhHelpTest(asked.document.c_str(), asked.tag.c_str());
  asked.json ? print_as_json(result, asked, located) : print_as_text(result, asked, located);
  if (result != OLH_RESULT_OK) explain_failure(result, asked, located, roots);
  return result;
}

}  // namespace

void add_test_command(const Verb& olh) {
  const Verb verb = olh.verb("test", "Test whether a document and a topic exist", kTestExamples);
  TestArguments& asked = verb.action(test);
  add_document(verb, asked.document);
  verb.option("TAG", asked.tag, "A topic of an HTML manual");
  add_root_option(verb, asked.root);
  add_json_option(verb, asked.json);
}

}  // namespace olh
