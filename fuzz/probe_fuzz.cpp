// A URL from anywhere and the reply of any server, in pieces: what is sent and what counts as an answer.
#include <algorithm>
#include <cstdlib>

#include "fuzz.h"
#include "olh_doclist.h"
#include "web.h"

namespace {

struct Split {
  int result;
  std::string host;
  int port;
  std::string path;
};

Split split(olh_docList& locator, const std::string& url) {
  char host[512] = "";
  char path[512] = "";
  int port = 0;
  const int result = locator.ParseURL(url.c_str(), host, &port, path);
  return {result, host, port, path};
}

// A port is the number behind the first ":" before the path, whether or not a server can have it; 80 without one.
void check_split(const std::string& url, const Split& parts) {
  expect(url.starts_with("http:") && parts.path[0] == '/', "a URL and a path");
  const std::string rest = url.substr(url.find("//") + 2);
  const std::string behind = rest.substr(parts.host.size(), rest.find('/') - parts.host.size());
  expect(parts.host.find_first_of("/:") == std::string::npos, "no host holds a port or a path");
  expect(parts.host + behind + parts.path == rest.substr(0, 2048 - (url.size() - rest.size())), "nothing is lost");
  const bool is_number = behind.size() > 1 && std::isdigit(static_cast<unsigned char>(behind[1])) != 0;
  if (is_number)
    expect(parts.port == std::min(std::strtoll(behind.c_str() + 1, nullptr, 10), 2147483647LL),
           "the port is the number");
  else
    expect(parts.port == 80 || behind.starts_with(":-"), "the usual port");
}

// The first piece of the reply that holds the version decides. Returns the answer and how much has to be read for it.
std::pair<int, std::size_t> judged(const std::string& reply, std::size_t piece) {
  for (std::size_t at = 0; at < reply.size(); at += piece) {
    const std::string text = reply.substr(at, piece).c_str();  // up to a NUL
    const auto has = [&text](const char* words) { return text.find(words) != std::string::npos; };
    if (has("HTTP/1.1"))
      return {!has("HTTP/1.1 404 Not Found") && has("HTTP/1.1 200 OK"), std::min(at + piece, reply.size())};
  }
  return {0, reply.size()};
}

}  // namespace

void try_input(const std::string& input) {
  const std::vector<std::string> parts = parts_of(input, 3);
  const std::string url = parts[0].c_str();
  const std::size_t piece = parts[1].empty() ? 10000 : static_cast<unsigned char>(parts[1][0]) + 1U;
  olh_docList locator;
  const Split known = split(locator, url);
  if (known.result == 1) check_split(url, known);
  answer_with(parts[2], piece);
  const int found = locator.ValidURL(url.c_str());
  if (web.sent.empty()) {
    expect(found == 0 && web.read == 0, "nobody who was not asked has the page");
    return;
  }
  expect(web.hosts == std::vector{known.host} && web.ports == std::vector{known.port}, "one connection, to the host");
  expect(web.sent == "HEAD " + known.path + " HTTP/1.1\r\nHOST: " + known.host + "\r\n\r\n", "the request");
  expect(std::count(web.sent.begin(), web.sent.end(), '\n') == 3 && web.sent.size() < 512, "one header line");
  expect(std::pair(found, web.read) == judged(parts[2], piece), "the first piece with a status line decides");
}
