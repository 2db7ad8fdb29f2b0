#include "browser_reach.h"

#include <algorithm>
#include <filesystem>

#include "browser_list.h"
#include "desktop_default.h"
#include "display.h"
#include "files.h"
#include "flatpak.h"
#include "platform.h"
#include "served_address.h"
#include "url.h"

namespace olh_viewers {

namespace {

constexpr std::size_t kLongestScript = 64 * 1024;
constexpr const char* kIsFlatpak = "it is a Flatpak";
constexpr std::string_view kRunFlatpak = "flatpak run";

// The text of a start script; "" of any other program.
std::string script_at(const std::string& program) {
  std::string text = text_of_file(program, kLongestScript).value_or("");
  return text.starts_with("#!") ? text : "";
}

// Every program of a snap is a link to the one that starts them. Distributions put a script in front of it.
bool is_snap(const std::string& program) {
  std::error_code failed;
  return program.starts_with("/snap/") || std::filesystem::canonical(program, failed).filename() == "snap" ||
         script_at(program).find("/snap/bin/") != std::string::npos;
}

bool is_flatpak(const std::string& program) {
  return program.find("/flatpak/exports/") != std::string::npos ||
         script_at(program).find(kRunFlatpak) != std::string::npos;
}

// An editor that shows a remote machine leads what $BROWSER gets to the machine where its window is.
bool leads_to_another_machine(const std::string& program) {
  const auto is_set = [](const char* name) { return !variable(name).empty(); };
  if (!is_set("VSCODE_IPC_HOOK_CLI") && !is_set("REMOTE_CONTAINERS") && !is_set("CODESPACES")) return false;
  const std::vector<Words> named = browser_list(variable(kListVariable));
  return std::any_of(named.begin(), named.end(),
                     [&program](const Words& words) { return find_program(words[0]) == program; });
}

// The browser's program, and the words that may name one.
Words programs_of(const Choice& browser) {
  Words programs = browser.exec;
  programs.insert(programs.begin(), browser.program);
  return programs;
}

bool is_on_windows_side(const Choice& browser) {
  const Words programs = programs_of(browser);
  return is_in_wsl() && std::any_of(programs.begin(), programs.end(), is_of_windows);
}

// The Flatpak's application, which its desktop entry or its start script names; "" of any other browser.
std::string application_of(const Choice& browser) {
  std::string application = flatpak_application(browser.exec);
  const std::string script = application.empty() ? script_at(browser.program) : "";
  if (const std::size_t run = script.find(kRunFlatpak); run != std::string::npos)
    application = flatpak_application(exec_words(script.substr(run)));
  return application;
}

bool asks_desktop(const Choice& browser) { return browser.row != nullptr && browser.row->asks_desktop; }

std::string barrier_before(const Choice& browser) {
  const Words programs = programs_of(browser);
  const auto is_any = [&programs](bool (*is_such)(const std::string&)) {
    return std::any_of(programs.begin(), programs.end(), is_such);
  };
  if (is_any(is_snap)) return "it is a Snap";
  if (std::find(programs.begin(), programs.end(), "run") != programs.end() || is_any(is_flatpak)) return kIsFlatpak;
  if (is_on_windows_side(browser)) return "it is on the Windows side";
  if (leads_to_another_machine(browser.program)) return "it is on the machine of the editor's window";
  return asks_desktop(browser) ? "it opens files by their path alone" : "";
}

}  // namespace

std::string fault_of_serve(const std::string& value) {
  const bool is_known = value.empty() || value == "auto" || value == "always" || value == "never";
  return is_known ? "" : "none of auto, always and never, and is ignored";
}

bool shows_elsewhere(const Choice& browser) {
  return browser && (is_on_windows_side(browser) || leads_to_another_machine(browser.program));
}

std::string name_of(const Choice& browser) {
  const std::string application = application_of(browser);
  return application.empty() ? browser.program : application;
}

Way way_to(const Choice& browser) {
  const std::string chosen = variable(kServeVariable);
  Way way = {barrier_before(browser), asks_desktop(browser) ? "may lose the place in" : "may not see", false, "", ""};
  const std::string application = way.barrier == kIsFlatpak ? application_of(browser) : "";
  if (chosen == "always") {
    way.is_served = true;
    way.why = way.barrier.empty() ? std::string(kServeVariable) + " is \"always\"" : way.barrier;
  } else if (way.barrier.empty()) {
    return way;
  } else if (chosen == "never") {
    way.why = std::string(kServeVariable) + " is \"never\"";
    way.cure = std::string("unset ") + kServeVariable;
  } else if (!application.empty() && !may_use_network(application)) {
    way.why = application + " may not use the network";
    way.cure = "flatpak override --user --share=network " + application;
  } else {
    way.is_served = true;
    way.why = way.barrier;
  }
  return way;
}

Choice choose_reader_within_reach() {
  Choice reader = choose_reader();
  if (has_display()) return reader;
  Choice browser = choose_browser();
  return shows_elsewhere(browser) ? browser : reader;
}

std::string address_for(const Choice& browser, const std::string& url, const Trace& trace) {
  if (!is_file_url(url)) return url;
  const std::string chosen = variable(kServeVariable);
  if (const std::string fault = fault_of_serve(chosen); !fault.empty())
    trace.complain("note: " + std::string(kServeVariable) + " is " + command_line({chosen}) + ", " + fault + ".");
  const Way way = way_to(browser);
  std::string said;
  std::string served = way.is_served ? served_address(url, said) : "";
  if (!served.empty()) {
    trace.note("served, since " + way.why);
    return served;
  }
  if (way.is_served) trace.complain("note: the page is not served: " + said + ".");
  if (!way.barrier.empty())
    trace.complain("note: " + name_of(browser) + " " + way.effect + " " + file_of(url) + ", since " + way.barrier +
                   (way.is_served ? "." : ". The page is not served, since " + way.why + "."));
  return url;
}

}  // namespace olh_viewers
