// The browser and the PDF reader: who chose them, and whether they understand what the library tells them.
#include <filesystem>

#include "browser_reach.h"
#include "display.h"
#include "doctor_checks.h"
#include "files.h"
#include "find.h"
#include "pdf_places.h"
#include "served_address.h"
#include "shared.h"
#include "viewers.h"

namespace olh {

namespace {

constexpr const char* kSetup = "olh setup";

std::string cure_for(const ViewerSource& source, const ViewerKind& kind) {
  if (source.choice == "variable") return std::string("unset ") + kind.key;
  return std::string("olh viewers forget ") + kind.word + (source.choice == "tree" ? " --tree" : "");
}

// Choices that name no executable: something else is used instead, and nobody is told.
void add_vain_choices(Diagnoses& diagnoses, const ViewerKind& kind, const std::vector<ViewerSource>& sources) {
  const auto add = [&](const std::string& from, const std::string& value, const std::string& cure) {
    diagnoses.push_back(
        {State::kWarning, from + " names " + value + ", which is not executable and is ignored.", cure});
  };
  for (const ViewerSource& source : sources)
    if (!source.value.empty() && source.program.empty()) add(source.from, source.value, cure_for(source, kind));
  const std::string setting = variable(kind.setting);
  if (!setting.empty() && executable_named(setting).empty())
    add(kind.setting, setting, std::string("unset ") + kind.setting);
}

// Neither the user nor the package has chosen.
std::string nobody_chose() {
  const std::filesystem::path top = std::filesystem::path(own_program()).parent_path().parent_path();
  std::error_code failed;
  return std::filesystem::exists(top / "lib/environment.d/60-olh.conf", failed)
             ? "'olh setup' has not been run, and the package's choice holds from the next login on."
             : "'olh setup' has not been run, and no session file has chosen one.";
}

Diagnosis of_adapter(const ViewerKind& kind, const ChosenViewer& used, const Driven& driven) {
  const bool is_browser = kind.viewer == OLH_VIEWER_HTML;
  const std::string what = describe(used) + " opens " + driven.command + " (" + driven.source + ")";
  if (!driven.program.empty() && executable_named(driven.program).empty())
    return {State::kProblem, what + ", and there is no " + driven.program + ".",
            is_browser ? "apt-get install w3m" : "apt-get install poppler-utils"};
  if (!driven.program.empty()) return {State::kOk, what + "."};
  return {State::kProblem, describe(used) + " finds no program that it could open, or does not start.",
          is_browser ? "apt-get install firefox-esr" : "apt-get install evince"};
}

Diagnosis of_program(const ViewerKind& kind, const ChosenViewer& used) {
  const std::string alone = used.choice == "search" ? " " + nobody_chose() : "";
  if (misunderstands(kind, used.program))
    return {State::kProblem, describe(used) + ": " + misunderstanding(kind, used.program) + alone, kSetup};
  if (known_program(used.program) != nullptr) return {State::kOk, describe(used)};
  return {State::kCannotTell,
          describe(used) + ": whether it understands the library's command lines is unknown." + alone};
}

// How a destination is reached in the reader that the adapter opens.
Diagnosis of_destinations(const Driven& driven) {
  const olh_viewers::Program* row = known_program(driven.program);
  const olh_viewers::Choice reader = olh_viewers::choose_reader_within_reach();
  if (row == nullptr && olh_viewers::is_browser(reader) && olh_viewers::way_to(reader).is_served)
    return {State::kOk, olh_viewers::name_of(reader) + " is served PDFs, and opens them at a destination."};
  if (row == nullptr)
    return {State::kCannotTell, "Whether " + driven.program + " can open a PDF at a destination is unknown."};
  if (!row->at_destination.empty()) return {State::kOk, driven.program + " opens a PDF at a destination."};
  if (!row->at_page.empty() && olh_viewers::can_read_destinations())
    return {State::kOk, driven.program + " knows no destinations; it opens the page that pdfinfo finds."};
  if (!row->at_page.empty())
    return {State::kWarning,
            driven.program + " knows no destinations, and without pdfinfo every PDF opens at page 1.",
            "apt-get install poppler-utils"};
  return {State::kWarning, driven.program + " knows no destinations: every PDF opens at page 1.",
          "apt-get install evince"};
}

// The way of a page to the browser that the adapter opens.
Diagnosis of_way() {
  const olh_viewers::Choice browser = olh_viewers::choose_browser();
  const std::string name = olh_viewers::name_of(browser);
  const olh_viewers::Way way = olh_viewers::way_to(browser);
  if (way.is_served && olh_viewers::find_beside(olh_viewers::kServer).empty())
    return {way.barrier.empty() ? State::kWarning : State::kProblem,
            "Pages should be served to " + name + ", since " + way.why + ", but olh-serve is not installed.",
            "apt-get install olh"};
  if (way.is_served) return {State::kOk, "Pages are served to " + name + ", since " + way.why + "."};
  if (way.barrier.empty()) return {State::kOk, name + " reads pages from the disk."};
  return {State::kProblem,
          name + " " + way.effect + " pages on the disk, since " + way.barrier + ", and they are not served, since " +
              way.why + ".",
          way.cure};
}

// The browser that a tree prescribes is not the one that is asked whether it runs.
void add_question(Diagnoses& diagnoses, const ViewerKind& kind, const ChosenViewer& used) {
  const std::string asked = choose_viewer(kind.viewer, "", "").program;
  if (asked.empty() || asked == used.program || !misunderstands(kind, asked)) return;
  diagnoses.push_back({State::kProblem,
                       "The documentation tree prescribes " + used.program + ", but " + asked +
                           " is asked first whether it runs, and that may hang.",
                       kSetup});
}

bool shows_pages() {
  return olh_viewers::has_display() || olh_viewers::shows_elsewhere(olh_viewers::choose_browser());
}

// Programs that call the library get what PATH holds; this command takes the adapter all the same.
void add_own_viewer(Diagnoses& diagnoses, const ViewerKind& kind, const ChosenViewer& used) {
  const std::string adapter = installed_adapter(kind);
  const bool is_chosen = !used.program.empty() && used.choice != "search";
  if (is_chosen || adapter.empty()) return;
  diagnoses.push_back(
      {State::kOk, "'olh show' itself uses " + adapter + ", since nobody has chosen a " + kind.label + "."});
  if (kind.viewer == OLH_VIEWER_HTML && shows_pages() && !driven_by(kind, adapter).program.empty())
    diagnoses.push_back(of_way());
}

Diagnoses check_viewer(const ViewerKind& kind, const Machine& machine) {
  Diagnoses diagnoses;
  const ChosenViewer used = viewer_in_use(kind, machine.roots);
  if (used.program.empty()) {
    diagnoses.push_back({State::kProblem, "No " + std::string(kind.label) + " is known: " + nobody_chose(), kSetup});
  } else if (is_adapter(kind, used.program)) {
    const Driven driven = driven_by(kind, used.program);
    diagnoses.push_back(of_adapter(kind, used, driven));
    if (kind.viewer == OLH_VIEWER_PDF && !driven.program.empty()) diagnoses.push_back(of_destinations(driven));
    if (kind.viewer == OLH_VIEWER_HTML && shows_pages() && !driven.program.empty()) diagnoses.push_back(of_way());
  } else {
    diagnoses.push_back(of_program(kind, used));
  }
  if (!is_adapter(kind, used.program)) add_own_viewer(diagnoses, kind, used);
  if (kind.viewer == OLH_VIEWER_HTML) add_question(diagnoses, kind, used);
  add_vain_choices(diagnoses, kind, viewer_sources(kind, machine.roots));
  return diagnoses;
}

}  // namespace

Diagnoses check_browser(const Machine& machine) { return check_viewer(kind_of(OLH_VIEWER_HTML), machine); }

Diagnoses check_reader(const Machine& machine) { return check_viewer(kind_of(OLH_VIEWER_PDF), machine); }

}  // namespace olh
