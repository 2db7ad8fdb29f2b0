#include "trace.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "files.h"
#include "visible.h"

namespace olh_viewers {

Trace::Trace(std::string adapter, const Words& arguments) : adapter_(std::move(adapter)) {
  std::string list;
  for (const std::string& argument : arguments) list += (list.empty() ? " \"" : ", \"") + argument + "\"";
  write(adapter_ + "(" + list + (list.empty() ? "" : " ") + ");\n");
}

void Trace::note(const std::string& what) const { write(adapter_ + ": " + what + "\n"); }

void Trace::complain(const std::string& sentence) const {
  std::fputs((adapter_ + ": " + visible(sentence) + "\n").c_str(), stderr);
  note(sentence);
}

int Trace::result(int status) const {
  write(adapter_ + " returned " + std::to_string(status) + "\n");
  return status;
}

// A line in one write, so that the lines of two processes do not mix. What cannot be written is not missed.
void Trace::write(const std::string& line) const {
  const std::string name = variable("OLH_LOG_HELP");
  if (name.empty()) return;
  const int fd = open(name.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0600);
  struct stat status = {};
  const bool is_log = fd >= 0 && fstat(fd, &status) == 0 && (S_ISREG(status.st_mode) || S_ISCHR(status.st_mode));
  if (is_log && ::write(fd, line.data(), line.size()) < 0) std::perror(adapter_.c_str());
  if (fd >= 0) close(fd);
}

}  // namespace olh_viewers
