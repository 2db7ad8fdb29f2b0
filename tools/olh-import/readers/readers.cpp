// The table of all kinds of sources.
#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "files.h"
#include "reader.h"
#include "refusal.h"
#include "words.h"

namespace olh_import {

std::unique_ptr<Reader> docset_reader();
std::unique_ptr<Reader> doxygen_reader();
std::unique_ptr<Reader> devhelp_reader();
std::unique_ptr<Reader> eclipse_reader();
std::unique_ptr<Reader> html_help_reader();
std::unique_ptr<Reader> java_help_reader();
std::unique_ptr<Reader> texinfo_reader();
std::unique_ptr<Reader> docbook_reader();
std::unique_ptr<Reader> asciidoc_reader();
std::unique_ptr<Reader> mdbook_reader();
std::unique_ptr<Reader> mkdocs_reader();
std::unique_ptr<Reader> latex2html_reader();
std::unique_ptr<Reader> qt_help_reader();
std::unique_ptr<Reader> plain_reader();

namespace {

// In the order in which they are asked: what is told by a file of its own comes before what only pages tell, and plain
// pages, which are everything, come last. Some also have tables for others, which say less: MkDocs an inventory of
// Sphinx, Texinfo a project for HTML Help, a docset whatever its pages came with.
constexpr std::unique_ptr<Reader> (*kReaders[])() = {
    mkdocs_reader,  sphinx_reader,  docset_reader,    doxygen_reader,    devhelp_reader,
    qt_help_reader, texinfo_reader, html_help_reader, java_help_reader,  eclipse_reader,
    mdbook_reader,  docbook_reader, asciidoc_reader,  latex2html_reader, plain_reader,
};

}  // namespace

std::unique_ptr<Reader> reader_for(const Source& source) {
  for (const auto make : kReaders)
    if (std::unique_ptr<Reader> reader = make(); reader->recognises(source)) return reader;
  if (source.tree.folder().empty())
    throw Refusal(kNoSource, source.files.front() + " is no manual by itself: name the folder that it is in.");
  const auto leads_to_folder = [&](const std::string& link) {
    std::error_code failed;
    return std::filesystem::is_directory(source.tree.folder() + "/" + link, failed);
  };
  const std::vector<std::string>& links = source.tree.links_left_out();
  const auto link = std::ranges::find_if(links, leads_to_folder);
  throw Refusal(kNoSource,
                source.tree.folder() + " contains no HTML page: a manual is a folder of HTML pages." +
                    (link == links.end() ? "" : " Its link " + *link + " leads to a folder: name that one."));
}

// What a topic takes beside its own texts: itself, its line of the table, its title among those of places.
constexpr std::size_t kTopic = 500;

// Texts that are too long stay so, and are cut: what becomes of them is the business of who writes them.
void Manual::add_topic(Topic topic) {
  std::size_t bytes = kTopic;
  for (std::string* const text : {&topic.name, &topic.page, &topic.place, &topic.title}) {
    if (text->size() > kLongestAddress) text->resize(kLongestAddress + 1);
    bytes += text->size();
  }
  take_room(bytes);
  topics.push_back(std::move(topic));
}

void Manual::add_chapter(Chapter chapter) {
  chapter.title.resize(std::min(chapter.title.size(), kLongestTitle + 1));
  take_room(sizeof chapter + 2 * (chapter.title.size() + chapter.page.size() + chapter.place.size()));
  contents.push_back(std::move(chapter));
}

Markup Manual::read_xml(const std::string& file, const std::optional<std::string>& bytes) {
  Markup markup = Markup::xml(bytes.value_or(""));
  const std::string note = file + " is damaged, and only read in part";
  if (bytes && markup.is_cut() && std::ranges::find(notes, note) == notes.end()) notes.push_back(note);
  return markup;
}

void Manual::take_room(std::size_t bytes) {
  if (bytes > room_)
    throw Refusal(kNoSource, "the source has too many topics for one manual: " + std::to_string(topics.size()) +
                                 ", and there are more.");
  room_ -= bytes;
}

std::string Source::find(std::string_view end) const {
  for (const std::string& file : files)
    if (olh_viewers::lower_case(file).ends_with(end)) return file;
  const std::vector<std::string> found = tree.ending_in(end);
  return found.empty() ? "" : found.front();
}

std::optional<std::string> Source::read_file(const std::string& found, std::size_t most) const {
  const bool was_named = std::ranges::find(files, found) != files.end();
  return was_named ? olh_viewers::text_of_file(found, most) : tree.read(found, most);
}

// The tree says which file a name means, and the descriptor where that is.
std::string Source::path_of(const std::string& found) const {
  std::error_code failed;
  if (std::ranges::find(files, found) != files.end()) return std::filesystem::canonical(found, failed).string();
  const int fd = tree.open(found);
  if (fd < 0) return "";
  const std::filesystem::path path = std::filesystem::canonical("/proc/self/fd/" + std::to_string(fd), failed);
  close(fd);
  return path.string();
}

}  // namespace olh_import
