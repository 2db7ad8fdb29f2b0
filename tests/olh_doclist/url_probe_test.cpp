#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <filesystem>
#include <future>
#include <limits>
#include <tuple>

#include "host.h"
#include "http_server.h"
#include "olh/support.h"
#include "olh_doclist.h"
#include "scratch.h"
#include "unique_fd.h"

// One host has more addresses than fit into the usual buffer; any other is as it is.
extern "C" int __real_gethostbyname_r(const char*, hostent*, char*, std::size_t, hostent**, int*);
extern "C" int __wrap_gethostbyname_r(const char* name, hostent* entry, char* buffer, std::size_t size,
                                      hostent** found, int* error) {
  const bool has_many = name == std::string_view("many.addresses");
  if (has_many && size < 50'000) return ERANGE;
  return __real_gethostbyname_r(has_many ? "127.0.0.1" : name, entry, buffer, size, found, error);
}

namespace {

using namespace olh_test;

constexpr std::size_t kPartSize = 512;

class UrlProbe : public Scratch {
 protected:
  // What the probe answers, and what it says last, without the words that every line begins with; "" when it judges without a
  // word.
  using Answer = std::pair<int, std::string>;
  Answer judged(const std::string& url) {
    int result = -1;
    std::string said = debug_lines_of([&] { result = locator.ValidURL(url.c_str()); });
    EXPECT_EQ(said.back(), '\n');
    said.pop_back();
    const std::string start = "olh_docList::ValidURL: failed: ";
    const std::size_t found = said.find(start);
    return {result, found == std::string::npos ? "" : said.substr(found + start.size())};
  }

  olh_docList locator;
};

std::size_t open_descriptors() {
  const std::filesystem::directory_iterator entries("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

TEST_F(UrlProbe, UrlsSplitIntoHostPortAndPath) {
  const std::tuple<const char*, const char*, int, const char*> cases[] = {
      {"http://h/docs/x.pdf", "h", 80, "/docs/x.pdf"},
      {"http://h:8080/docs/x.pdf", "h", 8080, "/docs/x.pdf"},
      {"http://h:65535/", "h", 65535, "/"},
      {"http://h:70000/", "h", 70000, "/"},
      {"http://h:99999999999999999999/", "h", std::numeric_limits<int>::max(), "/"},
      {"http://h/a?b=c#d", "h", 80, "/a?b=c#d"},
      {"http://h/a:b", "h", 80, "/a:b"},
      {"http://h/a:8080/b", "h", 80, "/a:8080/b"},
      {"http://h:/x", "h", 80, "/x"},
      {"http://h:8080/a:9", "h", 8080, "/a:9"},
      {"http:x//h/y", "h", 80, "/y"},
  };
  for (const auto& [url, host, port, path] : cases) {
    char found_host[kPartSize];
    char found_path[kPartSize];
    int found_port = 0;
    ASSERT_EQ(locator.ParseURL(url, found_host, &found_port, found_path), 1) << url;
    EXPECT_STREQ(found_host, host) << url;
    EXPECT_EQ(found_port, port) << url;
    EXPECT_STREQ(found_path, path) << url;
  }
}

TEST_F(UrlProbe, MalformedUrlsAreNamed) {
  const std::pair<std::string, std::string> cases[] = {
      {"h/docs", "Invalid url: no protocol specified"},
      {"", "Invalid url: no protocol specified"},
      {"https://h/docs", "Invalid protocol: https"},
      {"HTTP://h/x", "Invalid protocol: HTTP"},
      {"://h/x", "Invalid protocol: "},
      {"http:h/docs", "Invalid url: no server specified"},
      {"http://h", "Invalid url: no path specified"},
      {"http://h:80", "Invalid url: no path specified"},
  };
  for (const auto& [url, why] : cases) {
    EXPECT_EQ(debug_lines_of([&, &asked = url] { EXPECT_EQ(locator.ValidURL(asked.c_str()), 0); }),
              "olh_docList::ValidURL: " + url + "\nolh_docList::ParseURL: " + why +
                  "\nolh_docList::ValidURL: failed: url parse error\n");
  }
}

TEST_F(UrlProbe, RequestIsOneHeadLineAndTheHostWithoutPort) {
  const HttpServer server([](const std::string&) { return http_status("200 OK"); });
  const std::string url = server.url("/docs/x.pdf");
  EXPECT_EQ(debug_lines_of([&] { EXPECT_EQ(locator.ValidURL(url.c_str()), 1); }),
            "olh_docList::ValidURL: " + url + "\nolh_docList::ValidURL: host: 127.0.0.1, port: " +
                std::to_string(server.port()) + ", path: /docs/x.pdf\n");
  EXPECT_EQ(locator.ValidURL(server.url("/docs/my\t1st book\x7f.pdf").c_str()), 1) << "blanks as they are";
  EXPECT_EQ(server.requests(), (Words{"HEAD /docs/x.pdf HTTP/1.1\r\nHOST: 127.0.0.1\r\n\r\n",
                                      "HEAD /docs/my\t1st book\x7f.pdf HTTP/1.1\r\nHOST: 127.0.0.1\r\n\r\n"}));
}

TEST_F(UrlProbe, FirstStatusLineDecides) {
  using namespace std::string_literals;
  const std::string ok = "HTTP/1.1 200 OK\r\n\r\n";
  const std::string redirection = "HTTP/1.1 302 Found\r\nLocation: /\r\n\r\n";
  const std::tuple<const char*, HttpReply, int, std::string> cases[] = {
      {"found", {{ok}}, 1, ""},
      {"not found", {{"HTTP/1.1 404 Not Found\r\n\r\n"}}, 0, "HTTP/1.1 404 Not Found"},
      {"redirected", {{redirection}}, 0, "HTTP error: HTTP/1.1 302 Found\r\nLocation: /\r\n\r\n"},
      {"forbidden", {{"HTTP/1.1 403 Forbidden\n\n"}}, 0, "HTTP error: HTTP/1.1 403 Forbidden\n\n"},
      {"other words", {{"HTTP/1.1 200 Fine\r\n\r\n"}}, 0, "HTTP error: HTTP/1.1 200 Fine\r\n\r\n"},
      {"second piece", {{"\r\n", ok}}, 1, ""},
      {"third chunk", {{std::string(20000, '-') + ok}}, 1, ""},
      {"older server", {{"HTTP/1.0 200 OK\r\n\r\n"}, HttpReply::kClose}, 0, ""},
      {"behind a NUL", {{"\0"s + ok}, HttpReply::kClose}, 0, ""},
      {"closed", {{}, HttpReply::kClose}, 0, ""},
      {"reset", {{}, HttpReply::kReset}, 0, ""},
  };
  for (const auto& [what, reply, result, said] : cases) {
    SCOPED_TRACE(what);
    const HttpServer server([&answer = reply](const std::string&) { return answer; });
    EXPECT_EQ(judged(server.url("/x")), Answer(result, said));
    EXPECT_EQ(server.requests().size(), 1U);
  }
}

TEST_F(UrlProbe, WhatWouldSpoilTheRequestIsNeverSent) {
  const HttpServer server([](const std::string&) { return http_status("200 OK"); });
  const std::string host = "127.0.0.1";
  const std::string longest = "/" + std::string(485 - host.size() - 1, 'p');
  EXPECT_EQ(judged(server.url(longest)), Answer(1, ""));
  for (const std::string& url : {
           server.url(longest + "p"),
           server.url("/" + std::string(10000, 'p')),
           server.url("/a\nb"),
           server.url("/a\r"),
           server.url("/x HTTP/1.1\r\nHOST: other\r\n\r\n"),
           "http://" + std::string(600, 'h') + "/x",
       })
    EXPECT_EQ(judged(url), Answer(0, "url parse error")) << url;
  EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(UrlProbe, FailuresBeforeTheRequestAreNamed) {
  EXPECT_EQ(judged("http:///x"), Answer(0, "unknown host: "));
  std::string url;
  {
    const HttpServer gone({"/x"});
    url = gone.url("/x");
  }
  const HttpServer server({"/x"});
  const std::string other_address = "http://127.0.0.2:" + std::to_string(server.port()) + "/x";
  for (const std::string& unreachable :
       Words{url, other_address, "http://127.0.0.1:0/x", "http://127.0.0.1:-1/x", "http://127.0.0.1:65536/x"})
    EXPECT_EQ(judged(unreachable), Answer(0, "cannot connect")) << unreachable;
}

TEST_F(UrlProbe, AHostMayHaveAnyNumberOfAddresses) {
  const HttpServer server({"/x"});
  EXPECT_EQ(judged("http://many.addresses:" + std::to_string(server.port()) + "/x"), Answer(1, ""));
}

TEST_F(UrlProbe, WhatTheSystemRefusesIsNamed) {
  const HttpServer server({"/x"});
  const std::string url = server.url("/x");
  const std::tuple<long, std::string> cases[] = {
      {SYS_sendto, "cannot send data"},
      {SYS_bind, url + ": cannot bind port TCP " + std::to_string(server.port())},
      {SYS_socket, "cannot open socket"},
  };
  for (const auto& [call, said] : cases) {
    // In a thread of its own: the server goes on.
    const auto judge = [&, refused = call] { return refuse(refused, EPERM) ? judged(url) : Answer(); };
    const Answer answer = std::async(std::launch::async, judge).get();
    if (answer == Answer()) GTEST_SKIP() << "no system call filter here";
    EXPECT_EQ(answer, Answer(0, said));
  }
}

// A server that is too busy to take a connection: its queue is full, and the system drops what would connect.
class FullQueue {
 public:
  FullQueue() {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address_;
    const olh::UniqueFd& listener = sockets_.emplace_back(socket(AF_INET, SOCK_STREAM, 0));
    EXPECT_EQ(bind(listener.get(), generic(), size), 0);
    EXPECT_EQ(listen(listener.get(), 0), 0);
    EXPECT_EQ(getsockname(listener.get(), generic(), &size), 0);
    for (int waiting = 0; waiting < 4; ++waiting)
      std::ignore =
          connect(sockets_.emplace_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)).get(), generic(), size);
  }
  std::string url() const { return "http://127.0.0.1:" + std::to_string(ntohs(address_.sin_port)) + "/x"; }

 private:
  sockaddr* generic() { return reinterpret_cast<sockaddr*>(&address_); }

  sockaddr_in address_ = {};
  std::vector<olh::UniqueFd> sockets_;
};

TEST_F(UrlProbe, ALimitEndsTheWaitForASilentServer) {
  const std::string late = "no answer within OLH_PROBE_TIMEOUT";
  const FullQueue full;
  set("OLH_PROBE_TIMEOUT", "0.2");
  EXPECT_EQ(judged(full.url()), Answer(0, late));

  const std::string ok = "HTTP/1.1 200 OK\r\n\r\n";
  const HttpReply soon = {{"\r\n", ok}};
  HttpReply drips = {std::vector<std::string>(20, "a")};  // each within the limit, and a second together
  drips.pieces.push_back(ok);
  const std::tuple<const char*, HttpReply, int, std::string> cases[] = {
      {"0.2", {{}, HttpReply::kStayOpen}, 0, late},
      {"0.2", drips, 0, late},
      {"0.001", soon, 0, late},
      {"5", soon, 1, ""},
      {"0", soon, 1, ""},
      {"0.001s", soon, 1, ""},
      {"nan", soon, 1, ""},
  };
  for (const auto& [limit, reply, result, said] : cases) {
    SCOPED_TRACE(limit + std::string(" ") + std::to_string(reply.pieces.size()));
    const HttpServer server([&answer = reply](const std::string&) { return answer; });
    set("OLH_PROBE_TIMEOUT", limit);
    EXPECT_EQ(judged(server.url("/x")), Answer(result, said));
  }
}

TEST_F(UrlProbe, NoDescriptorIsLeftOpen) {
  const HttpServer server([](const std::string& request) -> HttpReply {
    if (request.find("/reset") != std::string::npos) return {{}, HttpReply::kReset};
    if (request.find("/close") != std::string::npos) return {{}, HttpReply::kClose};
    return http_status(request.find("/there") != std::string::npos ? "200 OK" : "404 Not Found");
  });
  locator.ValidURL(server.url("/there").c_str());
  server.requests();
  const std::size_t before = open_descriptors();
  for (const std::string& url : {server.url("/there"), server.url("/missing"), server.url("/close"),
                                 server.url("/reset"), std::string("http://127.0.0.1:1/x"), std::string("http:///x")})
    locator.ValidURL(url.c_str());
  EXPECT_EQ(server.requests().size(), 5U);
  EXPECT_EQ(open_descriptors(), before);
}

}  // namespace
