#include "served_address.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "child.h"
#include "files.h"
#include "serve_state.h"
#include "url.h"

namespace olh_viewers {

namespace {

constexpr int kMillisecondsForLock = 3000;
constexpr int kMillisecondsToStart = 5000;

std::string normal_file_of(const std::string& url) {
  return std::filesystem::path(file_of(url)).lexically_normal().string();
}

// The address of the server, which is started if need be.
std::string server_address(const ServeState& state, std::string& said) {
  if (std::string address = state.address(); !address.empty()) return address;
  const std::string program = find_beside(kServer);
  if (program.empty()) {
    said = "there is no olh-serve";
    return "";
  }
  if (!output_of({program, "--background"}, "", kMillisecondsToStart)) said = program + " does not start";
  return state.address();
}

}  // namespace

//   file                                        root
//   /opt/x/docs/htmldocs/guide/index.htm        /opt/x/docs
//   /opt/x/docs/tomedecks/index.html            /opt/x/docs
//   /opt/x/docs/index.html                      /opt/x/docs
//   /home/u/page.htm                            /home/u
//   /htmldocs/guide/index.htm                   /htmldocs/guide: never all of the disk
std::string root_of_file(const std::string& file) {
  constexpr std::array kFolders = {"/htmldocs/", "/tomedecks/", "/pdfdocs/", "/system_admin_docs/"};
  std::size_t end = std::string::npos;
  for (const char* folder : kFolders) end = std::min(end, file.find(folder));
  if (end == 0 || end == std::string::npos) end = file.rfind('/');
  return file.substr(0, end);
}

std::string served_path(const ServedRoot& root, const std::string& url) {
  std::string path = "/" + root.token;
  for (const std::string& name : pieces_of(normal_file_of(url).substr(root.path.size()), '/'))
    path += "/" + percent_encoded(name);
  return path + url.substr(without_query_and_fragment(url).size());
}

std::string served_address(const std::string& url, std::string& said) {
  const std::string root = root_of_file(normal_file_of(url));
  if (root.empty()) {
    said = "its folder is that of the whole disk";
    return "";
  }
  const ServeState state(said);
  const LockedFile lock = state ? state.lock(kMillisecondsForLock) : LockedFile();
  if (!lock) {
    if (state) said = "another start of olh-serve does not end";
    return "";
  }
  const std::string address = server_address(state, said);
  const std::string token = address.empty() ? "" : state.token_of(root);
  if (token.empty()) {
    if (said.empty()) said = "olh-serve cannot be given " + root;
    return "";
  }
  return address + served_path({token, root}, url);
}

}  // namespace olh_viewers
