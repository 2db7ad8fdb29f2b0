#include "serve_roots.h"

#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <utility>

#include "child.h"
#include "files.h"
#include "served_address.h"
#include "url.h"

namespace olh_serve {

namespace {

namespace fs = std::filesystem;
using olh_viewers::Words;

// What olh answers in JSON; an empty object when it does not.
nlohmann::json answer_of_olh(const Words& words) {
  Words command = {olh_viewers::find_beside("olh")};
  command.insert(command.end(), words.begin(), words.end());
  nlohmann::json answer = nlohmann::json::parse(olh_viewers::output_of(command).value_or("{}"), nullptr, false);
  return answer.is_object() ? answer : nlohmann::json::object();
}

std::string text_in(const nlohmann::json& answer, const char* key) {
  const auto found = answer.find(key);
  return found != answer.end() && found->is_string() ? found->get<std::string>() : "";
}

Words roots_of_search_path() {
  Words roots;
  const nlohmann::json answer = answer_of_olh({"paths", "--json"});
  for (const nlohmann::json& root : answer.value("roots", nlohmann::json::array()))
    if (root.is_object() && text_in(root, "kind") == "directory") roots.push_back(text_in(root, "path"));
  return roots;
}

// The file:// or other address of a document, as the library would hand it to a viewer.
std::string location_of(const Words& document, const std::vector<olh_viewers::ServedRoot>& roots) {
  std::string path;
  for (const olh_viewers::ServedRoot& root : roots) path += (path.empty() ? "" : ":") + root.path;
  Words words = {"show", "--print", "--json", "--root", path, "--"};
  words.insert(words.end(), document.begin(), document.end());
  // Without viewers it would call that a failure.
  for (const auto& [variable, viewer] :
       {std::pair{"QEL_HTML_BROWSER", "olh-browser"}, {"QEL_PDF_READER", "olh-pdf-reader"}})
    setenv(variable, olh_viewers::find_beside(viewer).c_str(), 1);
  const nlohmann::json answer = answer_of_olh(words);
  if (const std::string file = text_in(answer, "file"); !file.empty()) {
    const std::string destination = text_in(answer, "destination");
    return olh_viewers::url_of(file) +
           (destination.empty() ? "" : "#nameddest=" + olh_viewers::percent_encoded(destination));
  }
  return answer.value("found", false) ? text_in(answer, "url") : "";
}

}  // namespace

std::vector<olh_viewers::ServedRoot> roots_to_serve(const std::vector<std::string>& directories) {
  std::vector<olh_viewers::ServedRoot> roots;
  for (const std::string& directory : directories.empty() ? roots_of_search_path() : directories) {
    fs::path path = fs::absolute(directory).lexically_normal();
    if (!path.has_filename()) path = path.parent_path();
    roots.push_back({olh_viewers::new_token(), path.string()});
  }
  return roots;
}

std::string address_of_document(const Words& document, const std::vector<olh_viewers::ServedRoot>& roots,
                                const std::string& address) {
  std::string location = location_of(document, roots);
  if (!olh_viewers::is_file_url(location)) return location;
  const std::string file = fs::path(olh_viewers::file_of(location)).lexically_normal().string();
  for (const olh_viewers::ServedRoot& root : roots)
    if (file.starts_with(root.path + "/")) return address + olh_viewers::served_path(root, location);
  return "";
}

}  // namespace olh_serve
