#include "page_changes.h"

#include <cstdint>
#include <filesystem>
#include <functional>

#include "rooted_file.h"

namespace olh_serve {

namespace {

namespace fs = std::filesystem;

constexpr int kMostFiles = 50000;

// "htmldocs/guide" of a page anywhere in that manual; else the page's own folder.
std::vector<std::string> manual_of(const std::vector<std::string>& names) {
  const bool is_in_manual = names.size() > 2 && (names[0] == "htmldocs" || names[0] == "tomedecks");
  return {names.begin(), is_in_manual ? names.begin() + 2 : names.end() - (names.empty() ? 0 : 1)};
}

}  // namespace

std::string state_of_folder(const std::string& root, const std::vector<std::string>& names) {
  if (open_below(root, names).kind != RootedFile::Kind::kFolder) return "";
  fs::path folder = root;
  for (const std::string& name : names) folder /= name;
  // The order of a directory may differ from one reading to the next: what is added up does not mind.
  std::uint64_t sum = 0;
  int count = 0;
  std::error_code failed;
  for (fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, failed), end;
       !failed && entry != end && count < kMostFiles; entry.increment(failed), ++count) {
    if (entry->path().filename().string().starts_with('.')) continue;  // an editor's own files
    std::error_code gone;
    const auto written = entry->last_write_time(gone).time_since_epoch().count();
    sum += std::hash<std::string>()(entry->path().string() + ' ' + std::to_string(written));
  }
  return std::to_string(sum);
}

std::string reload_script() {
  return "(function () {\n"
         "  var asked = document.currentScript.src.split('?');\n"
         "  setInterval(function () {\n"
         "    fetch(asked[0]).then(function (answer) { return answer.ok && answer.text(); })"
         ".then(function (state) {\n"
         "      if (state && state !== asked[1]) location.reload();\n"
         "    }, function () {});\n"
         "  }, 1000);\n"
         "})();\n";
}

std::string with_reload_script(std::string page, const std::string& root, const RequestedPath& path) {
  RequestedPath manual;
  manual.token = path.token;
  manual.names = manual_of(path.names);
  manual.asks_for_changes = true;
  page += "\n<script src=\"" + path_of_request(manual) + "?" + state_of_folder(root, manual.names) + "\"></script>\n";
  return page;
}

}  // namespace olh_serve
