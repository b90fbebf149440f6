#include "core/paths.h"

#include <gtest/gtest.h>

#include "platform/utf.h"
#include "support/fake_host.h"
#include "support/faulty_files.h"
#include "support/temp_folder.h"

namespace {

using namespace core;
using testing_support::FileCall;

TEST(Paths, JoinsBesideTheProgram) {
  testing_support::FakeHost host;
  const std::u16string longName(300, u'n');
  const std::tuple<std::u16string, std::u16string, std::u16string> rows[] = {
      {u"\\app\\Morvenly", u"user.sdf", u"\\app\\user.sdf"},
      {u"\\Morvenly", u"user.sdf", u"\\user.sdf"},
      {u"Morvenly", u"user.sdf", u"\\Morvenly\\user.sdf"},
      {u"", u"user.sdf", u"\\user.sdf"},
      {u"\\app\\Morvenly", longName, u"\\app\\" + longName.substr(0, 255)},
  };
  for (const auto& [program, name, path] : rows) {
    SCOPED_TRACE(platform::ToUtf8(path));
    host.programPath = program;
    EXPECT_EQ(JoinModulePath(name), path);
  }
}

TEST(Paths, TypedOnesLeadToTheSamePlaceFromAnywhere) {
  testing_support::FakeHost host;
  using Path = std::optional<std::u16string>;
  const std::pair<std::u16string, Path> rows[] = {
      {u"", u""},
      {u"/mnt/a.sdf", u"\\mnt\\a.sdf"},
      {u"user.sdf", u"\\morvenly\\user.sdf"},
      {u"a/b.sdf", u"\\morvenly\\a\\b.sdf"},
      {u"~/a.sdf", u"\\home\\a\\a.sdf"},
      {u"~", u"\\home\\a"},
      {u"~a", u"\\morvenly\\~a"},
      {u"C:\\a.sdf", Path()},
      {u"c:a.sdf", Path()},
      {u"日:a.sdf", u"\\morvenly\\日:a.sdf"},
  };
  for (const auto& [typed, path] : rows) {
    EXPECT_EQ(RootedPath(typed), path) << platform::ToUtf8(typed);
  }
  host.homeFolder = u"\\";
  EXPECT_EQ(RootedPath(u"~/a"), u"\\a");
  host.homeFolder = u"";
  EXPECT_EQ(RootedPath(u"~/a"), Path());
}

TEST(Paths, AreStorableWhereTheSettingsGiveThemBack) {
  EXPECT_TRUE(IsStorablePath(u"\\日記 ~\\~ｱ.sdf"));
  for (const char16_t* path : {u"\\José\\a", u"\\a\\¥", u"\\か\u3099", u"\\a\nb", u"\\😀"}) {
    EXPECT_FALSE(IsStorablePath(path)) << platform::ToUtf8(path);
  }
}

TEST(Paths, SplitsAtTheLastBackslash) {
  const std::u16string fits(259, u'a');
  const std::tuple<std::u16string, int, std::u16string, std::u16string> rows[] = {
      {u"\\a\\b\\c.txt", 0, u"\\a\\b", u"c.txt"}, {u"\\a\\", 0, u"\\a", u""},
      {fits + u"\\" + fits, 0, fits, fits},       {u"c.txt", -110, u"old", u"old"},
      {fits + u"a\\c", -101, u"old", u"old"},     {u"c\\a" + fits, -101, u"old", u"old"},
  };
  for (const auto& [path, result, folderPart, namePart] : rows) {
    SCOPED_TRACE(platform::ToUtf8(path));
    std::u16string folder = u"old";
    std::u16string name = u"old";
    EXPECT_EQ(SplitPath(path, folder, name), result);
    EXPECT_EQ(folder, folderPart);
    EXPECT_EQ(name, namePart);
  }
}

TEST(EnsureFolder, MakesParentsFirstOrTellsWhyNot) {
  const testing_support::TempFolder folder;
  testing_support::WriteWholeFile(folder.HostPath("file"), "");
  const std::u16string longest = u"\\" + std::u16string(258, u'a');
  const std::tuple<std::u16string, int, const char*> rows[] = {
      {u"\\", 0, "the root"},
      {folder.Path(u"d\\日記\\"), 0, "two folders"},
      {u"a", -10, "too short"},
      {longest + u"a", -10, "260 characters"},
      {folder.Path(u"file"), -11, "a file"},
      {u"no-such-folder", -12, "no backslash"},
      {folder.Path(u"file\\b"), -13, "a file among the parents"},
      {u"a\\b", -13, "a parent that is too short"},
  };
  for (const auto& [path, result, why] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(EnsureFolder(path), result);
  }
  EXPECT_TRUE(platform::files().Exists(folder.Path(u"d\\日記")));
}

TEST(EnsureFolder, DoesNotLookAtWhatMakingGave) {
  const testing_support::TempFolder folder;
  testing_support::FaultyFiles faulty;
  faulty.Fail(FileCall::kMakeFolder, 1, testing_support::FaultyFiles::kForever);
  EXPECT_EQ(EnsureFolder(folder.Path(u"a\\b")), 0);
  EXPECT_EQ(faulty.Count(FileCall::kMakeFolder), 2);
}

}  // namespace
