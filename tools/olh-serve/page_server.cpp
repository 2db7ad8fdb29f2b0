#include "page_server.h"

#include <httplib.h>
#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <optional>
#include <utility>

#include "media_type.h"
#include "page_changes.h"
#include "peer_user.h"
#include "request_path.h"
#include "rooted_file.h"

namespace olh_serve {

namespace {

using httplib::Request;
using httplib::Response;

constexpr std::size_t kThreads = 16;  // two browsers with six connections each, and some that say nothing
constexpr int kKeptOpen = 2;          // seconds that a connection may say nothing
constexpr int kBetweenLooks = 10;     // seconds
constexpr int kMostWaiting = 128;     // connections
constexpr std::size_t kMostToTellType = 1024 * 1024;
constexpr std::size_t kBlock = 64 * 1024;

enum Status : int {
  kMoved = 301,
  kNotModified = 304,
  kForbidden = 403,
  kNotFound = 404,
  kOnlyGet = 405,
  kBadRange = 416,
  kBroken = 500
};

// What a page may do from file:// it may do here. It talks to no other server of this machine, and no foreign page shows
// it in a frame or learns its address.
const httplib::Headers kHeaders = {
    {"Content-Security-Policy",
     "default-src 'self' 'unsafe-inline' 'unsafe-eval' data: blob: https:; connect-src 'self'; object-src 'self'; "
     "base-uri 'self'; form-action 'self'; frame-ancestors 'self'"},
    {"X-Content-Type-Options", "nosniff"},
    {"Referrer-Policy", "no-referrer"},
    {"Cache-Control", "private, no-cache"},
};

void refuse(Response& response, int status) {
  constexpr std::pair<int, const char*> kReasons[] = {
      {kForbidden, "These pages are for their user on this machine alone.\n"},
      {kNotFound, "There is no such page here.\n"},
      {kOnlyGet, "Pages can only be read here.\n"}};
  response.status = status;
  for (const auto& [known, reason] : kReasons)
    if (known == status) response.set_content(reason, "text/plain");
}

std::string entity_tag(const struct stat& status) {
  char text[80];
  std::snprintf(text, sizeof text, "\"%lx-%lx-%lx-%lx\"", static_cast<unsigned long>(status.st_ino),
                static_cast<unsigned long>(status.st_size), static_cast<unsigned long>(status.st_mtim.tv_sec),
                static_cast<unsigned long>(status.st_mtim.tv_nsec));
  return text;
}

// Makes one range out of what was asked for, within the file; none where the whole file is the answer. False when no
// byte of the file is in it. (The parser of requests does not know the size, and does not look where a range ends.)
bool fit_ranges(httplib::Ranges& ranges, std::size_t size) {
  if (ranges.size() != 1 || (ranges[0].first < 0 && ranges[0].second < 0)) {
    ranges.clear();
    return true;
  }
  const auto all = static_cast<ssize_t>(size);
  auto& [first, last] = ranges[0];
  if (first < 0) {
    first = std::max<ssize_t>(0, all - last);
    last = all - 1;
  }
  if (last < 0 || last >= all) last = all - 1;
  return first <= last;
}

// The file as an answer in blocks, so that a large one is never held in memory.
void send_file(Response& response, const std::string& type, const std::shared_ptr<RootedFile>& file,
               std::size_t size) {
  response.set_content_provider(size, type, [file](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
    const std::string block = bytes_of(*file, offset, std::min(length, kBlock));
    return !block.empty() && sink.write(block.data(), block.size());
  });
}

// As it is: a text given as content would be compressed, which takes longer than to send it.
void send_text(Response& response, const std::string& type, std::string text) {
  const auto shared = std::make_shared<const std::string>(std::move(text));
  if (shared->empty()) return response.set_content("", type);
  response.set_content_provider(
      shared->size(), type, [shared](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
        return sink.write(shared->data() + offset, std::min(length, shared->size() - offset));
      });
}

bool answers_condition(const Request& request, const std::string& tag) {
  const std::string known = request.get_header_value("If-None-Match");
  return known == "*" || known.find(tag) != std::string::npos;
}

}  // namespace

class PageServer::Core {
 public:
  explicit Core(PageServerOptions options) : options_(std::move(options)) {
    server_.set_default_headers(kHeaders);
    // One request each: what else comes along with it is never taken for another one, and no connection waits for more.
    server_.set_keep_alive_max_count(1);
    server_.set_keep_alive_timeout(kKeptOpen);
    server_.set_idle_interval(kBetweenLooks);
    server_.set_payload_max_length(0);
    // Only this: two servers of one user could share a port otherwise.
    server_.set_socket_options([this](int socket) {
      const int yes = 1;
      setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
      socket_ = socket;
    });
    server_.new_task_queue = [this] { return new Threads(*this); };
    server_.set_pre_routing_handler([this](const Request& request, Response& response) {
      // The ranges are the one part of a request that is put right on the way (fit_ranges).
      answer(const_cast<Request&>(request), response);
      return httplib::Server::HandlerResponse::Handled;
    });
    server_.set_exception_handler(
        [](const Request&, Response& response, const std::exception_ptr&) { response.status = kBroken; });
  }

  std::string bind(int port) {
    for (const char* host : {"127.0.0.1", "::1"}) {
      const int bound = port == 0 ? server_.bind_to_any_port(host) : server_.bind_to_port(host, port) ? port : -1;
      const bool is_v6 = *host == ':';
      // As it comes, it lets five connections wait, and the sixth for a second.
      if (bound > 0 && listen(socket_, kMostWaiting) == 0)
        return "http://" + (is_v6 ? "[" + std::string(host) + "]" : host) + ":" + std::to_string(bound);
      if (port != 0) break;  // the port is taken
    }
    return "";
  }

  void run() { server_.listen_after_bind(); }

 private:
  // What `enqueue` returns differs between versions of the library.
  using Enqueued = decltype(std::declval<httplib::TaskQueue&>().enqueue({}));

  struct Threads : httplib::TaskQueue {
    explicit Threads(Core& owner) : core(owner) {}
    Enqueued enqueue(std::function<void()> work) override { return pool.enqueue(std::move(work)); }
    void shutdown() override { pool.shutdown(); }
    void on_idle() override {
      if (core.options_.is_over(std::time(nullptr) - core.last_request_)) core.server_.stop();
    }
    Core& core;
    httplib::ThreadPool pool{kThreads};
  };

  void answer(Request& request, Response& response) {
    if (request.method != "GET" && request.method != "HEAD") {
      response.set_header("Allow", "GET, HEAD");
      return refuse_whole(request, response, kOnlyGet);
    }
    if (request.get_header_value_count("Host") != 1 || !is_loopback_host(request.get_header_value("Host")))
      return refuse_whole(request, response, kForbidden);
    const std::optional<RequestedPath> path = requested_path(request.target);
    const std::string root = path ? root_of(path->token) : "";
    if (root.empty()) return refuse_whole(request, response, kNotFound);
    if (!is_peer_trusted({request.remote_addr, request.remote_port}, {request.local_addr, request.local_port}))
      return refuse_whole(request, response, kForbidden);
    last_request_ = std::time(nullptr);
    if (!path->asks_for_changes) return answer_with_page(request, response, root, *path);
    request.ranges.clear();
    const std::string state = options_.reload ? state_of_folder(root, path->names) : "";
    if (state.empty()) return refuse(response, kNotFound);
    if (request.target.find('?') != std::string::npos)
      return response.set_content(reload_script(), "text/javascript");
    response.set_content(state, "text/plain");
  }

  static void refuse_whole(Request& request, Response& response, int status) {
    request.ranges.clear();
    refuse(response, status);
  }

  std::string root_of(const std::string& token) const {
    for (const olh_viewers::ServedRoot& root : options_.roots())
      if (root.token == token) return root.path;
    return "";
  }

  // The page that a folder is shown with; `path` then ends with its name.
  static RootedFile start_page(const std::string& root, RequestedPath& path) {
    for (const char* name : {"index.html", "index.htm"}) {
      path.names.emplace_back(name);
      RootedFile file = open_below(root, path.names);
      if (file.kind == RootedFile::Kind::kFile) return file;
      path.names.pop_back();
    }
    return {};
  }

  void answer_with_page(Request& request, Response& response, const std::string& root, RequestedPath path) const {
    RootedFile file = open_below(root, path.names);
    const bool is_folder = file.kind == RootedFile::Kind::kFolder;
    if (is_folder && !path.is_folder) {
      path.is_folder = true;
      request.ranges.clear();
      return response.set_redirect(path_of_request(path), kMoved);
    }
    if (is_folder) file = start_page(root, path);
    if (file.kind != RootedFile::Kind::kFile || is_folder != path.is_folder)
      return refuse_whole(request, response, kNotFound);
    answer_with_file(request, response, std::make_shared<RootedFile>(std::move(file)), root, path);
  }

  void answer_with_file(Request& request, Response& response, const std::shared_ptr<RootedFile>& file,
                        const std::string& root, const RequestedPath& path) const {
    const std::string& name = path.names.back();
    const auto size = static_cast<std::size_t>(file->status.st_size);
    const std::size_t to_tell_type = depends_on_content(name) ? std::min(size, kMostToTellType) : 0;
    const std::string type = media_type(name, bytes_of(*file, 0, to_tell_type));
    if (options_.reload && is_html(type)) {
      request.ranges.clear();
      return send_text(response, type, with_reload_script(bytes_of(*file, 0, size), root, path));
    }
    const std::string tag = entity_tag(file->status);
    response.set_header("ETag", tag);
    if (answers_condition(request, tag)) {
      request.ranges.clear();
      response.status = kNotModified;
      return;
    }
    response.set_header("Accept-Ranges", "bytes");
    if (request.has_header("If-Range") && request.get_header_value("If-Range") != tag) request.ranges.clear();
    if (!fit_ranges(request.ranges, size)) {
      request.ranges.clear();
      response.status = kBadRange;
      response.set_header("Content-Range", "bytes */" + std::to_string(size));
      return;
    }
    if (size == 0) return response.set_content("", type);
    send_file(response, type, file, size);
  }

  PageServerOptions options_;
  std::atomic<long> last_request_ = std::time(nullptr);
  int socket_ = -1;
  httplib::Server server_;
};

PageServer::PageServer(PageServerOptions options) : core_(std::make_unique<Core>(std::move(options))) {}
PageServer::~PageServer() = default;
std::string PageServer::bind(int port) { return core_->bind(port); }
void PageServer::run() { core_->run(); }

}  // namespace olh_serve
