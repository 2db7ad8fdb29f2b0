// Where a named document is, and of which kind.
//
// Knows    which lookup a name goes to, and in which order.
// Not      how a lookup searches (olh_doclist), what is shown when nothing is found (the entry points).
// For      the entry points of this room.
#ifndef OLH_CLIENT_LOCATE_H
#define OLH_CLIENT_LOCATE_H

#include "olh/olh.h"

// What OlhLocateDoc answers when it finds nothing.
inline constexpr int kNotLocated = -1;

// The document that stands in for a missing one, shown at its first page.
inline constexpr char kNotFoundPdf[] = "qeldoc_notfound.pdf";

// A located document: its file or URL, and the viewer program that its documentation tree prescribes.
struct Place {
  char location[OLH_BUFFER_SIZE] = "";
  char viewerPath[OLH_BUFFER_SIZE] = "";
};

// Fills the two buffers and returns the OlhViewer that shows the document: PDF, HTML or the portal. Not
// found: empties location and returns kNotLocated.
int OlhLocateDoc(char* location, const char* docName, char* viewerPath) noexcept;

// The same into a Place.
int locate(Place& place, const char* docName) noexcept;

// Makes `viewer` the current one and shows the place in it. Returns the result of showDocGotoTag.
int show_in(int viewer, Place& place, const char* tag) noexcept;

// Shows the not-found PDF. Returns the result of showing it, or kNotLocated when it is missing or no PDF.
int show_not_found_pdf(Place& place) noexcept;

// The last resort: the support portal's page, in the browser, which becomes the current viewer; in a build without a portal
// nothing is opened. Its result does not matter any more.
void show_support_portal(Place& place) noexcept;

#endif
