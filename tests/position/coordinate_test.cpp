#include "position/coordinate.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/utf.h"
#include "position/map_link.h"

namespace {

TEST(Coordinate, ReadsAsDegreesMinutesAndSeconds) {
  const struct {
    const char* why;
    double value;
    std::u16string text;
  } rows[] = {
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
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(position::FormatCoordinate(row.value), row.text);
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
  const struct {
    const char* why;
    std::u16string text;
    int result;
    double value;
  } rows[] = {
      {"a usual latitude", u"35/41/22.2", 0, 35.6895},
      {"south", u"-35/41/22.2", 0, -35.6895},
      {"seconds may begin with the point", u"35/41/.5", 0, 35.683472},
      {"a point alone is no second", u"35/41/.", 0, 35.683333},
      {"a negative part of a degree has a sign here", u"-0/30/0", 0, -0.5},
      {"60 and more are taken", u"1/60/3600", 0, 3.0},
      {"empty", u"", 100, 0},
      {"a letter first", u"N35", -100, 0},
      {"a second sign", u"--35", -101, 0},
      {"a sign alone", u"-", 101, 0},
      {"degrees alone", u"35", 102, 0},
      {"a decimal number", u"35.6895", -102, 0},
      {"no minutes yet", u"35/", 200, 0},
      {"empty minutes", u"35//", -200, 0},
      {"minutes alone", u"35/41", 201, 0},
      {"minutes with a point", u"35/41.5", -201, 0},
      {"no seconds yet", u"35/41/", 300, 0},
      {"a blank before the seconds", u"35/41/ 1", -300, 0},
      {"a second point", u"35/41/1.2.3", -301, 0},
      {"a second point right behind the first", u"35/41/..3", -301, 0},
      {"something behind", u"35/41/1 ", -301, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    double value = 77.0;
    EXPECT_EQ(position::ParseCoordinate(row.text, value), row.result);
    EXPECT_NEAR(value, row.result == 0 ? row.value : 77.0, 1e-6);
  }
}

}  // namespace
