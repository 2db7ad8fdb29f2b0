#include "root_probe.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <string_view>

#include "commands.h"
#include "environment.h"
#include "olh/support.h"
#include "output.h"

namespace olh {

namespace {

constexpr const char* kVerb = "probe-root";

bool is_assignment_of(std::string_view entry, std::string_view name) {
  return entry.starts_with(name) && entry.substr(name.size()).starts_with('=');
}

// Whether the entry brings roots, a trace log or debug lines of its own into a process.
bool is_left_out(std::string_view entry) {
  for (const char* name : kRootVariables)
    if (is_assignment_of(entry, name)) return true;
  return is_assignment_of(entry, "OLH_LOG_HELP") || is_assignment_of(entry, "OLH_DEBUG");
}

std::vector<char*> reduced_environment() {
  std::vector<char*> kept;
  for (char** entry = environ; *entry != nullptr; ++entry)
    if (!is_left_out(*entry)) kept.push_back(*entry);
  kept.push_back(nullptr);
  return kept;
}

std::string read_to_end(int fd) {
  std::string all;
  std::array<char, 4096> block{};
  for (ssize_t size = 0; (size = read(fd, block.data(), block.size())) > 0 || (size < 0 && errno == EINTR);)
    if (size > 0) all.append(block.data(), static_cast<std::size_t>(size));
  return all;
}

// What the program prints; "" when it cannot be run.
std::string output_of(std::vector<std::string> words) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return "";
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  std::vector<char*> environment = reduced_environment();
  pid_t pid = 0;
  const int failed = posix_spawn(&pid, arguments[0], &actions, nullptr, arguments.data(), environment.data());
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  std::string output = failed == 0 ? read_to_end(ends[0]) : "";
  close(ends[0]);
  while (failed == 0 && waitpid(pid, nullptr, 0) < 0 && errno == EINTR) continue;
  return output;
}

// In the process of its own: one character for each URL; then, behind a blank, how many milliseconds it all took.
int answer(const std::string& root, const std::vector<std::string>& urls) {
  OlhSetDocPath(root.c_str());
  const char* first = GetOlhDocPath();
  std::string answers;
  const auto begin = std::chrono::steady_clock::now();
  for (const std::string& url : urls) {
    std::array<char, OLH_BUFFER_SIZE> location{};
    if (first == nullptr || root != first || url.rfind(root, 0) != 0) {
      answers += '?';
    } else {
      answers += FindPath(location.data(), url.c_str() + root.size()) == 1 ? 'y' : 'n';
    }
  }
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
  say(answers + " " + std::to_string(time.count()));
  return 0;
}

}  // namespace

std::map<std::string, Presence> probe_url_root(const std::string& root, const std::vector<std::string>& urls) {
  std::vector<std::string> words = {own_program(), kVerb, "--", root};
  words.insert(words.end(), urls.begin(), urls.end());
  const std::string answers = output_of(std::move(words));
  std::map<std::string, Presence> presence;
  for (std::size_t i = 0; i < urls.size(); ++i) {
    const char one = i < answers.size() ? answers[i] : '?';
    presence[urls[i]] = one == 'y' ? Presence::kYes : one == 'n' ? Presence::kNo : Presence::kCannotTell;
  }
  return presence;
}

std::optional<double> probe_time(const std::string& root) {
  const std::string answers = output_of({own_program(), kVerb, "--", root, root + "/htmldocs/qelhelp.htm"});
  if (answers.empty() || answers[0] == '?') return std::nullopt;
  return std::strtod(answers.c_str() + 1, nullptr);
}

CLI::App* add_probe_root_command(CLI::App& app, int& exit_code) {
  struct Arguments {
    std::string root;
    std::vector<std::string> urls;
  };
  CLI::App* verb = app.add_subcommand(kVerb)->group("");
  const auto arguments = std::make_shared<Arguments>();
  verb->add_option("root", arguments->root)->required();
  verb->add_option("urls", arguments->urls);
  verb->callback([arguments, &exit_code] { exit_code = answer(arguments->root, arguments->urls); });
  return verb;
}

}  // namespace olh
