#include "destination_names.h"

#include <algorithm>

namespace olh_viewers {

namespace {

constexpr std::string_view kPrefix = "M8.newlink.";

}  // namespace

std::string destination_of(std::string_view tag) {
  std::string destination(kPrefix);
  for (const char c : tag) {
    const bool stays = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (stays) destination += c;
    if (c == ' ') destination += '.';
  }
  return destination;
}

std::optional<std::string> tag_for(std::string_view destination) {
  if (!destination.starts_with(kPrefix)) return std::nullopt;
  std::string tag(destination.substr(kPrefix.size()));
  std::replace(tag.begin(), tag.end(), '.', ' ');
  return !tag.empty() && destination_of(tag) == destination ? std::optional(tag) : std::nullopt;
}

}  // namespace olh_viewers
