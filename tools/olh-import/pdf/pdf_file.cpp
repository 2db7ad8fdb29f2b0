#include "pdf_file.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <qpdf/Buffer.hh>
#include <qpdf/QPDFExc.hh>
#include <utility>

#include "bounds.h"
#include "carried_text.h"
#include "markup.h"
#include "pdf_update.h"
#include "refusal.h"
#include "url.h"
#include "xmp_title.h"

namespace olh_import {

namespace {

constexpr std::size_t kNamesOfALeaf = 64;

// A node that is still to be looked at, and how many lie above it.
struct Node {
  QPDFObjectHandle object;
  int depth = 0;
  QPDFObjGen number = {};
};

QPDFObjectHandle value_of(QPDFObjectHandle dictionary, const char* key) {
  return dictionary.isDictionary() ? dictionary.getKey(key) : QPDFObjectHandle::newNull();
}

std::vector<QPDFObjectHandle> items_of(QPDFObjectHandle array) {
  return array.isArray() ? array.getArrayAsVector() : std::vector<QPDFObjectHandle>();
}

// The last one first, so that they are taken in their order.
void push_kids(const QPDFObjectHandle& kids, int depth, std::vector<Node>& to_do) {
  const std::vector<QPDFObjectHandle> items = items_of(kids);
  for (auto kid = items.rbegin(); kid != items.rend(); ++kid) to_do.push_back({*kid, depth + 1});
}

std::string text_of(QPDFObjectHandle string) {
  return string.isString() ? folded_space(clean_text(string.getUTF8Value(), kLongestName + 1)) : "";
}

// "section.1" of (section.1) and of /section.1.
std::string name_in(QPDFObjectHandle value) {
  if (value.isName()) return value.getName().substr(1);
  return value.isString() ? value.getStringValue() : "";
}

std::string bytes_of(Buffer& buffer) { return {reinterpret_cast<const char*>(buffer.getBuffer()), buffer.getSize()}; }

}  // namespace

PdfFile::PdfFile(std::FILE* bytes, std::string file) : bytes_(bytes), file_(std::move(file)) {
  parsing([&] {
    pdf_.setSuppressWarnings(true);
    pdf_.setAttemptRecovery(false);
    pdf_.processFile(file_.c_str(), bytes, false);
    if (pdf_.isEncrypted()) refuse("is encrypted: nothing can be added to it");
    {
      const std::map<QPDFObjGen, QPDFXRefEntry> table = pdf_.getXRefTable();
      if (table.size() > kMostPdfObjects) refuse("has too many objects");
      packed_.emplace(pdf_, table);
    }
    catalog_ = pdf_.getRoot();
    read_pages();
    read_names();
    read_outline();
    read_title();
  });
}

void PdfFile::refuse(const std::string& why) const { throw Refusal(kNoSource, file_ + " " + why + "."); }

// What the parser complains of, as a sentence; it would go on after most of it, and leave something out.
template <typename Action>
void PdfFile::parsing(Action action) {
  std::string complaint;
  try {
    action();
    if (pdf_.anyWarnings()) complaint = pdf_.getWarnings().front().getMessageDetail();
  } catch (const Refusal&) {
    throw;
  } catch (const QPDFExc& error) {
    if (error.getErrorCode() == qpdf_e_password) refuse("is encrypted: nothing can be added to it");
    complaint = error.getMessageDetail();
  } catch (const std::bad_alloc&) {  // not even enough for a sentence
    throw;
  } catch (const std::exception& error) {
    complaint = error.what();
  }
  if (!complaint.empty()) refuse("is damaged, or no PDF (" + clean_text(complaint, kLongestTitle) + ")");
}

// Calls `take` with each dictionary that hangs below one, and with what it is to add the next ones to. Nothing nests on
// the stack; what runs in a circle, or is larger than anybody writes, is refused.
template <typename Take>
void PdfFile::walk(const char* what, const QPDFObjectHandle& top, Take take) {
  std::set<QPDFObjGen> seen;
  std::vector<Node> to_do = {{top}};
  while (!to_do.empty()) {
    Node node = std::move(to_do.back());
    to_do.pop_back();
    node.number = node.object.getObjGen();
    node.object = packed_->read(node.object);
    if (!node.object.isDictionary()) continue;
    if (node.number.isIndirect() && !seen.insert(node.number).second)
      refuse(std::string("is damaged: its ") + what + " runs in a circle");
    if (node.depth > kDeepestPdfTree) refuse(std::string("is damaged: its ") + what + " is nested too deeply");
    if (seen.size() > kMostPdfPlaces || to_do.size() > kMostPdfPlaces) refuse(std::string("has too large a ") + what);
    take(node, to_do);
  }
}

// What is behind a key; value_of() has the reference where there is one.
QPDFObjectHandle PdfFile::read(const QPDFObjectHandle& dictionary, const char* key) {
  return packed_->read(value_of(dictionary, key));
}

void PdfFile::read_pages() {
  walk("page tree", value_of(catalog_, "/Pages"), [this](const Node& node, std::vector<Node>& to_do) {
    QPDFObjectHandle kids = read(node.object, "/Kids");
    if (kids.isArray()) return push_kids(kids, node.depth, to_do);
    ++page_count_;
    if (node.number.isIndirect()) pages_.emplace(node.number, static_cast<int>(page_count_));
  });
  if (page_count_ == 0) refuse("has no page");
}

// From a dictionary, and from a tree: a file may have either, or both. The first of equal names counts.
void PdfFile::read_names() {
  QPDFObjectHandle dictionary = value_of(catalog_, "/Dests");
  if (dictionary.isDictionary())
    for (const auto& [name, value] : dictionary.getDictAsMap()) values_.emplace(name.substr(1), value);
  const QPDFObjectHandle tree = value_of(value_of(catalog_, "/Names"), "/Dests");
  walk("tree of names", tree, [this](const Node& node, std::vector<Node>& to_do) {
    push_kids(read(node.object, "/Kids"), node.depth, to_do);
    const std::vector<QPDFObjectHandle> pairs = items_of(read(node.object, "/Names"));
    for (std::size_t at = 0; at + 1 < pairs.size(); at += 2)
      if (QPDFObjectHandle(pairs[at]).isString()) values_.emplace(name_in(pairs[at]), pairs[at + 1]);
    if (values_.size() > kMostPdfPlaces) refuse("names too many places");
  });
  for (const auto& [name, value] : values_) {
    const std::string text = QPDFObjectHandle::newString(name).getUTF8Value();
    named_.push_back(place(clean_text(text, kLongestName + 1), value));
  }
}

void PdfFile::read_outline() {
  const QPDFObjectHandle first = value_of(value_of(catalog_, "/Outlines"), "/First");
  walk("outline", first, [this](const Node& entry, std::vector<Node>& to_do) {
    to_do.push_back({value_of(entry.object, "/Next"), entry.depth});
    to_do.push_back({value_of(entry.object, "/First"), entry.depth + 1});
    const QPDFObjectHandle action = read(entry.object, "/A");
    const bool goes_there = value_of(action, "/S").isNameAndEquals("/GoTo");
    outline_.push_back(place(text_of(read(entry.object, "/Title")),
                             goes_there ? value_of(action, "/D") : value_of(entry.object, "/Dest")));
  });
}

// A name leads where the file has that name lead. A target is an array that begins with a page.
PdfPlace PdfFile::place(std::string name, QPDFObjectHandle target) {
  PdfPlace made = {std::move(name), 0, {}, ""};
  QPDFObjectHandle array = packed_->read(target);
  if (const auto known = values_.find(name_in(array)); known != values_.end())
    array = packed_->read(target = known->second);
  if (array.isDictionary()) array = packed_->read(target = array.getKey("/D"));
  constexpr int kMostItems = 8;
  if (!array.isArray() || array.getArrayNItems() == 0 || array.getArrayNItems() > kMostItems) return made;
  const auto page = pages_.find(array.getArrayItem(0).getObjGen());
  if (page == pages_.end()) return made;
  made.page = page->second;
  made.target = target;
  made.where = array.unparseResolved();
  return made;
}

void PdfFile::read_title() {
  QPDFObjectHandle metadata = value_of(catalog_, "/Metadata");
  if (metadata.isStream()) xmp_ = bytes_of(*metadata.getStreamData());
  title_ = folded_space(title_in_xmp(xmp_));
  const bool is_plain = metadata.isStream() && !metadata.getDict().hasKey("/Filter");
  has_visible_title_ = is_plain && !title_.empty() && xmp_.find("<pdf:Title>" + title_ + "<") != std::string::npos;
  if (title_.empty()) title_ = text_of(value_of(pdf_.getTrailer().getKey("/Info"), "/Title"));
}

std::optional<PdfPlace> PdfFile::place_of_page(int page) {
  const auto found = std::ranges::find(pages_, page, &std::pair<const QPDFObjGen, int>::second);
  if (found == pages_.end()) return std::nullopt;
  PdfPlace made = {"", page, QPDFObjectHandle::newArray(), ""};
  made.target.appendItem(pdf_.getObjectByObjGen(found->first));
  made.target.appendItem(QPDFObjectHandle::newName("/Fit"));
  made.where = made.target.unparse();
  return made;
}

// Of these, each of which is in the next, the innermost that is an object of its own is written again. What is in none is in
// the trailer, which is written in any case.
void PdfFile::mark_changed(std::initializer_list<QPDFObjectHandle> from_inside) {
  const auto object = std::ranges::find_if(from_inside, [](QPDFObjectHandle one) { return one.isIndirect(); });
  if (object != from_inside.end()) changed_.insert(object->getObjGen());
}

void PdfFile::add_name(const std::string& name, const PdfPlace& place) {
  values_.insert_or_assign(name, place.target);
  has_new_names_ = true;
  // Some readers look into the dictionary alone where there is one.
  QPDFObjectHandle dictionary = value_of(catalog_, "/Dests");
  if (!dictionary.isDictionary()) return;
  dictionary.replaceKey("/" + name, place.target);
  mark_changed({dictionary, catalog_});
}

bool PdfFile::lead_beside(const std::string& folder) {
  bool any = false;
  parsing([&] {
    for (const auto& [number, _] : pages_) {
      const QPDFObjectHandle page = pdf_.getObjectByObjGen(number);
      const QPDFObjectHandle links = value_of(page, "/Annots");
      for (QPDFObjectHandle link : items_of(links)) {
        QPDFObjectHandle address = value_of(value_of(link, "/A"), "/URI");
        const std::string file = olh_viewers::file_of(text_of(address));
        if (file.empty() || std::filesystem::path(file).parent_path() != folder) continue;
        QPDFObjectHandle action = QPDFObjectHandle::parse("<< /S /GoToR /D [0 /Fit] >>");
        action.replaceKey("/F", QPDFObjectHandle::newString(std::filesystem::path(file).filename().string()));
        // What was there says where the file lay when it was made.
        const std::string written = address.unparseResolved();
        outdated_.push_back({address.getParsedOffset() + 1, written.substr(1, written.size() - 2)});
        link.replaceKey("/A", action);
        mark_changed({link, links, page});
        any = true;
      }
    }
  });
  return any;
}

// The list generator takes the first title in the bytes of the file.
void PdfFile::set_title(const std::string& title) {
  new_xmp_ = xmp_with_title(xmp_, title);
  if (xmp_.find("pdf:Title") != std::string::npos)
    outdated_.push_back({value_of(catalog_, "/Metadata").getParsedOffset(), xmp_});
}

void PdfFile::append_to(std::FILE* to) {
  parsing([&] {
    PdfUpdate update(bytes_, pdf_.getTrailer(), to);
    for (const Outdated& one : outdated_) update.blank(one.from, one.bytes);
    if (has_new_names_) append_name_tree(update);
    if (!new_xmp_.empty()) append_metadata(update);
    for (const QPDFObjGen& object : changed_)
      update.replace(object, pdf_.getObjectByObjGen(object).unparseResolved());
    update.finish();
  });
}

// The parser takes what was written for an object of the file.
QPDFObjectHandle PdfFile::reference_to(QPDFObjGen written) {
  pdf_.replaceObject(written, QPDFObjectHandle::newDictionary());
  return pdf_.getObjectByObjGen(written);
}

// All names in one tree of two storeys.
void PdfFile::append_name_tree(PdfUpdate& update) {
  std::string leaves;
  for (auto next = values_.begin(); next != values_.end();) {
    const std::string first = QPDFObjectHandle::newString(next->first).unparse();
    std::string last;
    std::string leaf = "<< /Names [\n";
    for (std::size_t count = 0; count < kNamesOfALeaf && next != values_.end(); ++count, ++next) {
      last = QPDFObjectHandle::newString(next->first).unparse();
      leaf += last + " " + next->second.unparse() + "\n";
    }
    leaf += "] /Limits [ " + first;
    leaf += " " + last + " ] >>";
    leaves += update.add(leaf).unparse(' ') + " R\n";
  }
  QPDFObjectHandle names = value_of(catalog_, "/Names");
  if (!names.isDictionary()) catalog_.replaceKey("/Names", names = QPDFObjectHandle::newDictionary());
  names.replaceKey("/Dests", reference_to(update.add("<< /Kids [\n" + leaves + "] >>")));
  mark_changed({names, catalog_});
}

void PdfFile::append_metadata(PdfUpdate& update) {
  catalog_.replaceKey("/Metadata", reference_to(update.add("<< /Type /Metadata /Subtype /XML /Length " +
                                                           std::to_string(new_xmp_.size()) + " >>\nstream\n" +
                                                           new_xmp_ + "\nendstream")));
  mark_changed({catalog_});
}

}  // namespace olh_import
