#include "doc_base.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "files.h"
#include "markup.h"
#include "refusal.h"
#include "words.h"

namespace olh_import {

namespace {

constexpr std::size_t kLargestRegistration = 64 * 1024;

// The fields of a paragraph, by their names in lower case.
using Fields = std::map<std::string, std::string>;

// Paragraphs are separated by empty lines. A line that begins with a blank goes on with the field before it.
std::vector<Fields> paragraphs_of(const std::string& text) {
  std::vector<Fields> paragraphs(1);
  std::string* value = nullptr;
  for (const std::string& line : olh_viewers::lines_of(text)) {
    const std::size_t colon = line.find(':');
    if (folded_space(line).empty()) {
      if (!paragraphs.back().empty()) paragraphs.emplace_back();
      value = nullptr;
    } else if (line.front() == ' ' || line.front() == '\t') {
      if (value != nullptr) *value += line;
    } else if (colon != std::string::npos) {
      value = &paragraphs.back()[olh_viewers::lower_case(line.substr(0, colon))];
      *value = line.substr(colon + 1);
    }
  }
  return paragraphs;
}

std::string field(const Fields& fields, const char* name) {
  const auto found = fields.find(name);
  return found == fields.end() ? "" : folded_space(found->second);
}

std::vector<std::string> files_in(const Fields& fields) {
  return olh_viewers::pieces_of(field(fields, "files"), ' ');
}

// The first paragraph describes the document, each other one a format of it.
Registration registration_in(const std::string& file, const std::vector<Fields>& paragraphs) {
  const Fields& document = paragraphs.front();
  Registration made = {
      file, field(document, "document"), field(document, "title"), field(document, "section"), {}, {}, {}};
  for (const Fields& fields : paragraphs) {
    const std::string format = olh_viewers::lower_case(field(fields, "format"));
    if (format == "html") {
      made.index = field(fields, "index");
      made.pages = files_in(fields);
    } else if (format == "pdf") {
      made.pdfs = files_in(fields);
    }
  }
  return made;
}

const char* missing_field(const Registration& one) {
  if (one.document.empty()) return "Document";
  if (one.title.empty()) return "Title";
  if (one.section.empty()) return "Section";
  return one.index.empty() && !one.pages.empty() ? "Index" : nullptr;
}

std::optional<Registration> read_registration(const std::string& file, std::vector<std::string>& problems) {
  const std::optional<std::string> text = olh_viewers::text_of_file(file, kLargestRegistration);
  if (!text) return problems.push_back(file + " cannot be read"), std::nullopt;
  Registration made = registration_in(file, paragraphs_of(*text));
  if (const char* missing = missing_field(made))
    return problems.push_back(file + " has no field \"" + missing + "\""), std::nullopt;
  return made.index.empty() && made.pdfs.empty() ? std::nullopt : std::optional(std::move(made));
}

}  // namespace

std::vector<Registration> registrations_in(const std::vector<std::string>& folders,
                                           std::vector<std::string>& problems) {
  std::vector<Registration> all;
  bool is_there = false;
  for (const std::string& folder : folders) {
    std::error_code failed;
    if (!std::filesystem::is_directory(folder, failed)) continue;
    is_there = true;
    olh_viewers::DirectoryNames found = olh_viewers::names_in(folder);
    if (!found.why_not_all.empty())
      throw Refusal(kNoSource, folder + " cannot be listed: " + found.why_not_all + ".");
    std::ranges::sort(found.names);
    for (const std::string& name : found.names) {
      if (name == "README" || name == "data") continue;  // Debian's own, in these folders
      if (auto one = read_registration(olh_viewers::path_in(folder, name), problems)) all.push_back(std::move(*one));
    }
  }
  if (!is_there) throw Refusal(kNoSource, "no document is registered: there is no folder " + folders.back() + ".");
  return all;
}

}  // namespace olh_import
