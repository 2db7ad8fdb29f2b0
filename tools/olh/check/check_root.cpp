// Checks of a root as a whole: its generated lists and the titles in them, its options file, names that differ only in
// letter case, and what an interrupted import has left.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <map>
#include <set>

#include "checks.h"
#include "files.h"
#include "find.h"
#include "manual_origin.h"
#include "olh/dmerge.h"
#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kOptions = "qel_doc_options.ini";

// Behind a URL nothing can be tried: only whether the lists are there.
void check_served_lists(const CheckedRoot& root, Findings& findings) {
  if (!listed_documents(root.path))
    findings.warning({kPortalsLibraryList},
                     "cannot be read, so that pages list no documents and these were not checked");
  if (!listed_portals(root.path))
    findings.warning({kInstalledPortals}, "cannot be read, so that pages list no portals and these were not checked");
  findings.note({root.path},
                "is on a web server: whether its lists are up to date, and what they leave out, cannot be checked");
}

void check_program(const std::string& file, const char* key, Findings& findings) {
  const std::string program = written_value(file, key);
  if (!program.empty() && exe_exists(program.c_str()) == 0)
    findings.warning({kOptions}, "{} names {}, which is not executable on this machine", key, program);
}

// Names in lower case, with the spellings in use and where each of them stands.
using Spellings = std::map<std::string, std::map<std::string, std::string>>;

void add_spelling(Spellings& spellings, const std::string& name, const std::string& place) {
  std::string low = name;
  downcase(low.data());
  spellings[low].try_emplace(name, place);
}

void tell_twins(const Spellings& spellings, Findings& findings) {
  for (const auto& [low, places] : spellings) {
    for (auto other = std::next(places.begin()); other != places.end(); ++other)
      findings.warning({places.begin()->second},
                       "differs only in letter case from {}, and a help call takes them for different documents",
                       other->second);
  }
}

// An import that still runs holds a lock on the directory that it works in.
bool is_left_behind(const std::string& workshop) {
  const int fd = open(workshop.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW);
  if (fd < 0) return false;
  const bool is_free = flock(fd, LOCK_SH | LOCK_NB) == 0;
  close(fd);
  return is_free;
}

}  // namespace

void check_lists(const CheckedRoot& root, Findings& findings) {
  if (root.is_web) return check_served_lists(root, findings);
  if (!root.trial) return findings.error({root.path}, "cannot be listed: {}", root.no_trial);
  if (!root.has("htmldocs") && !root.has("tomedecks")) return;  // no page would read a list
  if (root.trial->run.result != DMERGE_RESULT_OK)
    for (const std::string& message : root.trial->run.messages)
      findings.warning({root.path}, "cannot have its lists made; the generator says: {}", message);
  for (const ListChange& change : root.trial->changes)
    change.is_unreadable ? findings.warning({change.file}, state_of(change))
                         : findings.warning({change.file}, state_of(change) + "; '{}' makes it anew",
                                            command_line({"olh", "dmerge", root.path}));
}

void check_titles(const CheckedRoot& root, Findings& findings) {
  if (!root.trial) return;
  for (const TitleWarning& one : title_warnings(root.trial->run, root.path))
    findings.warning({one.file, one.line}, one.what + " \"{}\"" + one.harm, one.text);
}

void check_options(const CheckedRoot& root, Findings& findings) {
  const std::string file = place_in_root(root.path, kOptions);
  if (root.is_web || path_exists(file.c_str()) == 0) return;
  for (const SpoiltFile& one : root.search.spoilt)
    if (one.file == file)
      findings.error({kOptions, one.line}, "{}. The whole file is ignored until that is fixed", one.reason);
  for (const char* key : {"QEL_HTML_BROWSER", "QEL_PDF_READER"}) check_program(file, key, findings);
  for (const JudgedRoot& one : root.search.rejected)
    if (one.options_file == file)
      findings.warning({kOptions}, "QEL_ALT_DOC_PATH names {}, which is no documentation root: it {}", one.path,
                       one.reason);
}

void check_letter_case(const CheckedRoot& root, Findings& findings) {
  Spellings documents;
  Spellings portals;
  for (const char* directory : {"htmldocs", "pdfdocs", "system_admin_docs"})
    for (const std::string& name : root.names_in(directory))
      add_spelling(documents, without_pdf(name), std::string(directory) + "/" + name);
  for (const std::string& name : root.names_in("tomedecks")) add_spelling(portals, name, "tomedecks/" + name);
  if (root.is_web)
    for (const Holding& one : root.holdings.all) add_spelling(one.portal ? portals : documents, one.name, one.name);
  tell_twins(documents, findings);
  tell_twins(portals, findings);
}

void check_interrupted_imports(const CheckedRoot& root, Findings& findings) {
  for (const char* directory : {"", "htmldocs", "pdfdocs"})
    for (const std::string& name : root.names_in(directory)) {
      const std::string place = olh_viewers::path_in(directory, name);
      if (name.starts_with(olh_viewers::kWorkshop) && is_left_behind(place_in_root(root.path, place)))
        findings.warning({place}, "was left by an import that was interrupted: run that import again");
    }
}

}  // namespace olh
