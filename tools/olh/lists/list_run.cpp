#include "list_run.h"

#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <set>

#include "olh/dmerge.h"
#include "shared.h"

namespace olh {

namespace {

// The run in progress: the generator's callback has no argument of its own.
ListRun* current_run = nullptr;
const std::function<void(const std::string&)>* listener = nullptr;
bool progress_is_shown = false;

// The generator's records are complete from the first list of documents on.
void take_documents() {
  for (const LibListEntry* entry = lleHead; entry != nullptr; entry = entry->next) {
    if (entry->docName == nullptr) continue;  // another one has its name
    const std::string type = entry->type == nullptr ? "" : entry->type;
    current_run->documents.push_back(
        {entry->docName, entry->title == nullptr ? "" : entry->title, type != "pdf", type != "html"});
    if (type != "pdf") ++current_run->libraries;
    if (type != "html") ++current_run->pdfs;
    if (type.empty()) ++current_run->both;
  }
  for (const LibListEntry* entry = pdfTitlesHead; entry != nullptr; entry = entry->next)
    current_run->titled_by_portals.emplace_back(entry->docName == nullptr ? "" : entry->docName);
  current_run->release = releaseName == nullptr ? "" : releaseName;
}

void count_portals() {
  std::set<std::string> names;
  current_run->listed_portals = listed_portals(current_run->root).value_or(std::vector<ListedItem>());
  for (const ListedItem& portal : current_run->listed_portals) names.insert(portal.name);
  current_run->portals = names.size();
}

// Portals that may not be looked at: the generator passes over them, as over a root without any.
bool has_hidden_portals(const std::string& root) {
  const std::string portals = root + "/tomedecks/";
  struct stat status = {};
  return lstat((root + "/tomedecks").c_str(), &status) == 0 && access(portals.c_str(), R_OK | X_OK) != 0;
}

// ---- progress: from a signal handler, so only what is safe there ----

// Writes the number of documents found so far over the last one. A message of the generator goes over it in its turn.
extern "C" void show_progress(int) {
  char line[] = "\r           documents so far\r";
  int number = numLleEntries;
  for (int i = 10; i > 0; --i) {
    line[i] = number > 0 || i == 10 ? static_cast<char>('0' + number % 10) : ' ';
    number /= 10;
  }
  if (write(STDERR_FILENO, line, sizeof line - 1) < 0) return;
}

void erase_progress() { std::fputs("\r\033[K", stderr); }

// The number of documents twice a second, while it lives.
class Progress {
 public:
  explicit Progress(bool wanted) : wanted_(wanted) {
    if (!wanted_) return;
    struct sigaction action = {};
    action.sa_handler = show_progress;
    action.sa_flags = SA_RESTART;
    sigaction(SIGALRM, &action, &before_);
    set_timer(500000);
  }
  ~Progress() {
    if (!wanted_) return;
    set_timer(0);
    sigaction(SIGALRM, &before_, nullptr);
    erase_progress();
  }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

 private:
  static void set_timer(suseconds_t microseconds) {
    const itimerval interval = {{0, microseconds}, {0, microseconds}};
    setitimer(ITIMER_REAL, &interval, nullptr);
  }

  bool wanted_;
  struct sigaction before_ = {};
};

// While it lives, lines of other kinds may be written: the number has left the terminal and does not come back.
class ProgressPause {
 public:
  explicit ProgressPause(bool wanted) : wanted_(wanted) {
    if (!wanted_) return;
    sigset_t alarm;
    sigemptyset(&alarm);
    sigaddset(&alarm, SIGALRM);
    sigprocmask(SIG_BLOCK, &alarm, &before_);
    erase_progress();
  }
  ~ProgressPause() {
    if (wanted_) sigprocmask(SIG_SETMASK, &before_, nullptr);
  }
  ProgressPause(const ProgressPause&) = delete;
  ProgressPause& operator=(const ProgressPause&) = delete;

 private:
  bool wanted_;
  sigset_t before_ = {};
};

extern "C" int note_list(char* path) {
  const std::string file = path;
  current_run->files.push_back(file);
  if (current_run->documents.empty()) take_documents();
  if (file == current_run->root + "/" + kInstalledPortals) count_portals();
  const ProgressPause pause(progress_is_shown);
  (*listener)(file);
  return 0;
}

}  // namespace

ListRun make_lists(const std::string& root, const std::function<void(const std::string&)>& on_file,
                   bool shows_progress) {
  ListRun made;
  made.root = root;
  while (made.root.size() > 1 && made.root.back() == '/') made.root.pop_back();
  made.has_root = pathExists(made.root.c_str()) != 0;
  current_run = &made;
  listener = &on_file;
  progress_is_shown = shows_progress;
  const auto begin = std::chrono::steady_clock::now();
  {
    const Progress progress(shows_progress);
    made.result = dmerge(made.root.c_str(), note_list);
  }
  const bool passed_over = made.result == DMERGE_RESULT_OK || made.result == DMERGE_RESULT_FAILED;
  if (passed_over && has_hidden_portals(made.root)) made.result = DMERGE_RESULT_UNLISTABLE;
  made.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  return made;
}

ListRun make_lists_silently(const std::string& root) {
  StreamInMemory memory(stdout);
  ListRun made = make_lists(
      root, [](const std::string&) {}, false);
  made.messages = lines_of(memory.text());
  return made;
}

}  // namespace olh
