#include "stems.h"

#include <libstemmer.h>

#include <algorithm>
#include <sstream>
#include <unordered_set>

namespace olh_index {

namespace {

constexpr const char* kEnglish =
    "a about an and any are as at be because been but by can could did do does for from had has have he her here him "
    "his "
    "how i if in into is it its itself just may me might more most must my no nor not of off on once only or other "
    "our out "
    "over own s same shall she should so some such t than that the their them then there these they this those to "
    "too "
    "under until up us very was we were what when where which while who whom why will with would you your";

const std::unordered_set<std::string_view>& english() {
  static const std::unordered_set<std::string_view> words = [] {
    std::unordered_set<std::string_view> all;
    for (std::string_view rest = kEnglish; !rest.empty();) {
      const std::string_view word = rest.substr(0, rest.find(' '));
      all.insert(word);
      rest.remove_prefix(std::min(word.size() + 1, rest.size()));
    }
    return all;
  }();
  return words;
}

}  // namespace

void Stems::Free::operator()(sb_stemmer* stemmer) const { sb_stemmer_delete(stemmer); }

Stems::Stems() = default;
Stems::~Stems() = default;

void Stems::set_language(const std::string& language) {
  const std::string code = language.substr(0, language.find_first_of("-_"));
  const auto [found, is_new] = known_.try_emplace(code);
  if (is_new) found->second.reset(sb_stemmer_new(code.c_str(), nullptr));
  stemmer_ = found->second.get();
  is_english_ = code == "en";
  was_english_ |= is_english_;
}

std::string Stems::stem_of(const std::string& word) const {
  const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80; };
  if (stemmer_ == nullptr || !std::ranges::all_of(word, is_letter)) return word;
  const auto* bytes = reinterpret_cast<const sb_symbol*>(word.data());
  const sb_symbol* stem = sb_stemmer_stem(stemmer_, bytes, static_cast<int>(word.size()));
  if (stem == nullptr) return word;
  return {reinterpret_cast<const char*>(stem), static_cast<std::size_t>(sb_stemmer_length(stemmer_))};
}

bool Stems::is_common(std::string_view word) const { return is_english_ && english().contains(word); }

std::string Stems::common_words() const { return was_english_ ? kEnglish : ""; }

}  // namespace olh_index
