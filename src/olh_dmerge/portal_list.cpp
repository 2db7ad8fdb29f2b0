// The list of installed portals.
//
// Knows    which lines of the source list stay, which portals are added to them, and where the release name stands.
//          A call that fails leaves no record.
// Not      what portals say of their documents (document_lists).
// For      the driver, as its first step.
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "boundary.h"
#include "bounded_text.h"
#include "directory.h"
#include "generated_file.h"
#include "line_reader.h"
#include "one_thread.h"
#include "paths.h"
#include "registries.h"
#include "script_line.h"
#include "step.h"

namespace olh {

namespace {

constexpr std::string_view kMainPortal = "qel_td";
constexpr std::string_view kPortalMark = "_td";
constexpr std::string_view kAddList = "Entry.fAddList";
constexpr std::string_view kRelease = "mReleaseName";
constexpr std::string_view kNameLine = "mTomeDeckName = \"";
constexpr std::string_view kLinkTag = "tomedeck=";

constexpr std::string_view kDefaultSource =
    "var Entry;\n"
    "var List;\n"
    "\n"
    "TDTab_TomeDecks.fVisible( true );\n"
    "\n"
    "Entry = new TabEntry_Object( \"TomeDecks\" );\n"
    "List = new List_Object(\"tomedeck\");\n"
    "Entry.fAddList( List );\n"
    "TDTab_TomeDecks.fAddEntry( Entry );\n";

constexpr std::string_view kHeader =
    "// ----- auto-generated list of available tomedecks -----\n"
    "mbUseInstalledTdks = true;\n"
    "\n";

// The display name in a portal's own script; nothing, after a message, when that cannot be opened.
std::optional<std::string> portal_title(std::string_view root, std::string_view portal) {
  const std::string path = clean_path({root, "/tomedecks/", portal, "/js/doclist.js"});
  LineReader script(path.c_str(), kLongestLine);
  if (!script) {
    std::printf("ERROR: Unable to open %s in order to determine title. Skipping this add-in...\n", path.c_str());
    return std::nullopt;
  }
  std::string_view line;
  while (script.next(line)) {
    if (!contains(line, kNameLine)) continue;
    const auto title = quoted(line, 0);
    return title ? std::optional<std::string>(*title) : std::nullopt;
  }
  return std::nullopt;
}

// The source list on its way to the list of installed portals, line by line:
//
//   line                                        becomes
//   // ...                                      itself
//   ...List.fAddItem..."title", "portal"...     itself when the portal is installed, else nothing; the portal is found
//   ...List.fAddItem... with fewer arguments    itself
//   ...Entry.fAddList..., the first             the installed portals that were not found yet, then itself
//   anything else                               itself; with mReleaseName, it may give the release name
//
// The first rule that fits counts.
class InstalledList {
 public:
  explicit InstalledList(std::string_view root) : root_(root), text_(kHeader) {}

  void take(std::string_view line) {
    if (line.starts_with("//")) return write(line);
    if (contains(line, kAddItem)) return take_item(line);
    if (contains(line, kAddList) && !completed_) {
      add_unnamed_portals();
      completed_ = true;
    } else if (contains(line, kRelease)) {
      take_release(line);
    }
    write(line);
  }

  const std::string& text() const noexcept { return text_; }
  // Whether the names of the portals broke off, so that some may be missing.
  bool failed() const noexcept { return failed_; }

  // Records what the source names: the portals, installed or not, and the release.
  void record() const {
    for (const std::string& portal : named_) add_found_name(portal);
    if (!release_) return;
    char* const copy = copied(*release_);
    discard(releaseName);
    releaseName = copy;
  }

 private:
  void write(std::string_view line) { append(text_, {line, "\n"}); }

  void take_item(std::string_view line) {
    const auto argument = quoted(line, 1);
    if (!argument) return write(line);
    const std::size_t link = argument->find(kLinkTag);
    const std::string_view portal =
        link == std::string_view::npos ? *argument : argument->substr(link + kLinkTag.size());
    named_.emplace_back(portal);
    if (pathExists(clean_path({root_, "/tomedecks/", portal, "/js/doclist.js"}).c_str()) != 0) write(line);
  }

  void take_release(std::string_view line) {
    if (const auto name = quoted(line, 0)) release_ = *name;
  }

  void add_unnamed_portals() {
    std::unordered_set<std::string_view> found(named_.begin(), named_.end());
    for (const FoundName* name = foundHandleListHead; name != nullptr; name = name->next)
      found.insert(text_of(name->name));
    Directory portals(clean_path({root_, "/", "tomedecks"}).c_str());
    while (const char* portal = portals.next()) {
      if (portal == kMainPortal || !contains(portal, kPortalMark) || found.contains(portal)) continue;
      const auto title = portal_title(root_, portal);
      if (title && !title->empty()) append(text_, {"List.fAddItem( \"", *title, "\", \"", portal, "\" );\n"});
    }
    failed_ = portals.failed();
  }

  std::string_view root_;
  std::string text_;
  std::vector<std::string> named_;
  std::optional<std::string> release_;
  bool completed_ = false;
  bool failed_ = false;
};

// Creates the source list when there is none, also where a file stands in its way; one that is there but unreadable, or
// that cannot be looked at now, is left alone. Returns whether there may be one now.
bool ensure_source(const std::string& path) {
  if (access(path.c_str(), F_OK) == 0 || (errno != ENOENT && errno != ENOTDIR)) return true;
  return put_list(path, kDefaultSource);
}

int failed(const char* format, const std::string& path) {
  std::printf(format, "dmerge", path.c_str());
  return DMERGE_RESULT_FAILED;
}

int generate_installed_list(std::string_view root) {
  if (pathExists(clean_path({root, "/tomedecks/"}).c_str()) == 0) return DMERGE_RESULT_OK;
  const std::string source_path = clean_path({root, "/tomedecks/qel_td/js/tdklist.js"});
  if (!ensure_source(source_path))
    return failed("%s: error: generateTdInstalledList: srcPath %s not found and could not be created\n", source_path);
  constexpr char kUnreadable[] = "%s: error: generateTdInstalledList: srcPath %s not readable\n";
  constexpr char kUnwritable[] = "%s: error: generateTdInstalledList: tgtPath %s not writeable\n";
  LineReader source(source_path.c_str(), kLongestLine);
  if (!source) return failed(kUnreadable, source_path);
  std::string target_path = clean_path({root, "/tomedecks/qel_td/js/tdklist_installed.js"});
  if (!can_be_written(target_path)) return failed(kUnwritable, target_path);
  InstalledList list(root);
  for (std::string_view line; source.next(line);) list.take(without_line_end(line));
  if (source.failed()) return failed(kUnreadable, source_path);
  if (list.failed()) return failed(kUnreadable, clean_path({root, "/tomedecks"}));
  if (!store_list(target_path, list.text())) return failed(kUnwritable, target_path);
  list.record();
  registerNewFile(target_path.data());
  return DMERGE_RESULT_OK;
}

}  // namespace

}  // namespace olh

int generateTdInstalledList(char* root) noexcept {
  return olh::run_step(DMERGE_RESULT_FAILED, root, olh::generate_installed_list);
}

char* getTitle(char* root, char* portal) noexcept {
  const olh::OneThread inside;
  if (root == nullptr || portal == nullptr) return nullptr;
  return olh::guarded(static_cast<char*>(nullptr), [root, portal]() -> char* {
    const auto title = olh::portal_title(root, portal);
    return title ? olh::copied(*title) : nullptr;
  });
}
