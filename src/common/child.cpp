#include "child.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/prctl.h>

#include <algorithm>
#include <climits>
#include <csignal>
#include <string_view>

#include "bounded_text.h"
#include "directory_list.h"
#include "environment.h"
#include "raw_call.h"

namespace olh {

namespace {

constexpr int kFirstForeignDescriptor = 3;
constexpr const char* kShell = "/bin/sh";

// A set of signals as the kernel has it.
struct SignalSet {
  unsigned long words[_NSIG / 8 / sizeof(long)] = {};
};

// Where a bare name is looked for. As in the C library: an empty piece of PATH is the working directory, and without
// PATH the system's two directories are searched.
std::vector<std::string> candidates_along_path(const std::string& program) {
  const char* variable = program_directories();
  const std::string_view path = variable == nullptr ? std::string_view("/bin:/usr/bin") : variable;
  std::vector<std::string> candidates;
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find(':', begin), path.size());
    const std::string_view directory = path.substr(begin, end - begin);
    if (directory.size() < PATH_MAX) candidates.push_back(path_in(directory.empty() ? "." : directory, program));
    begin = end + 1;
  }
  return candidates;
}

std::vector<std::string> candidates_of(const std::string& program) {
  const bool bare = !program.empty() && program.find('/') == std::string::npos;
  std::vector<std::string> candidates = bare ? candidates_along_path(program) : std::vector{program};
  // The shell that runs a script without a "#!" line must not take its name for an option.
  for (std::string& candidate : candidates)
    if (candidate.starts_with('-')) candidate.insert(0, "./");
  return candidates;
}

// No signal reaches the thread while this lives: the host's handlers must not run in the child. Those that the C library
// keeps for itself are held back too.
class SignalsHeldBack {
 public:
  SignalsHeldBack() noexcept {
    SignalSet all;
    for (unsigned long& word : all.words) word = ~0UL;
    raw_call(SYS_rt_sigprocmask, SIG_SETMASK, &all, &before_, sizeof all);
  }
  ~SignalsHeldBack() { raw_call(SYS_rt_sigprocmask, SIG_SETMASK, &before_, 0, sizeof before_); }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  SignalSet before_;
};

// ---- in the children: raw calls only ------------------------------------------------------------------------------

void reset_signals() noexcept {
  const long standard[16] = {};  // SIG_DFL without flags, whatever the order of the kernel's record
  for (int signal = 1; signal < _NSIG; ++signal) raw_call(SYS_rt_sigaction, signal, standard, 0, sizeof(SignalSet));
}

void unblock_signals() noexcept {
  const SignalSet none;
  raw_call(SYS_rt_sigprocmask, SIG_SETMASK, &none, 0, sizeof none);
}

bool means_search_on(int error) noexcept {
  return error == EACCES || error == ENOENT || error == ESTALE || error == ENOTDIR || error == ENODEV ||
         error == ETIMEDOUT;
}

int execute_file(const char* file, char* const* arguments) noexcept {
  return static_cast<int>(-raw_call(SYS_execve, file, arguments, environ));
}

}  // namespace

ChildProgram::ChildProgram(std::span<const std::string> words)
    : words_(words.begin(), words.end()),
      candidates_(candidates_of(words_.at(0))),
      shell_(kShell),
      descriptor_limit_(getdtablesize()),
      borrowed_rights_(has_borrowed_rights()),
      user_(getuid()),
      group_(getgid()) {
  for (std::string& word : words_) arguments_.push_back(word.data());
  arguments_.push_back(nullptr);
  script_arguments_ = {shell_.data(), nullptr};
  script_arguments_.insert(script_arguments_.end(), arguments_.begin() + 1, arguments_.end());
  for (std::string& candidate : candidates_) candidate_pointers_.push_back(candidate.data());
}

void ChildProgram::keep_standard_descriptors() const noexcept {
  bool closed = false;
#ifdef SYS_close_range
  closed = raw_call(SYS_close_range, kFirstForeignDescriptor, UINT_MAX, 0) == 0;
#endif
  for (int fd = kFirstForeignDescriptor; !closed && fd < descriptor_limit_; ++fd) raw_call(SYS_close, fd);
  long fd = 0;
  while (fd >= 0 && fd < kFirstForeignDescriptor) fd = raw_call(SYS_openat, AT_FDCWD, "/dev/null", O_RDWR);
  if (fd >= 0) raw_call(SYS_close, fd);
}

// Groups first: without the user's rights they could not be changed any more.
bool ChildProgram::drop_borrowed_rights() const noexcept {
#ifdef SYS_setresuid32  // where the plain names stand for ids of 16 bits
  constexpr long kSetUser = SYS_setresuid32;
  constexpr long kSetGroup = SYS_setresgid32;
#else
  constexpr long kSetUser = SYS_setresuid;
  constexpr long kSetGroup = SYS_setresgid;
#endif
  raw_call(SYS_prctl, PR_CAP_AMBIENT, PR_CAP_AMBIENT_CLEAR_ALL);
  return raw_call(kSetGroup, group_, group_, group_) == 0 && raw_call(kSetUser, user_, user_, user_) == 0;
}

int ChildProgram::execute() noexcept {
  reset_signals();
  if (borrowed_rights_ && !drop_borrowed_rights()) return EPERM;
  unblock_signals();
  int error = ENOENT;
  bool denied = false;
  for (char* candidate : candidate_pointers_) {
    error = try_candidate(candidate);
    denied = denied || error == EACCES;
    if (!means_search_on(error)) return error;
  }
  return denied ? EACCES : error;
}

int ChildProgram::try_candidate(char* candidate) noexcept {
  const int error = execute_file(candidate, arguments_.data());
  if (error != ENOEXEC) return error;
  script_arguments_[1] = candidate;
  return execute_file(kShell, script_arguments_.data());
}

// valgrind ends a program that shares its memory with a child and goes on. It is known by what it loads into the program.
bool can_share_memory() noexcept {
  return kMayShareMemory && text_of(environment_variable("LD_PRELOAD")).find("/vgpreload_") == std::string_view::npos;
}

// Where the kernel or a filter of system calls refuses a child with shared memory, it gets a copy.
pid_t start_child(int (*body)(void*), void* argument, ChildStack& stack, int flags) noexcept {
  const SignalsHeldBack quiet;
  const pid_t child = (flags & CLONE_VM) != 0 ? clone(body, &stack + 1, flags | SIGCHLD, argument) : -1;
  return child >= 0 ? child : clone(body, &stack + 1, (flags & ~CLONE_VM) | SIGCHLD, argument);
}

}  // namespace olh
