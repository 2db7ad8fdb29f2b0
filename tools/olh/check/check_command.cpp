// olh check ROOT: what would disappoint a reader of a documentation root.
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "check.h"
#include "checks.h"
#include "findings_in_short.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kCheckExamples =
    "Of a root on a web server it checks what can be read from here.\n"
    "Examples:\n"
    "  olh check /usr/share/olh/docs\n"
    "  echo olh_manual quick_start >tags.txt\n"
    "  olh check --tags tags.txt /usr/share/olh/docs   also every document and tag that a program uses:\n"
    "                                                  lines \"DOC\" or \"DOC TAG\", \"#\" begins a comment\n"
    "Exit code: 0 no problems, 1 warnings, 2 errors, 64 wrong use.\n";

constexpr int kClean = 0;
constexpr int kWarnings = 1;
constexpr int kErrors = 2;

struct NamedCheck {
  const char* name;  // as JSON answers give it
  Check run;
};

constexpr std::array kChecks = {NamedCheck{"start_pages", check_start_pages},
                                NamedCheck{"topic_tables", check_topic_tables},
                                NamedCheck{"topic_lines", check_topic_lines},
                                NamedCheck{"topic_pages", check_topic_pages},
                                NamedCheck{"destinations", check_destinations},
                                NamedCheck{"pdf_links", check_pdf_links},
                                NamedCheck{"pdf_titles", check_pdf_titles},
                                NamedCheck{"pdf_endings", check_pdf_endings},
                                NamedCheck{"portal_list", check_portal_list},
                                NamedCheck{"portal_files", check_portal_files},
                                NamedCheck{"portal_documents", check_portal_documents},
                                NamedCheck{"titles", check_titles},
                                NamedCheck{"lists", check_lists},
                                NamedCheck{"options", check_options},
                                NamedCheck{"letter_case", check_letter_case},
                                NamedCheck{"interrupted_imports", check_interrupted_imports},
                                NamedCheck{"tags", check_tags}};

struct CheckArguments {
  std::string root;
  std::string tags;
  bool all = false;
  bool json = false;
};

std::size_t how_many(const Findings& findings, Level level) {
  return static_cast<std::size_t>(std::ranges::count(findings.all(), level, &Finding::level));
}

int exit_code_of(const Findings& findings) {
  if (how_many(findings, Level::kError) > 0) return kErrors;
  return how_many(findings, Level::kWarning) > 0 ? kWarnings : kClean;
}

// ---- answers ----

std::string contents_of(const CheckedRoot& root) {
  const auto number = [&](bool Holding::*form) {
    return static_cast<std::size_t>(std::ranges::count(root.holdings.all, true, form));
  };
  return counted(number(&Holding::html), "manual", "manuals") + ", " + counted(number(&Holding::pdf), "PDF", "PDFs") +
         ", " + counted(number(&Holding::portal), "portal", "portals");
}

void print_findings(const CheckArguments& asked, const Findings& findings) {
  if (asked.all) {
    for (const Finding& one : findings.all()) say(line_of(one));
    return;
  }
  const ShortFindings in_short = findings_in_short(findings);
  for (const std::string& line : in_short.lines) say(line);
  if (in_short.is_cut) say("With --all every problem is shown, and each in full.");
}

void print_as_text(const CheckArguments& asked, const std::string& root, const std::string& contents,
                   const Findings& findings) {
  print_findings(asked, findings);
  const std::string total = counted(how_many(findings, Level::kError), "error", "errors") + ", " +
                            counted(how_many(findings, Level::kWarning), "warning", "warnings");
  say(root + ": " + (contents.empty() ? "" : contents + "; ") +
      (exit_code_of(findings) == kClean ? "no problems" : total) + ".");
}

void print_as_json(const std::string& root, const Findings& findings) {
  nlohmann::json answer = {{"root", root},
                           {"result", exit_code_of(findings)},
                           {"errors", how_many(findings, Level::kError)},
                           {"warnings", how_many(findings, Level::kWarning)},
                           {"findings", nlohmann::json::array()}};
  for (const Finding& one : findings.all())
    answer["findings"].push_back({{"level", name_of(one.level)},
                                  {"check", one.check},
                                  {"file", one.where.file},
                                  {"line", line_or_null(one.where.line)},
                                  {"sentence", sentence_of(one)}});
  say_json(answer);
}

int check(const CheckArguments& asked) {
  Findings findings;
  std::string reason;
  std::optional<CheckedRoot> root = read_root(asked.root, reason);
  if (root) {
    findings.begin("root");
    for (const HalfRead& one : root->holdings.half_read)
      findings.error({one.directory}, "cannot be read to its end: {}; what else it holds was not checked",
                     one.reason);
    root->tags_file = asked.tags;
    for (const NamedCheck& one : kChecks) {
      findings.begin(one.name);
      one.run(*root, findings);
    }
  } else {
    findings.begin("root");
    findings.error({asked.root}, reason);
  }
  const std::string name = root ? root->path : asked.root;
  asked.json ? print_as_json(name, findings) : print_as_text(asked, name, root ? contents_of(*root) : "", findings);
  return exit_code_of(findings);
}

}  // namespace

void add_check_command(const Verb& olh) {
  const Verb verb = olh.verb("check", "Check a documentation root for problems", kCheckExamples);
  CheckArguments& asked = verb.action(check);
  verb.option("ROOT", asked.root, "The directory or http:// URL of the documentation root").required();
  verb.option("--tags", asked.tags, "The documents and tags that a program uses, one a line")
      .existing_file()
      .value_named("FILE");
  verb.flag("--all", asked.all, "Show every problem; else of a long list a few examples, and how many more");
  add_json_option(verb, asked.json);
}

}  // namespace olh
