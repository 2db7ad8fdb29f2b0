#include "import_doc_base.h"

#include <glob.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

#include "doc_base.h"
#include "files.h"
#include "import_pdf.h"
#include "manual_name.h"
#include "refusal.h"
#include "section_portals.h"
#include "words.h"

namespace olh_import {

namespace fs = std::filesystem;

namespace {

// Identifiers may have a "+", which names of manuals must not: "libstdcpp" of "libstdc++".
std::string name_of(const Registration& one) {
  std::string name = one.document;
  std::ranges::replace(name, '+', 'p');
  return name;
}

// How many folders a relative address leads upwards.
std::ptrdiff_t steps_upwards(const std::string& address) {
  if (address.starts_with('/') || address.find(':') != std::string::npos) return 0;
  const fs::path way = fs::path(address).lexically_normal();
  return std::ranges::count(way, fs::path(".."));
}

// What a page needs to look as it should: not where it leads, but what it loads.
std::string loaded_by(Element element) {
  if (element.is("link") && olh_viewers::lower_case(element.attribute("rel")) == "stylesheet")
    return element.attribute("href");
  return element.is("script") || element.is("img") ? element.attribute("src") : "";
}

// Whether all packages have their folders in this one.
bool is_shared(const fs::path& folder) {
  const bool is_documentation = folder.filename() == "doc" && folder.parent_path().filename() == "share";
  return folder == folder.root_path() || folder.filename() == "share" || is_documentation;
}

// The folder that is linked: that of the first page, or one above it if the page loads something from there.
fs::path folder_of_manual(const fs::path& index) {
  const Markup page = Markup::page(olh_viewers::text_of_file(index.string(), kLargestPage).value_or(""));
  std::ptrdiff_t steps = 0;
  for (Element at = page.root(); at; at = at.next_within(page.root()))
    steps = std::max(steps, steps_upwards(loaded_by(at)));
  fs::path folder = index.parent_path();
  for (; steps > 0 && !is_shared(folder.parent_path()); --steps) folder = folder.parent_path();
  return folder;
}

// The patterns of a registration below a folder. A folder stands for all that is in it.
std::vector<std::string> patterns_below(const fs::path& folder, const std::vector<std::string>& patterns) {
  std::vector<std::string> below;
  std::error_code failed;
  for (const std::string& pattern : patterns) {
    const fs::path whole = fs::is_directory(pattern, failed) ? fs::path(pattern) / "*" : fs::path(pattern);
    const std::string relative = whole.lexically_normal().lexically_relative(folder).string();
    if (!relative.empty() && !relative.starts_with("..")) below.push_back(relative);
  }
  return below;
}

std::vector<std::string> files_of(const std::vector<std::string>& patterns) {
  std::vector<std::string> files;
  for (const std::string& pattern : patterns) {
    glob_t found = {};
    if (glob(pattern.c_str(), 0, nullptr, &found) == 0)
      files.insert(files.end(), found.gl_pathv, found.gl_pathv + found.gl_pathc);
    globfree(&found);
  }
  return files;
}

class DocBaseImport {
 public:
  DocBaseImport(const DocBaseRequest& asked, const std::function<void(std::size_t, std::size_t)>& progress)
      : asked_(asked), progress_(progress) {}

  DocBaseOutcome run() {
    const std::vector<Registration> registrations = registrations_in(asked_.folders, outcome_.problems);
    if (!asked_.dry_run) prepare_root(asked_.root, {"--portals"});
    for (std::size_t at = 0; at < registrations.size(); ++at) {
      progress_(at, registrations.size());
      take(registrations[at]);
    }
    if (asked_.dry_run) return std::move(outcome_);
    remove_gone();
    portals_.write(asked_.root, outcome_.problems);
    outcome_.portals = portals_.size();
    return std::move(outcome_);
  }

 private:
  std::string place_of_pages(const std::string& name) const { return asked_.root + "/htmldocs/" + name; }
  std::string place_of_pdf(const std::string& name) const { return asked_.root + "/pdfdocs/" + name + ".pdf"; }

  void tell_of(const Registration& one, std::string what) {
    if (what.ends_with('.')) what.pop_back();
    outcome_.problems.push_back(one.document + " (" + one.file + "): " + what);
  }

  void take(const Registration& one) {
    const std::string name = name_of(one);
    if (const std::string refusal = olh_viewers::refusal_of_manual_name(name); !refusal.empty())
      return tell_of(one, refusal);
    const auto [first, is_new] = files_of_names_.try_emplace(name, one.file);
    if (!is_new) return tell_of(one, first->second + " has registered this name already");
    bool is_free = false;
    attempt(one, [&] {
      refuse_taken(one, name);
      is_free = true;
    });
    if (!is_free) return;
    attempt(one, [&] { bring_pages(one, name); });
    attempt(one, [&] { bring_pdf(one, name); });
    if (!asked_.dry_run && is_held(name)) portals_.add(one.section, one.title, name);
  }

  bool is_held(const std::string& name) const {
    return olh_viewers::origin_of(place_of_pages(name)) == olh_viewers::kByDocBase ||
           olh_viewers::origin_of_pdf(place_of_pdf(name)) == olh_viewers::kByDocBase;
  }

  // Pages and a PDF of one name are one document: a name that somebody has given to either of them is taken for both.
  void refuse_taken(const Registration& one, const std::string& name) const {
    const ImportRequest request = request_for(one, name);
    refuse_what_others_brought(request, place_of_pages(name), olh_viewers::origin_of(place_of_pages(name)));
    refuse_what_others_brought(request, place_of_pdf(name), olh_viewers::origin_of_pdf(place_of_pdf(name)));
  }

  // What keeps one document out keeps out no other.
  template <typename Action>
  void attempt(const Registration& one, Action action) {
    try {
      action();
    } catch (const std::runtime_error& failure) {  // a Refusal, or of the file system
      tell_of(one, failure.what());
    }
  }

  ImportRequest request_for(const Registration& one, const std::string& name) const {
    ImportRequest request;
    request.root = asked_.root;
    request.name = name;
    request.title = one.title;
    request.verb = olh_viewers::kByDocBase;
    request.dry_run = asked_.dry_run;
    return request;
  }

  void bring_pages(const Registration& one, const std::string& name) {
    if (one.index.empty()) return;
    if (!olh_viewers::is_regular_file(one.index)) return tell_of(one, one.index + " is not there");
    if (!is_page_name(one.index)) return tell_of(one, one.index + " is no HTML page");
    const fs::path index =
        fs::is_symlink(one.index) ? fs::canonical(one.index) : fs::path(one.index).lexically_normal();
    const fs::path folder = folder_of_manual(index);
    if (is_shared(folder)) return tell_of(one, one.index + " lies among the folders of all packages");
    there_.insert(place_of_pages(name));
    ImportRequest request = request_for(one, name);
    request.sources = {folder.string()};
    request.start = index.lexically_relative(folder).string();
    request.wanted = patterns_below(folder, one.pages);
    if (!one.pages.empty()) request.wanted.push_back(request.start);
    request.link = true;
    take_outcome(one, name, import_manual(request, progress_));
  }

  void bring_pdf(const Registration& one, const std::string& name) {
    if (one.pdfs.empty()) return;
    const std::vector<std::string> files = files_of(one.pdfs);
    if (files.empty()) return tell_of(one, one.pdfs.front() + " is not there");
    if (files.size() > 1) tell_of(one, "only the first of its PDFs is imported, " + files.front());
    there_.insert(place_of_pdf(name));
    const ImportRequest request = request_for(one, name);
    std::optional<PdfImport> pdf;
    try {
      pdf.emplace(request, files.front());
    } catch (const Refusal& refusal) {
      if (refusal.code() != kNoSource) throw;
      pdf.emplace(request, files.front(), PdfImport::Unread());
      tell_of(one, std::string(refusal.what()) + " It is shown as it is");
    }
    pdf->take_place();
    take_outcome(one, name, pdf->outcome());
  }

  void take_outcome(const Registration& one, const std::string& name, ImportOutcome outcome) {
    outcome_.documents.push_back({name, one.section, std::move(outcome)});
  }

  // What an earlier run has brought, and is not registered or not there any more.
  void remove_gone() {
    for (const std::string& name : olh_viewers::names_in(asked_.root + "/htmldocs").names)
      remove_if_gone(place_of_pages(name), olh_viewers::origin_of(place_of_pages(name)), "");
    for (const std::string& name : olh_viewers::names_in(asked_.root + "/pdfdocs").names) {
      const std::string pdf = asked_.root + "/pdfdocs/" + name;
      if (name.ends_with(".pdf"))
        remove_if_gone(pdf, olh_viewers::origin_of_pdf(pdf), olh_viewers::origin_file_of_pdf(pdf));
    }
  }

  void remove_if_gone(const std::string& place, const std::string& brought_by, const std::string& mark) {
    if (brought_by != olh_viewers::kByDocBase || there_.contains(place)) return;
    const OutputFolder going(place);
    going.take_away(place);
    if (!mark.empty()) going.take_away(mark);
    outcome_.removed.push_back(place);
  }

  const DocBaseRequest& asked_;
  const std::function<void(std::size_t, std::size_t)>& progress_;
  DocBaseOutcome outcome_;
  std::map<std::string, std::string> files_of_names_;
  std::set<std::string> there_;  // places of documents that are registered and there
  SectionPortals portals_;
};

}  // namespace

DocBaseOutcome import_doc_base(const DocBaseRequest& asked,
                               const std::function<void(std::size_t, std::size_t)>& progress) {
  return DocBaseImport(asked, progress).run();
}

}  // namespace olh_import
