// The check of the documents and tags that a host uses, against what the library's own lookups find in the root.
#include <algorithm>

#include "checks.h"
#include "destination_names.h"
#include "find.h"
#include "olh/support.h"
#include "pdf_places.h"
#include "shared.h"

namespace olh {

namespace {

struct Use {
  int line = 0;
  std::string document;
  std::string tag;  // "" for the document alone
};

// DOC, or DOC and the TAG behind the first blank; "#" begins a comment line.
Use use_in(const std::string& text, int number) {
  constexpr const char* kBlanks = " \t\r";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string::npos || text[begin] == '#') return {};
  const std::size_t end = std::min(text.find_first_of(kBlanks, begin), text.size());
  const std::size_t tag = text.find_first_not_of(kBlanks, end);
  if (tag == std::string::npos) return {number, text.substr(begin, end - begin), ""};
  return {number, text.substr(begin, end - begin), text.substr(tag, text.find_last_not_of(kBlanks) - tag + 1)};
}

class TagCheck {
 public:
  TagCheck(const CheckedRoot& root, Findings& findings) : root_(root), findings_(findings) {}

  void take(const Use& use) {
    const Located located = locate(use.document, root_.search);
    const int result = OlhHelpTest(use.document.c_str(), use.tag.c_str());
    if (is_path_or_url(use.document)) {
      if (result != OLH_RESULT_OK) return findings_.error(at(use), "\"{}\" is not there", use.document);
      return findings_.note(at(use), "\"{}\" is a path or URL, which says nothing of this root", use.document);
    }
    if (result == OLH_RESULT_NOT_FOUND) return findings_.error(at(use), "there is no document \"{}\"", use.document);
    if (located.root.empty())
      return findings_.error(at(use), "\"{}\" is only found in the working directory, at {}", use.document,
                             located.location);
    if (use.tag.empty()) return;
    if (located.kind == OLH_VIEWER_TOMEDECK) return findings_.note(at(use), "the tabs of a portal cannot be checked");
    if (located.kind == OLH_VIEWER_HTML) check_topic(use, located, result);
    check_destination(use, located);
  }

 private:
  // Behind a URL the library cannot look into a topic table.
  void check_topic(const Use& use, const Located& located, int result) {
    bool is_there = result == OLH_RESULT_OK;
    const std::string table = place_beside(located.location, olh_viewers::kTopicTable);
    if (root_.is_web) {
      const auto script = text_at(table);
      if (!script) return findings_.error(at(use), "the topic table {} cannot be read", table);
      const auto topics = olh_viewers::topics_in_table(*script);
      const std::string wanted = olh_viewers::normal_topic(use.tag);
      is_there = std::any_of(topics.begin(), topics.end(), [&](const olh_viewers::TableTopic& topic) {
        return olh_viewers::normal_topic(topic.name) == wanted;
      });
    }
    if (!is_there) findings_.error(at(use), "there is no topic \"{}\" in {}", use.tag, table);
  }

  // Of a document in both forms, a missing destination only meets those who prefer the PDF.
  void check_destination(const Use& use, const Located& located) {
    const std::string pdf =
        located.kind == OLH_VIEWER_PDF ? located.location : pdf_beside_manual(use.document, located.root);
    if (pdf.empty()) return;
    if (is_web_root(pdf)) return findings_.note(at(use), "the named destinations of {} cannot be checked", pdf);
    const auto places = olh_viewers::destinations_of(pdf);
    if (!places) return findings_.warning(at(use), "{} could not be looked into: {}", pdf, why_unread());
    const std::string wanted = olh_viewers::destination_of(use.tag);
    if (std::ranges::find(*places, wanted, &olh_viewers::NamedPlace::name) != places->end()) return;
    constexpr const char* kMissing = "there is no named destination \"{}\" in {}";
    if (located.kind == OLH_VIEWER_PDF) return findings_.error(at(use), kMissing, wanted, pdf);
    findings_.warning(at(use), kMissing, wanted, pdf);
  }

  std::string pdf_beside_manual(const std::string& document, const std::string& root) const {
    const std::string relative = root == root_.path ? root_.pdf_named(document) : "";
    return relative.empty() ? "" : place_in_root(root, relative);
  }

  static std::string why_unread() {
    return olh_viewers::can_read_destinations() ? "pdfinfo cannot read it" : olh_viewers::kInstallPdfinfo;
  }

  FoundIn at(const Use& use) const { return {root_.tags_file, use.line}; }

  const CheckedRoot& root_;
  Findings& findings_;
};

}  // namespace

void check_tags(const CheckedRoot& root, Findings& findings) {
  if (root.tags_file.empty()) return;
  const std::optional<std::string> text = text_at(root.tags_file);
  if (!text) return findings.error({root.tags_file}, "cannot be read");
  TagCheck check(root, findings);
  int number = 0;
  int uses = 0;
  for (const std::string& line : lines_of(*text)) {
    const Use use = use_in(line, ++number);
    if (use.document.empty()) continue;
    ++uses;
    check.take(use);
  }
  if (uses == 0) findings.warning({root.tags_file}, "names no document");
}

}  // namespace olh
