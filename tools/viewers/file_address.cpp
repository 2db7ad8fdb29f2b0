#include "file_address.h"

#include <string_view>
#include <utility>

#include "files.h"
#include "url.h"

namespace olh_viewers {

namespace {

// The name as the library had it before it made an address of it.
std::string name_behind(std::string text) {
  constexpr std::pair<std::string_view, char> kEncoded[] = {
      {"%20", ' '}, {"%27", '\''}, {"%28", '('}, {"%29", ')'}, {"%2C", ','}};
  for (const auto& [code, byte] : kEncoded)
    for (std::size_t at = text.find(code); at != std::string::npos; at = text.find(code, at + 1))
      text.replace(at, code.size(), 1, byte);
  return text;
}

}  // namespace

//   address                    files             becomes
//   file:///d/a.htm#t          /d/a.htm          itself
//   file:///d/a%20#1.htm#t     /d/a #1.htm       file:///d/a%20%231.htm#t
//   file:///d/100%25.htm#t     /d/100%25.htm     file:///d/100%2525.htm#t
//   file:///d/a#1.htm#t        none              itself
std::string mended_address(const std::string& url) {
  if (!is_file_url(url) || is_readable_file(file_of(url))) return url;
  constexpr std::string_view kSeparators = "?#";
  const std::size_t begin = url.find("://") + 3;
  for (std::size_t end = url.find_first_of(kSeparators, begin);; end = url.find_first_of(kSeparators, end + 1)) {
    const std::string name = url.substr(begin, end == std::string::npos ? end : end - begin);
    for (const std::string& file : {decoded(name), name_behind(name)})
      if (file.starts_with('/') && is_readable_file(file))
        return url_of(file) + (end == std::string::npos ? "" : url.substr(end));
    if (end == std::string::npos) return url;
  }
}

}  // namespace olh_viewers
