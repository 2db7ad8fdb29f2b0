#include "findings.h"

#include "shared.h"
#include "words_in_text.h"

namespace olh {

namespace {

std::string shortened(const std::string& text, std::size_t longest) {
  return text.size() <= longest ? text : std::string(olh_search::cut_to(text, longest)) + "...";
}

}  // namespace

const char* name_of(Level level) {
  return level == Level::kError ? "error" : level == Level::kWarning ? "warning" : "note";
}

std::string sentence_of(const Finding& finding, std::size_t longest_value) {
  std::string sentence;
  std::string_view rest = finding.kind;
  for (const std::string& value : finding.values) {
    const std::size_t gap = rest.find("{}");
    sentence.append(rest.substr(0, gap)) += shortened(value, longest_value);
    rest.remove_prefix(gap + 2);
  }
  return sentence_at(finding.where.file, finding.where.line, sentence.append(rest));
}

}  // namespace olh
