#include "arranged_topics.h"

#include <algorithm>
#include <unordered_map>

#include "carried_text.h"
#include "notes.h"
#include "topic_table.h"

namespace olh_import {

namespace {

// A name as a person reads it, where the table can hold it; else what the library sees of it.
std::string written_name(const std::string& name) {
  return name == carried_topic_title(name) ? name : olh_viewers::normal_topic(name);
}

class Arranging {
 public:
  Arranging(const SourceTree& pages, const std::function<std::string(const Topic&)>& title_at)
      : pages_(pages), title_at_(title_at) {}

  void take(const Topic& topic) {
    const std::string address = address_of(topic.page, topic.place);
    if (!pages_.has(topic.page))
      return without_page_.push_back(topic.name + " to " + (topic.page.empty() ? "a place outside" : topic.page));
    if (address.size() > kLongestAddress || topic.name.size() > kLongestName) return too_long_.push_back(topic.name);
    if (olh_viewers::normal_topic(topic.name).empty()) return unnameable_.push_back(topic);
    const auto taken = lines_of_names_.find(olh_viewers::normal_topic(topic.name));
    if (taken == lines_of_names_.end()) return write(topic.name, address, topic);
    const std::string& kept = made_.lines[taken->second].address;
    if (kept == address) return;
    made_.same_names.push_back({topic.name, kept, address});
    // Each page has a line of its own: it carries its title and its text to the search.
    if (topic.rank == Rank::kPage) write(free_name(topic.name + "-page"), address, topic);
  }

  // Names that are made up come last: none of them takes the name of a page.
  ArrangedTopics finished() {
    std::vector<std::string> unnameable;
    for (const Topic& topic : unnameable_) {
      unnameable.push_back(topic.name);
      write(free_name(name_of_page(topic.page)), address_of(topic.page, topic.place), topic);
    }
    std::vector<std::string> same;
    for (const SameName& one : made_.same_names)
      same.push_back(one.name + ": " + one.kept + " and not " + one.left_out);
    tell(made_.notes, "names that the library cannot tell from earlier ones, left out", same);
    tell(made_.notes, "topics of pages that are not there, left out", without_page_);
    tell(made_.notes, "topics with too long a name or place, left out", too_long_);
    tell(made_.notes, "names without a letter or digit, named after their page", unnameable);
    return std::move(made_);
  }

 private:
  void write(const std::string& name, const std::string& address, const Topic& topic) {
    lines_of_names_.emplace(olh_viewers::normal_topic(name), made_.lines.size());
    made_.lines.push_back({written_name(name), address, carried_topic_title(title_at_(topic))});
  }

  // Numbers that were tried for a name are not tried again: a page may have a million places without a letter.
  std::string free_name(const std::string& wanted) {
    std::string name = wanted;
    int& number = numbers_.try_emplace(wanted, 2).first->second;
    while (olh_viewers::normal_topic(name).empty() || is_taken(name)) name = wanted + "-" + std::to_string(number++);
    return name;
  }
  bool is_taken(const std::string& name) const { return lines_of_names_.contains(olh_viewers::normal_topic(name)); }

  const SourceTree& pages_;
  const std::function<std::string(const Topic&)>& title_at_;
  std::unordered_map<std::string, std::size_t> lines_of_names_;
  std::unordered_map<std::string, int> numbers_;  // the next one to try behind a name
  ArrangedTopics made_;
  std::vector<std::string> without_page_;
  std::vector<std::string> too_long_;
  std::vector<Topic> unnameable_;
};

// Of topics of one rank that the library cannot tell from each other the first wins: one that is written as the library sees it
// takes the place of one that is not. "QHashIterator" is that class, and not "QHash::Iterator".
void put_exact_names_first(std::vector<Topic>& topics) {
  std::unordered_map<std::string, std::size_t> inexact;
  Rank rank = Rank{};
  for (std::size_t at = 0; at < topics.size(); ++at) {
    if (topics[at].rank != rank) inexact.clear();
    rank = topics[at].rank;
    std::string seen = olh_viewers::normal_topic(topics[at].name);
    if (seen.size() != topics[at].name.size()) {
      inexact.try_emplace(std::move(seen), at);
    } else if (const auto found = inexact.find(seen); found != inexact.end()) {
      std::swap(topics[found->second], topics[at]);
      inexact.erase(found);
    }
  }
}

}  // namespace

// Only pages are asked for, and each of their names has an ending.
std::string name_of_page(std::string_view page) { return std::string(page.substr(0, page.rfind('.'))); }

ArrangedTopics arranged_topics(std::vector<Topic> topics, const SourceTree& pages,
                               const std::function<std::string(const Topic&)>& title_at) {
  std::ranges::stable_sort(topics, {}, &Topic::rank);
  put_exact_names_first(topics);
  Arranging arranging(pages, title_at);
  for (Topic& topic : topics) {
    const Topic taken = std::move(topic);  // its memory goes with it
    arranging.take(taken);
  }
  return arranging.finished();
}

}  // namespace olh_import
