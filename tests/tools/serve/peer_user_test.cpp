// To whom a connection belongs, where only the system's list tells.
#include <gtest/gtest.h>
#include <unistd.h>

#include "peer_user.h"

namespace {

TEST(PeerUser, InTheSystemsList) {
  const std::string own = std::to_string(geteuid());
  const std::pair<std::string, bool> cases[] = {{"01 00000000:00000000 00:00000000 00000000 " + own, true},
                                                {"01 00000000:00000000 00:00000000 00000000 0", true},
                                                {"01 00000000:00000000 00:00000000 00000000 54321", false},
                                                {"04 00000000:00000000 00:00000000 00000000 54321", false}};
  for (const auto& [state_and_owner, is_trusted] : cases) {
    const std::string line = " 0: 0100007F:A2B4 0100007F:1F90 " + state_and_owner + " 0 1 1 0 20 4 30 10 -1\n";
    EXPECT_EQ(olh_serve::is_peer_in_list_trusted("  sl  local_address rem_address\n" + line, 0xa2b4, 0x1f90),
              is_trusted)
        << line;
    EXPECT_TRUE(olh_serve::is_peer_in_list_trusted(line, 0x1f90, 0xa2b4)) << "the other end of it";
  }
}

}  // namespace
