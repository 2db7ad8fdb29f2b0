#include "rehearsal.h"

#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "call_records.h"
#include "olh/support.h"
#include "shared.h"
#include "url.h"

namespace olh {

namespace {

constexpr std::string_view kRemote = "-remote";
constexpr std::string_view kPing = "ping()";

// The file of the report, gone at the end of the scope.
class ReportFile {
 public:
  ReportFile() : path_((std::filesystem::temp_directory_path() / "olh-show-XXXXXX").string()) {
    const int fd = mkstemp(path_.data());
    if (fd < 0) throw std::runtime_error("no file can be made in the directory for temporary files");
    close(fd);
  }
  ~ReportFile() { unlink(path_.c_str()); }
  ReportFile(const ReportFile&) = delete;
  ReportFile& operator=(const ReportFile&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

bool is_remote(const std::vector<std::string>& words) { return words.size() > 1 && words[0] == kRemote; }

// The launcher has a started reader watched for two seconds by the process that started it, and takes the end of that
// process by a signal for success. There is nothing to watch here. It is this same program: nobody else is hit when it
// has ended by itself and its place is taken.
void end_watching() {
  std::error_code failed;
  const std::string parent = "/proc/" + std::to_string(getppid()) + "/exe";
  const std::string program = std::filesystem::read_symlink(parent, failed).string();
  if (!failed && program == own_program()) kill(getppid(), SIGKILL);
}

}  // namespace

Rehearsal rehearse(const std::function<int()>& call) {
  const ReportFile report;
  const VariableForNow variable(kRehearsalVariable, report.path());
  const std::string self = own_program();
  OlhBrowserSetPath(self.c_str());
  OlhAcroSetPath(self.c_str());
  CloseOlhLog();
  Rehearsal rehearsal;
  rehearsal.result = call();
  for (const olh_viewers::Call& sent : olh_viewers::read_calls(report.path())) {
    const std::vector<std::string>& words = sent.arguments;
    if (is_remote(words) && words[1] == kPing) continue;
    rehearsal.in_browser = is_remote(words);
    rehearsal.arguments = words;
    rehearsal.url = rehearsal.in_browser ? olh_viewers::url_to_open(words[1]).value_or("") : "";
  }
  return rehearsal;
}

int answer_as_viewer(const char* file, int argc, char** argv) {
  const olh_viewers::Call call = olh_viewers::this_call(argc, argv);
  const bool written = olh_viewers::append_call(file, call, false);
  if (!is_remote(call.arguments)) end_watching();
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace olh
