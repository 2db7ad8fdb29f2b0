// The command line of a program and of its verbs: words, options, help.
//
// Knows    what a program may ask of the parser of the command line, and that the outcome of its work becomes the exit code.
// Not      which options and verbs there are: each program, and each room of olh, declares its own.
// Owns     the parser; verbs and options are handles of what it holds. The variables given to it live as long as it
//          does; what a verb does holds them.
// For      olh, olh-import, olh-index, olh-serve.
#ifndef OLH_TOOLS_COMMAND_LINE_H
#define OLH_TOOLS_COMMAND_LINE_H

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace olh {

// The exit code for a command line that nobody understands.
inline constexpr int kWrongUse = 64;
// And for an answer that could not be written to standard output.
inline constexpr int kNotWritten = 5;

// An option, or a word in a place of its own. What is asked of it can be written one behind the other.
class Option {
 public:
  explicit Option(CLI::Option* option) : option_(option) {}

  Option required();
  Option excludes(Option other);
  Option excludes(const std::vector<Option>& others);
  Option needs(Option other);
  // Only one of these words, a number from `least` to `most`, an existing file, or what `refusal` returns "" for; else the
  // end of a sentence.
  Option one_of(const std::vector<std::string>& words);
  Option in_range(int least, int most);
  Option existing_file();
  Option refused_by(const std::function<std::string(const std::string&)>& refusal);
  // As many values behind one name; by default a list takes all that follow.
  Option values(int least, int most);
  Option one_value_each();
  // How the help names its value; "": not at all.
  Option value_named(const char* word);
  // The help does not name it.
  Option hidden();

  bool given() const;

 private:
  CLI::Option* option_;
};

// The program itself is one, whose verbs are those of a command line.
class Verb {
 public:
  Verb(CLI::App& words, int& exit_code) : words_(&words), exit_code_(&exit_code) {}

  // `notes` stands below the options in its help.
  Verb verb(const char* name, const char* what, const char* notes) const;
  // One that the help does not name.
  Verb hidden_verb(const char* name) const;
  // At most one of its verbs may be asked for, or none; exactly one.
  void take_one_verb_at_most() const;
  void take_one_verb() const;

  // A name with dashes ("-a,--all") is an option; one without is a word in a place of its own.
  Option option(const char* name, std::string& value, const char* what) const;
  Option option(const char* name, std::vector<std::string>& values, const char* what) const;
  Option option(const char* name, int& value, const char* what) const;
  // A number, or a word that stands for it.
  Option option(const char* name, int& value, const std::map<std::string, int>& words, const char* what) const;
  Option flag(const char* name, bool& value, const char* what) const;
  // One that may stand alone ("--name"), and is `alone` then, or carry a value ("--name=VALUE").
  Option flag(const char* name, const char* alone, std::string& value, const char* what) const;

  // What it does, unless one of its own verbs is asked for.
  void action(std::function<int()> work) const;
  // The same with arguments, for its options to fill.
  template <typename Arguments>
  Arguments& action(int (*work)(const Arguments&)) const {
    const auto arguments = std::make_shared<Arguments>();
    action([arguments, work] { return work(*arguments); });
    return *arguments;
  }

 private:
  CLI::App* words_;
  int* exit_code_;
};

// End an action that finds the command line itself wrong, as if the parser had found it: `what` is missing, or `option` is
// refused with the end of a sentence.
[[noreturn]] void refuse_without(const std::string& what);
[[noreturn]] void refuse_option(const std::string& option, const std::string& why);

// The command line of a program.
class CommandLine {
 public:
  // `name` as a person types it, `notes` below the options in the help. --version prints what `version` returns, which is
  // called for that alone.
  CommandLine(const char* name, const char* what, const char* notes, std::function<std::string()> version);
  ~CommandLine();

  Verb program();
  bool has_verb(const std::string& name) const;
  // Says in the help what a program does that is found as a verb.
  void add_program(const char* verb, const char* what);
  // Does what is asked for. Returns the exit code of the action, 0 after --help and --version, which print, kWrongUse or
  // kNotWritten, with a sentence on standard error.
  int run(int argc, char** argv);

 private:
  int done(int argc, char** argv);

  int exit_code_ = 0;
  std::unique_ptr<CLI::App> words_;
};

}  // namespace olh

#endif
