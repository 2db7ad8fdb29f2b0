// The environment, as far as it counts.
//
// Knows    that nothing of it counts in a process with more rights than its caller (setuid, setgid, file capabilities):
//          there it is the caller's, and what the process does is not.
// Not      what the variables mean; the store that shadows them (GetOlhVariable).
// For      whoever reads a variable or writes into the user's home directory; nothing else calls getenv.
#ifndef OLH_COMMON_ENVIRONMENT_H
#define OLH_COMMON_ENVIRONMENT_H

namespace olh {

// Whether the process has rights that whoever started it does not have.
bool has_borrowed_rights() noexcept;

// The value of a variable; null when it is not set or does not count.
const char* environment_variable(const char* name) noexcept;

// The directories in which a bare name is looked for: PATH, or the system's own where that does not count. Null when it
// is not set.
const char* program_directories() noexcept;

}  // namespace olh

#endif
