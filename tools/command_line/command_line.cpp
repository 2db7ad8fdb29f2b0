#include "command_line.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <utility>

namespace olh {

Option Option::required() { return Option(option_->required()); }
Option Option::excludes(Option other) { return Option(option_->excludes(other.option_)); }
Option Option::excludes(const std::vector<Option>& others) {
  for (const Option& other : others) option_->excludes(other.option_);
  return *this;
}
Option Option::needs(Option other) { return Option(option_->needs(other.option_)); }

Option Option::one_of(const std::vector<std::string>& words) { return Option(option_->check(CLI::IsMember(words))); }
Option Option::in_range(int least, int most) { return Option(option_->check(CLI::Range(least, most))); }
Option Option::existing_file() { return Option(option_->check(CLI::ExistingFile)); }
Option Option::refused_by(const std::function<std::string(const std::string&)>& refusal) {
  return Option(option_->check(refusal));
}

Option Option::values(int least, int most) { return Option(option_->expected(least, most)); }
Option Option::one_value_each() { return Option(option_->allow_extra_args(false)); }
Option Option::value_named(const char* word) { return Option(option_->type_name(word)); }
Option Option::hidden() { return Option(option_->group("")); }

bool Option::given() const { return option_->count() > 0; }

Verb Verb::verb(const char* name, const char* what, const char* notes) const {
  CLI::App* const words = words_->add_subcommand(name, what);
  words->footer(notes);
  return {*words, *exit_code_};
}
Verb Verb::hidden_verb(const char* name) const { return {*words_->add_subcommand(name)->group(""), *exit_code_}; }
void Verb::take_one_verb_at_most() const { words_->require_subcommand(0, 1); }
void Verb::take_one_verb() const { words_->require_subcommand(1); }

Option Verb::option(const char* name, std::string& value, const char* what) const {
  return Option(words_->add_option(name, value, what));
}

Option Verb::option(const char* name, std::vector<std::string>& values, const char* what) const {
  return Option(words_->add_option(name, values, what));
}

Option Verb::option(const char* name, int& value, const char* what) const {
  return Option(words_->add_option(name, value, what));
}

Option Verb::option(const char* name, int& value, const std::map<std::string, int>& words, const char* what) const {
  return Option(words_->add_option(name, value, what)->transform(CLI::CheckedTransformer(words).description("KIND")));
}

Option Verb::flag(const char* name, bool& value, const char* what) const {
  return Option(words_->add_flag(name, value, what));
}

Option Verb::flag(const char* name, const char* alone, std::string& value, const char* what) const {
  return Option(words_->add_flag(std::string(name) + "{" + alone + "}", value, what));
}

void Verb::action(std::function<int()> work) const {
  words_->callback([words = words_, exit_code = exit_code_, work = std::move(work)] {
    if (words->get_subcommands().empty()) *exit_code = work();
  });
}

void refuse_without(const std::string& what) { throw CLI::RequiredError(what); }
void refuse_option(const std::string& option, const std::string& why) { throw CLI::ValidationError(option, why); }

CommandLine::CommandLine(const char* name, const char* what, const char* notes, std::function<std::string()> version)
    : words_(std::make_unique<CLI::App>(what, name)) {
  words_->footer(notes);
  words_->set_version_flag("--version", std::move(version), "Print the version and exit");
}

CommandLine::~CommandLine() = default;

Verb CommandLine::program() { return {*words_, exit_code_}; }

bool CommandLine::has_verb(const std::string& name) const {
  return !words_->get_subcommands([&](const CLI::App* verb) { return verb->check_name(name); }).empty();
}

void CommandLine::add_program(const char* verb, const char* what) { words_->add_subcommand(verb, what); }

int CommandLine::done(int argc, char** argv) {
  try {
    words_->parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return words_->exit(error) == 0 ? 0 : kWrongUse;
  }
  return exit_code_;
}

// What is written and flushed before leaves no more than the mark that it failed.
int CommandLine::run(int argc, char** argv) {
  const int exit_code = done(argc, argv);
  if (exit_code == kWrongUse || (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)) return exit_code;
  std::fprintf(stderr, "%s: the answer could not be written.\n", words_->get_name().c_str());
  return kNotWritten;
}

}  // namespace olh
