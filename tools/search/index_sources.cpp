#include "index_sources.h"

#include <filesystem>

#include "files.h"
#include "json_texts.h"
#include "topic_table.h"
#include "words.h"

namespace olh_search {

namespace {

// The second is that of a root without a portal.
constexpr const char* kLists[] = {"tomedecks/qel_td/js/LibList.js", "htmldocs/QEL/lib/LibList.js"};

std::vector<IndexSource> documents_in(std::string_view list) {
  std::vector<IndexSource> documents;
  for (const std::string& line : olh_viewers::lines_of(list)) {
    const std::string_view call = std::string_view(line).substr(std::min(line.find_first_not_of(" \t"), line.size()));
    const std::vector<std::string> row = texts_in_call(call, "mLibraryList.push(");
    if (row.size() < 2 || row[1].empty() || row[1].find('/') != std::string::npos || row[1].starts_with('.'))
      continue;
    documents.push_back({row[1], row[0], row.size() > 2 && row[2] == "pdf"});
  }
  return documents;
}

}  // namespace

ManualScripts read_source(const std::string& root, const IndexSource& document, Sum& sum) {
  if (document.is_pdf) {
    std::error_code failed;
    const auto size = std::filesystem::file_size(root + "/pdfdocs/" + document.name + ".pdf", failed);
    sum.add(failed ? "" : std::to_string(size));
    return {};
  }
  const std::string manual = root + "/htmldocs/" + document.name + "/";
  ManualScripts scripts = {olh_viewers::content_of(manual + olh_viewers::kTopicTable),
                           olh_viewers::text_of_file(manual + kTexts, kMostBytesOfTexts)};
  sum.add(scripts.table);
  sum.add(scripts.texts ? std::string_view(*scripts.texts) : "");
  return scripts;
}

std::optional<IndexSources> sources_of_index(const std::string& root) {
  for (const char* name : kLists) {
    const auto list = olh_viewers::text_of_file(root + "/" + name);
    if (!list) continue;
    IndexSources sources = {documents_in(*list), {}};
    sources.sum.add(*list);
    return sources;
  }
  return std::nullopt;
}

std::string sum_of_sources(const std::string& root) {
  auto sources = sources_of_index(root);
  if (!sources) return "";
  for (const IndexSource& document : sources->documents) read_source(root, document, sources->sum);
  return sources->sum.name();
}

}  // namespace olh_search
