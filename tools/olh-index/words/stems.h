// Words of one stem: "configure", "configured", "configuring".
//
// Knows    which languages libstemmer has.
// For      vocabulary.
#ifndef OLH_TOOLS_INDEX_STEMS_H
#define OLH_TOOLS_INDEX_STEMS_H

#include <map>
#include <memory>
#include <set>
#include <string>
#include <unordered_set>

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
  bool is_common(const std::string& word) const { return common_.contains(word); }

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
  std::unordered_set<std::string> common_;  // of the language at present
  std::set<std::string> all_common_;
};

}  // namespace olh_index

#endif
