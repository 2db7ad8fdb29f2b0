// Words of one stem: "configure", "configured", "configuring".
//
// Knows    which languages libstemmer has, and the words of a language that everybody uses and nobody looks for.
// For      vocabulary.
#ifndef OLH_TOOLS_INDEX_STEMS_H
#define OLH_TOOLS_INDEX_STEMS_H

#include <map>
#include <memory>
#include <string>
#include <string_view>

struct sb_stemmer;

namespace olh_index {

class Stems {
 public:
  Stems();
  ~Stems();
  Stems(const Stems&) = delete;
  Stems& operator=(const Stems&) = delete;

  // The language of the words to come: "en", "de-AT"; one that is not known has no stems.
  void set_language(const std::string& language);
  // The stem of a word in small letters; words that are not letters alone are their own.
  std::string stem_of(const std::string& word) const;
  // Whether a word says too little to be looked for in running text.
  bool is_common(std::string_view word) const;

  bool is_english() const { return is_english_; }

  // The common words of all languages so far, with a blank between two.
  std::string common_words() const;

 private:
  struct Free {
    void operator()(sb_stemmer* stemmer) const;
  };
  std::map<std::string, std::unique_ptr<sb_stemmer, Free>> known_;
  sb_stemmer* stemmer_ = nullptr;
  bool is_english_ = false;
  bool was_english_ = false;
};

}  // namespace olh_index

#endif
