#include "reader.h"

#include "browser_reach.h"
#include "files.h"
#include "pdf_places.h"
#include "text_view.h"
#include "url.h"

namespace olh_viewers {

namespace {

using Kind = Request::Kind;

// A launcher looks two seconds after a start: by then it must see how the reader fared.
constexpr int kWatchStart = 1500;

// At the destination by its name, unless that is a page's number; else at its page; else, said aloud, at the first page. A reader that is asked for a
// name that is not there says nothing: a new window shows page 1, one that shows the file already stays where it is.
Words command_at(const Choice& choice, const Request& request, const Trace& trace) {
  const std::string& file = request.document;
  // Without a destination the desktop opens the file in the reader of its choice.
  const bool is_for_desktop = choice.row != nullptr && choice.row->asks_desktop && request.destination.empty();
  const bool may_be_served = is_browser(choice) && !is_for_desktop && !request.dry_run;
  Place place = {may_be_served ? address_for(choice, url_of(file), trace) : url_of(file), as_argument(file),
                 request.destination, 1};
  if (request.destination.empty()) return open_command(choice, place);
  const PdfPlace found = place_of_destination(file, request.destination);
  if (found.found == Found::kNo) {
    trace.complain(file + " has no destination \"" + request.destination + "\"; it opens at its first page.");
    Words command = page_command(choice, place);
    return command.empty() ? open_command(choice, place) : command;
  }
  const bool is_page = page_named_by(request.destination).has_value();
  if (Words command = is_page ? Words() : destination_command(choice, place); !command.empty()) return command;
  place.page = found.page;
  Words command = found.found == Found::kYes ? page_command(choice, place) : Words();
  if (!command.empty()) return command;
  const std::string page = "page " + std::to_string(found.page);
  trace.complain(choice.program + " cannot go to " + (is_page ? page : "\"" + request.destination + "\"") +
                 (is_page ? ""
                  : found.found == Found::kYes
                      ? ", which is on " + page
                      : "; with pdfinfo, of the package poppler-utils, its page could be found") +
                 ".");
  return open_command(choice, place);
}

std::string objection(const Request& request) {
  if (request.kind == Kind::kStart) return "";
  for (const std::string& text : {request.document, request.destination})
    if (!objection_to_text(text).empty()) return "its name " + objection_to_text(text);
  return request.document.empty() ? "it has no name" : "";
}

int start(const Choice& choice, const Request& request, const Trace& trace) {
  if (!choice) {
    trace.complain(std::string("there is no PDF reader. Install one (evince, okular), or name one in ") +
                   kReaderVariable + ".");
    return kExitNoProgram;
  }
  const Words command = request.kind == Kind::kStart ? start_command(choice) : command_at(choice, request, trace);
  if (request.dry_run) return print_command(command, choice.source);
  return start_viewer(choice, command, kWatchStart, trace);
}

}  // namespace

Request reader_request(const Words& words) {
  constexpr std::string_view kDestination = "nameddest=";
  if (words.empty()) return {Kind::kStart, "", ""};
  if (words.size() == 1) return {Kind::kOpen, words[0], ""};
  const bool is_at_destination =
      words.size() == 4 && words[0] == "-openInNewWindow" && words[1] == "/a" && words[2].starts_with(kDestination);
  return is_at_destination ? Request{Kind::kOpen, words[3], words[2].substr(kDestination.size())} : Request();
}

int answer_as_reader(const Request& request, const Trace& trace) {
  if (const std::string reason = objection(request); !reason.empty()) {
    trace.complain("the document is not opened: " + reason + ".");
    return kExitWrongUse;
  }
  const bool has_file = request.kind != Kind::kStart;
  if (has_file && !is_regular_file(request.document)) {
    trace.complain("there is no file " + request.document + " that could be read.");
    return kExitFailed;
  }
  const Choice choice = choose_reader_within_reach();
  const std::optional<WhyText> why_text = reason_for_text(request.as_text, !shows_elsewhere(choice));
  if (!why_text || request.dry_run) return start(choice, request, trace);
  if (has_file) return show_pdf_as_text(request.document, request.destination, *why_text, trace);
  trace.complain("there is no display to start a PDF reader on.");
  return kExitFailed;
}

}  // namespace olh_viewers
