// Where the server of this user's pages is found: a directory of the session, and what stands in it.
//
// Knows    that the directory and its files belong to this user alone, and that a server which lives holds a lock: so
//          neither a killed one nor a stranger on its port is ever taken for it.
//              serve.lock    held by whoever looks for the server, starts it or ends it
//              serve.state   the server's address; the server holds a lock on it
//              serve.roots   "TOKEN ROOT" a line: what it may show
// Not      what a server is asked for (served_address), nor how it answers (olh-serve).
// For      served_address, and olh-serve.
#ifndef OLH_TOOLS_VIEWERS_SERVE_STATE_H
#define OLH_TOOLS_VIEWERS_SERVE_STATE_H

#include <string>
#include <vector>

#include "session_files.h"

namespace olh_viewers {

struct ServedRoot {
  std::string token;
  std::string path;
};

// 128 random bits in hexadecimal; "" when the system gives none.
std::string new_token();

class ServeState {
 public:
  // In the directory for this session's files, else in one below /tmp. `said` is the reason when there is none.
  explicit ServeState(std::string& said);
  explicit operator bool() const { return !directory_.empty(); }

  LockedFile lock(int milliseconds) const;

  // The rest needs the lock of whoever calls.
  std::string address() const;            // "http://127.0.0.1:PORT" of the server that lives; "" without one
  std::vector<ServedRoot> roots() const;  // may be read without
  // The root's token, a new one if need be; "" when that cannot be written.
  std::string token_of(const std::string& root) const;
  // Of the server itself: it is found from here on, and has no roots yet. What is returned must live as long as it does.
  LockedFile announce(const std::string& address) const;
  // Whether the server that announced itself so is still the one that is found, and how many seconds ago a page was
  // last asked for.
  bool is_announced(const LockedFile& announced) const;
  long seconds_since_use() const;
  void withdraw() const;

 private:
  std::string path_of(const char* name) const;

  std::string directory_;
};

}  // namespace olh_viewers

#endif
