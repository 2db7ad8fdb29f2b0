#include "unique_fd.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include "host.h"

namespace {

TEST(UniqueFd, IsNoStandardStreamOfAHostThatHasClosedThem) {
  int fd = -1;
  char byte = 0;
  {
    const olh_test::ClosedStreams host;
    const olh::UniqueFd file(open("/proc/self/stat", O_RDONLY));
    fd = read(file.get(), &byte, 1) == 1 ? file.get() : -1;
  }
  EXPECT_GE(fd, 3);
}

}  // namespace
