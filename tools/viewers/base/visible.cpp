#include "visible.h"

#include <cstdio>

namespace olh_viewers {

namespace {

std::string visible_but(std::string_view text, std::string_view kept) {
  std::string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    // In UTF-8 the control characters from U+0080 to U+009F are two bytes.
    const bool leads_to_control = byte == 0xC2 && i + 1 < text.size() && (text[i + 1] & '\xE0') == '\x80';
    const bool is_control = (byte < ' ' && kept.find(text[i]) == std::string_view::npos) || byte == 0x7F;
    if (!is_control && !leads_to_control) {
      shown += text[i];
      continue;
    }
    const int code = leads_to_control ? static_cast<unsigned char>(text[++i]) : byte;
    char written[8];
    std::snprintf(written, sizeof written, "\\x%02x", static_cast<unsigned int>(code));
    shown += written;
  }
  return shown;
}

}  // namespace

std::string visible(std::string_view line) { return visible_but(line, ""); }

std::string visible_page(std::string_view page) { return visible_but(page, "\n\t\f"); }

}  // namespace olh_viewers
