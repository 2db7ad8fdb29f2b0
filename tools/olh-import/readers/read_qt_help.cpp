// Qt: a project of help (.qhp) beside its pages, or help that was packed into a database (.qch). Both have keywords, with
// the identifiers that hosts pass, and contents.
#include <algorithm>
#include <map>
#include <set>

#include "database.h"
#include "inflated.h"
#include "notes.h"
#include "reader.h"
#include "refusal.h"
#include "utf8.h"

namespace olh_import {

namespace {

constexpr std::string_view kProject = ".qhp";
constexpr std::string_view kPacked = ".qch";
constexpr std::string_view kSignal = "Changed";  // of a property

// The numbers and texts of Qt's streams, big end first. At the end of the bytes there is no more.
class QtStream {
 public:
  explicit QtStream(std::string_view bytes) : rest_(bytes) {}

  bool is_at_end() const { return rest_.empty(); }

  unsigned number() { return static_cast<unsigned>(next(4)); }

  // UTF-16, after its length in bytes. Halves of a pair that stand alone become U+FFFD.
  std::string text() {
    const unsigned length = number();
    if (length == kNoText) return "";
    std::string text;
    for (std::size_t units = std::min<std::size_t>(length, rest_.size()) / 2; units > 0; --units) {
      unsigned character = static_cast<unsigned>(next(2));
      const bool is_pair = character >= 0xD800 && character < 0xDC00 && units > 1 && follows_low_half();
      if (is_pair) {
        character = 0x10000 + ((character & 0x3FF) << 10) + (static_cast<unsigned>(next(2)) & 0x3FF);
        --units;
      }
      text += (character & 0xFFFFF800) == 0xD800 ? "\ufffd" : utf8_of(character);
    }
    return text;
  }

 private:
  static constexpr unsigned kNoText = 0xFFFFFFFF;

  unsigned long next(std::size_t bytes) {
    unsigned long number = 0;
    if (rest_.size() < bytes) rest_ = {};
    for (std::size_t at = 0; at < bytes && at < rest_.size(); ++at)
      number = number << 8 | static_cast<unsigned char>(rest_[at]);
    rest_.remove_prefix(std::min(bytes, rest_.size()));
    return number;
  }
  bool follows_low_half() const { return rest_.size() > 1 && (static_cast<unsigned char>(rest_[0]) & 0xFC) == 0xDC; }

  std::string_view rest_;
};

// A keyword is found by its identifier, which is unique, and by the words of the index.
void add_qt_keyword(Manual& manual, std::string_view identifier, std::string_view words, const LinkTarget& target) {
  if (!identifier.empty()) manual.add_topic({std::string(identifier), target.page, target.place, "", Rank::kContext});
  if (!words.empty()) manual.add_topic({std::string(words), target.page, target.place, "", Rank::kKeyword});
}

void add_qt_section(Manual& manual, int depth, const std::string& title, const LinkTarget& target) {
  if (manual.title.empty()) manual.title = title;
  if (manual.start.empty()) manual.start = target.page;
  manual.add_chapter({depth, title, target.page, target.place});
}

// The words with which more than half of the titles begin: "Qt" of "Qt Core", "Qt Widgets" and "QMake Manual".
std::string common_beginning(const std::vector<std::string>& titles) {
  std::map<std::string, std::size_t> counts;
  std::string longest;
  for (const std::string& title : titles)
    for (std::size_t end = title.find(' '); true; end = title.find(' ', end + 1)) {
      const std::string beginning = title.substr(0, end);
      if (2 * ++counts[beginning] > titles.size() && beginning.size() > longest.size()) longest = beginning;
      if (end == std::string::npos) break;
    }
  return longest;
}

// One packed help. With a folder, its pages lie there, and its names begin there.
class PackedHelp {
 public:
  PackedHelp(const std::string& path, bool in_folder) : help_(path) {
    for (const char* table : {"FolderTable", "FileNameTable", "FileDataTable", "IndexTable", "ContentsTable"})
      if (!help_.has_table(table)) throw Refusal(kNoSource, path + " is no help of Qt: it has no " + table + ".");
    if (in_folder)
      help_.for_each("SELECT Name FROM FolderTable",
                     [this](const Database::Row& row) { folder_ = std::string(row[0]) + "/"; });
    help_.for_each("SELECT FileId, Name FROM FileNameTable WHERE Name <> ''", [this](const Database::Row& row) {
      if (files_.size() < kMostFiles) files_.emplace(row[0], folder_ + std::string(row[1]));
    });
  }

  // `room` is for how many bytes there is room yet, of all that is unpacked.
  void unpack(const OutputFolder& out, std::set<std::string>& written, std::size_t& room,
              std::vector<std::string>& left_out) const {
    help_.for_each("SELECT Id, Data FROM FileDataTable", [&](const Database::Row& row) {
      const auto [first, last] = files_.equal_range(row[0]);
      for (auto file = first; file != last; ++file) {
        if (!written.insert(file->second).second) continue;
        // The length before the stream says what a stranger wants: the stream is counted.
        const std::optional<Inflated> bytes =
            inflated(row[1].substr(std::min<std::size_t>(4, row[1].size())), std::min(room, kLargestPage));
        if (bytes && out.write("pages/" + file->second, bytes->text))
          room -= bytes->text.size();
        else
          left_out.push_back(file->second);
      }
    });
  }

  void read(Manual& manual) const {
    help_.for_each("SELECT Identifier, Name, FileId, Anchor FROM IndexTable", [&](const Database::Row& row) {
      const auto [file, last] = files_.equal_range(row[2]);
      if (file != last) add_qt_keyword(manual, row[0], row[1], {file->second, std::string(row[3])});
    });
    help_.for_each("SELECT Data FROM ContentsTable", [&](const Database::Row& row) {
      QtStream stream(row[0]);
      while (!stream.is_at_end()) {
        const int depth = static_cast<int>(std::min<unsigned>(stream.number(), kDeepestChapter));
        const LinkTarget target = target_of_entry(folder_, stream.text());
        add_qt_section(manual, depth, stream.text(), target);
      }
    });
  }

 private:
  Database help_;
  std::string folder_;
  std::multimap<std::string, std::string, std::less<>> files_;  // names by their numbers: each may have several
};

class QtHelpReader : public Reader {
 public:
  const char* kind() const override { return "Qt"; }

  bool recognises(const Source& source) const override {
    return !source.find(kProject).empty() || !source.find(kPacked).empty();
  }

  // A project in the folder lies with its pages; one beside the folder belongs to all of it.
  std::string folder(const Source& source) override {
    const std::string project = source.find(kProject);
    const bool is_in_tree = source.tree.has(project) && project.find('/') != std::string::npos;
    return is_in_tree ? project.substr(0, project.rfind('/')) : "";
  }

  bool unpack(const Source& source, const OutputFolder& out) override {
    if (!source.find(kProject).empty()) return false;
    std::set<std::string> written;
    std::size_t room = kLargestPacked;
    const std::vector<std::string> packed = packed_in(source);
    for (const std::string& name : packed)
      helps_.emplace_back(std::make_unique<PackedHelp>(source.path_of(name), packed.size() > 1))
          ->unpack(out, written, room, left_out_);
    return !written.empty();
  }

  // Of two places that only differ in small and capital letters, the page has one with an "x" behind it. The signal of a
  // property has no place of its own.
  std::string place_meant(const HtmlPage& page, const std::string& missing) const override {
    if (page.places.contains(missing + "x")) return missing + "x";
    const std::string property =
        missing.substr(0, missing.size() - std::min(missing.size(), kSignal.size())) + "-prop";
    return missing.ends_with(kSignal) && page.places.contains(property) ? property : "";
  }

  void read(const Source& source, const SourceTree&, Manual& manual) override {
    tell(manual.notes, "packed files with a name or a size that is not safe, left out", left_out_);
    std::vector<std::string> titles;
    for (const auto& help : helps_) {
      const std::size_t before = manual.contents.size();
      help->read(manual);
      if (manual.contents.size() > before) titles.push_back(manual.contents[before].title);
    }
    manual.is_collection = helps_.size() > 1;
    if (manual.is_collection) manual.title = common_beginning(titles);
    if (!helps_.empty()) return;
    const std::string project = source.find(kProject);
    read_project(manual.read_xml(project, source.read_file(project)), manual);
  }

 private:
  static std::vector<std::string> packed_in(const Source& source) {
    std::vector<std::string> packed = source.tree.ending_in(kPacked);
    std::ranges::copy_if(source.files, std::back_inserter(packed),
                         [](const std::string& file) { return file.ends_with(kPacked); });
    return packed;
  }

  static void read_project(const Markup& project, Manual& manual) {
    for (Element at = project.root(); at; at = at.next_within(project.root()))
      if (at.is("keyword"))
        add_qt_keyword(manual, at.attribute("id"), at.attribute("name"), target_of_entry("", at.attribute("ref")));
    visit_nested(project.root(), "section", [&manual](Element at, int depth) {
      if (at.is("section"))
        add_qt_section(manual, depth, at.attribute("title"), target_of_entry("", at.attribute("ref")));
    });
  }

  std::vector<std::unique_ptr<PackedHelp>> helps_;
  std::vector<std::string> left_out_;
};

}  // namespace

std::unique_ptr<Reader> qt_help_reader() { return std::make_unique<QtHelpReader>(); }

}  // namespace olh_import
