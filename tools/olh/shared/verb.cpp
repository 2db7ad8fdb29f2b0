#include "verb.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <utility>

#include "olh/olh.h"
#include "output.h"
#include "shared.h"

namespace olh {

Option Option::required() { return Option(option_->required()); }
Option Option::excludes(Option other) { return Option(option_->excludes(other.option_)); }
Option Option::needs(Option other) { return Option(option_->needs(other.option_)); }

Option Option::one_of(const std::vector<std::string>& words) { return Option(option_->check(CLI::IsMember(words))); }
Option Option::existing_file() { return Option(option_->check(CLI::ExistingFile)); }
Option Option::refused_by(const std::function<std::string(const std::string&)>& refusal) {
  return Option(option_->check(refusal));
}

Option Option::value_named(const char* word) { return Option(option_->type_name(word)); }

bool Option::given() const { return option_->count() > 0; }

Verb Verb::verb(const char* name, const char* what, const char* notes) const {
  CLI::App* const words = words_->add_subcommand(name, what);
  words->footer(notes);
  return {*words, *exit_code_};
}
Verb Verb::hidden_verb(const char* name) const { return {*words_->add_subcommand(name)->group(""), *exit_code_}; }
void Verb::take_one_verb_at_most() const { words_->require_subcommand(0, 1); }

Option Verb::option(const char* name, std::string& value, const char* what) const {
  return Option(words_->add_option(name, value, what));
}

Option Verb::option(const char* name, std::vector<std::string>& values, const char* what) const {
  return Option(words_->add_option(name, values, what));
}

Option Verb::option(const char* name, int& value, const std::map<std::string, int>& words, const char* what) const {
  return Option(words_->add_option(name, value, what)->transform(CLI::CheckedTransformer(words).description("KIND")));
}

Option Verb::flag(const char* name, bool& value, const char* what) const {
  return Option(words_->add_flag(name, value, what));
}

void Verb::action(std::function<int()> work) const {
  words_->callback([words = words_, exit_code = exit_code_, work = std::move(work)] {
    if (words->get_subcommands().empty()) *exit_code = work();
  });
}

CommandLine::CommandLine(const char* what, const char* footer, std::initializer_list<void (*)(const Verb&)> verbs)
    : words_(std::make_unique<CLI::App>(what, "olh")) {
  words_->require_subcommand(1);
  words_->footer(footer);
  words_->set_version_flag("--version", version_line, "Print the version and exit");
  for (const auto add : verbs) add(Verb(*words_, exit_code_));
}

CommandLine::~CommandLine() = default;

bool CommandLine::has_verb(const std::string& name) const {
  return !words_->get_subcommands([&](const CLI::App* verb) { return verb->check_name(name); }).empty();
}

void CommandLine::add_program(const char* verb, const char* what) { words_->add_subcommand(verb, what); }

int CommandLine::run(int argc, char** argv) {
  try {
    words_->parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return words_->exit(error) == 0 ? 0 : kWrongUse;
  }
  if (std::fflush(stdout) == 0) return exit_code_;
  return failure(OLH_RESULT_IO, "the answer could not be written.");
}

}  // namespace olh
