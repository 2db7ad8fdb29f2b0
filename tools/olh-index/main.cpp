// olh-index: the search index of a documentation root.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <future>
#include <utility>

#include "command_line.h"
#include "index_folder.h"
#include "index_maker.h"
#include "index_sources.h"
#include "manual_text.h"
#include "pdf_text.h"
#include "text_pieces.h"
#include "visible.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

namespace fs = std::filesystem;

constexpr const char* kExamples =
    "'olh dmerge' makes it, too, with the lists of the root.\n"
    "Examples:\n"
    "  olh index docs\n"
    "Exit code: 0 made, 4 no list of the documents in this root, 5 it cannot be written, 64 wrong use.\n";

enum ExitCode : int { kFailed = 2, kNotFound = 4, kCannotWrite = 5 };

struct Arguments {
  std::string root;
  bool quiet = false;
};

int complain(int code, const std::string& sentence) {
  std::fprintf(stderr, "olh-index: %s\n", olh_viewers::visible(sentence).c_str());
  return code;
}

olh_index::IndexedManual read_document(const fs::path& root, const olh_search::IndexSource& document,
                                       olh_search::Sum& sum) {
  olh_index::IndexedManual manual = {document.name, document.title, document.is_pdf, "", "", {}};
  olh_search::ManualScripts scripts = olh_search::read_source(root.string(), document, sum);
  if (manual.is_pdf)
    olh_index::read_pdf((fs::absolute(root) / "pdfdocs" / (manual.name + ".pdf")).string(),
                        "pdfdocs/" + manual.name + ".pdf", manual);
  else
    olh_index::read_manual((root / "htmldocs" / manual.name).string(), std::move(scripts),
                           "htmldocs/" + manual.name + "/", manual);
  return manual;
}

// The texts of documents come from another thread, and leave gaps that the C library keeps. To give these back takes as long
// as to read a small manual.
class MemoryToGiveBack {
 public:
  void take(olh_index::IndexedManual manual) {
    for (const olh_index::Page& page : manual.pages)
      for (const olh_index::Section& section : page.sections) bytes_ += section.text.size();
    manual = {};
    if (bytes_ < kWorthwhile) return;
    bytes_ = 0;
#ifdef __GLIBC__
    malloc_trim(0);
#endif
  }

 private:
  static constexpr std::size_t kWorthwhile = std::size_t{4} << 20;  // bytes of text
  std::size_t bytes_ = 0;
};

// Calls with each document in its order; while it is at work, the one before goes, the next one is read, and its texts are put into
// pieces: this thread has less to do.
template <typename Call>
void each_document(const fs::path& root, olh_search::IndexSources& sources, olh_index::TextPieces& texts, Call call) {
  MemoryToGiveBack behind;
  const auto read = [&](std::size_t at, olh_index::IndexedManual done) {
    behind.take(std::move(done));
    olh_index::IndexedManual manual = read_document(root, sources.documents[at], sources.sum);
    texts.add(manual);
    return manual;
  };
  std::future<olh_index::IndexedManual> next;
  if (!sources.documents.empty()) next = std::async(std::launch::async, read, 0, olh_index::IndexedManual());
  olh_index::IndexedManual manual;
  for (std::size_t at = 1; at <= sources.documents.size(); ++at) {
    olh_index::IndexedManual done = std::exchange(manual, next.get());
    if (at < sources.documents.size()) next = std::async(std::launch::async, read, at, std::move(done));
    call(manual);
  }
}

int make_index(const Arguments& asked) {
  const fs::path root = asked.root;
  auto sources = olh_search::sources_of_index(asked.root);
  if (!sources)
    return complain(kNotFound,
                    "the list of the documents in " + asked.root + " cannot be read. 'olh dmerge' makes it.");
  olh_index::IndexFolder folder(root);
  // Pieces of texts come from one thread, and those of words when it has ended.
  const auto write = [&](const std::string& name, std::string_view piece) { folder.write(name, piece); };
  olh_index::TextPieces texts(write);
  olh_index::IndexMaker maker(write);
  each_document(root, *sources, texts, [&](const olh_index::IndexedManual& manual) {
    if (!asked.quiet && !manual.unsearched.empty())
      std::printf("%s %s.\n", olh_viewers::visible(manual.name).c_str(), manual.unsearched.c_str());
    maker.add(manual);
  });
  const std::string sections_of_texts = texts.finish();
  nlohmann::json head = maker.finish();
  head["sections_of_texts"] = sections_of_texts;
  head["sources"] = sources->sum.name();
  folder.finish(std::move(head));
  if (!asked.quiet)
    std::printf("%s: %u pages, %u sections\n", olh_viewers::visible(folder.head().string()).c_str(), maker.pages(),
                maker.sections());
  return 0;
}

int run(int argc, char** argv) {
  Arguments asked;
  olh::CommandLine words("olh index", "Make the search index of a documentation root.", kExamples,
                         [] { return "olh-index " OLH_PACKAGE_VERSION; });
  const olh::Verb program = words.program();
  program.option("ROOT", asked.root, "The directory of the documentation root").value_named("").required();
  program.flag("-q,--quiet", asked.quiet, "Print nothing");
  program.action([&asked] { return make_index(asked); });
  try {
    return words.run(argc, argv);
  } catch (const fs::filesystem_error& error) {
    return complain(kCannotWrite, error.path1().string() + ": " + error.code().message() + ".");
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    return complain(kFailed, error.what());
  }
}
