// The records of a run.
//
// Knows    how records are made and freed, and that each count follows its list.
// Not      what is worth a record: the steps say so.
// Owns     every record and string in the exported lists (olh/dmerge.h), all from malloc.
// For      the other files of this room.
#ifndef OLH_DMERGE_REGISTRIES_H
#define OLH_DMERGE_REGISTRIES_H

#include <string_view>

#include "olh/dmerge.h"

namespace olh {

inline constexpr char kHtmlType[] = "html";
inline constexpr char kPdfType[] = "pdf";

// A copy from malloc, for a record or the host; it ends at the first NUL. Throws when there is no memory.
char* copied(std::string_view text);

// Frees an owned string and sets its pointer to null.
void discard(char*& text) noexcept;

// Put a new record at the head of a list and count it.
void add_document(std::string_view title, std::string_view name, const char* type);
void add_pdf_title(std::string_view title, std::string_view name);
void add_found_name(std::string_view name);

}  // namespace olh

#endif
