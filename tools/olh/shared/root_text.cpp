#include "root_text.h"

#include <string_view>

#include "files.h"
#include "olh/support.h"
#include "url.h"
#include "web_text.h"
#include "words.h"

namespace olh {

bool is_web_root(const std::string& root) { return is_url(root.c_str()) == 1; }

std::string place_in_root(const std::string& root, const std::string& relative) {
  if (!is_web_root(root)) return root + "/" + relative;
  std::string address = root;
  for (const std::string& part : olh_viewers::pieces_of(relative, '/'))
    address += "/" + olh_viewers::percent_encoded(part);
  return address;
}

std::string place_beside(const std::string& page, const std::string& relative) {
  constexpr std::string_view kFileScheme = "file://";
  const std::string directory = page.substr(0, page.rfind('/'));
  if (directory.starts_with(kFileScheme)) return directory.substr(kFileScheme.size()) + "/" + relative;
  return place_in_root(directory, relative);
}

std::optional<std::string> text_at(const std::string& place) {
  if (is_web_root(place)) return web_text(place);
  return olh_viewers::text_of_file(place);
}

std::optional<std::string> text_in_root(const std::string& root, const std::string& relative) {
  return text_at(place_in_root(root, relative));
}

}  // namespace olh
