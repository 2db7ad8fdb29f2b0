// A child of the host, up to the program that it becomes.
//
// Knows    how a child is made without a copy of the host's memory, the search along PATH, and what of the host a program
//          gets: descriptors 0 to 2, default signals, the rights of the host's caller.
// Not      who waits for the child.
// For      detached_start; command, where the host has borrowed rights.
#ifndef OLH_COMMON_CHILD_H
#define OLH_COMMON_CHILD_H

#include <sys/types.h>

#include <span>
#include <string>
#include <vector>

namespace olh {

// All that a child needs, made before it: in a host with busy threads a child that allocates, or reads the environment,
// may wait for ever on a lock that nobody holds any more.
class ChildProgram {
 public:
  // words[0] is looked up along PATH when it has no "/"; all the words are the arguments.
  explicit ChildProgram(std::span<const std::string> words);
  ChildProgram(const ChildProgram&) = delete;
  ChildProgram& operator=(const ChildProgram&) = delete;

  // In a child: leaves it the descriptors 0, 1 and 2, and no other. What is closed there becomes /dev/null: the first
  // file that the program opens must not receive its messages.
  void keep_standard_descriptors() const noexcept;
  // In a child: becomes the program, with default signals, none of them blocked, and no borrowed rights. Returns only
  // when that fails, with the error of the search, as execlp would report it.
  int execute() noexcept;

 private:
  bool drop_borrowed_rights() const noexcept;
  int try_candidate(char* candidate) noexcept;

  std::vector<std::string> words_;
  std::vector<std::string> candidates_;
  std::string shell_;
  std::vector<char*> arguments_;
  std::vector<char*> script_arguments_;
  std::vector<char*> candidate_pointers_;
  int descriptor_limit_;
  bool borrowed_rights_;
  uid_t user_;
  gid_t group_;
};

struct ChildStack {
  alignas(16) char bytes[16 * 1024];
};

// Whether a child may share the host's memory, so that its start costs the same whatever the host's size.
bool can_share_memory() noexcept;

// Starts a child that calls `body` and ends with what it returns; -1 when that fails. All its signals are held back, and
// no fork handler of the host runs. `flags` are those of clone:
//   CLONE_VM     it shares the memory (where that is refused, it gets a copy): it makes raw calls only, and writes nowhere
//                but to its stack and its argument
//   CLONE_VFORK  the thread stands still until the child has become a program or has ended; without it, the thread goes
//                on at once, and stack and argument must stay until then
pid_t start_child(int (*body)(void*), void* argument, ChildStack& stack, int flags) noexcept;

}  // namespace olh

#endif
