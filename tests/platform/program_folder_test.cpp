// Where everything of the user's lies.
#include "platform/program_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/temp_folder.h"

namespace {

using namespace platform;
using testing_support::TempFolder;

TEST(ProgramFolder, IsBesideAProgramOfItsUsersAndInTheirDataFolderOtherwise) {
  const TempFolder own;
  const std::string program = own.HostPath("morvenly");
  const std::string system = "/usr/bin/morvenly";
  EXPECT_EQ(UsersFolder({program, "/data", "/home/a"}), own.HostPath());
  EXPECT_EQ(UsersFolder({system, "/data", "/home/a"}), "/data/morvenly");
  EXPECT_EQ(UsersFolder({system, "data", "/home/a"}), "/home/a/.local/share/morvenly");
  EXPECT_EQ(UsersFolder({system, "", "/home/a"}), "/home/a/.local/share/morvenly");
  EXPECT_EQ(UsersFolder({system, "", ""}), std::nullopt);
}

TEST(ProgramFolder, IsMadeWithThoseAboveItUnlessSomethingStandsThere) {
  const TempFolder place;
  EXPECT_TRUE(MakeFolders(place.HostPath("share/morvenly")));
  EXPECT_TRUE(MakeFolders(place.HostPath("share/morvenly")));
  EXPECT_TRUE(IsWritable(place.HostPath("share/morvenly")));
  testing_support::WriteWholeFile(place.HostPath("file"), "");
  EXPECT_FALSE(MakeFolders(place.HostPath("file")));
  EXPECT_FALSE(MakeFolders(place.HostPath("file/morvenly")));
}

}  // namespace
