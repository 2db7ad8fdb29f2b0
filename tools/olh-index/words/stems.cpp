#include "stems.h"

#include <libstemmer.h>

#include <algorithm>
#include <string_view>

#include "common_words.h"
#include "index_pieces.h"

namespace olh_index {

void Stems::Free::operator()(sb_stemmer* stemmer) const { sb_stemmer_delete(stemmer); }

Stems::Stems() = default;
Stems::~Stems() = default;

void Stems::set_language(const std::string& language) {
  const std::string code = language.substr(0, language.find_first_of("-_"));
  const auto [found, is_new] = known_.try_emplace(code);
  if (is_new) found->second.reset(sb_stemmer_new(code.c_str(), nullptr));
  stemmer_ = found->second.get();
  is_english_ = code == "en";
  const std::vector<std::string> words = olh_search::words_with_blanks(common_words_of(code));
  common_ = {words.begin(), words.end()};
  all_common_.insert(words.begin(), words.end());
}

namespace {

// English words in -ant name something of their own: "determinant" is no form of "determine", nor "important" of "import".
std::string_view name_in_ant(std::string_view word) {
  if (word.ends_with('s')) word.remove_suffix(1);
  return word.ends_with("ant") ? word : std::string_view();
}

}  // namespace

std::string Stems::stem_of(const std::string& word) const {
  if (const std::string_view name = is_english_ ? name_in_ant(word) : ""; !name.empty()) return std::string(name);
  const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80; };
  if (stemmer_ == nullptr || !std::ranges::all_of(word, is_letter)) return word;
  const auto* bytes = reinterpret_cast<const sb_symbol*>(word.data());
  const sb_symbol* stem = sb_stemmer_stem(stemmer_, bytes, static_cast<int>(word.size()));
  if (stem == nullptr) return word;
  return {reinterpret_cast<const char*>(stem), static_cast<std::size_t>(sb_stemmer_length(stemmer_))};
}

std::string Stems::common_words() const {
  std::string all;
  for (const std::string& word : all_common_) all += (all.empty() ? "" : " ") + word;
  return all;
}

}  // namespace olh_index
