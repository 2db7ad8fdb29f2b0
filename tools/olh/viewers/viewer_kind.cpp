#include "viewer_kind.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

// The name of a program, and the name of what it is a link to.
std::vector<std::string> names_of(const std::string& program) {
  const std::filesystem::path path = executable_named(program);
  std::error_code failed;
  const std::filesystem::path target = std::filesystem::canonical(path, failed);
  std::vector<std::string> names = {std::filesystem::path(program).filename().string()};
  if (!failed) names.push_back(target.filename().string());
  return names;
}

}  // namespace

std::string installed_adapter(const ViewerKind& kind) {
  const std::filesystem::path beside = std::filesystem::path(own_program()).replace_filename(kind.adapter);
  return exe_exists(beside.c_str()) == 1 ? beside.string() : executable_named(kind.adapter);
}

bool is_adapter(const ViewerKind& kind, const std::string& program) {
  const std::vector<std::string> names = names_of(program);
  return std::find(names.begin(), names.end(), kind.adapter) != names.end();
}

const olh_viewers::Program* known_program(const std::string& program) {
  for (const std::string& name : names_of(program))
    if (const olh_viewers::Program* row = olh_viewers::program_named(name)) return row;
  return nullptr;
}

bool misunderstands(const ViewerKind& kind, const std::string& program) {
  if (is_adapter(kind, program)) return false;
  const olh_viewers::Program* row = known_program(program);
  if (kind.viewer == OLH_VIEWER_HTML) return row != nullptr || names_of(program).front() == "x-www-browser";
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
