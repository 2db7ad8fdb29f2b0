// The way of a file's page to the browser: as the file, or from the server of this user's pages.
//
// Knows    what stands between a browser and the disk: Snap, Flatpak, the two sides of WSL, an editor on another machine, a
//          desktop that is asked to choose; and OLH_SERVE, with which a person decides.
// Not      how a page is served (served_address).
// For      both adapters; olh doctor, which tells the way.
#ifndef OLH_TOOLS_VIEWERS_BROWSER_REACH_H
#define OLH_TOOLS_VIEWERS_BROWSER_REACH_H

#include "choice.h"
#include "trace.h"

namespace olh_viewers {

inline constexpr const char* kServeVariable = "OLH_SERVE";
// What is wrong with a value of it: the end of a sentence, or "".
std::string fault_of_serve(const std::string& value);

struct Way {
  std::string barrier;  // why the browser may not read a file, "it is a Snap"; "" when it can
  std::string effect;   // of the barrier, before the name of the file: "may not see"
  bool is_served = false;
  std::string why;   // why it is served, or is not in spite of a barrier: the end of a sentence
  std::string cure;  // the command after which it would be
};
Way way_to(const Choice& browser);

// Its program, or the application of a Flatpak, as a person knows it.
std::string name_of(const Choice& browser);

// Whether the browser shows pages on another machine, or on the other side of this one: it needs no display here.
bool shows_elsewhere(const Choice& browser);

// A reader needs a display here. Where there is none, a browser elsewhere can show the PDF.
Choice choose_reader_within_reach();

// The address with which the browser gets a page; a page that is no file has its own. What keeps one from being shown has
// been said aloud.
std::string address_for(const Choice& browser, const std::string& url, const Trace& trace);

}  // namespace olh_viewers

#endif
