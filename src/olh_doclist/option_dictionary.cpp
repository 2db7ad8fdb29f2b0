#include "option_dictionary.h"

#include <utility>

#include "olh/support.h"
#include "regular_file.h"

namespace olh {

namespace {

// The descriptor is gone before the INI reader opens the file itself: what is asked here is only whether it may.
bool is_loadable(const char* file) noexcept {
  return path_exists(file) == 1 && static_cast<bool>(open_option_file(file));
}

}  // namespace

UniqueFd open_option_file(const char* file, int further_flags) noexcept {
  RegularFile opened = open_regular_file(file, AT_FDCWD, further_flags);
  return opened.size <= kLargestOptionFile ? std::move(opened.descriptor) : UniqueFd();
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
