#include "media_type.h"

#include <algorithm>
#include <utility>

#include "words.h"

namespace olh_serve {

namespace {

constexpr std::string_view kHtml = "text/html";

constexpr std::pair<std::string_view, std::string_view> kTypes[] = {
    {"html", kHtml},
    {"htm", kHtml},
    {"xhtml", "application/xhtml+xml"},
    {"css", "text/css"},
    {"js", "text/javascript"},
    {"mjs", "text/javascript"},
    {"json", "application/json"},
    {"map", "application/json"},
    {"xml", "text/xml"},
    {"txt", "text/plain"},
    {"csv", "text/csv"},
    {"pdf", "application/pdf"},
    {"svg", "image/svg+xml"},
    {"png", "image/png"},
    {"jpg", "image/jpeg"},
    {"jpeg", "image/jpeg"},
    {"gif", "image/gif"},
    {"webp", "image/webp"},
    {"avif", "image/avif"},
    {"bmp", "image/bmp"},
    {"ico", "image/x-icon"},
    {"woff", "font/woff"},
    {"woff2", "font/woff2"},
    {"ttf", "font/ttf"},
    {"otf", "font/otf"},
    {"eot", "application/vnd.ms-fontobject"},
    {"mp4", "video/mp4"},
    {"webm", "video/webm"},
    {"ogv", "video/ogg"},
    {"mp3", "audio/mpeg"},
    {"ogg", "audio/ogg"},
    {"wav", "audio/wav"},
    {"wasm", "application/wasm"},
    {"gz", "application/gzip"},
    {"zip", "application/zip"},
};

// Where a browser looks for what a page declares.
constexpr std::size_t kDeclarations = 1024;

// How many bytes the character takes that begins with this one; 0 for none.
std::size_t length_in_utf8(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xc2 && first <= 0xdf) return 2;
  if (first >= 0xe0 && first <= 0xef) return 3;
  return first >= 0xf0 && first <= 0xf4 ? 4 : 0;
}

enum class Bytes { kAscii, kUtf8, kOther };

// A character that is cut at the end of the text is taken for whole.
Bytes kind_of_bytes(std::string_view text) {
  Bytes kind = Bytes::kAscii;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = length_in_utf8(static_cast<unsigned char>(text[at]));
    const std::string_view rest = text.substr(at + 1, length - 1);
    const bool is_whole = length > 0 && std::all_of(rest.begin(), rest.end(), [](char c) {
                            return (static_cast<unsigned char>(c) & 0xc0U) == 0x80U;
                          });
    if (!is_whole || text[at] == '\0') return Bytes::kOther;
    if (length > 1) kind = Bytes::kUtf8;
    at += length;
  }
  return kind;
}

// "utf-8" of <meta charset="utf-8">, of <meta ... content="text/html; charset=utf-8">, of <?xml encoding="utf-8"?>.
std::string declared_charset(std::string_view start) {
  const std::string text = olh_viewers::lower_case(start.substr(0, kDeclarations));
  for (const std::string_view key : {"charset=", "encoding="}) {
    std::size_t begin = text.find(key);
    if (begin == std::string::npos) continue;
    begin += key.size();
    if (begin < text.size() && (text[begin] == '"' || text[begin] == '\'')) ++begin;
    const std::size_t end = text.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-_", begin);
    return text.substr(begin, end - begin);
  }
  return "";
}

std::string_view type_of_name(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  const std::string ending = dot == std::string_view::npos ? "" : olh_viewers::lower_case(name.substr(dot + 1));
  for (const auto& [known, type] : kTypes)
    if (known == ending) return type;
  return "";
}

bool is_text(std::string_view type) {
  return type.starts_with("text/") || type.ends_with("xml") || type.ends_with("json");
}

}  // namespace

bool depends_on_content(std::string_view name) {
  const std::string_view type = type_of_name(name);
  return type.empty() || is_text(type);
}

std::string media_type(std::string_view name, std::string_view start) {
  std::string type(type_of_name(name));
  const Bytes bytes = depends_on_content(name) ? kind_of_bytes(start) : Bytes::kOther;
  // What no ending tells of, a README or a sample of code, is shown when it can be.
  if (type.empty()) type = bytes == Bytes::kOther ? "application/octet-stream" : "text/plain";
  if (!is_text(type)) return type;
  const bool can_declare = is_html(type) || type.ends_with("xml");
  std::string charset = can_declare ? declared_charset(start) : "";
  if (charset.empty() && bytes == Bytes::kUtf8) charset = "utf-8";
  return charset.empty() ? type : type + "; charset=" + charset;
}

bool is_html(std::string_view media_type) { return media_type.starts_with(kHtml); }

}  // namespace olh_serve
