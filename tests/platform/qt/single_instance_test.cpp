#include "platform/qt/single_instance.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <filesystem>

#include "support/process.h"
#include "support/temp_folder.h"

using platform::qt::SingleInstance;
using testing_support::TempFolder;

namespace {

int PermissionsOf(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 0777) : -1;
}

}  // namespace

TEST(SingleInstance, TellsTheFirstOfEveryLaterStart) {
  const TempFolder folder;
  testing_support::WriteWholeFile(folder.HostPath(".morvenly.socket"), "");  // of a killed one
  std::string wishes;
  SingleInstance first(folder.HostPath());
  ASSERT_TRUE(first.Claim('s', [&wishes](char wish) { wishes += wish; }));
  for (int start = 0; start < 3; start++) {
    SingleInstance later(folder.HostPath());
    EXPECT_FALSE(later.Claim('n', [](char) { FAIL(); }));
  }
  testing_support::WaitUntil([&] {
    QCoreApplication::processEvents();
    return wishes.size() == 3;
  });
  EXPECT_EQ(wishes, "nnn");
  EXPECT_EQ(PermissionsOf(folder.HostPath(".morvenly.lock")), 0600);
  EXPECT_EQ(PermissionsOf(folder.HostPath(".morvenly.socket")), 0600);
}

TEST(SingleInstance, FollowsNoLinkAndHearsNobodyElse) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root, to be somebody else";
  const TempFolder folder;
  testing_support::WriteWholeFile(folder.HostPath("diary"), "");
  std::filesystem::create_symlink("diary", folder.HostPath(".morvenly.lock"));
  std::string told;
  SingleInstance first(folder.HostPath());
  ASSERT_TRUE(first.Claim('s', [&told](char wish) { told += wish; }));
  EXPECT_FALSE(std::filesystem::is_symlink(folder.HostPath(".morvenly.lock")));
  for (const char* name : {"", ".morvenly.lock", ".morvenly.socket"}) {
    chmod(folder.HostPath(name).c_str(), 0777);
  }
  const pid_t other = fork();
  if (other == 0) {
    SingleInstance stranger(folder.HostPath());
    _exit(setuid(65534) == 0 && !stranger.Claim('x', [](char) {}) ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(other, &status, 0), other);
  EXPECT_EQ(status, 0);
  SingleInstance later(folder.HostPath());
  EXPECT_FALSE(later.Claim('n', [](char) { FAIL(); }));
  testing_support::WaitUntil([&] {
    QCoreApplication::processEvents();
    return !told.empty();
  });
  EXPECT_EQ(told, "n");
}

TEST(SingleInstance, IsOneForEachFolderHoweverLongItsName) {
  const TempFolder folder;
  const std::string deep = folder.HostPath(std::string(120, 'a') + "/" + std::string(120, 'b'));
  std::filesystem::create_directories(deep);
  SingleInstance here(folder.HostPath());
  SingleInstance there(deep);
  EXPECT_TRUE(here.Claim('s', [](char) {}));
  EXPECT_TRUE(there.Claim('s', [](char) {}));
  SingleInstance again(deep);
  EXPECT_FALSE(again.Claim('s', [](char) { FAIL(); }));
}

TEST(SingleInstance, LetsTheProgramRunWhereNothingCanBeLocked) {
  SingleInstance nowhere("/no/such/folder");
  EXPECT_TRUE(nowhere.Claim('s', [](char) {}));
}
