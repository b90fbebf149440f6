#include "position/coordinate.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/utf.h"
#include "position/map_link.h"

namespace {

TEST(Coordinate, ReadsAsDegreesMinutesAndSeconds) {
  const std::tuple<const char*, double, std::u16string> rows[] = {
      {"a usual latitude", 35.6895, u"35/41/22.200000"},
      {"south or west", -35.6895, u"-35/41/22.200000"},
      {"nothing", 0.0, u"0/0/0.000000"},
      {"the sign is lost between -1 and 0", -0.5, u"0/30/0.000000"},
      {"no range is checked", 200.0, u"200/0/0.000000"},
      {"degrees wrap at 32 bits", 4294967298.5, u"2/30/0.000000"},
      {"the mark of an absent position is far beyond them", std::numeric_limits<double>::max(),
       u"0/0/0.000000"},
      {"no number", std::numeric_limits<double>::quiet_NaN(), u"0/0/0.000000"},
  };
  for (const auto& [why, value, text] : rows) {
    SCOPED_TRACE(why);
    EXPECT_EQ(position::FormatCoordinate(value), text);
  }
}

TEST(Coordinate, SplitsIntoIntegers) {
  const position::CoordinateParts parts = position::SplitCoordinate(-139.507625);
  EXPECT_EQ(parts.degrees, -139);
  EXPECT_EQ(parts.minutes, 30);
  EXPECT_EQ(parts.seconds, 27);
  EXPECT_NEAR(parts.milliseconds, 450, 1);
}

TEST(MapLink, NamesThePointInDecimalDegrees) {
  const std::string link = platform::ToUtf8(position::MapLink(35.6895, -0.0000004));
  EXPECT_TRUE(link.starts_with("https://")) << link;
  EXPECT_TRUE(link.ends_with("/m/local?hl=ja&ie=UTF8&ll=35.689500,-0.000000&z=14")) << link;
}

TEST(Coordinate, IsReadBack) {
  constexpr double kNone = 77;
  const std::tuple<const char*, std::u16string, double> rows[] = {
      {"a usual latitude", u"35/41/22.2", 35.6895},
      {"south", u"-35/41/22.2", -35.6895},
      {"seconds may begin with the point", u"35/41/.5", 35.683472},
      {"a point alone is no second", u"35/41/.", 35.683333},
      {"a negative part of a degree has a sign here", u"-0/30/0", -0.5},
      {"60 and more are taken", u"1/60/3600", 3.0},
      {"empty", u"", kNone},
      {"a second sign", u"--35", kNone},
      {"a decimal number", u"35.6895", kNone},
      {"minutes with a point", u"35/41.5", kNone},
      {"no seconds yet", u"35/41/", kNone},
      {"a blank before the seconds", u"35/41/ 1", kNone},
      {"a second point", u"35/41/1.2.3", kNone},
      {"something after it", u"35/41/1 ", kNone},
  };
  for (const auto& [why, text, expected] : rows) {
    SCOPED_TRACE(why);
    double value = kNone;
    EXPECT_EQ(position::ParseCoordinate(text, value) == 0, expected != kNone);
    EXPECT_NEAR(value, expected, 1e-6);
  }
}

}  // namespace
