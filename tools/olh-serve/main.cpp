// olh-serve: documentation roots over HTTP, for this machine alone.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>

#include "child.h"
#include "command_line.h"
#include "files.h"
#include "page_server.h"
#include "serve_background.h"
#include "serve_roots.h"
#include "visible.h"

namespace {

constexpr const char* kExamples =
    "Examples:\n"
    "  olh serve                                    the roots of the search path\n"
    "  olh serve --reload docs --open handbook      the manual of 'olh new docs handbook' while it is written\n"
    "Only this machine can ask, and only with the addresses that are printed.\n"
    "Exit code: 0 ended with Ctrl-C, 2 the port cannot be opened, 4 no root or no such document, 64 wrong use.\n";

enum ExitCode : int { kFailed = 2, kNotFound = 4 };

struct Arguments {
  std::vector<std::string> roots;
  std::vector<std::string> document;
  int port = 0;
  bool reload = false;
  bool background = false;
};

int complain(int code, const std::string& sentence) {
  std::fprintf(stderr, "olh-serve: %s\n", olh_viewers::visible(sentence).c_str());
  return code;
}

int serve(const Arguments& asked) {
  const std::vector<olh_viewers::ServedRoot> roots = olh_serve::roots_to_serve(asked.roots);
  if (roots.empty()) return complain(kNotFound, "there is no documentation root on this machine; name one.");
  for (const olh_viewers::ServedRoot& root : roots)
    if (std::error_code failed; !std::filesystem::is_directory(root.path, failed))
      return complain(kNotFound, root.path + " is not a directory.");
  olh_serve::PageServerOptions options;
  options.roots = [&roots] { return std::vector(roots); };
  options.reload = asked.reload;
  olh_serve::PageServer server(std::move(options));
  const std::string address = server.bind(asked.port);
  if (address.empty()) return complain(kFailed, "the port " + std::to_string(asked.port) + " cannot be opened.");
  for (const olh_viewers::ServedRoot& root : roots)
    std::printf("%s/%s/  %s\n", address.c_str(), root.token.c_str(), olh_viewers::visible(root.path).c_str());
  if (!asked.document.empty()) {
    const std::string document = olh_serve::address_of_document(asked.document, roots, address);
    if (document.empty())
      return complain(kNotFound, "there is no document \"" + asked.document[0] + "\" in these roots.");
    std::printf("%s\n", document.c_str());
    std::string said;
    olh_viewers::start_and_watch({olh_viewers::find_beside("olh-browser"), document}, 0, said);
  }
  std::fflush(stdout);
  for (const int end : {SIGINT, SIGTERM}) std::signal(end, [](int) { std::_Exit(0); });
  server.run();
  return 0;
}

int run(int argc, char** argv) {
  Arguments asked;
  olh::CommandLine words("olh serve", "Serve documentation roots to the browsers of this machine.", kExamples,
                         [] { return "olh-serve " OLH_PACKAGE_VERSION; });
  const olh::Verb program = words.program();
  program.option("ROOT", asked.roots, "Documentation roots; all local ones of the search path by default")
      .value_named("");
  program.option("--port", asked.port, "The port; any free one by default").value_named("PORT").in_range(1, 65535);
  program.option("--open", asked.document, "Open this document in the browser, at this place")
      .value_named("DOC [TAG]")
      .values(1, 2);
  program.flag("--reload", asked.reload, "An open page loads itself again when a file of its manual changes");
  program.flag("--background", asked.background, "").hidden();
  program.action([&asked] { return asked.background ? olh_serve::serve_in_background() : serve(asked); });
  return words.run(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    return complain(kFailed, error.what());
  }
}
