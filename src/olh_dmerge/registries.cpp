#include "registries.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "boundary.h"
#include "bounded_text.h"
#include "one_thread.h"
#include "paths.h"

char* doc_root = nullptr;
char* releaseName = nullptr;
OlhDmergeCallback dmergeCallback = nullptr;
LibListEntry* lleHead = nullptr;
int numLleEntries = 0;
LibListEntry* pdfTitlesHead = nullptr;
int numpdfTitlesEntries = 0;
FoundName* foundHandleListHead = nullptr;
RegisteredFile* registeredFilesHead = nullptr;
int numRegisteredFiles = 0;

namespace olh {

namespace {

void free_strings(LibListEntry& entry) noexcept {
  discard(entry.title);
  discard(entry.docName);
  discard(entry.type);
}
void free_strings(FoundName& found) noexcept { discard(found.name); }
void free_strings(RegisteredFile& file) noexcept { discard(file.path); }

// A record outside any list yet, freed with its strings unless it gets into one.
template <class Record>
struct FreeRecord {
  void operator()(Record* record) const noexcept {
    free_strings(*record);
    std::free(record);
  }
};
template <class Record>
using Owned = std::unique_ptr<Record, FreeRecord<Record>>;

template <class Record>
Owned<Record> empty_record() {
  auto* record = static_cast<Record*>(std::calloc(1, sizeof(Record)));
  if (record == nullptr) throw std::bad_alloc();
  return Owned<Record>(record);
}

template <class Record>
void add(Record*& head, Owned<Record> record) noexcept {
  record->next = head;
  head = record.release();
}

template <class Record>
void clear(Record*& head) noexcept {
  while (head != nullptr) {
    Record* const next = head->next;
    FreeRecord<Record>()(head);
    head = next;
  }
}

Owned<LibListEntry> new_entry(std::string_view title, std::string_view name, const char* type) {
  auto entry = empty_record<LibListEntry>();
  entry->title = copied(title);
  entry->docName = copied(name);
  entry->type = copied(type);
  return entry;
}

}  // namespace

char* copied(std::string_view text) {
  char* copy = strndup(text.data() == nullptr ? "" : text.data(), text.size());
  if (copy == nullptr) throw std::bad_alloc();
  return copy;
}

void discard(char*& text) noexcept { std::free(std::exchange(text, nullptr)); }

void add_document(std::string_view title, std::string_view name, const char* type) {
  add(lleHead, new_entry(title, name, type));
  ++numLleEntries;
}

void add_pdf_title(std::string_view title, std::string_view name) {
  add(pdfTitlesHead, new_entry(title, name, kPdfType));
  ++numpdfTitlesEntries;
}

void add_found_name(std::string_view name) {
  auto found = empty_record<FoundName>();
  found->name = copied(name);
  add(foundHandleListHead, std::move(found));
}

}  // namespace olh

void clearLibList() noexcept {
  const olh::OneThread inside;
  olh::clear(lleHead);
  numLleEntries = 0;
}

void clearpdfTitlesList() noexcept {
  const olh::OneThread inside;
  olh::clear(pdfTitlesHead);
  numpdfTitlesEntries = 0;
}

void clearFoundList() noexcept {
  const olh::OneThread inside;
  olh::clear(foundHandleListHead);
}

void clearRegisteredFiles() noexcept {
  const olh::OneThread inside;
  olh::clear(registeredFilesHead);
  numRegisteredFiles = 0;
}

void addToFoundTdList(char* name) noexcept {
  const olh::OneThread inside;
  if (name == nullptr) return;
  olh::guarded([name] { olh::add_found_name(name); });
}

int inFoundList(const char* name) noexcept {
  const olh::OneThread inside;
  if (name == nullptr) return 0;
  for (const FoundName* found = foundHandleListHead; found != nullptr; found = found->next)
    if (olh::text_of(found->name) == name) return 1;
  return 0;
}

int registerNewFile(char* path) noexcept {
  const olh::OneThread inside;
  if (pathExists(path) == 0) return 0;
  return olh::guarded(0, [path] {
    auto file = olh::empty_record<RegisteredFile>();
    file->path = olh::copied(olh::clean_path({path}));
    olh::add(registeredFilesHead, std::move(file));
    ++numRegisteredFiles;
    return dmergeCallback == nullptr ? 0 : dmergeCallback(path);
  });
}
