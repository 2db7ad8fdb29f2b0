// What a browser or a PDF reader is asked for: URLs and named destinations.
//
// Knows    the shapes of a topic's URL and of a PDF's, and that a letter or digit is an ASCII one, whatever the locale.
// Not      where a document lies (the lookups), who shows it (show).
// For      show; topic and the FormatTopic wrapper, for the form in which topics are compared.
//
// What does not fit its buffer empties the text: no URL.
#include "url_build.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "bounded_text.h"
#include "olh/support.h"
#include "olh_doclist.h"

namespace olh {

namespace {

const char* display_suffix(int display_type) noexcept {
  switch (display_type) {
    case OLH_DISPLAY_TOPIC:
      return "&single=true";
    case OLH_DISPLAY_POPUP:
      return "&single=popup";
    default:
      return "";
  }
}

// Whether a manual is entered through its frame page, which takes context, topic and display mode from the fragment:
// the first "index.htm" is the end of the location.
bool is_frame_page(std::string_view location) noexcept {
  constexpr std::string_view kPage = "index.htm";
  const std::size_t position = location.find(kPage);
  return position != std::string_view::npos && position + kPage.size() == location.size();
}

}  // namespace

//   byte     space  '    (    )    ,    any other
//   becomes  %20    %27  %28  %29  %2C  itself ("%" too, so that encoding twice is encoding once)
std::string encoded(std::string_view text) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  constexpr std::string_view kSpecial = " '(),";
  std::string result;
  result.reserve(text.size());
  for (const char byte : text) {
    if (kSpecial.find(byte) == std::string_view::npos)
      result += byte;
    else
      result.append({'%', kDigits[byte / 16], kDigits[byte % 16]});
  }
  return result;
}

std::string normalised_topic(std::string_view topic) {
  std::string result;
  std::copy_if(topic.begin(), topic.end(), std::back_inserter(result), belongs_to_topic);
  return result;
}

}  // namespace olh

void olh_docList::EncodeSpecialCharsInURL(char* url) {
  if (!olh::is_empty(url)) olh::write_buffer(url, olh::encoded(url), olh::kUrlSize);
}

//   topic             becomes
//   my topic-1_a.b    mytopic-1_ab
//
// Only shrinks the text: fits wherever it was.
void olh_docList::FormatTopic(char* topic) {
  if (topic == nullptr) return;
  char* const end = std::remove_if(topic, topic + olh::text_of(topic).size(),
                                   [](char byte) { return !olh::belongs_to_topic(byte); });
  *end = '\0';
}

//   tag                   destination
//   Setting Up (Linux)    M8.newlink.Setting.Up.Linux
//   ()                    M8.newlink.
void olh_docList::FormatNewlink(char* tag) {
  if (olh::is_empty(tag)) {
    print_debug("olh_docList::FormatNewlink: failed: invalid arg\n");
    return;
  }
  print_debug("olh_docList::FormatNewlink: tag: %s\n", tag);
  std::string newlink = "M8.newlink.";
  for (const char byte : olh::text_of(tag)) {
    if (olh::is_letter_or_digit(byte)) newlink += byte;
    if (byte == ' ') newlink += '.';
  }
  olh::write_buffer(tag, newlink, olh::kUrlSize);
  print_debug("olh_docList::FormatNewlink: newlink: %s\n", tag);
}

//   newlink    url
//   none       LOCATION, encoded
//   N          LOCATION, encoded, "#" N as it is
void olh_docList::BuildPDFNewlinkURL(char* url, const char* doc, const char* newlink) {
  olh::clear_buffer(url);
  if (url == nullptr || olh::is_empty(doc)) return;
  std::string result = olh::encoded(doc);
  if (!olh::is_empty(newlink)) result.append("#").append(newlink);
  olh::write_buffer(url, result, olh::kUrlSize);
}

// LOCATION is encoded, T is the topic's normal form, S is "&single=true", "&single=popup" or nothing by mDisplayType.
//
//   location            T       mContext    url
//   any                 none    any         LOCATION
//   .../index.htm       T       C           LOCATION#context=C&topic=TS
//   .../index.htm       T       null        LOCATION#context=&topic=TS
//   any other           T       any         LOCATION#T
void olh_docList::BuildFullURL(char* url, const char* doc, const char* topic) {
  olh::clear_buffer(url);
  if (url == nullptr || olh::is_empty(doc) || !olh::fits(olh::text_of(topic))) return;
  std::string result = olh::encoded(doc);
  const std::string normal = olh::normalised_topic(olh::text_of(topic));
  if (!normal.empty() && olh::is_frame_page(result))
    result.append("#context=")
        .append(olh::text_of(mContext))
        .append("&topic=")
        .append(normal)
        .append(olh::display_suffix(mDisplayType));
  else if (!normal.empty())
    result.append("#").append(normal);
  olh::write_buffer(url, result, olh::kUrlSize);
}
