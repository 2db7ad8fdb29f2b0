// What brought a manual into a root: the mark that olh import and olh new leave in its folder.
//
// Knows    the file of that mark, and that only what has one is replaced or removed without being asked for it.
// For      olh new, olh remove, olh-import.
#ifndef OLH_TOOLS_VIEWERS_MANUAL_ORIGIN_H
#define OLH_TOOLS_VIEWERS_MANUAL_ORIGIN_H

#include <string>

namespace olh_viewers {

inline constexpr const char* kOriginFile = "QELdata/QELOrigin.txt";

// What brings manuals.
inline constexpr const char* kByImport = "import";
inline constexpr const char* kByDocBase = "import --doc-base";
inline constexpr const char* kByNew = "new";

// How the directories begin in which olh-import puts manuals together. They may lie in a root.
inline constexpr const char* kWorkshop = ".olh-import-";

// The text of the mark: the verb in its first line, then what a person may want to know.
std::string origin_mark(const std::string& verb, const std::string& more = "");

// One of these three; "" for a manual that something else brought.
std::string origin_of(const std::string& manual_folder);

bool is_imported(const std::string& manual_folder);

// The mark of a PDF is a file beside it: "guide.origin.txt" of "guide.pdf".
std::string origin_file_of_pdf(const std::string& pdf);
std::string origin_of_pdf(const std::string& pdf);

}  // namespace olh_viewers

#endif
