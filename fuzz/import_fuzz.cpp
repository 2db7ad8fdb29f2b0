// Sources of every kind that olh import reads: whatever stands in their tables and pages, a manual comes of it, or a
// sentence.
#include <zlib.h>

#include <set>

#include "fuzz.h"
#include "import_manual.h"
#include "refusal.h"
#include "topic_table.h"

namespace {

using olh_import::ImportRequest;

constexpr const char* kInventory = "objects.inv";
constexpr const char* kInventoryHeader = "# Sphinx inventory version 2\n# Project: P\n# Version: 1\n# zlib\n";

// A page, and the files that are read for the kind.
struct Kind {
  const char* page;
  std::vector<const char*> files;
};
const Kind kKinds[] = {
    {"index.html", {}},
    {"index.html", {kInventory}},
    {"index.html", {"product.tag"}},
    {"index.html", {"product.devhelp2"}},
    {"index.html", {"product.qhp"}},
    {"index.html", {"product.qch"}},
    {"index.html", {"product.hhc", "product.hhk", "product.hhp"}},
    {"index.html", {"toc.xml", "contexts.xml", "plugin.xml"}},
    {"index.html", {"map.jhm", "toc.xml", "product.hs"}},
    {"Contents/Resources/Documents/index.html", {"Contents/Info.plist", "Contents/Resources/docSet.dsidx"}},
    {"index.html", {kInventory, "search/search_index.json"}},
};

// No input that is made up has the sums of zlib.
std::string inventory(const std::string& lines) {
  uLongf size = compressBound(lines.size());
  std::string packed(size, '\0');
  const int state = compress(reinterpret_cast<Bytef*>(packed.data()), &size,
                             reinterpret_cast<const Bytef*>(lines.data()), lines.size());
  expect(state == Z_OK, "an inventory is packed");
  return kInventoryHeader + packed.substr(0, size);
}

void write_source_file(const std::string& folder, const std::string& name, const std::string& text) {
  std::filesystem::create_directories(std::filesystem::path(folder + "/" + name).parent_path());
  write_file(folder + "/" + name, name == kInventory ? inventory(text) : text);
}

}  // namespace

// The kind's letter ("a" for the first), then the page and the files, of which the last has all that is left.
void try_input(const std::string& input) {
  const std::size_t letter = input.empty() ? 0 : static_cast<unsigned char>(input[0] - 'a');
  const Kind& kind = kKinds[letter % std::size(kKinds)];
  const std::string source = scratch() + "/product";
  std::filesystem::remove_all(source);
  const std::vector<std::string> texts = parts_of(input.empty() ? "" : input.substr(1), kind.files.size() + 1);
  write_source_file(source, kind.page, texts[0]);
  for (std::size_t at = 0; at < kind.files.size(); ++at) write_source_file(source, kind.files[at], texts[at + 1]);

  setenv("TMPDIR", scratch().c_str(), 1);  // what a dry run puts together goes there
  ImportRequest asked;
  asked.root = scratch() + "/root";
  asked.name = "product";
  asked.sources = {source};
  asked.dry_run = true;
  try {
    const olh_import::ImportOutcome made = olh_import::import_manual(asked, [](std::size_t, std::size_t) {});
    std::set<std::string> names;
    for (const std::string& topic : made.topics) {
      const std::string seen = olh_viewers::normal_topic(topic);
      expect(!seen.empty() && names.insert(seen).second, "the library can tell all topics");
    }
    expect(!made.title.empty() && names.size() >= made.pages, "a manual has a title, and each page a topic");
  } catch (const olh_import::Refusal& refusal) {
    expect(std::string_view(refusal.what()).ends_with('.'), "a refusal is a sentence");
  }
}
