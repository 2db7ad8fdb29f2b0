// How much of a source is read: what goes beyond is left out and told, or the source is refused.
//
// For      every file of this room.
#ifndef OLH_IMPORT_BOUNDS_H
#define OLH_IMPORT_BOUNDS_H

#include <cstddef>

namespace olh_import {

inline constexpr std::size_t kMostFiles = 500'000;               // of a source
inline constexpr std::size_t kDeepestFolder = 64;                // folders in folders
inline constexpr std::size_t kMostFileNames = 64 * 1024 * 1024;  // bytes of all their names
inline constexpr std::size_t kLargestPage = 16 * 1024 * 1024;    // a page, or a file that a reader looks into
inline constexpr std::size_t kLargestTree =
    80 * 1024 * 1024;  // of elements, in memory: the rest of a page is left out
inline constexpr std::size_t kLargestTable = 64 * 1024 * 1024;       // what a compressed table may become
inline constexpr std::size_t kLargestPacked = std::size_t{1} << 31;  // what all files that a source has packed become
inline constexpr int kMostSteps = 500'000'000;                       // of the database engine, over one database
inline constexpr std::size_t kMostTopicMemory = 128 * 1024 * 1024;   // topics and contents of a manual: some 200,000
inline constexpr std::size_t kLongestTitle = 300;                    // bytes: longer ones are cut
inline constexpr std::size_t kLongestName = 500;                     // a topic's name
inline constexpr std::size_t kLongestAddress = 2000;                 // a topic's page and place, percent-encoded
inline constexpr std::size_t kLargestPdf = 256 * 1024 * 1024;        // also when it was compressed
inline constexpr std::size_t kMostPdfObjects = 500'000;
inline constexpr std::size_t kMostPdfPlaces = 200'000;  // names; lines of the outline; pages
inline constexpr int kDeepestPdfTree = 64;
inline constexpr std::size_t kMostPdfMemory = 256 * 1024 * 1024;  // of the program, with a PDF
inline constexpr int kDeepestChapter = 12;                        // of the contents

}  // namespace olh_import

#endif
