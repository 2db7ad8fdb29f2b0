// olh-import: a manual that another program made, brought into a documentation root.
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "child.h"
#include "command_line.h"
#include "files.h"
#include "import_doc_base.h"
#include "import_document.h"
#include "import_pdf.h"
#include "manual_name.h"
#include "refusal.h"
#include "search_text.h"
#include "visible.h"
#include "words.h"

namespace {

using olh::Option;
using olh::refuse_option;
using olh::refuse_without;
using olh::Verb;
using olh_import::DocBaseOutcome;
using olh_import::DocBaseRequest;
using olh_import::DocumentOutcome;
using olh_import::ImportOutcome;
using olh_import::ImportRequest;
using olh_import::Refusal;
using olh_import::write_search_text;

// What the administrator registers, and what packages do.
constexpr const char* kRegistrations = "/etc/doc-base/documents:/usr/share/doc-base";

constexpr const char* kExamples =
    "The manual of Debian's package python3-doc:\n"
    "  olh import ROOT python_doc /usr/share/doc/python3.11/html\n"
    "Its pages and its PDF, which gets a destination for each of its places:\n"
    "  olh import ROOT octave /usr/share/doc/octave/octave.html /usr/share/doc/octave/octave.pdf\n"
    "Every manual that a Debian system has registered, with a portal for each section. Repeat it after an upgrade:\n"
    "  olh import ROOT --doc-base\n"
    "A PDF without destinations, which gets those that you name:\n"
    "  olh import --place \"Getting Started=3\" --place installing=12 ROOT guide draft.pdf\n"
    "The search text of a manual that you write by hand; run 'olh dmerge' afterwards:\n"
    "  olh import --search-text ROOT handbook\n"
    "If olh import has imported a manual with that name before, it is replaced in one step.\n"
    "Examples:\n"
    "  olh import docs second_handbook docs/htmldocs/handbook\n"
    "  olh import --dry-run docs third docs/htmldocs/handbook    what it would import; nothing is changed\n"
    "Exit code: 0 imported, 4 a source cannot be read, contains no page or is damaged, 5 ROOT cannot be written, or\n"
    "something else created a manual of that name there, 64 wrong use.\n";

volatile std::sig_atomic_t interrupted = 0;

// Ends the import, so that what it has put together goes, and then the program by the same signal.
struct Interruption {
  const char* sentence = "interrupted; nothing has changed.";
};

void say(FILE* where, const std::string& line) { std::fprintf(where, "%s\n", olh_viewers::visible(line).c_str()); }

int complain(int code, const std::string& sentence) {
  say(stderr, "olh-import: " + sentence);
  return code;
}

// How far it is, on a terminal, and the end of an import that a person interrupts.
void show_progress(std::size_t done, std::size_t of) {
  if (interrupted != 0) throw Interruption();
  if (done % 50 != 0 || isatty(STDERR_FILENO) != 1) return;
  std::fprintf(stderr, "\r\033[K%zu of %zu files", done, of);
}

void end_progress() {
  if (isatty(STDERR_FILENO) == 1) std::fputs("\r\033[K", stderr);
}

nlohmann::json as_json(const ImportOutcome& outcome) {
  nlohmann::json same = nlohmann::json::array();
  for (const olh_import::SameName& one : outcome.same_names)
    same.push_back({{"name", one.name}, {"kept", one.kept}, {"left_out", one.left_out}});
  return {{"kind", outcome.kind},   {"title", outcome.title},
          {"pages", outcome.pages}, {"topics", outcome.topics.size()},
          {"same_names", same},     {"notes", outcome.notes}};
}

void print_brought(const std::string& root, bool dry_run, const std::string& name, const ImportOutcome& outcome) {
  say(stdout, root + (dry_run ? " would hold " : " holds ") + name + ", \"" + outcome.title +
                  "\": " + std::to_string(outcome.pages) + " pages, " + std::to_string(outcome.topics.size()) +
                  " topics, from " + outcome.kind + ".");
}

void print_outcome(const ImportRequest& asked, const ImportOutcome& outcome) {
  for (const std::string& note : outcome.notes) say(stderr, "note: " + note + ".");
  print_brought(asked.root, asked.dry_run, asked.name, outcome);
}

void print_json(const nlohmann::json& answer) {
  std::printf("%s\n", answer.dump(2, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
}

// A document in both forms answers with the one of its pages, and in it the one of its PDF.
void print_document(const ImportRequest& asked, const DocumentOutcome& document, bool json) {
  if (!json) {
    for (const auto& outcome : {document.manual, document.pdf})
      if (outcome) print_outcome(asked, *outcome);
    return;
  }
  nlohmann::json answer = as_json(document.manual ? *document.manual : *document.pdf);
  if (document.manual && document.pdf) answer["pdf"] = as_json(*document.pdf);
  answer.update({{"root", asked.root}, {"name", asked.name}, {"dry_run", asked.dry_run}});
  print_json(answer);
}

// The generator's own messages and complaints go where a person reads them.
int make_lists(const std::string& root) {
  return olh_viewers::run_and_wait({olh_viewers::find_beside("olh"), "dmerge", "--quiet", root});
}

// The lists and the index are made once, of all that came.
int end_import(const std::string& root, bool dry_run) {
  std::fflush(stdout);
  return dry_run || make_lists(root) == 0 ? olh_import::kDone : olh_import::kCannotWrite;
}

int import(const ImportRequest& asked, bool json) {
  const DocumentOutcome document = import_document(asked, show_progress);
  end_progress();
  print_document(asked, document, json);
  return end_import(asked.root, asked.dry_run);
}

void print_registered(const DocBaseRequest& asked, const DocBaseOutcome& outcome) {
  for (const std::string& problem : outcome.problems) say(stderr, "note: " + problem + ".");
  for (const std::string& place : outcome.removed) say(stdout, place + " is removed: it is no longer registered.");
  for (const DocBaseOutcome::Document& one : outcome.documents)
    print_brought(asked.root, asked.dry_run, one.name, one.outcome);
}

void print_registered_as_json(const DocBaseRequest& asked, const DocBaseOutcome& outcome) {
  nlohmann::json documents = nlohmann::json::array();
  for (const DocBaseOutcome::Document& one : outcome.documents) {
    documents.push_back(as_json(one.outcome));
    documents.back().update({{"name", one.name}, {"section", one.section}});
  }
  print_json({{"root", asked.root},
              {"dry_run", asked.dry_run},
              {"documents", documents},
              {"problems", outcome.problems},
              {"removed", outcome.removed},
              {"portals", outcome.portals}});
}

int import_registered(const DocBaseRequest& asked, bool json) {
  DocBaseOutcome outcome;
  try {
    outcome = import_doc_base(asked, show_progress);
  } catch (const Interruption&) {
    throw Interruption{"interrupted; what was imported so far stays, and is listed by the next run."};
  }
  end_progress();
  json ? print_registered_as_json(asked, outcome) : print_registered(asked, outcome);
  return end_import(asked.root, asked.dry_run);
}

// A PDF without a root.
struct PdfRequest {
  std::vector<std::string> files;  // from, to
  std::string beside;
};

int write_pdf_alone(ImportRequest asked, const PdfRequest& pdf, bool json) {
  const std::filesystem::path to = std::filesystem::absolute(pdf.files[1]).lexically_normal();
  const std::string beside = pdf.beside.empty() ? "" : std::filesystem::canonical(pdf.beside).string();
  asked.name = to.stem().string();
  const ImportOutcome outcome = write_pdf(asked, pdf.files[0], to.string(), beside);
  if (json) return print_json(as_json(outcome)), olh_import::kDone;
  for (const std::string& note : outcome.notes) say(stderr, "note: " + note + ".");
  say(stdout, pdf.files[1] + (asked.dry_run ? " would hold \"" : " holds \"") + outcome.title + "\": " +
                  std::to_string(outcome.pages) + " pages, " + std::to_string(outcome.topics.size()) + " topics.");
  return olh_import::kDone;
}

struct Asked {
  ImportRequest import;
  PdfRequest pdf;
  std::string registrations;
  bool search_text = false;
  bool json = false;
};

// Which of the ways of this program can be asked for together.
void add_options(const Verb& program, Asked& asked) {
  ImportRequest& import = asked.import;
  const Option root =
      program.option("ROOT", import.root, "A documentation root; created if it does not exist").value_named("");
  const Option name =
      program.option("NAME", import.name, "The name of the manual, as help calls will use it").value_named("");
  const std::vector<Option> of_pages = {
      program.option("SOURCE", import.sources, "The folder of its HTML pages, files that describe them, its PDF")
          .value_named(""),
      program.option("--start", import.start, "The first page of the manual; by default, the source decides")
          .value_named("PAGE"),
      program.flag("--link", import.link, "Link to the pages where they lie instead of copying them")};
  const std::vector<Option> of_pdfs = {
      program.option("--title", import.title, "The title of the manual; by default, that of the source")
          .value_named("TEXT"),
      program.option("--place", import.places, "A topic of the PDF and its page; repeat for more topics")
          .value_named("TAG=PAGE")
          .one_value_each()};
  Option all = program.flag("--doc-base", kRegistrations, asked.registrations,
                            "Import all manuals that this machine has registered with doc-base");
  Option text = program.flag("--search-text", asked.search_text,
                             "Only write the search text of a manual that ROOT already has");
  Option pdf = program.option("--pdf", asked.pdf.files, "Only write a PDF with what the library needs")
                   .value_named("FROM TO")
                   .values(2, 2);
  program
      .option("--links-beside", asked.pdf.beside,
              "With --pdf: links to files in this folder become links to files beside the PDF")
      .value_named("FOLDER")
      .needs(pdf);
  program.flag("--dry-run", import.dry_run, "Print what would be imported and change nothing");
  program.flag("--json", asked.json, "Print JSON");
  all.excludes(of_pages).excludes(of_pdfs).excludes(text);
  text.excludes(of_pages).excludes(of_pdfs);
  pdf.excludes(of_pages).excludes({root, name, all, text});
}

// What the parser cannot tell alone.
void check_names(const Asked& asked) {
  const ImportRequest& import = asked.import;
  if (!asked.pdf.files.empty()) return;
  if (import.root.empty()) refuse_without("ROOT");
  if (const std::string refusal = olh_viewers::refusal_of_root(import.root); !refusal.empty())
    refuse_option("ROOT", refusal);
  if (asked.search_text ? import.name.empty() : asked.registrations.empty() && import.sources.empty())
    refuse_without(asked.search_text ? "NAME" : "NAME and SOURCE, or --doc-base");
  if (!asked.registrations.empty() && !import.name.empty())
    refuse_option("--doc-base",
                  "it takes no NAME; registrations that lie elsewhere follow it as --doc-base=" + import.name);
  if (asked.search_text || !asked.registrations.empty()) return;
  if (const std::string refusal = olh_viewers::refusal_of_manual_name(import.name); !refusal.empty())
    refuse_option("NAME", refusal);
}

int do_what_is_asked(Asked& asked) {
  check_names(asked);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) std::signal(signal, [](int number) { interrupted = number; });
  if (!asked.pdf.files.empty()) return write_pdf_alone(asked.import, asked.pdf, asked.json);
  std::string& root = asked.import.root;
  const std::filesystem::path place = std::filesystem::absolute(root).lexically_normal();
  root = (place.has_filename() ? place : place.parent_path()).string();
  if (asked.search_text) return write_search_text(root + "/htmldocs/" + asked.import.name), olh_import::kDone;
  if (asked.registrations.empty()) return import(asked.import, asked.json);
  return import_registered({root, olh_viewers::pieces_of(asked.registrations, ':'), asked.import.dry_run},
                           asked.json);
}

int run(int argc, char** argv) {
  Asked asked;
  olh::CommandLine words("olh import",
                         "Import a manual from another program: every page and every named place becomes a topic.",
                         kExamples, [] { return "olh-import " OLH_PACKAGE_VERSION; });
  add_options(words.program(), asked);
  words.program().action([&asked] { return do_what_is_asked(asked); });
  return words.run(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const Interruption& interruption) {
    end_progress();
    complain(0, interruption.sentence);
    std::signal(interrupted, SIG_DFL);
    return std::raise(interrupted);
  } catch (const Refusal& refusal) {
    end_progress();
    return complain(refusal.code(), refusal.what());
  } catch (const std::exception& error) {
    end_progress();
    return complain(olh_import::kCannotWrite, error.what());
  }
}
