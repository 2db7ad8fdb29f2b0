// The title in the XMP metadata of a PDF.
//
// Knows    where it is in them, and the form in which the list generator sees it: "<pdf:Title>" on a line of its own.
// For      pdf_file.
#ifndef OLH_IMPORT_XMP_TITLE_H
#define OLH_IMPORT_XMP_TITLE_H

#include <string>

namespace olh_import {

// pdf:Title, else dc:title; "" without one.
std::string title_in_xmp(const std::string& xmp);

// The metadata with this title, all else as it is; new ones for what is no metadata.
std::string xmp_with_title(const std::string& xmp, const std::string& title);

}  // namespace olh_import

#endif
