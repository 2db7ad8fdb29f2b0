#include "index_sources.h"

#include <filesystem>
#include <nlohmann/json.hpp>

#include "files.h"
#include "index_pieces.h"
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

// Of a PDF, which may be large, its size has to do.
void add_document(const std::string& root, const IndexSource& document, Sum& sum) {
  if (document.is_pdf) {
    std::error_code failed;
    const auto size = std::filesystem::file_size(root + "/pdfdocs/" + document.name + ".pdf", failed);
    return sum.add(failed ? "" : std::to_string(size));
  }
  const std::string manual = root + "/htmldocs/" + document.name + "/";
  sum.add(olh_viewers::content_of(manual + olh_viewers::kTopicTable));
  sum.add(olh_viewers::text_of_file(manual + kTexts, kMostBytesOfTexts).value_or(""));
}

}  // namespace

std::vector<std::string> texts_in_call(std::string_view line, std::string_view call) {
  const std::size_t end = line.rfind(']');
  if (!line.starts_with(call) || end == std::string_view::npos || end < call.size()) return {};
  const nlohmann::json row = nlohmann::json::parse(line.substr(call.size(), end + 1 - call.size()), nullptr, false);
  std::vector<std::string> texts;
  if (row.is_array())
    for (const nlohmann::json& one : row) texts.push_back(one.is_string() ? one.get<std::string>() : "");
  return texts;
}

std::optional<IndexSources> sources_of_index(const std::string& root) {
  for (const char* name : kLists) {
    const auto list = olh_viewers::text_of_file(root + "/" + name);
    if (!list) continue;
    IndexSources sources = {documents_in(*list), ""};
    Sum sum;
    sum.add(*list);
    for (const IndexSource& document : sources.documents) add_document(root, document, sum);
    sources.sum = sum.name();
    return sources;
  }
  return std::nullopt;
}

}  // namespace olh_search
