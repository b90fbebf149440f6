// The host's own file system, on the real disk.
#include "platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>

#include "support/temp_folder.h"

namespace {

using namespace platform;
using testing_support::ReadWholeFile;
using testing_support::TempFolder;
using testing_support::WriteWholeFile;

mode_t ModeOf(const std::string& hostPath) {
  struct stat status = {};
  EXPECT_EQ(stat(hostPath.c_str(), &status), 0);
  return status.st_mode & 0777;
}

TEST(Files, WhatIsMadeIsPrivateAndWhatStandsKeepsItsMode) {
  const TempFolder folder;
  ASSERT_TRUE(files().MakeFolder(folder.Path(u"日記")));
  EXPECT_EQ(ModeOf(folder.HostPath("日記")), 0700u);
  const auto made = files().Create(folder.Path(u"日記\\user.txt"));
  ASSERT_TRUE(made);
  EXPECT_TRUE(made->Write("abc"));
  EXPECT_TRUE(made->Write("def"));
  EXPECT_TRUE(made->Sync());
  EXPECT_EQ(ReadWholeFile(folder.HostPath("日記/user.txt")), "abcdef");
  EXPECT_EQ(ModeOf(folder.HostPath("日記/user.txt")), 0600u);

  WriteWholeFile(folder.HostPath("old"), "old content");
  chmod(folder.HostPath("old").c_str(), 0640);
  ASSERT_TRUE(files().Create(folder.Path(u"old")));
  EXPECT_EQ(ReadWholeFile(folder.HostPath("old")), "");
  EXPECT_EQ(ModeOf(folder.HostPath("old")), 0640u);
}

TEST(Files, ReadsToTheEnd) {
  const TempFolder folder;
  WriteWholeFile(folder.HostPath("a"), "12345");
  const auto file = files().OpenForReading(folder.Path(u"a"));
  ASSERT_TRUE(file);
  char buffer[4];
  EXPECT_EQ(file->Read(buffer, 4), 4);
  EXPECT_EQ(file->Read(buffer, 4), 1);
  EXPECT_EQ(buffer[0], '5');
  EXPECT_EQ(file->Read(buffer, 4), 0);
  EXPECT_FALSE(file->Write("x")) << "it is open for reading";
}

TEST(Files, RefusesWhatIsNoFile) {
  const TempFolder folder;
  ASSERT_EQ(mkfifo(folder.HostPath("pipe").c_str(), 0600), 0);
  for (const char16_t* name : {u"", u"missing", u"missing\\file", u"pipe", u"half\xD83D"}) {
    EXPECT_FALSE(files().OpenForReading(folder.Path(name))) << testing::PrintToString(name);
  }
  for (const char16_t* name : {u"", u"missing\\file", u"pipe", u"half\xD83D"}) {
    EXPECT_FALSE(files().Create(folder.Path(name))) << testing::PrintToString(name);
  }
  EXPECT_FALSE(files().MakeFolder(folder.Path(u"missing\\folder")));
  EXPECT_FALSE(files().Remove(folder.Path(u""))) << "a folder is not removed";
}

TEST(Files, TellsAFullDisk) {
  const auto full = files().Create(u"\\dev\\full");
  ASSERT_TRUE(full);
  EXPECT_FALSE(full->Write("x"));
}

TEST(Files, TellsAttributes) {
  const TempFolder folder;
  WriteWholeFile(folder.HostPath("plain"), "");
  WriteWholeFile(folder.HostPath(".hidden"), "");
  WriteWholeFile(folder.HostPath("fixed"), "");
  chmod(folder.HostPath("fixed").c_str(), 0444);
  ASSERT_TRUE(files().MakeFolder(folder.Path(u".folder")));
  ASSERT_EQ(symlink(".folder", folder.HostPath("link").c_str()), 0);
  ASSERT_EQ(symlink("nowhere", folder.HostPath("broken").c_str()), 0);
  const std::pair<const char16_t*, std::optional<uint32_t>> rows[] = {
      {u"plain", 0},          {u".hidden", 0x02},
      {u"fixed", 0x01},       {u".folder", 0x12},
      {u".folder\\", 0x12},   {u"link", 0x10},
      {u".folder\\..", 0x10}, {u"broken", {}},
      {u"missing", {}},       {u"loop", kAttributeUnknown},
  };
  ASSERT_EQ(symlink("loop", folder.HostPath("loop").c_str()), 0);
  for (const auto& [name, attributes] : rows) {
    EXPECT_EQ(files().Attributes(folder.Path(name)), attributes) << testing::PrintToString(name);
  }
  EXPECT_EQ(files().Attributes(u"\\"), 0x10u);
}

TEST(Files, RenamesOverAFileAndRemoves) {
  const TempFolder folder;
  WriteWholeFile(folder.HostPath("new"), "new");
  WriteWholeFile(folder.HostPath("old"), "old");
  EXPECT_TRUE(files().Rename(folder.Path(u"new"), folder.Path(u"old")));
  EXPECT_EQ(ReadWholeFile(folder.HostPath("old")), "new");
  EXPECT_FALSE(files().Exists(folder.Path(u"new")));
  EXPECT_FALSE(files().Rename(folder.Path(u"new"), folder.Path(u"old")));
  ASSERT_EQ(symlink("nowhere", folder.HostPath("broken").c_str()), 0);
  WriteWholeFile(folder.HostPath("other"), "other");
  for (const char16_t* taken : {u"other", u"broken"}) {
    EXPECT_FALSE(files().RenameToFree(folder.Path(u"old"), folder.Path(taken)));
  }
  EXPECT_TRUE(files().RenameToFree(folder.Path(u"old"), folder.Path(u"free")));
  EXPECT_EQ(ReadWholeFile(folder.HostPath("free")), "new");
  EXPECT_TRUE(files().Remove(folder.Path(u"free")));
  EXPECT_FALSE(files().Remove(folder.Path(u"free")));
}

TEST(Files, ListsWhatThePathsOfTheProgramCanName) {
  const TempFolder folder;
  for (const char* name : {"日記.csv", ".hidden", "back\\slash", "not\xFFutf8"}) {
    WriteWholeFile(folder.HostPath(name), "");
  }
  ASSERT_EQ(mkfifo(folder.HostPath("pipe").c_str(), 0600), 0);
  ASSERT_TRUE(files().MakeFolder(folder.Path(u"folder")));
  WriteWholeFile(folder.HostPath("folder/inner"), "");
  ASSERT_EQ(symlink("folder", folder.HostPath("link").c_str()), 0);
  ASSERT_EQ(symlink(".hidden", folder.HostPath("file link").c_str()), 0);
  ASSERT_EQ(symlink("nowhere", folder.HostPath("broken").c_str()), 0);
  const auto entries = files().List(folder.Path(u""));
  ASSERT_TRUE(entries);
  std::map<std::u16string, bool> listed;
  for (const FolderEntry& entry : *entries) listed[entry.name] = entry.isFolder;
  const std::map<std::u16string, bool> expected = {{u"日記.csv", false},
                                                   {u".hidden", false},
                                                   {u"folder", true},
                                                   {u"link", true},
                                                   {u"file link", false}};
  EXPECT_EQ(listed, expected);
  EXPECT_FALSE(files().List(folder.Path(u".hidden")));
  EXPECT_FALSE(files().List(folder.Path(u"missing")));

  EXPECT_FALSE(files().RemoveFolder(folder.Path(u"folder"))) << "it is not empty";
  EXPECT_FALSE(files().RemoveFolder(folder.Path(u"file link"))) << "it is no folder";
  EXPECT_TRUE(files().RemoveFolder(folder.Path(u"link")));
  EXPECT_TRUE(files().Exists(folder.Path(u"folder\\inner"))) << "the link alone goes";
}

}  // namespace
