#include "url.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

namespace olh_viewers {

namespace {

constexpr std::string_view kFileScheme = "file://";
constexpr std::string_view kHexDigits = "0123456789ABCDEF";

bool is_control(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < 0x20 || byte == 0x7f;
}

bool is_plain(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' || c == '_' ||
         c == '.' || c == '~';
}

std::string encoded(std::string_view text, std::string_view also_plain) {
  std::string result;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (is_plain(c) || also_plain.find(c) != std::string_view::npos)
      result += c;
    else
      result.append({'%', kHexDigits[byte / 16], kHexDigits[byte % 16]});
  }
  return result;
}

}  // namespace

std::string objection_to_text(std::string_view text) {
  return std::any_of(text.begin(), text.end(), is_control) ? "holds a control character" : "";
}

std::string objection_to(std::string_view url) {
  if (url.starts_with('-')) return "begins with \"-\"";
  for (const std::string_view scheme : {std::string_view("http://"), std::string_view("https://"), kFileScheme})
    if (url.starts_with(scheme)) return objection_to_text(url);
  return "begins with none of http://, https:// and file://";
}

// From its two ends: the address may hold what looks like either.
std::optional<std::string> url_to_open(std::string_view command) {
  constexpr std::string_view kBegin = "openURL(";
  constexpr std::string_view kEnd = ",new-tab)";
  if (!command.starts_with(kBegin) || !command.ends_with(kEnd)) return std::nullopt;
  command.remove_prefix(kBegin.size());
  command.remove_suffix(kEnd.size());
  return std::string(command);
}

bool is_file_url(std::string_view url) { return url.starts_with(kFileScheme); }

std::string decoded(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char* code = text.data() + i + 1;
    unsigned char byte = 0;
    if (text[i] == '%' && i + 2 < text.size() && std::from_chars(code, code + 2, byte, 16).ptr == code + 2) {
      result += static_cast<char>(byte);
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

std::string_view without_query_and_fragment(std::string_view url) { return url.substr(0, url.find_first_of("?#")); }

std::string_view fragment_of(std::string_view url) {
  const std::size_t begin = url.find('#');
  return begin == std::string_view::npos ? std::string_view() : url.substr(begin + 1);
}

std::string file_of(std::string_view url) {
  if (!is_file_url(url)) return "";
  std::string file = decoded(without_query_and_fragment(url).substr(kFileScheme.size()));
  return file.find('\0') == std::string::npos ? file : "";
}

std::string url_of(const std::string& file) {
  std::error_code failed;
  const std::string absolute = std::filesystem::absolute(file, failed).string();
  return std::string(kFileScheme) + encoded(failed ? file : absolute, "/");
}

std::string with_query(const std::string& url) {
  const std::size_t end = url.find_first_of("?#");
  if (!is_file_url(url) || end == std::string::npos || url[end] == '?') return url;
  return url.substr(0, end) + "?" + url.substr(end);
}

std::string percent_encoded(std::string_view text) { return encoded(text, ""); }

}  // namespace olh_viewers
