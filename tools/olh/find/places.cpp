// The order of tries, for a name N (B is N without ".pdf", F is N with it) over the roots R:
//
//   HTML lookup, a directory R   R/htmldocs/B/index.htm, R/htmldocs/B/B.htm, R/tomedecks/B/index.html,
//                                R/pdfdocs/F, R/system_admin_docs/F, F in the current directory
//   HTML lookup, a URL R         R/htmldocs/B/index.htm, R/tomedecks/B/index.html,
//                                R/pdfdocs/F, R/system_admin_docs/F, F in the current directory
//   after all roots              N in the current directory, unless N ends in ".pdf"
//   PDF lookup, a directory R    R/pdfdocs/F, R/system_admin_docs/F
//   PDF lookup, a URL R          R/pdfdocs/F, R/system_admin_docs/F, R/htmldocs/B/index.htm,
//                                R/tomedecks/B/index.html, N in the current directory as above
//   after all roots              F in the current directory
//   portal lookup, any R         R/tomedecks/N/index.html, shown through R/tomedecks/index.html?tomedeck=N
//
// A name with a slash is tried as a path first: a directory stands for its "index.htm".
#include "places.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>

#include "olh/support.h"
#include "shared.h"

namespace olh {

namespace {

constexpr const char* kFileScheme = "file://";

std::string with_slashes(const std::string& path) {
  std::string text = path;
  dirslash(text.data());
  text.resize(std::strlen(text.c_str()));
  return text;
}

class PlaceList {
 public:
  PlaceList(std::string name, const std::vector<std::string>& roots)
      : name_(std::move(name)),
        base_(without_pdf(name_)),
        file_(with_pdf(name_)),
        by_path_(is_path_or_url(name_)),
        roots_(roots) {}

  void portal_lookup() {
    for (const std::string& root : roots_)
      add(page(root) + "/tomedecks/index.html?tomedeck=" + name_, root + "/tomedecks/" + name_ + "/index.html",
          OLH_VIEWER_TOMEDECK, root);
  }

  void html_lookup() {
    if (is_web_root(name_)) return add(with_slashes(name_), "", OLH_VIEWER_HTML, "");
    if (by_path_) given_page();
    for (const std::string& root : roots_) {
      html_forms(root);
      pdf_forms(root);
      pdf_here();
    }
    html_here();
  }

  void pdf_lookup() {
    if (by_path_) add(with_slashes(name_), with_slashes(name_), OLH_VIEWER_PDF, "");
    for (const std::string& root : roots_) {
      pdf_forms(root);
      if (!is_web_root(root)) continue;
      html_forms(root);
      html_here();
    }
    pdf_here();
  }

  std::vector<Place> places() && { return std::move(places_); }

 private:
  // What a page below a root begins with in the browser.
  static std::string page(const std::string& root) { return is_web_root(root) ? root : kFileScheme + root; }

  void given_page() {
    const std::string path = with_slashes(name_);
    const std::string index = path + "/index.htm";
    add(kFileScheme + index, index, OLH_VIEWER_HTML, "");
    add(kFileScheme + path, path, OLH_VIEWER_HTML, "");
  }

  void html_forms(const std::string& root) {
    const std::string manual = root + "/htmldocs/" + base_ + "/";
    add_page(manual + "index.htm", root);
    if (!is_web_root(root)) add_page(manual + base_ + ".htm", root);
    add_page(root + "/tomedecks/" + base_ + "/index.html", root);
  }

  void add_page(const std::string& file, const std::string& root) {
    add(is_web_root(root) ? file : kFileScheme + file, file, OLH_VIEWER_HTML, root);
  }

  void pdf_forms(const std::string& root) {
    for (const char* directory : {"/pdfdocs/", "/system_admin_docs/"})
      add(root + directory + file_, root + directory + file_, OLH_VIEWER_PDF, root);
  }

  void pdf_here() { add(file_, file_, OLH_VIEWER_PDF, ""); }

  void html_here() {
    std::error_code failed;
    const std::string here = std::filesystem::current_path(failed).string();
    if (failed || ends_in_any_pdf(name_)) return;
    add(kFileScheme + here + "/" + name_, name_, OLH_VIEWER_HTML, "");
  }

  void add(const std::string& location, const std::string& tested, OlhViewer kind, const std::string& root) {
    const auto same = [&](const Place& place) { return place.location == location; };
    if (std::none_of(places_.begin(), places_.end(), same)) places_.push_back({location, tested, kind, root});
  }

  std::string name_;
  std::string base_;
  std::string file_;
  bool by_path_;
  const std::vector<std::string>& roots_;
  std::vector<Place> places_;
};

}  // namespace

std::vector<Place> places_of(const std::string& document, OlhViewer preferred,
                             const std::vector<std::string>& roots) {
  PlaceList list(document, roots);
  if (is_path_or_url(document)) {
    const bool as_pdf = !is_web_root(document) && ends_in_any_pdf(document);
    as_pdf ? list.pdf_lookup() : list.html_lookup();
    return std::move(list).places();
  }
  if (is_portal_name(document)) list.portal_lookup();
  if (preferred == OLH_VIEWER_PDF) list.pdf_lookup();
  list.html_lookup();
  if (preferred != OLH_VIEWER_PDF) list.pdf_lookup();
  return std::move(list).places();
}

bool is_path_or_url(const std::string& document) { return document.find_first_of("/\\") != std::string::npos; }

bool is_portal_name(const std::string& document) { return document.size() >= 3 && document.ends_with("_td"); }

bool ends_in_pdf(const std::string& location) { return location.size() > 4 && location.ends_with(".pdf"); }

bool ends_in_any_pdf(std::string name) {
  downcase(name.data());
  return name.ends_with(".pdf");
}

std::string without_pdf(const std::string& name) {
  return ends_in_any_pdf(name) ? name.substr(0, name.size() - 4) : name;
}

std::string with_pdf(const std::string& name) { return ends_in_any_pdf(name) ? name : name + ".pdf"; }

const char* kind_name(OlhViewer kind) {
  return kind == OLH_VIEWER_PDF ? "pdf" : kind == OLH_VIEWER_TOMEDECK ? "portal" : "html";
}

}  // namespace olh
