#include "viewer.h"

#include <unistd.h>

#include <cstdio>
#include <sstream>

#include "call_records.h"
#include "files.h"

namespace olh_recorder {

namespace {

constexpr int kNotNoted = 99;
constexpr int kNotRunning = 2;

struct Answer {
  int status = 0;
  unsigned seconds = 0;
  std::string text;
};

std::string kind_of(const olh_viewers::Call& call) {
  if (call.arguments.empty() || call.arguments[0] != "-remote") return "start";
  return call.arguments.size() > 1 && call.arguments[1] == "ping()" ? "ping" : "remote";
}

Answer answer_to(const std::string& viewer, const std::string& kind) {
  Answer answer;
  std::istringstream rule(olh_viewers::content_of(viewer + "." + kind));
  if (rule >> answer.status >> answer.seconds) {
    rule.get();
    std::ostringstream rest;
    rest << rule.rdbuf();
    answer.text = rest.str();
    return answer;
  }
  return kind == "ping" ? Answer{.status = kNotRunning, .text = "No running window\n"} : Answer{};
}

}  // namespace

int play_viewer(const std::string& viewer, int argc, char** argv) {
  const olh_viewers::Call call = olh_viewers::this_call(argc, argv);
  if (!olh_viewers::append_call(viewer + ".log", call, true)) return kNotNoted;
  const Answer answer = answer_to(viewer, kind_of(call));
  std::fputs(answer.text.c_str(), stdout);
  std::fflush(stdout);
  sleep(answer.seconds);
  return answer.status;
}

}  // namespace olh_recorder
