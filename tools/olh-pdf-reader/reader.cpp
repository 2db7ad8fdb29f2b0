#include "reader.h"

#include <unistd.h>

#include <cstdio>

#include "choice.h"
#include "display.h"
#include "files.h"
#include "pdf_places.h"
#include "start.h"
#include "text_view.h"
#include "url.h"

namespace olh_viewers {

namespace {

// A launcher looks two seconds after a start: by then it must see how the reader fared.
constexpr int kWatchStart = 1500;

// A name that a program could take for an option gets its directory.
std::string as_argument(const std::string& file) {
  return file.starts_with('-') || file.starts_with('+') ? "./" + file : file;
}

// At the destination by its name; else at its page; else, said aloud, at the first page. A reader that is asked for a
// name that is not there says nothing: a new window shows page 1, one that shows the file already stays where it is.
Words command_at(const Choice& choice, const ReaderRequest& request, const Trace& trace) {
  const std::string file = as_argument(request.file);
  Place place = {url_of(request.file), file, request.destination, 1};
  if (request.destination.empty()) return open_command(choice, place);
  const PdfPlace found = place_of_destination(request.file, request.destination);
  if (found.found == Found::kNo) {
    trace.complain(request.file + " has no destination \"" + request.destination + "\"; it opens at its first page.");
    Words command = page_command(choice, place);
    return command.empty() ? open_command(choice, place) : command;
  }
  if (Words command = destination_command(choice, place); !command.empty()) return command;
  place.page = found.page;
  Words command = found.found == Found::kYes ? page_command(choice, place) : Words();
  if (!command.empty()) return command;
  trace.complain(choice.program + " cannot go to \"" + request.destination + "\"" +
                 (found.found == Found::kYes
                      ? ", which is on page " + std::to_string(found.page)
                      : "; with pdfinfo, of the package poppler-utils, its page could be found") +
                 ".");
  return open_command(choice, place);
}

std::string objection(const ReaderRequest& request) {
  if (request.kind == ReaderRequest::Kind::kStart) return "";
  for (const std::string& text : {request.file, request.destination})
    if (!objection_to_text(text).empty()) return "its name " + objection_to_text(text);
  return request.file.empty() ? "it has no name" : "";
}

}  // namespace

int open_in_reader(const ReaderRequest& request, const Trace& trace) {
  if (const std::string reason = objection(request); !reason.empty()) {
    trace.complain("the document is not opened: " + reason + ".");
    return kExitWrongUse;
  }
  const bool has_file = request.kind == ReaderRequest::Kind::kOpen;
  if (has_file && !is_regular_file(request.file)) {
    trace.complain("there is no file " + request.file + " that could be read.");
    return kExitFailed;
  }
  const bool shows_text = request.as_text || !has_display();
  if (shows_text && has_file && !request.dry_run)
    return show_pdf_as_text(request.file, request.destination,
                            request.as_text ? WhyText::kAsked : WhyText::kNoDisplay, trace);
  if (shows_text && !request.dry_run) {
    trace.complain("there is no display to start a PDF reader on.");
    return kExitFailed;
  }
  const Choice choice = choose_reader();
  if (!choice) {
    trace.complain(std::string("there is no PDF reader. Install one (evince, okular), or name one in ") +
                   kReaderVariable + ".");
    return kExitNoProgram;
  }
  const Words command = has_file ? command_at(choice, request, trace) : start_command(choice);
  if (request.dry_run) {
    std::printf("%s    (%s)\n", shown(command).c_str(), choice.source.c_str());
    return kExitShown;
  }
  return start_viewer(choice, command, kWatchStart, trace);
}

}  // namespace olh_viewers
