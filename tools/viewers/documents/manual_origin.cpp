#include "manual_origin.h"

#include <string_view>

#include "files.h"

namespace olh_viewers {

namespace {

std::string verb_in(const std::string& mark) {
  for (const char* verb : {kByImport, kByDocBase, kByNew})
    if (mark.starts_with(origin_mark(verb))) return verb;
  return "";
}

}  // namespace

std::string origin_mark(const std::string& verb, const std::string& more) { return "olh " + verb + "\n" + more; }

std::string origin_of(const std::string& manual_folder) {
  return verb_in(content_of(path_in(manual_folder, kOriginFile)));
}

bool is_imported(const std::string& manual_folder) {
  const std::string origin = origin_of(manual_folder);
  return origin == kByImport || origin == kByDocBase;
}

std::string origin_file_of_pdf(const std::string& pdf) {
  return pdf.substr(0, pdf.size() - std::string_view(".pdf").size()) + ".origin.txt";
}

std::string origin_of_pdf(const std::string& pdf) { return verb_in(content_of(origin_file_of_pdf(pdf))); }

}  // namespace olh_viewers
