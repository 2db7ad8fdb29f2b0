// What a reader of one kind of source does: the interface between the readers and the rest.
//
// A reader knows one generator, or one way to describe a manual, and nothing of where its manual goes. A new kind is a
// file read_KIND.cpp with a class and a function that makes one of it, and a line with that function in the table of
// readers.cpp. Its test is a file in tests/tools/olh/import/kinds/.
//
// The order of an import. The first reader of the table that recognises the source is asked, and no other:
//   1. recognises   looks at the names of files (and at the first bytes of one, where names do not tell)
//   2. folder       where below the source the pages lie
//   3. unpack       for kinds that keep their pages packed in a file
//   4. read         the tables of the kind itself: title, topics, contents
//   5. read_page    each page once, in the order of the names of files, right after it was parsed
//   6. finish       what only all pages together tell
// Whatever a reader does not say comes from the pages themselves, for every kind: a topic for each page, one for each of
// its headings that has an identifier, titles, the text for the search, and a contents list.
//
// All names of files are relative to the folder of pages, parts separated by "/", as they are on the disk: decode what a
// source has percent-encoded. All texts are UTF-8; what is not becomes U+FFFD. Nothing needs to be escaped, cut or
// checked by a reader: names with "..", absolute ones, and pages that are not there are left out and told; so are topics
// with the name of one that comes earlier, and places that their page does not have lead to its beginning.
//
// Hostile sources are the ordinary case: a count, a length or an offset in a file is only believed within what is there
// and within bounds.h. A reader that cannot go on throws a Refusal; a line that makes no sense is passed over.
//
// For      the readers, and import_manual, which asks them.
#ifndef OLH_IMPORT_READER_H
#define OLH_IMPORT_READER_H

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bounds.h"
#include "html_page.h"
#include "output_folder.h"
#include "source_tree.h"

namespace olh_import {

// What a person named on the command line.
struct Source {
  SourceTree tree;                 // the folder, "" without one
  std::vector<std::string> files;  // files beside it (a tag file, a .qch), as paths

  // A file of the source, wherever it was named: a file of the command line whose name ends so, else the first such file
  // of the folder. "" without one. read_file reads it.
  std::string find(std::string_view end) const;
  std::optional<std::string> read_file(const std::string& found, std::size_t most = kLargestPage) const;
  // Where it lies, without a link on the way, for libraries that open files themselves; "" when it cannot be read.
  std::string path_of(const std::string& found) const;
};

// What kind of name a topic has: of equal names the one with the smaller rank is kept. Hosts ask for names of the first
// four; they have been told them.
enum class Rank {
  kContext,  // context ids, aliases, numbers of a map
  kKeyword,  // keywords of an index
  kLabel,    // labels that an author has set
  kObject,   // what an API defines
  kPage,     // pages; the readers need not give them
  kHeading,  // headings with an identifier; the readers need not give them
  kDetail    // parameters of functions and the like
};

struct Topic {
  std::string name;   // as the source writes it: what a host asks for. "os.path.join", "Setting up"
  std::string page;   // "library/os.path.html"
  std::string place;  // an identifier in that page, without "#"; "" for its beginning
  std::string title;  // for a person; "" takes that of the heading at the place, else of the page
  Rank rank = Rank::kHeading;
};

// A line of the contents, in reading order. The depth begins with 0.
struct Chapter {
  int depth = 0;
  std::string title;  // "" takes that of the page
  std::string page;   // "" for a heading over others that leads nowhere
  std::string place;
};

// What is known of a manual; readers add to it. A Refusal when there is no end to it.
class Manual {
 public:
  void add_topic(Topic topic);
  void add_chapter(Chapter chapter);
  // An XML file that says something of the manual; a note, once, tells of one that is damaged.
  Markup read_xml(const std::string& file, const std::optional<std::string>& bytes);

  std::string title;           // "" takes that of the start page, in a collection the name that a person gave
  bool is_collection = false;  // of several works: the title of none of them fits all
  std::string start;           // the page that the source itself begins with; "": index.html and the like are tried
  std::vector<Topic> topics;
  std::vector<Chapter> contents;   // empty: start page first, then all pages by name
  std::vector<std::string> notes;  // sentences about what could not be read, for the person who imports

 private:
  void take_room(std::size_t bytes);
  std::size_t room_ = kMostTopicMemory;
};

class Reader {
 public:
  virtual ~Reader() = default;

  // "Sphinx": how the kind is called in the report.
  virtual const char* kind() const = 0;
  virtual bool recognises(const Source& source) const = 0;
  // The folder of the pages below source.tree ("Contents/Resources/Documents"); "": that folder itself.
  virtual std::string folder(const Source&) { return ""; }
  // Writes packed pages into the manual, as "pages/NAME". Returns whether there were any.
  virtual bool unpack(const Source&, const OutputFolder&) { return false; }
  // `pages` is the folder of pages (with unpack, of what was unpacked).
  virtual void read(const Source&, const SourceTree& /*pages*/, Manual&) {}
  // Whether a page is one that people read: others (frames, indexes made for searching, templates) are copied, and are
  // neither topics nor searched.
  virtual bool is_content(std::string_view /*page*/) const { return true; }
  // Whether the identifier of a heading may name a topic; generators make up many that nobody asks for ("toc-Overview",
  // "XREFjoin", "l00042").
  virtual bool is_place(std::string_view /*identifier*/) const { return true; }
  // The place in a page that is meant by one that the page does not have; "" for none.
  virtual std::string place_meant(const HtmlPage&, const std::string& /*missing*/) const { return ""; }
  virtual void read_page(const HtmlPage&, Manual&) {}
  virtual void finish(Manual&) {}
};

// The reader of Sphinx' inventory, which other generators write, too.
std::unique_ptr<Reader> sphinx_reader();

// The reader for a source; a Refusal when there is no page in it.
std::unique_ptr<Reader> reader_for(const Source& source);

}  // namespace olh_import

#endif
