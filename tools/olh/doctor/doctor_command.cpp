// olh doctor [DOC [TAG]]: along the whole road of a help request on this machine, step by step.
#include <algorithm>
#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "doctor.h"
#include "doctor_checks.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kDoctorExamples =
    "Each step reports what works, what does not, what cannot be checked, and the command that fixes it.\n"
    "Examples:\n"
    "  olh doctor                           this machine\n"
    "  olh doctor olh_manual quick_start    and whether that document and topic can be shown\n"
    "  olh doctor --root docs handbook      as it would be with that root in front\n"
    "  olh doctor --try                     and the manual of olh itself in each viewer\n"
    "Exit code: 0 nothing is wrong, 1 warnings, 2 problems, 64 wrong use.\n";

struct Step {
  const char* name;  // of a script's
  const char* title;
  Diagnoses (*look)(const Machine& machine);
};

constexpr std::array kSteps = {Step{"variables", "Variables", check_variables},
                               Step{"trace_log", "Trace log", check_trace_log},
                               Step{"option_files", "Option files", check_option_files},
                               Step{"roots", "Documentation roots", check_roots},
                               Step{"browser", "Browser", check_browser},
                               Step{"pdf", "PDF reader", check_reader},
                               Step{"session", "Session", check_session},
                               Step{"tools", "Tools", check_tools},
                               Step{"lists", "Lists", check_lists_of_roots},
                               Step{"document", "Document", check_document},
                               Step{"trial", "Trial", try_viewers}};

struct DoctorArguments {
  std::string document;
  std::string tag;
  std::string root;
  bool attempt = false;
  bool json = false;
};

const char* word_for(State state) {
  constexpr std::array kWords = {"ok", "warning", "problem", "cannot tell"};
  return kWords[static_cast<std::size_t>(state)];
}

// Green, yellow, red or blue.
const char* colour_of(State state) {
  constexpr std::array kColours = {"32", "33", "31", "34"};
  return kColours[static_cast<std::size_t>(state)];
}

// What was found so far, printed as it comes or kept for JSON.
class Report {
 public:
  explicit Report(bool json) : json_(json) {}

  void add(const char* name, const char* title, const Diagnoses& diagnoses) {
    if (!json_ && !diagnoses.empty()) say_marked("", title);
    for (const Diagnosis& diagnosis : diagnoses) {
      ++counts_[static_cast<std::size_t>(diagnosis.state)];
      if (!json_) print(diagnosis);
      answer_.push_back({{"step", name},
                         {"state", word_for(diagnosis.state)},
                         {"sentence", diagnosis.sentence},
                         {"cure", text_or_null(diagnosis.cure)}});
    }
    std::fflush(stdout);
  }

  int end() const {
    const std::size_t problems = count(State::kProblem);
    const std::size_t warnings = count(State::kWarning);
    const int code = problems > 0 ? 2 : warnings > 0 ? 1 : 0;
    if (json_) {
      say_json({{"result", code}, {"problems", problems}, {"warnings", warnings}, {"findings", answer_}});
    } else {
      say(code == 0
              ? "Nothing is wrong."
              : counted(problems, "problem", "problems") + ", " + counted(warnings, "warning", "warnings") + ".");
    }
    return code;
  }

 private:
  static void print(const Diagnosis& diagnosis) {
    const std::string word = word_for(diagnosis.state);
    say_marked("  ", word, std::string(12 - word.size(), ' ') + diagnosis.sentence, colour_of(diagnosis.state));
    if (!diagnosis.cure.empty()) say("              fix with: " + diagnosis.cure);
  }
  std::size_t count(State state) const { return counts_[static_cast<std::size_t>(state)]; }

  bool json_;
  std::array<std::size_t, 4> counts_{};
  nlohmann::json answer_ = nlohmann::json::array();
};

int doctor(const DoctorArguments& asked) {
  Report report(asked.json);
  std::string root = asked.root;
  report.add("roots", "Search path", check_answering_roots(root));
  const Machine machine = {find_search_roots(root), asked.document, asked.tag, asked.attempt};
  for (const Step& step : kSteps) report.add(step.name, step.title, step.look(machine));
  return report.end();
}

}  // namespace

void add_doctor_command(const Verb& olh) {
  const Verb verb = olh.verb("doctor", "Find out why help is not shown, and how to fix it", kDoctorExamples);
  DoctorArguments& asked = verb.action(doctor);
  verb.option("DOC", asked.document, "A document that has to be found");
  verb.option("TAG", asked.tag, "A topic, destination or tab of it");
  verb.flag("--try", asked.attempt, "Show the manual of olh itself, as a page and as a PDF");
  add_root_option(verb, asked.root);
  add_json_option(verb, asked.json);
}

}  // namespace olh
