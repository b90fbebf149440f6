#include "platform/device_paths.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;
using platform::FromHostPath;
using platform::FromTypedPath;
using platform::ToHostPath;

TEST(DevicePaths, NamesTheSameFileOnBothSides) {
  const std::pair<const char16_t*, const char*> rows[] = {
      {u"\\", "/"},
      {u"\\home\\a\\user.sdf", "/home/a/user.sdf"},
      {u"\\日記\\😀.txt", "/\xE6\x97\xA5\xE8\xA8\x98/\xF0\x9F\x98\x80.txt"},
  };
  for (const auto& [device, host] : rows) {
    SCOPED_TRACE(host);
    EXPECT_EQ(ToHostPath(device), host);
    EXPECT_EQ(FromHostPath(host), device);
  }
}

TEST(DevicePaths, RefusesWhatTheOtherSideCannotName) {
  EXPECT_FALSE(ToHostPath(u"\\a\0b"s)) << "the host would open \\a";
  EXPECT_FALSE(ToHostPath(u"\\a\xD83D")) << "half a pair at the end";
  EXPECT_FALSE(ToHostPath(u"\\\xDE00\xD83D")) << "halves turned round";
  EXPECT_FALSE(FromHostPath("/a\\b")) << "would read as a folder";
  EXPECT_FALSE(FromHostPath("/\x93\xFA\x8B\x4C")) << "a name in another encoding";
  EXPECT_FALSE(FromHostPath("/\xED\xA0\xBD")) << "half a pair in three bytes";
  EXPECT_FALSE(FromHostPath("/\xED\xA0\xBD\xED\xB8\x80")) << "a pair in six bytes";
}

TEST(DevicePaths, TakesSlashesFromTheUser) {
  EXPECT_EQ(FromTypedPath(u"/home/a\\b"), u"\\home\\a\\b");
}

}  // namespace
