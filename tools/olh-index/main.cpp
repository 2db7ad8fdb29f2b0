// olh-index: the search index of a documentation root.
#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>

#include "files.h"
#include "index_folder.h"
#include "index_maker.h"
#include "manual_text.h"
#include "pdf_text.h"
#include "visible.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kExamples =
    "'olh dmerge' makes it, too, with the lists of the root.\n"
    "Examples:\n"
    "  olh index docs\n"
    "Exit code: 0 made, 4 no list of the documents in this root, 5 it cannot be written, 64 wrong use.\n";

enum ExitCode : int { kFailed = 2, kNotFound = 4, kCannotWrite = 5, kWrongUse = 64 };

constexpr const char* kList = "tomedecks/qel_td/js/LibList.js";
constexpr const char* kListOfManuals = "htmldocs/QEL/lib/LibList.js";  // of a root without a portal

struct Arguments {
  std::string root;
  bool quiet = false;
};

int complain(int code, const std::string& sentence) {
  std::fprintf(stderr, "olh-index: %s\n", olh_viewers::visible(sentence).c_str());
  return code;
}

int make_index(const Arguments& asked) {
  const fs::path root = asked.root;
  auto list = olh_viewers::text_of_file((root / kList).string());
  if (!list) list = olh_viewers::text_of_file((root / kListOfManuals).string());
  if (!list) return complain(kNotFound, (root / kListOfManuals).string() + " cannot be read. 'olh dmerge' makes it.");
  olh_index::IndexFolder folder(root);
  olh_index::IndexMaker maker(
      [&](const std::string& name, const nlohmann::json& piece) { folder.write(name, piece); });
  for (olh_index::IndexedManual& manual : olh_index::listed_documents(*list)) {
    if (manual.is_pdf)
      olh_index::read_pdf((fs::absolute(root) / "pdfdocs" / (manual.name + ".pdf")).string(),
                          "pdfdocs/" + manual.name + ".pdf", manual);
    else
      olh_index::read_manual((root / "htmldocs" / manual.name).string(), "htmldocs/" + manual.name + "/", manual);
    if (!asked.quiet && !manual.unsearched.empty())
      std::printf("%s %s.\n", olh_viewers::visible(manual.name).c_str(), manual.unsearched.c_str());
    maker.add(manual);
  }
  folder.finish(maker.finish());
  if (!asked.quiet)
    std::printf("%s: %u pages, %u sections\n", olh_viewers::visible(folder.head().string()).c_str(), maker.pages(),
                maker.sections());
  return 0;
}

int run(int argc, char** argv) {
  Arguments asked;
  CLI::App app("Make the search index of a documentation root.", "olh index");
  app.add_option("ROOT", asked.root, "The directory of the documentation root")->type_name("")->required();
  app.add_flag("-q,--quiet", asked.quiet, "Print nothing");
  app.set_version_flag("--version", "olh-index " OLH_PACKAGE_VERSION);
  app.footer(kExamples);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kWrongUse;
  }
  try {
    return make_index(asked);
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
