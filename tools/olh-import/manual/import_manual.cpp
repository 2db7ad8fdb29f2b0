#include "import_manual.h"

#include <fnmatch.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>

#include "carried_text.h"
#include "child.h"
#include "files.h"
#include "manual_files.h"
#include "manual_origin.h"
#include "notes.h"
#include "page_titles.h"
#include "refusal.h"
#include "search_text.h"
#include "topic_table.h"
#include "translations.h"
#include "words.h"

namespace olh_import {

namespace fs = std::filesystem;

namespace {

constexpr const char* kPages = "pages";
constexpr const char* kStartPages[] = {"index.html",    "index.htm", "index.xhtml", "default.htm",
                                       "contents.html", "toc.html",  "README.html"};

bool matches_one(const std::vector<std::string>& patterns, const std::string& name) {
  return std::ranges::any_of(patterns,
                             [&](const std::string& one) { return fnmatch(one.c_str(), name.c_str(), 0) == 0; });
}

Source source_of(const ImportRequest& asked) {
  Source source;
  for (const std::string& one : asked.sources) {
    std::error_code failed;
    const bool is_folder = fs::is_directory(one, failed);
    if (!is_folder && !olh_viewers::is_regular_file(one))
      throw Refusal(kNoSource, one + " cannot be read: a source is a folder of pages, or a file.");
    if (is_folder && !source.tree.folder().empty())
      throw Refusal(kWrongUse,
                    "a manual is made of one folder, not of " + source.tree.folder() + " and " + one + ".");
    if (is_folder)
      source.tree = SourceTree(fs::canonical(one).string());
    else
      source.files.push_back(one);
  }
  if (!asked.wanted.empty())
    source.tree.keep([&](const std::string& name) { return !is_page_name(name) || matches_one(asked.wanted, name); });
  return source;
}

class Import {
 public:
  Import(const ImportRequest& asked, const std::function<void(std::size_t, std::size_t)>& progress,
         const std::function<void(OutputFolder&)>& put_in_place)
      : asked_(asked),
        progress_(progress),
        put_in_place_(put_in_place),
        source_(source_of(asked)),
        reader_(reader_for(source_)) {}

  ImportOutcome run() {
    make_output();
    find_pages();
    reader_->read(source_, *pages_, manual_);
    choose_start();
    note_places();
    go_through_files();
    if (titles_.pages().empty())
      throw Refusal(kNoSource, "no page of the source can be read: a page has at most " +
                                   std::to_string(kLargestPage >> 20) + " MiB.");
    reader_->finish(manual_);
    titles_.cut_repeated(manual_.title);
    return finish();
  }

 private:
  std::string place() const { return asked_.place_of_pages(); }

  void make_output() {
    refuse_what_others_brought(asked_, place(), olh_viewers::origin_of(place()));
    out_.emplace(asked_.dry_run ? (fs::temp_directory_path() / asked_.name).string() : place());
    if (!asked_.dry_run) text_.emplace(*out_);
  }

  void find_pages() {
    if (asked_.wanted.empty()) find_folder();  // pages that are named lie where their names say
    if (!folder_.names().empty()) pages_ = &folder_;
    if (std::ranges::none_of(pages_->names(), is_page_name))
      throw Refusal(kNoSource,
                    "this " + std::string(reader_->kind()) + " source contains no HTML page." +
                        (source_.tree.folder().empty() && !is_unpacked_ ? " Name the folder that it is in." : ""));
    if (asked_.link && !is_unpacked_) out_->link(pages_->folder(), kPages);
  }

  void find_folder() {
    const std::string folder = reader_->folder(source_);
    if (reader_->unpack(source_, *out_)) {
      is_unpacked_ = true;
      folder_ = SourceTree(out_->path() + "/" + kPages);
    } else if (!folder.empty()) {
      folder_ = SourceTree(source_.tree.folder() + "/" + folder);
    }
  }

  void choose_start() {
    if (!asked_.start.empty() && !pages_->has(asked_.start))
      throw Refusal(kNoSource, "the source has no page " + asked_.start + ".");
    if (!asked_.start.empty()) manual_.start = asked_.start;
    if (!pages_->has(manual_.start)) manual_.start.clear();
    for (const char* usual : kStartPages)
      if (manual_.start.empty() && pages_->has(usual)) manual_.start = usual;
    translations_ = Translations(*pages_, asked_.start);
    if (manual_.start.empty()) manual_.start = translations_.index();
    if (manual_.start.empty()) manual_.start = *std::ranges::find_if(pages_->names(), is_page_name);
    manual_.start = translations_.counterpart(manual_.start);
  }

  // A reader's places are looked for in their pages.
  void note_places() {
    for (std::size_t at = 0; at < manual_.topics.size(); ++at)
      if (!manual_.topics[at].place.empty()) topics_of_pages_[manual_.topics[at].page].push_back(at);
  }

  void go_through_files() {
    std::size_t done = 0;
    for (const std::string& name : pages_->names()) {
      progress_(done++, pages_->names().size());
      if (is_page_name(name) && reader_->is_content(name) && !translations_.is_other(name)) take_page(name);
      const bool is_wanted = !asked_.link && !asked_.dry_run && !is_unpacked_;
      if (is_wanted && !out_->copy(*pages_, name, std::string(kPages) + "/" + name)) unread_.push_back(name);
    }
  }

  void take_page(const std::string& name) {
    const std::optional<std::string> bytes = pages_->read(name);
    if (!bytes) return unread_.push_back(name);
    const HtmlPage page = read_html_page(name, *bytes);
    take_language(page);
    if (page.is_redirect) return;
    if (page.markup.is_cut())
      manual_.notes.push_back(name + " has too many elements, or too deep ones, and is only read in part");
    titles_.add(page);
    if (text_) text_->add(page);
    for (const std::size_t at : topics_of_pages_[name]) {
      std::string& place = manual_.topics[at].place;
      if (page.places.contains(place)) continue;
      const std::string meant = reader_->place_meant(page, place);
      if (meant.empty()) missing_places_.push_back(address_of(name, place));
      place = meant;
    }
    reader_->read_page(page, manual_);
    take_headings(page);
  }

  // The start page's language, else that of the first page that has one; else what its name says.
  void take_language(const HtmlPage& page) {
    for (const char* element : {"html", "body"}) {
      const std::string language = page.markup.first(element).attribute("lang");
      if (language.empty() || (!language_.empty() && page.name != manual_.start)) continue;
      language_ = language;
      return;
    }
  }

  void take_headings(const HtmlPage& page) {
    manual_.add_topic({name_of_page(page.name), page.name, "", "", Rank::kPage});
    for (const Passage& passage : page.passages)
      if (passage.level > 0 && !passage.place.empty() && reader_->is_place(passage.place))
        manual_.add_topic({passage.place, page.name, passage.place, passage.heading, Rank::kHeading});
  }

  ImportOutcome finish() {
    ImportOutcome outcome = {reader_->kind(), title(), titles_.pages().size(), {}, {}, {}};
    ArrangedTopics topics =
        arranged_topics(std::move(manual_.topics), *pages_, [this](const Topic& topic) { return titles_.at(topic); });
    write_files(outcome.title, topics.lines);
    for (const TableLine& line : topics.lines) outcome.topics.push_back(line.name);
    outcome.same_names = std::move(topics.same_names);
    outcome.notes = notes(topics.notes);
    if (asked_.dry_run) return outcome;
    make_room(asked_, place(), olh_viewers::origin_of(place()));
    put_in_place_(*out_);
    return outcome;
  }

  std::string title() const {
    std::string given = asked_.title.empty() ? manual_.title : asked_.title;
    if (given.empty() && !manual_.is_collection) given = titles_.whole_of_page(manual_.start);
    const std::string title = carried_title(given);
    return title.empty() ? asked_.name : title;
  }

  void write_files(const std::string& title, const std::vector<TableLine>& lines) {
    std::unordered_map<std::string, std::string> names;
    for (const TableLine& line : lines) names.try_emplace(line.address, line.name);
    out_->write(olh_viewers::kTopicTable, topic_table_file(title, lines));
    if (text_)
      text_->write([&names](const std::string& page) {
        const auto found = names.find(address_of(page, ""));
        return found == names.end() ? "" : found->second;
      });
    out_->write("index.htm",
                start_page_file(title, language_.empty() ? translations_.taken() : language_, contents()));
    out_->write(olh_viewers::kOriginFile, olh_viewers::origin_mark(asked_.verb, origin()));
  }

  std::string origin() const {
    std::string text;
    for (const std::string& source : asked_.sources) text += clean_text(source, kLargestPage) + "\n";
    return text;
  }

  std::vector<Chapter> contents() const {
    std::vector<Chapter> chapters;
    for (Chapter chapter : manual_.contents) {
      if (!chapter.page.empty() && !pages_->has(chapter.page)) continue;
      if (chapter.title.empty()) chapter.title = titles_.of_page(chapter.page);
      chapters.push_back(std::move(chapter));
    }
    if (!chapters.empty()) return chapters;
    chapters.push_back({0, titles_.of_page(manual_.start), manual_.start, ""});
    for (const auto& [page, title] : titles_.pages())
      if (page != manual_.start) chapters.push_back({0, titles_.of_page(page), page, ""});
    return chapters;
  }

  std::vector<std::string> notes(const std::vector<std::string>& of_topics) const {
    std::vector<std::string> all = of_topics;
    all.insert(all.end(), manual_.notes.begin(), manual_.notes.end());
    tell(all, "other languages of the same pages, imported with --start and their index page",
         translations_.others());
    tell(all, "files that cannot be read, left out", unread_);
    tell(all, "places that their page does not have, replaced by its beginning", missing_places_);
    if (!asked_.link) tell(all, "links to folders or out of the source, left out", pages_->links_left_out());
    return all;
  }

  const ImportRequest& asked_;
  const std::function<void(std::size_t, std::size_t)>& progress_;
  const std::function<void(OutputFolder&)>& put_in_place_;
  Source source_;
  std::unique_ptr<Reader> reader_;
  std::optional<OutputFolder> out_;
  SourceTree folder_;  // where the pages do not lie in the source's own folder
  const SourceTree* pages_ = &source_.tree;
  bool is_unpacked_ = false;
  Manual manual_;
  std::unordered_map<std::string, std::vector<std::size_t>> topics_of_pages_;
  Translations translations_;
  std::string language_;
  PageTitles titles_;
  std::optional<SearchText> text_;  // not for a dry run
  std::vector<std::string> unread_;
  std::vector<std::string> missing_places_;
};

}  // namespace

void refuse_what_others_brought(const ImportRequest& asked, const std::string& place, const std::string& brought_by) {
  std::error_code failed;
  const fs::file_type type = fs::symlink_status(place, failed).type();
  if (type == fs::file_type::none)  // too long a name, for example
    throw Refusal(kCannotWrite, place + " cannot be created: " + failed.message() + ".");
  if (type != fs::file_type::not_found && !brought_by.starts_with(asked.verb))
    throw Refusal(kCannotWrite, place + " already exists, and olh " + asked.verb + " did not create it.");
}

void prepare_root(const std::string& root, const olh_viewers::Words& options) {
  olh_viewers::Words words = {olh_viewers::find_beside("olh"), "prepare-root", root};
  words.insert(words.end(), options.begin(), options.end());
  if (olh_viewers::run_and_wait(words) != 0) throw Refusal(kCannotWrite, "nothing is imported.");
}

void make_room(const ImportRequest& asked, const std::string& place, const std::string& brought_by) {
  refuse_what_others_brought(asked, place, brought_by);
  prepare_root(asked.root);
  std::error_code failed;
  fs::create_directory(fs::path(place).parent_path(), failed);
}

ImportOutcome import_manual(const ImportRequest& asked, const std::function<void(std::size_t, std::size_t)>& progress,
                            const std::function<void(OutputFolder&)>& place) {
  return Import(asked, progress, place).run();
}

}  // namespace olh_import
