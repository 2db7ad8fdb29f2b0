#include "serve_background.h"

#include <link.h>
#include <malloc.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "files.h"
#include "page_server.h"
#include "serve_state.h"

namespace olh_serve {

namespace {

constexpr long kIdleSeconds = 3600;
constexpr long kJustUsed = 30;  // seconds; long enough for a look to fall into them
// A caller who never ends a request harms nothing but the server.
constexpr rlim_t kMostMoreMemory = rlim_t{1} << 30;
constexpr int kNoServer = 2;

// Code that only a start or a page needed is given back; what is needed again comes from the files of the libraries.
int give_back_code(dl_phdr_info* object, std::size_t, void*) {
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  for (int i = 0; i < object->dlpi_phnum; ++i) {
    const auto& part = object->dlpi_phdr[i];
    if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0 || (part.p_flags & PF_W) != 0) continue;
    const std::uintptr_t begin = (object->dlpi_addr + part.p_vaddr) & ~(page - 1);
    const std::uintptr_t end = object->dlpi_addr + part.p_vaddr + part.p_memsz;
    madvise(reinterpret_cast<void*>(begin), end - begin, MADV_DONTNEED);  // NOLINT(performance-no-int-to-ptr)
  }
  return 0;
}

void be_modest() {
  mallopt(M_ARENA_MAX, 1);
  const rlim_t pages = std::strtoull(olh_viewers::content_of("/proc/self/statm").c_str(), nullptr, 10);
  const rlim_t memory = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + kMostMoreMemory;
  const rlimit most = {memory, memory};
  setrlimit(RLIMIT_AS, &most);
}

void rest() {
  malloc_trim(0);
  dl_iterate_phdr(give_back_code, nullptr);
}

// Under the lock of whoever looks for a server: nobody is handed the address of one that is about to end.
bool ends(const olh_viewers::ServeState& state, const olh_viewers::LockedFile& announced, long idle) {
  if (!state.is_announced(announced)) return true;
  if (idle < kJustUsed) rest();
  if (idle < kIdleSeconds) return false;
  const olh_viewers::LockedFile lock = state.lock(0);
  if (!lock || state.seconds_since_use() < kIdleSeconds) return false;
  state.withdraw();
  return true;
}

}  // namespace

int serve_in_background() {
  std::string said;
  const olh_viewers::ServeState state(said);
  if (!state) {
    std::fprintf(stderr, "olh-serve: %s.\n", said.c_str());
    return kNoServer;
  }
  if (!state.address().empty()) return 0;
  olh_viewers::LockedFile announced;
  PageServerOptions options;
  options.roots = [&state] { return state.roots(); };
  options.is_over = [&](long idle) { return ends(state, announced, idle); };
  PageServer server(std::move(options));
  const std::string address = server.bind(0);
  if (!address.empty()) announced = state.announce(address);
  if (!announced || daemon(0, 0) != 0) {
    std::fprintf(stderr, "olh-serve: no port can be opened, or its address cannot be written down.\n");
    return kNoServer;
  }
  be_modest();
  rest();
  server.run();
  return 0;
}

}  // namespace olh_serve
