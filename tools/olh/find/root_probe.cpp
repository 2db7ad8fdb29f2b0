#include "root_probe.h"

#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "find.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kProbeVerb = "probe-root";
constexpr const char* kTryVerb = "try-path";

struct ProbeArguments {
  std::string root;
  std::vector<std::string> urls;
};

// In the process of its own: one character for each URL, as soon as it is known; then, behind a blank, how many
// milliseconds it all took.
int answer(const ProbeArguments& asked) {
  for (const char* name : kRootVariables) unsetenv(name);
  for (const char* name : {"OLH_LOG_HELP", "OLH_DEBUG"}) unsetenv(name);
  OlhSetDocPath(asked.root.c_str());
  const char* first = GetOlhDocPath();
  const auto begin = std::chrono::steady_clock::now();
  for (const std::string& url : asked.urls) {
    std::array<char, OLH_BUFFER_SIZE> location{};
    const bool can_ask = first != nullptr && asked.root == first && url.starts_with(first);
    std::putchar(!can_ask ? '?' : FindPath(location.data(), url.c_str() + asked.root.size()) == 1 ? 'y' : 'n');
    std::fflush(stdout);
  }
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - begin;
  say(" " + std::to_string(time.count()));
  return 0;
}

// In the process of its own: the debug lines go to whoever asked.
int build_path(const std::string& host_roots) {
  dup2(STDOUT_FILENO, STDERR_FILENO);
  unsetenv("OLH_LOG_HELP");
  setenv("OLH_DEBUG", "1", 1);
  setDebugVariable();
  OlhDocListInit();
  if (host_roots.empty()) return 0;
  print_debug("olh_docList::GetOlhVariable: %s\n", kRootOption);  // in the story it stands where a variable does
  OlhSetDocPath(host_roots.c_str());
  return 0;
}

}  // namespace

nlohmann::json presence_as_json(Presence presence) {
  return presence == Presence::kCannotTell ? nlohmann::json() : nlohmann::json(presence == Presence::kYes);
}

std::map<std::string, Presence> probe_url_root(const std::string& root, const std::vector<std::string>& urls) {
  std::vector<std::string> words = {kProbeVerb, "--", root};
  words.insert(words.end(), urls.begin(), urls.end());
  const std::string answers = heard_from_own_child(std::move(words)).text;
  std::map<std::string, Presence> presence;
  for (std::size_t i = 0; i < urls.size(); ++i) {
    const char one = i < answers.size() ? answers[i] : '?';
    presence[urls[i]] = one == 'y' ? Presence::kYes : one == 'n' ? Presence::kNo : Presence::kCannotTell;
  }
  return presence;
}

std::optional<double> probe_time(const std::string& root) {
  const olh_viewers::Heard answers = heard_from_own_child({kProbeVerb, "--", root, root + "/htmldocs/qelhelp.htm"});
  if (!answers.in_time || answers.text.empty() || answers.text[0] == '?') return std::nullopt;
  return std::strtod(answers.text.c_str() + 1, nullptr);
}

std::optional<JudgedRoot> root_without_answer(const std::string& host_roots) {
  const olh_viewers::Heard lines = heard_from_own_child({kTryVerb, "--", host_roots});
  return lines.in_time ? std::nullopt : read_path_story(lines_of(lines.text), kRootOption).waiting;
}

void add_probe_root_command(const Verb& olh) {
  const Verb verb = olh.hidden_verb(kProbeVerb);
  ProbeArguments& asked = verb.action(answer);
  verb.option("root", asked.root, "").required();
  verb.option("urls", asked.urls, "");
}

void add_try_path_command(const Verb& olh) {
  const Verb verb = olh.hidden_verb(kTryVerb);
  verb.option("roots", verb.action(build_path), "");
}

}  // namespace olh
