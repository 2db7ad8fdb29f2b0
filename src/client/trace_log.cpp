// The two diagnostic channels: debug lines on standard error, and the trace log.
#include "trace_log.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdarg>
#include <cstdio>
#include <ctime>

#include "bounded_text.h"
#include "environment.h"
#include "olh/support.h"
#include "one_thread.h"
#include "unique_fd.h"
#include "write_signals.h"

namespace {

int olh_debug = 0;
FILE* olh_log_fp = nullptr;

// Whether a log of this name can be opened: it is there, or the directory that it would lie in is.
bool has_a_place(const char* name) noexcept {
  if (path_exists(name) != 0) return true;
  char directory[OLH_BUFFER_SIZE];
  if (!olh::write_buffer(directory, name)) return false;
  remove_leaf(directory);
  return path_exists(directory) != 0;
}

FILE* open_for_appending(const char* name) noexcept {
  constexpr mode_t kOwnerAlone = 0600;  // the arguments of a host are nobody else's business
  // Without blocking: a FIFO that nobody reads is no log, and one that nobody empties loses lines.
  olh::UniqueFd file(open(name, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, kOwnerAlone));
  if (!file) return nullptr;
  FILE* stream = fdopen(file.get(), "a");
  if (stream != nullptr) file.release();
  return stream;
}

}  // namespace

void setDebugVariable() noexcept {
  const olh::OneThread inside;
  olh_debug = olh::is_empty(olh::environment_variable("OLH_DEBUG")) ? 0 : 1;
}

void print_debug(const char* format, ...) noexcept {
  const olh::OneThread inside;
  if (olh_debug != 1 || format == nullptr) return;
  const olh::WriteSignalsHeldBack quiet;
  va_list arguments;
  va_start(arguments, format);
  std::vfprintf(stderr, format, arguments);
  va_end(arguments);
}

void CloseOlhLog() noexcept {
  const olh::OneThread inside;
  if (olh_log_fp == nullptr) return;
  const olh::WriteSignalsHeldBack quiet;
  std::fclose(olh_log_fp);
  olh_log_fp = nullptr;
}

void StartOlhLog(char* name) noexcept {
  const olh::OneThread inside;
  CloseOlhLog();
  if (olh::is_empty(name) || !has_a_place(name)) return;
  olh_log_fp = open_for_appending(name);
}

void OlhLogHelp(const char* name, const char* arg1, const char* arg2, const char* arg3) noexcept {
  if (olh_log_fp == nullptr || olh::is_empty(name)) return;
  const olh::WriteSignalsHeldBack quiet;
  if (olh::is_empty(arg1)) {
    std::fprintf(olh_log_fp, "%s();\n", name);
  } else if (olh::is_empty(arg2)) {
    std::fprintf(olh_log_fp, "%s( \"%s\" );\n", name, arg1);
  } else if (olh::is_empty(arg3)) {
    std::fprintf(olh_log_fp, "%s( \"%s\", \"%s\" );\n", name, arg1, arg2);
  } else {
    std::fprintf(olh_log_fp, "%s( \"%s\", \"%s\", \"%s\" );\n", name, arg1, arg2, arg3);
  }
  std::fflush(olh_log_fp);
}

void OlhLogReturn(const char* name, int code) noexcept {
  if (olh_log_fp == nullptr || olh::is_empty(name)) return;
  const olh::WriteSignalsHeldBack quiet;
  std::fprintf(olh_log_fp, "%s returned %d\n", name, code);
  std::fflush(olh_log_fp);
}
