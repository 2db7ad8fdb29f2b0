#include "browser.h"

#include <cstdio>
#include <optional>
#include <utility>

#include "browser_reach.h"
#include "display.h"
#include "files.h"
#include "running.h"
#include "text_view.h"
#include "url.h"

namespace olh_viewers {

namespace {

using Kind = Request::Kind;

// A launcher looks two seconds after a start: by then it must see how the browser fared. A browser that runs takes a page
// within a tenth of a second, and may take longer on a busy machine.
constexpr int kWatchStart = 1500;
constexpr int kWatchHandOver = 2000;

constexpr int kNotRunning = 2;

void warn_of_other_display(const Choice& choice, const Trace& trace) {
  if (choice.row == nullptr) return;
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) {
    const std::string display = variable_of_running(*choice.row, name);
    const std::string own = variable(name);
    if (display.empty() || own.empty()) continue;
    if (!is_same_display(display, own))
      trace.complain("note: " + choice.program + " runs on the display " + display + ", where the page will open.");
    return;
  }
}

// The name as the library had it before it made an address of it.
std::string name_behind(std::string text) {
  constexpr std::pair<std::string_view, std::string_view> kEncoded[] = {
      {"%20", " "}, {"%27", "'"}, {"%28", "("}, {"%29", ")"}, {"%2C", ","}};
  for (const auto& [code, byte] : kEncoded) replace_all(text, code, byte);
  return text;
}

// The address with the name of its file encoded, when the file is found only so; else the address as it is. The library
// encodes blanks and a few marks of a name and leaves "#", "?" and "%" as they are: the file itself tells where it ends.
//
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

int answer_ping(const Trace& trace) {
  const Choice choice = choose_browser();
  const bool is_elsewhere = shows_elsewhere(choice);
  if (is_elsewhere || (choice.row != nullptr && has_display() && is_running(*choice.row))) {
    trace.note(choice.program + (is_elsewhere ? " takes pages at any time" : " runs"));
    return kExitShown;
  }
  // Text is there at once: a launcher that thought so need not look after a start for two seconds.
  if (!is_elsewhere && !has_display() && can_show_page_as_text()) {
    trace.note("pages are shown as text");
    return kExitShown;
  }
  std::puts("No running window");
  return kNotRunning;
}

// What --dry-run, which serves nothing, tells of it.
std::string way_of_page(const Choice& choice, const std::string& url) {
  const Way way = is_file_url(url) ? way_to(choice) : Way();
  return way.is_served ? "; the page is served, since " + way.why : "";
}

int start(const Choice& choice, const Request& request, const std::string& url, const Trace& trace) {
  if (!choice) {
    trace.complain(std::string("there is no browser. Install one, or name one in ") + kBrowserVariable + ".");
    return kExitNoProgram;
  }
  const auto command = [&](const std::string& address) {
    return request.kind == Kind::kStart ? start_command(choice)
                                        : open_command(choice, {address, file_of(address), "", 0});
  };
  if (request.dry_run) return print_command(command(url), choice.source + way_of_page(choice, url));
  warn_of_other_display(choice, trace);
  return start_viewer(choice, command(address_for(choice, url, trace)),
                      request.kind == Kind::kRemote ? kWatchHandOver : kWatchStart, trace);
}

}  // namespace

// No address at all, or "" as the launcher has it then, only starts the browser.
Request browser_request(const Words& words) {
  if (words.empty()) return {Kind::kStart, "", ""};
  if (words.size() == 1) return {words[0].empty() ? Kind::kStart : Kind::kOpen, words[0], ""};
  if (words.size() != 2 || words[0] != "-remote") return {};
  if (words[1] == "ping()") return {Kind::kPing, "", ""};
  const std::optional<std::string> url = url_to_open(words[1]);
  if (!url) return {};
  return {url->empty() ? Kind::kStart : Kind::kRemote, *url, ""};
}

int answer_as_browser(const Request& request, const Trace& trace) {
  if (request.kind == Kind::kPing) return answer_ping(trace);
  const bool has_url = request.kind != Kind::kStart;
  const std::string objection = has_url ? objection_to(request.document) : "";
  if (!objection.empty()) {
    trace.complain("the address is not opened: it " + objection + ".");
    return kExitWrongUse;
  }
  const std::string url = mended_address(request.document);
  const Choice choice = choose_browser();
  const std::optional<WhyText> why_text = reason_for_text(request.as_text, !shows_elsewhere(choice));
  if (!why_text) return start(choice, request, url, trace);
  if (has_url && request.dry_run) return print_command({"w3m", "-dump", url}, "text");
  if (has_url) return show_page_as_text(url, *why_text, request.kind == Kind::kRemote, trace);
  trace.complain("there is no display to start a browser on.");
  return kExitFailed;
}

}  // namespace olh_viewers
