// The checks of a documentation root: each finds one kind of fault, and says so in findings, one after the other.
//
// Not      how findings are printed (check_command).
// For      check_command, whose table names every check once, and the checks themselves.
#ifndef OLH_TOOLS_CHECKS_H
#define OLH_TOOLS_CHECKS_H

#include "checked_root.h"
#include "findings.h"

namespace olh {

using Check = void (*)(const CheckedRoot& root, Findings& findings);

// check_manuals.cpp
void check_start_pages(const CheckedRoot& root, Findings& findings);
void check_topic_tables(const CheckedRoot& root, Findings& findings);
void check_topic_lines(const CheckedRoot& root, Findings& findings);
void check_topic_pages(const CheckedRoot& root, Findings& findings);

// check_pdfs.cpp
void check_destinations(const CheckedRoot& root, Findings& findings);
void check_pdf_links(const CheckedRoot& root, Findings& findings);
void check_pdf_titles(const CheckedRoot& root, Findings& findings);
void check_pdf_endings(const CheckedRoot& root, Findings& findings);

// check_portals.cpp
void check_portal_list(const CheckedRoot& root, Findings& findings);
void check_portal_files(const CheckedRoot& root, Findings& findings);
void check_portal_documents(const CheckedRoot& root, Findings& findings);

// check_root.cpp
void check_titles(const CheckedRoot& root, Findings& findings);
void check_lists(const CheckedRoot& root, Findings& findings);
void check_options(const CheckedRoot& root, Findings& findings);
void check_letter_case(const CheckedRoot& root, Findings& findings);
void check_interrupted_imports(const CheckedRoot& root, Findings& findings);

// check_tags.cpp
void check_tags(const CheckedRoot& root, Findings& findings);

}  // namespace olh

#endif
