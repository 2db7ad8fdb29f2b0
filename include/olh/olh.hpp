// libolh for C++17 and later: the entry points of olh.h with std::string and a result type. Header only.
//
// A result says what happened by itself:
//
//   if (olh::Result shown = olh::show("manual", "getting_started"); !shown)
//     std::cerr << shown.message() << '\n';
//
// The conventions of olh.h hold here too. A text that holds a NUL is refused with OLH_RESULT_INVALID: never cut.
// The functions throw nothing but std::bad_alloc.
#ifndef OLH_OLH_HPP
#define OLH_OLH_HPP

#include <initializer_list>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "olh/dmerge.h"
#include "olh/olh.h"

namespace olh {

// What a call came to. True when it did what was asked.
class [[nodiscard]] Result {
 public:
  constexpr explicit Result(int code = OLH_RESULT_OK) noexcept : code_(code) {}
  constexpr int code() const noexcept { return code_; }
  constexpr explicit operator bool() const noexcept { return code_ == OLH_RESULT_OK; }
  // A sentence for the user of the program, to be shown as it is.
  constexpr const char* message() const noexcept {
    switch (code_) {
      case OLH_RESULT_OK:
        return "Done.";
      case OLH_RESULT_FAILED:
        return "The program that shows the documentation did not open it.";
      case OLH_RESULT_INVALID:
        return "No document was named.";
      case OLH_RESULT_NOT_FOUND:
        return "The documentation was not found. Perhaps it is not installed.";
      case OLH_RESULT_IO:
        return "The PDF reader did not open the documentation, or a setting could not be stored.";
      case OLH_RESULT_NO_TOPIC:
        return "The documentation has no such topic.";
      case OLH_RESULT_NO_PROGRAM:
        return "There is no program that could show the documentation.";
      default:
        return "The documentation could not be shown.";
    }
  }

 private:
  int code_;
};

// A result with the text that was asked for, "" when it is false.
class [[nodiscard]] Text : public Result {
 public:
  Text(int code, std::string text) : Result(code), text_(code == OLH_RESULT_OK ? std::move(text) : std::string()) {}
  const std::string& text() const noexcept { return text_; }

 private:
  std::string text_;
};

enum class Viewer {
  kPortal = OLH_VIEWER_TOMEDECK,
  kConfigured = OLH_VIEWER_DEFAULT,
  kPdf = OLH_VIEWER_PDF,
  kHtml = OLH_VIEWER_HTML
};
enum class Display { kNormal = OLH_DISPLAY_NORMAL, kTopic = OLH_DISPLAY_TOPIC, kPopup = OLH_DISPLAY_POPUP };

namespace detail {

inline bool whole(std::initializer_list<const std::string*> texts) {
  for (const std::string* text : texts)
    if (text->find('\0') != std::string::npos) return false;
  return true;
}

template <typename Function>
Result call(std::initializer_list<const std::string*> texts, Function function) {
  return Result(whole(texts) ? function() : static_cast<int>(OLH_RESULT_INVALID));
}

template <typename Function>
Text text_of(Function function) {
  char buffer[OLH_BUFFER_SIZE] = "";
  const int code = function(buffer);
  return Text(code, buffer);
}

// Where the present run of the generator notes its lists: the callback has no argument of its own. A list that
// cannot be noted, since there is no memory, is written all the same.
inline std::vector<std::string>*& noted_lists() {
  static std::vector<std::string>* lists = nullptr;
  return lists;
}

extern "C" inline int olh_hpp_note_list(char* path) noexcept {
  try {
    noted_lists()->emplace_back(path);
  } catch (const std::bad_alloc&) {
    return 1;
  }
  return 0;
}

}  // namespace detail

// ---- showing help: as OlhHelpCall, OlhHelpTest, OlhTomeDeck, OlhBookcase, OlhSearch ----

inline Result show(const std::string& document, const std::string& topic = {}, Display display = Display::kNormal) {
  return detail::call({&document, &topic},
                      [&] { return OlhHelpCall(document.c_str(), topic.c_str(), static_cast<int>(display)); });
}
inline Result test(const std::string& document, const std::string& topic = {}) {
  return detail::call({&document, &topic}, [&] { return OlhHelpTest(document.c_str(), topic.c_str()); });
}
inline Result portal(const std::string& name = {}, const std::string& tab = {}) {
  return detail::call({&name, &tab}, [&] { return OlhTomeDeck(name.c_str(), tab.c_str()); });
}
inline Result bookcase(const std::string& name = {}, const std::string& destination = {}) {
  return detail::call({&name, &destination}, [&] { return OlhBookcase(name.c_str(), destination.c_str()); });
}
inline Result search(const std::string& query, const std::string& scope = {}) {
  return detail::call({&query, &scope}, [&] { return OlhSearch(query.c_str(), scope.c_str()); });
}

// ---- viewers ----

inline Viewer current_viewer() noexcept { return static_cast<Viewer>(OlhGetCurrentViewer()); }
inline void set_viewer(Viewer viewer, bool start = false) noexcept {
  OlhSetViewer(static_cast<int>(viewer), start ? 1 : 0);
}
inline Result set_viewer_order(const std::string& order) {
  return detail::call({&order}, [&] { return OlhSetViewerOrder(order.c_str()); });
}
inline bool is_running(Viewer viewer) noexcept {
  return OlhIsViewerRunning(static_cast<int>(viewer)) == OLH_RESULT_OK;
}
inline Text viewer_path(Viewer viewer) {
  return detail::text_of([&](char* buffer) { return OlhGetViewerPath(static_cast<int>(viewer), buffer); });
}
// The user's program; "" forgets it.
inline Result set_viewer_path(Viewer viewer, const std::string& program) {
  return detail::call({&program}, [&] { return OlhSetViewerPath(static_cast<int>(viewer), program.c_str()); });
}
// The program of the whole documentation tree; "" forgets it.
inline Result set_tree_viewer_path(Viewer viewer, const std::string& program) {
  return detail::call({&program}, [&] { return OlhSetAltViewerPath(static_cast<int>(viewer), program.c_str()); });
}

// ---- documentation roots: lists are separated by ":" ----

inline Result set_doc_path(const std::string& roots) {
  return detail::call({&roots}, [&] { return OlhSetDocPath(roots.c_str()); });
}
inline Text doc_path() { return detail::text_of(OlhGetDocPath); }
inline Result set_alt_doc_path(const std::string& roots) {
  return detail::call({&roots}, [&] { return OlhSetAltDocPath(roots.c_str()); });
}
inline Text alt_doc_path() { return detail::text_of(OlhGetAltDocPath); }

// Makes the lists of a root, "" for the first one of the search path, and adds the path of each to `written`.
inline Result make_lists(const std::string& root, std::vector<std::string>* written = nullptr) {
  return detail::call({&root}, [&] {
    detail::noted_lists() = written;
    return OlhDmerge(root.c_str(), written != nullptr ? detail::olh_hpp_note_list : nullptr);
  });
}

inline std::string version() { return OlhVersion(); }

}  // namespace olh

#endif
