// A list on its way to the disk.
//
// Knows    that it is put together in memory, takes the old one's place in one step, and is then reported. A link there
//          that is neither root's nor the caller's is not looked through, and gives way. In a directory that refuses a new
//          file or the exchange the old file itself is written. Where it says the same already, it only gets a new date.
// Not      what is in it, nor what a failure means: that is the step's message and result.
// For      the steps that write a list.
#ifndef OLH_DMERGE_GENERATED_FILE_H
#define OLH_DMERGE_GENERATED_FILE_H

#include <string>
#include <string_view>

namespace olh {

// Whether a list can be written, as far as that can be told beforehand. One that is write-protected cannot, though a new
// file could take its place.
bool can_be_written(const std::string& path);

// Makes the list say this. Returns whether it does; otherwise the old one is as it was, unless it was being written in
// place, and nothing of this one lies beside it.
bool store_list(const std::string& path, std::string_view text);

// The same, and reports a list that does.
bool put_list(std::string path, std::string_view text);

}  // namespace olh

#endif
