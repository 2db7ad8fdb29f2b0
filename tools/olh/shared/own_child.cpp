#include "own_child.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

#include "environment.h"

namespace olh {

namespace {

// Whether there is something to read, or the end of it, before the patience is.
bool is_readable(int fd) {
  pollfd waited = {fd, POLLIN, 0};
  int ready = 0;
  do {
    ready = poll(&waited, 1, kSecondsOfPatience * 1000);
  } while (ready < 0 && errno == EINTR);
  return ready != 0;
}

OwnOutput read_patiently(int fd) {
  OwnOutput output;
  std::array<char, 4096> block{};
  for (;;) {
    if (!is_readable(fd)) {
      output.in_time = false;
      return output;
    }
    const ssize_t size = read(fd, block.data(), block.size());
    if (size < 0 && errno == EINTR) continue;
    if (size <= 0) return output;
    output.text.append(block.data(), static_cast<std::size_t>(size));
  }
}

// Returns 0 or an errno.
int start(std::vector<std::string>& words, int output, pid_t& child) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  const int failed = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return failed;
}

}  // namespace

OwnOutput output_of_own_child(std::vector<std::string> words) {
  words.insert(words.begin(), own_program());
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) return {};
  pid_t child = 0;
  const int failed = start(words, ends[1], child);
  close(ends[1]);
  OwnOutput output = failed == 0 ? read_patiently(ends[0]) : OwnOutput();
  close(ends[0]);
  if (failed != 0) return output;
  // One that hangs in a file system does not end even now, and is not waited for.
  if (!output.in_time) kill(child, SIGKILL);
  while (waitpid(child, nullptr, output.in_time ? 0 : WNOHANG) < 0 && errno == EINTR) continue;
  return output;
}

std::string no_answer_in_time() {
  return "does not answer within " + std::to_string(kSecondsOfPatience) + " seconds";
}

}  // namespace olh
