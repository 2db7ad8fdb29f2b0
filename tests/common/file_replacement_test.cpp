#include "file_replacement.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <future>

#include "host.h"
#include "scratch.h"

namespace {

namespace fs = std::filesystem;
using olh::FileReplacement;
using olh_test::read_file;

class Replacement : public olh_test::Scratch {
 protected:
  bool replace(const std::string& name, const std::string& text) {
    FileReplacement replacement(name);
    replacement.write(text);
    return replacement.commit();
  }
  std::string file = write("file", "old");
};

TEST_F(Replacement, AnUncommittedTextLeavesNothing) {
  {
    FileReplacement abandoned(file);
    abandoned.write("new");
    EXPECT_EQ(read_file(file), "old");
  }
  EXPECT_EQ(read_file(file), "old");
  EXPECT_FALSE(fs::exists(file + ".new"));
  EXPECT_TRUE(replace(file, "new"));
  EXPECT_EQ(read_file(file), "new");
  EXPECT_FALSE(fs::exists(file + ".new"));
}

TEST_F(Replacement, TheModeStaysAndAFreshFileHasTheUsualOne) {
  const auto mode_of = [this](const std::string& name) {
    EXPECT_TRUE(replace(name, "new"));
    struct stat status = {};
    return stat(name.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
  };
  umask(022);
  chmod(file.c_str(), 0640);
  EXPECT_EQ(mode_of(file), 0640U);
  EXPECT_EQ(mode_of(dir + "/fresh"), 0644U);
}

TEST_F(Replacement, TheOwnerStaysOrElseNobodyBorrowsTheRightsOfTheNewOne) {
  constexpr uid_t kNobody = 65534;
  if (geteuid() != 0 || chown(file.c_str(), kNobody, kNobody) != 0) GTEST_SKIP() << "only root gives files away";
  chmod(file.c_str(), 04755);
  const auto expect_replaced = [this](uid_t owner, mode_t mode) {
    EXPECT_TRUE(replace(file, "new"));
    struct stat status = {};
    EXPECT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(std::pair(status.st_uid, status.st_mode & 07777U), std::pair(owner, mode));
  };
  expect_replaced(kNobody, 04755);
  if (olh_test::refuse(SYS_fchown, EPERM)) expect_replaced(0, 0755);
}

class RefusedReplacement : public Replacement, public testing::WithParamInterface<std::pair<int, int>> {};

TEST_P(RefusedReplacement, TheOldFileStaysAlone) {
  chmod(file.c_str(), 0640);
  if (!olh_test::refuse(GetParam().first, GetParam().second)) GTEST_SKIP() << "no system call filter here";
  EXPECT_FALSE(replace(file, "new"));
  EXPECT_EQ(read_file(file), "old");
  EXPECT_FALSE(fs::exists(file + ".new"));
}

// No mode that can be given, no lock to be had, no text that reaches the disk.
INSTANTIATE_TEST_SUITE_P(By, RefusedReplacement,
                         testing::Values(std::pair(SYS_fchmod, EPERM), std::pair(SYS_flock, EIO),
                                         std::pair(SYS_fsync, EIO)));

TEST_F(Replacement, AFileSystemWithoutLocksIsWrittenTo) {
  if (!olh_test::refuse(SYS_flock, ENOLCK)) GTEST_SKIP() << "no system call filter here";
  EXPECT_TRUE(replace(file, "new"));
  EXPECT_EQ(read_file(file), "new");
}

TEST_F(Replacement, ALinkStaysOneAndItsTargetIsRewritten) {
  make_directory("links");
  fs::create_symlink("../second", dir + "/links/first");
  fs::create_symlink(file, dir + "/second");
  EXPECT_TRUE(replace(dir + "/links/first", "new"));
  EXPECT_EQ(read_file(file), "new");
  EXPECT_TRUE(fs::is_symlink(dir + "/links/first") && fs::is_symlink(dir + "/second"));
  fs::create_symlink("made", dir + "/dangling");
  EXPECT_TRUE(replace(dir + "/dangling", "fresh"));
  EXPECT_EQ(read_file(dir + "/made"), "fresh");
}

// Wherever in the chain it stands, nothing that it leads to is touched.
TEST_F(Replacement, AStrangersLinkIsNotFollowed) {
  const std::string links = make_directory("links");
  const std::string strangers = links + "/strangers";
  fs::create_symlink("strangers", links + "/own");
  for (const std::string& name : {strangers, links + "/own"}) {
    fs::create_symlink(file, strangers);
    if (lchown(strangers.c_str(), geteuid() + 1, getegid()) != 0)
      GTEST_SKIP() << "only root can make a stranger's link";
    EXPECT_FALSE(replace(name, "new"));
    EXPECT_TRUE(fs::is_symlink(strangers));
    FileReplacement list(name, FileReplacement::Durability::kCached, FileReplacement::StrangersLink::kGivesWay);
    list.write("list");
    EXPECT_TRUE(list.commit());
    EXPECT_TRUE(fs::is_symlink(links + "/own") && !fs::is_symlink(strangers));
    EXPECT_EQ(read_file(strangers), "list");
    EXPECT_EQ(read_file(file), "old");
    fs::remove(strangers);
  }
}

TEST_F(Replacement, ALeftoverIsReplacedAndNotFollowed) {
  write("other", "untouched");
  fs::create_symlink(dir + "/other", file + ".new");
  EXPECT_TRUE(replace(file, "new"));
  EXPECT_EQ(read_file(file), "new");
  EXPECT_EQ(read_file(dir + "/other"), "untouched");
  chmod(make_fifo("file.new").c_str(), 0400);  // which its owner may only read, and nobody writes
  EXPECT_TRUE(replace(file, "newer"));
  chmod(write("file.new", "").c_str(), 0400);
  EXPECT_TRUE(replace(file, "newest"));
}

TEST_F(Replacement, AnotherWritersFileIsLeftToIt) {
  FileReplacement first(file);
  first.write("first");
  EXPECT_FALSE(replace(file, "second"));
  EXPECT_TRUE(first.commit());
  EXPECT_EQ(read_file(file), "first");
  EXPECT_TRUE(replace(file, "second")) << "the name is free again";
  EXPECT_EQ(read_file(file), "second");
}

// Neither fails, and the text that is there in the end is one of theirs, whole.
TEST_F(Replacement, TwoWritersComeAfterOneAnother) {
  constexpr int kTurns = 200;
  const auto write_often = [this](char letter) {
    int failures = 0;
    for (int turn = 0; turn < kTurns; ++turn) {
      FileReplacement replacement(file, FileReplacement::Durability::kCached);
      replacement.write(std::string(10000, letter));
      failures += replacement.commit() ? 0 : 1;
    }
    return failures;
  };
  auto other = std::async(std::launch::async, write_often, 'b');
  EXPECT_EQ(write_often('a'), 0);
  EXPECT_EQ(other.get(), 0);
  const std::string text = read_file(file);
  EXPECT_EQ(text, std::string(10000, text.empty() ? '-' : text.front()));
}

TEST_F(Replacement, OnlyARegularFileIsReplaced) {
  const std::string directory = make_directory("d");
  const std::string fifo = make_fifo("fifo");
  const std::string ring = dir + "/ring";
  fs::create_symlink("ring", ring);
  for (const std::string& name : {directory, fifo, ring, dir + "/no/such/file"}) EXPECT_FALSE(replace(name, "x"));
  EXPECT_TRUE(fs::is_directory(directory) && fs::is_fifo(fifo) && fs::is_symlink(ring));
}

// As on a full disk: what cannot be written whole does not replace anything.
TEST_F(Replacement, AWriteThatFailsLeavesTheOldText) {
  signal(SIGXFSZ, SIG_IGN);
  {
    const olh_test::Limit tight(RLIMIT_FSIZE, 1000);
    EXPECT_FALSE(replace(file, std::string(100000, 'x')));
  }
  EXPECT_EQ(read_file(file), "old");
  EXPECT_FALSE(fs::exists(file + ".new"));
}

}  // namespace
