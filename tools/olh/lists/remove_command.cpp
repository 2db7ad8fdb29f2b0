// olh remove ROOT NAME: takes away a manual that olh import or olh new has brought.
// olh prepare-root ROOT, for olh-import: a root that has what the pages of a manual read; with --portals, all that every
// root wants.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "files.h"
#include "list_failure.h"
#include "lists.h"
#include "manual_name.h"
#include "manual_origin.h"
#include "new_root.h"
#include "olh/dmerge.h"
#include "root_place.h"
#include "search_index.h"
#include "shared.h"

namespace olh {

namespace fs = std::filesystem;

namespace {

constexpr const char* kRemoveExamples =
    "Only a manual that 'olh import' or 'olh new' made is removed, unless you add --force.\n"
    "Examples:\n"
    "  olh remove docs product_guide    made by 'olh new' or 'olh import'\n"
    "Exit code: 0 removed, 4 there is no such manual, 5 something else made it, or it cannot be\n"
    "removed, 64 wrong use.\n";

struct RemoveArguments {
  std::string root;
  std::string name;
  bool force = false;
  bool json = false;
};

// In one step first: what is half removed would be taken for a manual.
void remove_folder(const fs::path& folder) {
  std::string aside = (folder.parent_path() / ".olh-import-XXXXXX").string();
  if (mkdtemp(aside.data()) == nullptr) throw std::runtime_error(aside + ": " + std::strerror(errno));
  std::error_code failed;
  fs::rename(folder, fs::path(aside) / folder.filename(), failed);
  std::error_code ignored;
  fs::remove_all(aside, ignored);
  if (failed) throw std::runtime_error(folder.string() + ": " + failed.message());
}

// A form of a document, and what brought it; "" for something else.
struct Form {
  std::string place;
  std::string brought_by;
  bool is_pdf = false;
};

std::vector<Form> forms_of(const std::string& root, const std::string& name) {
  const std::string folder = root + "/htmldocs/" + name;
  const std::string pdf = root + "/pdfdocs/" + name + ".pdf";
  std::vector<Form> forms = {{folder, olh_viewers::origin_of(folder)}, {pdf, olh_viewers::origin_of_pdf(pdf), true}};
  std::error_code ignored;
  std::erase_if(forms, [&](const Form& form) { return is_nothing(form.place, ignored); });
  return forms;
}

void remove_form(const Form& form) {
  if (!form.is_pdf) return remove_folder(form.place);
  std::error_code failed;
  fs::remove(form.place, failed);
  if (failed) throw std::runtime_error(form.place + ": " + failed.message());
  fs::remove(olh_viewers::origin_file_of_pdf(form.place), failed);
}

// Where a list is written: where its link leads, if root or this user has made it; a stranger's gives way.
std::string place_of_list(const std::string& name) {
  struct stat link = {};
  const bool is_link = lstat(name.c_str(), &link) == 0 && S_ISLNK(link.st_mode);
  return is_link && (link.st_uid == 0 || link.st_uid == geteuid()) ? fs::canonical(name).string() : name;
}

// Gives a list another text in one step, with the mode and, where that is allowed, the owner of the old one. The name
// under which it is put together is nobody else's, so that two runs never write into one file.
void replace_list(const std::string& name, const std::string& text) {
  const std::string list = place_of_list(name);
  struct stat old = {};
  std::string made = list + ".XXXXXX";
  const int fd = stat(list.c_str(), &old) == 0 ? mkstemp(made.data()) : -1;
  if (fd < 0) throw std::runtime_error(list + ": " + std::strerror(errno));
  const bool same_owner = fchown(fd, old.st_uid, old.st_gid) == 0;
  const bool is_written = fchmod(fd, old.st_mode & (same_owner ? 07777 : 0777)) == 0 &&
                          write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size()) && fsync(fd) == 0;
  const bool is_whole = close(fd) == 0 && is_written;
  if (is_whole && rename(made.c_str(), list.c_str()) == 0) return;
  const std::string reason = std::strerror(errno);
  unlink(made.c_str());
  throw std::runtime_error(list + ": " + reason);
}

// Whether a line of the portal's list is the one that olh new writes for the document.
bool is_portal_line(const std::string& line, const std::string& name) {
  return line.starts_with("List.fAddItem( \"") && line.ends_with("\", \"" + name + "\" );");
}

// Takes a document that is no more out of the portal. The rest of the list, a person's file, stays byte for byte.
void remove_from_portal(const std::string& root, const std::string& name) {
  const std::string list = root + "/" + kPortalDocuments;
  const std::string before = olh_viewers::content_of(list);
  std::string after;
  for (std::size_t begin = 0, end = 0; begin < before.size(); begin = end) {
    end = std::min(before.find('\n', begin), before.size() - 1) + 1;
    const std::string line = before.substr(begin, end - begin);
    if (!is_portal_line(line.substr(0, line.find_last_not_of("\r\n") + 1), name)) after += line;
  }
  if (after != before) replace_list(list, after);
}

// What something else has brought stays beside what goes.
int remove_manual(const RemoveArguments& asked, const std::string& root) {
  std::vector<Form> forms = forms_of(root, asked.name);
  if (forms.empty()) return failure(OLH_RESULT_NOT_FOUND, root + " has no manual " + asked.name + ".");
  const std::string first = forms.front().place;
  if (!asked.force) std::erase_if(forms, [](const Form& form) { return form.brought_by.empty(); });
  if (forms.empty())
    return failure(OLH_RESULT_IO, first + " was not made by olh import or olh new. Add --force to remove it.");
  try {
    // The PDF first: it may be a link to what lies with the pages.
    for (auto form = forms.rbegin(); form != forms.rend(); ++form) remove_form(*form);
    if (forms_of(root, asked.name).empty()) remove_from_portal(root, asked.name);
  } catch (const std::runtime_error& error) {
    return failure(OLH_RESULT_IO, std::string("the manual cannot be removed: ") + error.what() + ".");
  }
  const ListRun run = make_lists_silently(root);
  if (run.result != DMERGE_RESULT_OK) return failure(OLH_RESULT_IO, sentence_about_failure(run));
  make_search_index(root);
  return OLH_RESULT_OK;
}

int remove(const RemoveArguments& asked) {
  const std::string root = path_of_root(asked.root);
  const int result = remove_manual(asked, root);
  if (asked.json)
    say_json({{"root", root}, {"name", asked.name}, {"result", result}});
  else if (result == OLH_RESULT_OK)
    say(root + " no longer holds " + asked.name + ".");
  return result;
}

struct PrepareArguments {
  std::string root;
  bool portals = false;
};

int prepare_root(const PrepareArguments& asked) {
  const std::string root = path_of_root(asked.root);
  const auto pages = shipped_pages();
  std::error_code failed;
  const bool is_new = takes_new_root(root, failed);
  if (!is_new && !is_root_directory(root)) return failure(OLH_RESULT_IO, no_root(root));
  if (!pages) return failure(OLH_RESULT_NOT_FOUND, kPagesAreMissing);
  try {
    is_new ? make_bare_root(root, *pages) : complete_root(root, *pages, asked.portals);
    return OLH_RESULT_OK;
  } catch (const std::runtime_error& error) {
    return failure(OLH_RESULT_IO, root + (is_new ? " cannot be made: " : ": ") + error.what() + ".");
  }
}

}  // namespace

void add_remove_command(const Verb& olh) {
  const Verb verb = olh.verb("remove", "Remove a manual that was imported or made", kRemoveExamples);
  RemoveArguments& asked = verb.action(remove);
  verb.option("ROOT", asked.root, "The documentation root").required().refused_by(olh_viewers::refusal_of_root);
  verb.option("NAME", asked.name, "The name of the manual")
      .required()
      .refused_by(olh_viewers::refusal_of_manual_name);
  verb.flag("--force", asked.force, "Even if something else made it");
  add_json_option(verb, asked.json);
}

void add_prepare_root_command(const Verb& olh) {
  const Verb verb = olh.hidden_verb("prepare-root");
  PrepareArguments& asked = verb.action(prepare_root);
  verb.option("ROOT", asked.root, "").required().refused_by(olh_viewers::refusal_of_root);
  verb.flag("--portals", asked.portals, "");
}

}  // namespace olh
