// The folder that a manual is put together in, and how it takes its place in one step.
//
// Knows    the directory beside the manual's place that nobody takes for a manual, that an interrupted import leaves one
//          behind, and that the next one clears it away; the exchange of two folders.
// Not      what is in a manual.
// Owns     that directory, gone at the end of its life with whatever was exchanged into it.
// For      import_manual, unpacking readers.
#ifndef OLH_IMPORT_OUTPUT_FOLDER_H
#define OLH_IMPORT_OUTPUT_FOLDER_H

#include <csignal>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "source_tree.h"

namespace olh_import {

// Signals wait while it lives.
class NoSignals {
 public:
  NoSignals();
  NoSignals(const NoSignals&) = delete;
  NoSignals& operator=(const NoSignals&) = delete;
  ~NoSignals();

 private:
  sigset_t before_ = {};
};

// What is too much to be kept in memory, written once and then read from its beginning. It goes with the object.
class NamelessFile {
 public:
  explicit NamelessFile(const std::string& directory);
  void write(std::string_view bytes);
  void rewind();
  std::string read(std::size_t size);

 private:
  void check(bool is_done) const;
  std::string directory_;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
};

class OutputFolder {
 public:
  // Beside `place`, in whose directory it makes itself one; where there is none yet, in the nearest one above. A Refusal says
  // what failed, here and below.
  explicit OutputFolder(const std::string& place);
  OutputFolder(const OutputFolder&) = delete;
  OutputFolder& operator=(const OutputFolder&) = delete;
  ~OutputFolder();

  const std::string& path() const { return path_; }
  // Writes a file; folders on the way to it are made. A name that would lead out, or is hidden, is not written: false.
  bool write(std::string_view name, std::string_view bytes) const;
  // The same with pieces as they come, up to the first that is none.
  bool write(std::string_view name, const std::function<std::optional<std::string>()>& next) const;
  // The same with what `write` puts into a stream, which may also throw.
  bool write(std::string_view name, const std::function<void(std::FILE*)>& write) const;
  // The same with the bytes of a source's file; false when that cannot be read.
  bool copy(const SourceTree& from, const std::string& name, const std::string& to) const;
  void link(const std::string& target, const std::string& name) const;

  NamelessFile nameless_file() const { return NamelessFile(workshop_); }

  // Puts one file of it at a place, in one step.
  void put(const std::string& name, const std::string& at) const;
  // Puts the folder in its place. What was there before is gone afterwards.
  void take_place();
  // Takes in what is at a place beside it, so that it goes with this folder; in one step, too.
  void take_away(const std::string& at) const;

 private:
  std::string place_;
  std::string workshop_;
  std::string path_;
  int lock_ = -1;
};

}  // namespace olh_import

#endif
