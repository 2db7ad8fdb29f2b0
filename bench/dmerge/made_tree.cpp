#include "made_tree.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <random>

namespace fs = std::filesystem;

namespace {

void write(const fs::path& path, std::string_view text) { std::ofstream(path, std::ios::binary) << text; }

std::string padded(std::size_t number) {
  const std::string digits = std::to_string(number);
  return std::string(6 - std::min<std::size_t>(6, digits.size()), '0') + digits;
}

void fill_randomly(std::string& bytes, std::mt19937_64& random) {
  for (std::size_t i = 0; i + sizeof(std::uint64_t) <= bytes.size(); i += sizeof(std::uint64_t)) {
    const std::uint64_t word = random();
    std::memcpy(bytes.data() + i, &word, sizeof word);
  }
}

std::string pdf(std::string body, const std::string& name) {
  const std::string metadata = "\n<rdf:Description rdf:about='' pdf:Title='The book " + name + "'/>\n";
  if (body.size() < metadata.size()) return metadata;
  body.replace(body.size() - metadata.size(), metadata.size(), metadata);
  return body;
}

std::string library_data(const std::string& name) {
  std::string text = "QELAddBookVar(\"DocTitle\", \"The library " + name + "\");\n";
  for (int topic = 0; topic < 20; ++topic)
    text += "QELAddTopic([\"topic_" + std::to_string(topic) + "\",\"topic_" + std::to_string(topic) +
            ".htm\",\"Topic\",\"Chapter\"]);\n";
  return text;
}

class Tree {
 public:
  Tree(const fs::path& directory, const TreeSize& size) : size_(size), root_(directory / "root") {
    fs::create_directories(root_);
    made_ = {root_, directory / "needed", directory / "scanned", 0};
    needed_.open(made_.needed_files);
    scanned_.open(made_.scanned_files);
    for (const char* place : {"htmldocs/QEL/lib", "pdfdocs", "tomedecks/qel_td/js", "tomedecks/common/html"})
      fs::create_directories(root_ / place);
  }

  MadeTree make() {
    for (std::size_t i = 0; i < size_.documents; ++i) add_library("lib" + padded(i));
    add_pdfs();
    add_portals();
    return made_;
  }

 private:
  void add_needed(const fs::path& path, std::string_view text) {
    write(path, text);
    needed_ << path.string() << '\n';
  }

  void add_library(const std::string& name) {
    const fs::path data = root_ / "htmldocs" / name / "QELdata";
    fs::create_directories(data);
    add_needed(data / "QELAllData.js", library_data(name));
  }

  void add_pdfs() {
    std::string body(size_.pdf_bytes, '\0');
    for (std::size_t i = 0; i < size_.documents; ++i) {
      const bool is_library = i % 2 == 0;
      const bool in_portal = !is_library && i % 3 == 0;
      const std::string name = (is_library ? "lib" : "book") + padded(i);
      const fs::path path = root_ / "pdfdocs" / (name + ".pdf");
      fill_randomly(body, random_);
      write(path, pdf(body, name));
      if (in_portal) items_ += "List.fAddItem( \"Portal title " + name + "\", \"" + name + "\" );\n";
      if (is_library || in_portal) continue;
      needed_ << path.string() << '\n';
      scanned_ << path.string() << '\n';
      ++made_.scanned;
    }
  }

  // The items are dealt out in equal shares, whole lines.
  void add_portals() {
    const std::size_t share = items_.size() / size_.portals + 1;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < size_.portals; ++i) {
      const std::string name = "portal" + padded(i) + "_td";
      fs::create_directories(root_ / "tomedecks" / name / "js");
      const std::size_t end =
          std::min(items_.size(), items_.find('\n', std::min(begin + share, items_.size() - 1)) + 1);
      add_needed(root_ / "tomedecks" / name / "js/doclist.js",
                 "mTomeDeckName = \"" + name + "\";\n" + items_.substr(begin, end - begin));
      begin = end;
    }
    add_needed(root_ / "tomedecks/qel_td/js/tdklist.js", "mReleaseName = \"Release 1\";\nEntry.fAddList( List );\n");
    add_needed(root_ / "tomedecks/common/html/basic.htm", "<table>\n<!-- Insert document list here -->\n</table>\n");
  }

  TreeSize size_;
  fs::path root_;
  MadeTree made_;
  std::ofstream needed_;
  std::ofstream scanned_;
  std::string items_;
  std::mt19937_64 random_{1};
};

}  // namespace

MadeTree make_tree(const fs::path& directory, const TreeSize& size) { return Tree(directory, size).make(); }

void change_tree(const MadeTree& tree) {
  const fs::path library = tree.root / "htmldocs/new";
  if (fs::remove_all(library) != 0) return;
  fs::create_directories(library / "QELdata");
  write(library / "QELdata/QELAllData.js", library_data("new"));
}

void remove_lists(const MadeTree& tree) {
  for (const char* list :
       {"tomedecks/qel_td/js/tdklist_installed.js", "tomedecks/qel_td/js/LibList.js", "tomedecks/basic.htm",
        "htmldocs/QEL/lib/LibList.js", "htmldocs/QEL/lib/LibraryAvailable.js"})
    fs::remove(tree.root / list);
}

fs::path make_repeats(const fs::path& directory, std::string_view text, std::size_t files, std::size_t bytes) {
  fs::create_directories(directory);
  std::string body;
  while (body.size() < bytes) body += text;
  body.resize(bytes);
  std::ofstream list(directory / "list");
  for (std::size_t i = 0; i < files; ++i) {
    const fs::path path = directory / padded(i);
    write(path, body);
    list << path.string() << '\n';
  }
  return directory / "list";
}
