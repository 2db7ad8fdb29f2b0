#include "option_dictionary.h"

#include <sys/stat.h>

#include <utility>

#include "olh/support.h"

namespace olh {

namespace {

constexpr off_t kLargestOptionFile = 256 * 1024;

// The descriptor is gone before the INI reader opens the file itself: what is asked here is only whether it may.
bool is_loadable(const char* file) noexcept {
  return path_exists(file) == 1 && static_cast<bool>(open_option_file(file));
}

}  // namespace

UniqueFd open_option_file(const char* file) noexcept {
  UniqueFd opened = open_regular_file(file);
  struct stat status = {};
  const bool readable = opened && fstat(opened.get(), &status) == 0 && status.st_size <= kLargestOptionFile;
  return readable ? std::move(opened) : UniqueFd();
}

OptionDictionary::OptionDictionary(const char* file) noexcept
    : dictionary_(is_loadable(file) ? iniparser_load(file) : nullptr) {}

OptionDictionary::~OptionDictionary() {
  if (dictionary_ != nullptr) iniparser_freedict(dictionary_);
}

const char* OptionDictionary::value_of(const char* key) const noexcept {
  return dictionary_ == nullptr ? nullptr : iniparser_getstring(dictionary_, key, nullptr);
}

}  // namespace olh
