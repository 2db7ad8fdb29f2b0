#include "new_root.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <span>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "files.h"
#include "list_failure.h"
#include "list_run.h"
#include "manual_origin.h"
#include "olh/dmerge.h"
#include "search_index.h"
#include "shared.h"

namespace olh {

namespace fs = std::filesystem;

namespace {

// What a root of any maker wants of the project's own: the frame of manuals, the general help, the portal.
constexpr const char* kWanted[] = {
    "index.html",           "htmldocs/qelhelp.htm", "htmldocs/QEL",    "htmldocs/qel_html_help",
    "tomedecks/index.html", "tomedecks/common",     "tomedecks/qel_td"};
// Those of them that the pages of a manual read.
constexpr const char* kFrame[] = {"htmldocs/qelhelp.htm", "htmldocs/QEL"};

// A directory beside the new root, so that the root can be moved to its place in one step; gone with what is in it at
// the end of the scope.
class Workshop {
 public:
  explicit Workshop(const fs::path& parent) : path_((parent / ".olh-new-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr)
      throw fs::filesystem_error("", parent, std::error_code(errno, std::generic_category()));
  }
  ~Workshop() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  Workshop(const Workshop&) = delete;
  Workshop& operator=(const Workshop&) = delete;
  fs::path path() const { return path_; }

 private:
  std::string path_;
};

// What is there stays as it is.
void copy_page(const fs::path& from, const fs::path& to) {
  fs::create_directories(to.parent_path());
  if (fs::copy_file(from, to, fs::copy_options::skip_existing))
    fs::permissions(to, fs::perms::owner_write, fs::perm_options::add);
}

void copy_wanted(const fs::path& docs, const fs::path& root, std::span<const char* const> all_wanted) {
  for (const char* wanted : all_wanted) {
    if (!fs::is_directory(docs / wanted)) {
      copy_page(docs / wanted, root / wanted);
      continue;
    }
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(docs / wanted)) {
      const fs::path relative = entry.path().lexically_relative(docs);
      const bool is_own = relative == kListOfPortals || relative == kPortalDocuments;
      const bool is_index = relative.string().starts_with(kSearchIndex);
      if (entry.is_regular_file() && !is_own && !is_index && !is_generated_list(relative))
        copy_page(entry.path(), root / relative);
    }
  }
}

struct Filling {
  std::string placeholder;
  std::string text;
};
using Fillings = std::vector<Filling>;

std::string as_markup(std::string text) {
  olh_viewers::replace_all(text, "&", "&amp;");
  olh_viewers::replace_all(text, "<", "&lt;");
  return text;
}

void write_page(const fs::path& to, const std::string& text) {
  fs::create_directories(to.parent_path());
  std::ofstream page(to, std::ios::binary);
  page << text;
  page.close();
  if (!page) throw std::runtime_error("not all of it could be written");
}

// A file of the template, filled in; in a page the texts are markup.
void fill_in(const fs::path& from, const fs::path& to, const Fillings& fillings) {
  const std::optional<std::string> source = olh_viewers::text_of_file(from);
  if (!source) throw std::runtime_error(from.string() + " cannot be read");
  std::string text = *source;
  const bool is_page = from.extension() == ".htm";
  for (const Filling& filling : fillings)
    olh_viewers::replace_all(text, filling.placeholder, is_page ? as_markup(filling.text) : filling.text);
  write_page(to, text);
}

Fillings fillings_for(const ShippedPages& shipped, const NewManual& manual) {
  return {{"@NAME@", manual.name}, {"@TITLE@", manual.title}, {"@TOOLS@", command_line({shipped.tools.string()})}};
}

void fill_in_manual(const ShippedPages& shipped, const fs::path& directory, const NewManual& manual) {
  const fs::path pages = shipped.template_manual / "manual";
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(pages))
    if (entry.is_regular_file())
      fill_in(entry.path(), directory / entry.path().lexically_relative(pages), fillings_for(shipped, manual));
  write_page(directory / olh_viewers::kOriginFile, olh_viewers::origin_mark(olh_viewers::kByNew));
}

void make_its_lists(const std::string& root) {
  const ListRun run = make_lists_silently(root);
  if (run.result != DMERGE_RESULT_OK) throw std::runtime_error(sentence_about_failure(run));
}

std::string reason_of(const fs::filesystem_error& error) {
  return error.path1().string() + ": " + error.code().message();
}

// A directory that cannot give way, since a disk is mounted there or what is made lies in it, is filled instead.
void move_to(const fs::path& root, const fs::path& made) {
  std::error_code failed;
  fs::rename(made, root, failed);
  const bool is_stuck = failed == std::errc::device_or_resource_busy || failed == std::errc::directory_not_empty ||
                        failed == std::errc::cross_device_link || failed == std::errc::invalid_argument;
  if (is_stuck) return fs::copy(made, root, fs::copy_options::recursive);
  if (failed) throw fs::filesystem_error("", root, failed);
}

// Puts a root together beside its place, with what `fill` makes of its own, and moves it there.
void make_in_one_step(const fs::path& root, const ShippedPages& pages,
                      const std::function<void(const fs::path&)>& fill) {
  try {
    fs::create_directories(root.parent_path());
    const bool is_closed = access(root.parent_path().c_str(), W_OK) != 0 && fs::is_directory(root);
    const Workshop workshop(is_closed ? root : root.parent_path());
    const fs::path made = workshop.path() / "root";
    if (fs::exists(pages.docs / kNotFoundPdf)) copy_page(pages.docs / kNotFoundPdf, made / kNotFoundPdf);
    copy_wanted(pages.docs, made, kWanted);
    fill(made);
    make_its_lists(made.string());
    move_to(root, made);
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(reason_of(error));
  }
}

}  // namespace

std::optional<ShippedPages> shipped_pages() {
  const fs::path data = own_data();
  const ShippedPages pages = {data / "docs", data / "new_manual", data / "tools"};
  std::error_code failed;
  if (!data.empty() && fs::is_directory(pages.template_manual, failed)) return pages;
  return std::nullopt;
}

void make_root(const fs::path& root, const ShippedPages& pages, const NewManual& manual) {
  make_in_one_step(root, pages, [&](const fs::path& made) {
    fill_in_manual(pages, made / "htmldocs" / manual.name, manual);
    fill_in(pages.template_manual / "doclist.js", made / kPortalDocuments, fillings_for(pages, manual));
  });
}

void make_bare_root(const fs::path& root, const ShippedPages& pages) {
  make_in_one_step(root, pages,
                   [&](const fs::path& made) { copy_page(pages.docs / kPortalDocuments, made / kPortalDocuments); });
}

void complete_root(const fs::path& root, const ShippedPages& pages, bool with_portals) {
  try {
    copy_wanted(pages.docs, root, kFrame);
    if (!with_portals) return;
    copy_wanted(pages.docs, root, kWanted);
    copy_page(pages.docs / kPortalDocuments, root / kPortalDocuments);
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(reason_of(error));
  }
}

void add_manual(const fs::path& root, const ShippedPages& pages, const NewManual& manual) {
  try {
    const Workshop workshop(root);
    fill_in_manual(pages, workshop.path() / manual.name, manual);
    copy_wanted(pages.docs, root, kFrame);
    fs::rename(workshop.path() / manual.name, root / "htmldocs" / manual.name);
    make_its_lists(root.string());
  } catch (const fs::filesystem_error& error) {
    throw std::runtime_error(reason_of(error));
  }
}

}  // namespace olh
