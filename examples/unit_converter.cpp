// A command-line tool whose "help" words lead into its manual: converts units, and helps with the unit in question.
#include <iostream>
#include <map>
#include <olh/olh.hpp>
#include <string>

namespace {

const std::string kManual = "olh_manual";

struct Unit {
  double metres;
  std::string topic;  // of the manual
};

const std::map<std::string, Unit> kUnits = {
    {"inch", {0.0254, "quick_start"}}, {"mile", {1609.344, "search_path"}}, {"fathom", {1.8288, "viewers"}}};

// Shows the help for a unit, or the start of the manual when the manual knows nothing of it.
int help(const std::string& unit) {
  const auto found = kUnits.find(unit);
  std::string topic = found == kUnits.end() ? "" : found->second.topic;
  if (const olh::Result known = olh::test(kManual, topic); known.code() == OLH_RESULT_NO_TOPIC) topic.clear();
  const olh::Result shown = olh::show(kManual, topic);
  if (!shown) std::cerr << shown.message() << '\n';
  return shown.code();
}

// Says where help would come from, for a bug report.
int about() {
  const olh::Text root = olh::doc_path();
  const olh::Text browser = olh::viewer_path(olh::Viewer::kHtml);
  std::cout << "documentation: " << (root ? root.text() : "none") << '\n'
            << "browser:       " << (browser ? browser.text() : "none") << '\n'
            << "library:       " << olh::version() << '\n';
  return 0;
}

int convert(const std::string& number, const std::string& name) {
  const auto unit = kUnits.find(name);
  if (unit == kUnits.end()) {
    std::cerr << name << " is no unit; try \"help\"\n";
    return 64;
  }
  std::cout << std::stod(number) * unit->second.metres << " m\n";
  return 0;
}

}  // namespace

int main(int argc, char** argv) try {
  const std::string first = argc > 1 ? argv[1] : "help";
  const std::string second = argc > 2 ? argv[2] : "";
  if (first == "help") return help(second);
  if (first == "about") return about();
  return convert(first, second);
} catch (const std::exception& error) {
  std::cerr << "not a number: " << argv[1] << " (" << error.what() << ")\n";
  return 64;
}
