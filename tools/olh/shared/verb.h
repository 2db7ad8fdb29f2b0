// A verb as it declares itself: its words, its options, its help, what it does.
//
// Knows    what a verb may ask of the parser of the command line, and that its outcome becomes the exit code.
// Not      which verbs there are: each room declares its own in its door.
// Owns     the parser; verbs and options are handles of what it holds. The variables given to it live as long as it
//          does; what a verb does holds them.
// For      every verb. The parser's own header takes seconds to compile: verb.cpp alone includes it.
#ifndef OLH_TOOLS_VERB_H
#define OLH_TOOLS_VERB_H

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace olh {

// The exit code for a command line that nobody understands. Else it is a result code of the library, or what --help says.
inline constexpr int kWrongUse = 64;

// An option, or a word in a place of its own. What is asked of it can be written one behind the other.
class Option {
 public:
  explicit Option(CLI::Option* option) : option_(option) {}

  Option required();
  Option excludes(Option other);
  Option needs(Option other);
  // Only one of these words, an existing file, or what `refusal` returns "" for; else the end of a sentence.
  Option one_of(const std::vector<std::string>& words);
  Option existing_file();
  Option refused_by(const std::function<std::string(const std::string&)>& refusal);
  // How the help names its value.
  Option value_named(const char* word);

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
  // At most one of its verbs may be asked for, or none.
  void take_one_verb_at_most() const;

  // A name with dashes ("-a,--all") is an option; one without is a word in a place of its own.
  Option option(const char* name, std::string& value, const char* what) const;
  Option option(const char* name, std::vector<std::string>& values, const char* what) const;
  // A number, or a word that stands for it.
  Option option(const char* name, int& value, const std::map<std::string, int>& words, const char* what) const;
  Option flag(const char* name, bool& value, const char* what) const;

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

// The command line of the program itself.
class CommandLine {
 public:
  CommandLine(const char* what, const char* footer, std::initializer_list<void (*)(const Verb&)> verbs);
  ~CommandLine();

  bool has_verb(const std::string& name) const;
  // Says in the help what a program does that is found as a verb.
  void add_program(const char* verb, const char* what);
  // Does what the verb that is asked for does; returns its exit code.
  int run(int argc, char** argv);

 private:
  int exit_code_ = 0;
  std::unique_ptr<CLI::App> words_;
};

// What many verbs share.
inline void add_root_option(const Verb& verb, std::string& root) {
  verb.option("--root", root, "Documentation roots to search first, separated by ':'").value_named("PATHS");
}
inline Option add_json_option(const Verb& verb, bool& json) { return verb.flag("--json", json, "Answer as JSON"); }
inline void add_document(const Verb& verb, std::string& document) {
  verb.option("DOC", document, "A name to look up, a path, or a URL").required();
}

}  // namespace olh

#endif
