// The files that an imported manual gets beside its pages: topic table, start page.
//
// Knows    the form in which the library, the generator and the pages of a root read them.
// For      import_manual.
#ifndef OLH_IMPORT_MANUAL_FILES_H
#define OLH_IMPORT_MANUAL_FILES_H

#include <functional>
#include <string>
#include <vector>

#include "arranged_topics.h"

namespace olh_import {

// QELdata/QELAllData.js.
std::string topic_table_file(const std::string& title, const std::vector<TableLine>& lines);

// index.htm: the contents, and the script that leads to a topic. Whatever is no code of a language ("de-AT") is "en": the
// script's own sentences are English.
std::string start_page_file(const std::string& title, const std::string& language,
                            const std::vector<Chapter>& contents);

}  // namespace olh_import

#endif
