#include "viewer_kind.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

std::string path_of(const std::string& program) {
  const std::string path = executable_named(program);
  return path.empty() ? program : path;
}

}  // namespace

std::string installed_adapter(const ViewerKind& kind) {
  const std::filesystem::path beside = std::filesystem::path(own_program()).replace_filename(kind.adapter);
  return exe_exists(beside.c_str()) == 1 ? beside.string() : executable_named(kind.adapter);
}

bool is_adapter(const ViewerKind& kind, const std::string& program) {
  const std::vector<std::string> names = olh_viewers::names_of(path_of(program));
  return std::find(names.begin(), names.end(), kind.adapter) != names.end();
}

const olh_viewers::Program* known_program(const std::string& program) {
  return olh_viewers::program_at(path_of(program));
}

bool misunderstands(const ViewerKind& kind, const std::string& program) {
  if (is_adapter(kind, program)) return false;
  const olh_viewers::Program* row = known_program(program);
  if (kind.viewer == OLH_VIEWER_HTML)
    return row != nullptr || std::filesystem::path(program).filename() == "x-www-browser";
  return row != nullptr && row->name != "acroread";
}

std::string misunderstanding(const ViewerKind& kind, const std::string& program) {
  return kind.viewer == OLH_VIEWER_HTML
             ? "today's browsers do not understand the command line that " + program +
                   " gets: it may hang, or show an empty window."
             : program + " does not understand the command line that asks for a destination: it refuses the PDF.";
}

std::string misunderstanding_note(const ViewerKind& kind, const std::string& program) {
  return "note: " + misunderstanding(kind, program) + " 'olh setup' puts " + kind.adapter + " in its place.";
}

std::string executable_named(const std::string& name) {
  if (name.find('/') != std::string::npos) return exe_exists(name.c_str()) == 1 ? name : "";
  std::array<char, OLH_BUFFER_SIZE> found{};
  search_path(found.data(), name.c_str(), nullptr);
  return found.data();
}

}  // namespace olh
