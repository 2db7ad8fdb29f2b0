#include "commands.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "call_records.h"
#include "files.h"
#include "words.h"

namespace olh_recorder {

namespace fs = std::filesystem;
using olh_viewers::Words;

namespace {

constexpr int kDone = 0;
constexpr int kNotDone = 1;
constexpr int kUsage = 64;

constexpr const char kHelp[] =
    "usage: olh-recorder make VIEWER...\n"
    "       olh-recorder answer VIEWER ping|remote|start STATUS [SECONDS [TEXT]]\n"
    "       olh-recorder show [--json] VIEWER\n"
    "       olh-recorder wait VIEWER COUNT [SECONDS]\n"
    "       olh-recorder clear VIEWER\n"
    "\n"
    "Makes viewers that show nothing: they note how they are called. So a Help button is tested without a display:\n"
    "\n"
    "  olh-recorder make /tmp/t/browser\n"
    "  HOME=/tmp/t QEL_HTML_BROWSER=/tmp/t/browser ./program-under-test\n"
    "  olh-recorder show /tmp/t/browser\n"
    "\n"
    "The home directory is that of the test: a choice in the user's .qel_viewer_config.ini would come before the "
    "variable.\n"
    "\n"
    "make    copies itself to each path; whatever is called there is a recording viewer\n"
    "answer  how it answers from now on a ping, a remote command or a start: its exit status, how long it stays,\n"
    "        what it prints. Without this a ping finds nothing running, and all else ends at once with 0.\n"
    "        A running browser:  olh-recorder answer VIEWER ping 0\n"
    "show    its calls, one a line, as words of a shell; with --json as an array of objects with the keys\n"
    "        arguments, open_descriptors, ignored_signals, blocked_signals\n"
    "wait    waits until COUNT calls were noted, at most SECONDS (5)\n"
    "clear   forgets its calls and answers\n"
    "\n"
    "Exit status: 0 done, 1 not done, 64 the command line is wrong.\n";

int complain(const std::string& what, int status) {
  std::fprintf(stderr, "olh-recorder: %s\n", what.c_str());
  return status;
}

int usage() { return complain("the command line is wrong; see olh-recorder --help", kUsage); }

bool to_number(const std::string& word, int& number) {
  char* end = nullptr;
  const long value = std::strtol(word.c_str(), &end, 10);
  number = static_cast<int>(value);
  return !word.empty() && *end == '\0' && value >= 0 && value <= 100000;
}

std::vector<olh_viewers::Call> calls_of(const std::string& viewer) {
  return olh_viewers::read_calls(viewer + ".log");
}

nlohmann::ordered_json as_json(const olh_viewers::Call& call) {
  return {{"arguments", call.arguments},
          {"open_descriptors", call.open_descriptors},
          {"ignored_signals", call.ignored_signals},
          {"blocked_signals", call.blocked_signals}};
}

int make(const Words& viewers) {
  if (viewers.empty()) return usage();
  for (const std::string& viewer : viewers) {
    std::error_code error;
    if (fs::path(viewer).filename() == "olh-recorder") return complain("a viewer has another name", kNotDone);
    if (fs::path(viewer).has_parent_path()) fs::create_directories(fs::path(viewer).parent_path(), error);
    fs::copy_file(olh_viewers::own_program(), viewer, fs::copy_options::overwrite_existing, error);
    if (error) return complain(viewer + ": " + error.message(), kNotDone);
  }
  return kDone;
}

int answer(const Words& words) {
  int status = 0;
  int seconds = 0;
  const std::string kind = words.size() < 3 ? "" : words[1];
  if (words.size() > 5 || (kind != "ping" && kind != "remote" && kind != "start")) return usage();
  if (!to_number(words[2], status) || (words.size() > 3 && !to_number(words[3], seconds))) return usage();
  std::ofstream rule(words[0] + "." + kind);
  rule << status << ' ' << seconds << '\n' << (words.size() > 4 ? words[4] + "\n" : "");
  rule.close();
  return rule ? kDone : complain(words[0] + "." + kind + ": cannot be written", kNotDone);
}

int show(Words words) {
  const bool json = !words.empty() && words[0] == "--json";
  if (json) words.erase(words.begin());
  if (words.size() != 1) return usage();
  if (access(words[0].c_str(), X_OK) != 0) return complain(words[0] + ": no viewer", kNotDone);
  auto answer = nlohmann::ordered_json::array();
  for (const olh_viewers::Call& call : calls_of(words[0])) {
    if (json)
      answer.push_back(as_json(call));
    else
      std::puts(olh_viewers::command_line(call.arguments).c_str());
  }
  if (json) std::puts(answer.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
  return kDone;
}

int wait(const Words& words) {
  int count = 0;
  int seconds = 5;
  if (words.size() < 2 || words.size() > 3 || !to_number(words[1], count)) return usage();
  if (words.size() == 3 && !to_number(words[2], seconds)) return usage();
  for (int tries = 0; tries <= seconds * 50; ++tries) {
    if (calls_of(words[0]).size() >= static_cast<std::size_t>(count)) return kDone;
    usleep(20000);
  }
  return complain(words[0] + ": " + std::to_string(calls_of(words[0]).size()) + " calls", kNotDone);
}

int clear(const Words& words) {
  if (words.size() != 1) return usage();
  std::error_code ignored;
  for (const char* suffix : {".log", ".ping", ".remote", ".start"}) fs::remove(words[0] + suffix, ignored);
  return kDone;
}

}  // namespace

int run_command(const Words& words) {
  if (words.empty()) return usage();
  const Words rest(words.begin() + 1, words.end());
  if (words[0] == "make") return make(rest);
  if (words[0] == "answer") return answer(rest);
  if (words[0] == "show") return show(rest);
  if (words[0] == "wait") return wait(rest);
  if (words[0] == "clear") return clear(rest);
  if (words[0] != "--help" && words[0] != "-h") return usage();
  std::fputs(kHelp, stdout);
  return kDone;
}

}  // namespace olh_recorder
