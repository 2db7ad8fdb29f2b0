#include "stream_in_memory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace olh {

StreamInMemory::StreamInMemory(std::FILE* stream)
    : stream_(stream),
      descriptor_(fileno(stream)),
      file_(memfd_create("olh-stream", MFD_CLOEXEC)),
      former_(dup(descriptor_)) {
  std::fflush(stream_);
  if (file_ < 0 || dup2(file_, descriptor_) < 0) fail();
}

StreamInMemory::~StreamInMemory() {
  give_back();
  close(file_);
}

std::string StreamInMemory::text() {
  give_back();
  std::string all;
  char block[4096];
  for (ssize_t size = 0; (size = pread(file_, block, sizeof block, static_cast<off_t>(all.size()))) > 0;)
    all.append(block, static_cast<std::size_t>(size));
  return all;
}

void StreamInMemory::give_back() {
  std::fflush(stream_);
  if (given_back_) return;
  given_back_ = true;
  if (former_ < 0) {
    close(descriptor_);  // it was closed before
  } else {
    dup2(former_, descriptor_);
    close(former_);
  }
}

void StreamInMemory::fail() {
  const int reason = errno;
  if (former_ >= 0) close(former_);
  if (file_ >= 0) close(file_);
  throw std::system_error(reason, std::generic_category(), "what the library writes cannot be kept");
}

}  // namespace olh
