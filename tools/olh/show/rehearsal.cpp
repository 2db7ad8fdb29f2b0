#include "rehearsal.h"

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "files.h"
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

  // Every call in order: its arguments, each ended by a NUL, after a line with their number.
  std::vector<std::vector<std::string>> calls() const {
    std::istringstream file(olh_viewers::content_of(path_));
    std::vector<std::vector<std::string>> all;
    for (std::string number; std::getline(file, number);) {
      std::vector<std::string> words(static_cast<std::size_t>(std::atoi(number.c_str())));
      for (std::string& word : words) std::getline(file, word, '\0');
      all.push_back(std::move(words));
    }
    return all;
  }

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
  for (const std::vector<std::string>& words : report.calls()) {
    if (is_remote(words) && words[1] == kPing) continue;
    rehearsal.in_browser = is_remote(words);
    rehearsal.arguments = words;
    rehearsal.url = rehearsal.in_browser ? olh_viewers::url_to_open(words[1]).value_or("") : "";
  }
  return rehearsal;
}

int answer_as_viewer(const char* file, int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  std::string record = std::to_string(words.size()) + "\n";
  for (const std::string& word : words) record += word + '\0';
  const int fd = open(file, O_WRONLY | O_APPEND | O_CLOEXEC);
  if (fd < 0) return EXIT_FAILURE;
  const bool written = write(fd, record.data(), record.size()) == static_cast<ssize_t>(record.size());
  close(fd);
  if (!is_remote(words)) end_watching();
  return written ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace olh
