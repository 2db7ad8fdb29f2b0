#include "option_dictionary.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "olh/support.h"
#include "regular_file.h"
#include "retry.h"

namespace olh {

namespace {

// More than the INI reader needs before it looks whether it got any memory at all.
constexpr std::size_t kTakenForGranted = 16 * 1024;

void require_memory() {
  void* volatile const trial = std::calloc(1, kTakenForGranted);
  if (trial == nullptr) throw std::bad_alloc();
  std::free(trial);
}

bool may_write_into_files(std::uint64_t size) noexcept {
  rlimit limit = {};
  return getrlimit(RLIMIT_FSIZE, &limit) == 0 && size <= limit.rlim_cur;
}

// Copies to the end of `from`. Returns false when that cannot be read, has grown too large, or the copy finds no memory.
bool copy_all(int from, int to) noexcept {
  char block[4096];
  for (std::uint64_t size = 0;;) {
    const ssize_t got = retry_interrupted([&] { return read(from, block, sizeof block); });
    if (got <= 0) return got == 0;
    size += static_cast<std::uint64_t>(got);
    if (size > kLargestOptionFile || write(to, block, static_cast<std::size_t>(got)) != got) return false;
  }
}

// An empty file in memory with the name of `file`, which /proc then shows (of a name that is too long, the end).
UniqueFd make_copy_of(std::string_view file) noexcept {
  constexpr std::size_t kLongestName = 240;
  if (!may_write_into_files(kLargestOptionFile)) return {};
  const std::size_t left_out = file.size() > kLongestName ? file.size() - kLongestName : 0;
  return UniqueFd(memfd_create(file.data() + left_out, MFD_CLOEXEC));
}

// What is loaded of an open option file: a copy in memory, which nobody makes larger meanwhile. The file itself where
// the system has no such copies, or the process may not make one. Empty when the file cannot be read.
UniqueFd loadable(UniqueFd opened, const char* file) noexcept {
  UniqueFd copy = make_copy_of(file);
  if (!copy) return opened;
  return copy_all(opened.get(), copy.get()) ? std::move(copy) : UniqueFd();
}

// The INI reader opens a file by its name, and in the place of the one that was looked at a neighbour may have put a FIFO.
// So the name stands for the descriptor; without /proc there is none but the file's own.
dictionary* load(const UniqueFd& loaded, const char* file) {
  if (!loaded) return nullptr;
  const std::string name = "/proc/self/fd/" + std::to_string(loaded.get());
  require_memory();
  errno = 0;
  dictionary* const loaded_keys = iniparser_load(path_exists(name.c_str()) == 1 ? name.c_str() : file);
  if (errno != ENOMEM) return loaded_keys;
  if (loaded_keys != nullptr) iniparser_freedict(loaded_keys);  // keys are missing
  throw std::bad_alloc();
}

UniqueFd loadable_file(const char* file) noexcept {
  UniqueFd opened = path_exists(file) == 1 ? open_option_file(file) : UniqueFd();
  return opened ? loadable(std::move(opened), file) : UniqueFd();
}

UniqueFd loadable_text(std::string_view text) noexcept {
  UniqueFd copy = make_copy_of("options");
  const bool is_whole = copy && write(copy.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
  return is_whole ? std::move(copy) : UniqueFd();
}

}  // namespace

UniqueFd open_option_file(const char* file, int further_flags) noexcept {
  RegularFile opened = open_regular_file(file, AT_FDCWD, further_flags);
  return opened.size <= kLargestOptionFile ? std::move(opened.descriptor) : UniqueFd();
}

OptionDictionary::OptionDictionary(const char* file) : dictionary_(load(loadable_file(file), file)) {}

OptionDictionary::OptionDictionary(OptionText text) : dictionary_(load(loadable_text(text.text), "")) {}

OptionDictionary::~OptionDictionary() {
  if (dictionary_ != nullptr) iniparser_freedict(dictionary_);
}

const char* OptionDictionary::value_of(const char* key) const noexcept {
  return dictionary_ == nullptr ? nullptr : iniparser_getstring(dictionary_, key, nullptr);
}

}  // namespace olh
