// One document, and the manual of this program as a sample: whether a help call gets them on the screen.
#include "destination_names.h"
#include "doctor_checks.h"
#include "find.h"
#include "olh/support.h"
#include "pdf_places.h"
#include "shared.h"
#include "viewers.h"

namespace olh {

namespace {

Diagnosis of_destination(const std::string& file, const std::string& tag) {
  const std::string destination = olh_viewers::destination_of(tag);
  const std::string named = quoted(destination) + " of " + file;
  const olh_viewers::PdfPlace place = olh_viewers::place_of_destination(file, destination);
  switch (place.found) {
    case olh_viewers::Found::kYes:
      return {State::kOk, "The destination " + named + " is on page " + std::to_string(place.page) + "."};
    case olh_viewers::Found::kNo:
      return {State::kProblem, "There is no destination " + named + ": it opens at page 1.",
              command_line({"olh", "topics", file})};
    default:
      return {State::kCannotTell, "Whether there is a destination " + named + " cannot be checked."};
  }
}

Diagnosis of_tag(const Machine& machine, const Located& located, int result) {
  const std::string at = quoted(machine.tag) + " of " + located.location;
  if (located.kind == OLH_VIEWER_PDF && is_url(located.location.c_str()) == 0)
    return of_destination(located.location, machine.tag);
  if (located.kind != OLH_VIEWER_HTML || !located.location.starts_with("file://"))
    return {State::kCannotTell, "Whether there is a place " + at + " cannot be checked."};
  if (result == OLH_RESULT_OK) return {State::kOk, "There is a topic " + at + "."};
  return {State::kProblem, "There is no topic " + at + ": it opens at its start.",
          command_line({"olh", "topics", machine.document})};
}

Diagnosis tried(const std::string& file, const std::string& tag, const ViewerKind& kind) {
  const ChosenViewer used = choose_viewer(kind.viewer, "", "");
  const std::string what = file + at_tag(tag) + " in " + describe(used);
  if (used.program.empty())
    return {State::kProblem, "No " + std::string(kind.label) + " shows " + file + ".", "olh setup"};
  if (misunderstands(kind, used.program))
    return {State::kCannotTell, what + " is not tried: it could hang, or open an empty window.", "olh setup"};
  const int result = OlhHelpCall(file.c_str(), tag.c_str(), OLH_DISPLAY_NORMAL);
  if (result == OLH_RESULT_OK) return {State::kOk, what + " was taken; look whether it is on the screen."};
  return {State::kProblem, what + " was not shown (result " + std::to_string(result) + ").",
          command_line({"olh", "show", "--print", file, tag})};
}

}  // namespace

Diagnoses check_document(const Machine& machine) {
  if (machine.document.empty()) return {};
  const Located located = locate(machine.document, machine.roots);
  const int result = OlhHelpTest(machine.document.c_str(), machine.tag.c_str());
  if (!located.found && machine.roots.roots.empty())
    return {{State::kProblem, quoted(machine.document) + " cannot be found without a documentation root."}};
  if (!located.found)
    return {{State::kProblem, "There is no document " + quoted(machine.document) + " below the roots.",
             command_line({"olh", "where", "--all", machine.document})}};
  Diagnoses diagnoses = {{State::kOk, quoted(machine.document) + " is " + located.location + "."}};
  if (!machine.tag.empty()) diagnoses.push_back(of_tag(machine, located, result));
  return diagnoses;
}

Diagnoses try_viewers(const Machine& machine) {
  if (!machine.attempt) return {};
  const std::string root = own_root();
  if (root.empty()) return {{State::kCannotTell, "The sample is not installed.", "apt-get install olh-doc"}};
  Diagnoses diagnoses = {tried(root + "/htmldocs/olh_manual/index.htm", "quick_start", kind_of(OLH_VIEWER_HTML))};
  const std::string pdf = root + "/pdfdocs/olh_manual.pdf";
  diagnoses.push_back(path_exists(pdf.c_str()) == 1 ? tried(pdf, "quick_start", kind_of(OLH_VIEWER_PDF))
                                                    : Diagnosis{State::kCannotTell, "The sample has no PDF."});
  return diagnoses;
}

}  // namespace olh
