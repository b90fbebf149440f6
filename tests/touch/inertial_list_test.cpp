// The inertial list without its window: where its rows stand, how it follows and coasts, and its
// messages.
#include "touch/inertial_list.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace touch {
namespace {

constexpr int kRowHeight = 20;

class InertListTest : public testing::Test {
 protected:
  InertListTest() { Fill(30); }

  void Fill(int rows) {
    list.Reset();
    for (int i = 0; i < rows; ++i) list.Add({0, 0, std::u16string(1, static_cast<char16_t>(i))});
    list.SetHeight(-1, kRowHeight);
    list.Resize(100, 140);  // seven rows
  }
  // Drags by `dy` within `milliseconds` and lets go.
  void Fling(int dy, uint32_t milliseconds) {
    list.Press({50, 70}, 1000);
    list.Move({50, 70 + dy}, 1000 + milliseconds);
    list.Release({50, 70 + dy}, 1000 + milliseconds);
  }
  // Ticks until the coast ends.
  int Coast() {
    int ticks = 0;
    for (; list.IsCoasting() && ticks < 1000; ++ticks) list.CoastTick();
    return ticks;
  }

  std::vector<int> sent;
  InertList list{{{},
                  [this](int code) { sent.push_back(code); },
                  {},
                  [](intptr_t) { return 20; },
                  [] { return intptr_t{7}; }},
                 0,
                 320};
};

// Writes down which rows stand where.
class Recording : public ListCanvas {
 public:
  void Fill(const ListRect& area, uint32_t colour) override {
    out +=
        "fill " + std::to_string(area.top) + "-" + std::to_string(area.bottom) + " " + Hex(colour);
  }
  void DrawText(const ListRect& area, int row, std::u16string_view, uint32_t colour) override {
    out += "row " + std::to_string(row) + "@" + std::to_string(area.left) + "," +
           std::to_string(area.top) + " " + Hex(colour);
  }
  std::string out;

 private:
  static std::string Hex(uint32_t colour) {
    char text[16];
    snprintf(text, sizeof text, "%06X; ", colour);
    return text;
  }
};

TEST_F(InertListTest, ARowAtAnOffset) {
  const std::tuple<const char*, int, int, int, int, int> rows[] = {
      {"at rest", 0, 3, 0, 3, 0},
      {"a little down: the row above covers the edge", 0, 3, 5, 2, -15},
      {"above the first row there are rows without data", 0, 0, 25, -2, -15},
      {"up by a whole row: that row still counts", 0, 3, -20, 3, -20},
      {"and one pixel more", 0, 3, -21, 4, -1},
      {"below the last row", 0, 29, -45, 31, -5},
      {"a wheel comes from the end", ILS_WRAP, 0, 5, 29, -15},
      {"and goes on at the beginning", ILS_WRAP, 29, -25, 0, -5},
  };
  for (const auto& [why, style, start, offset, found, edge] : rows) {
    SCOPED_TRACE(why);
    list.ChangeStyle(ILS_WRAP, style);
    int y = 99;
    EXPECT_EQ(list.RowAtOffset(start, offset, y), found);
    EXPECT_EQ(y, edge);
  }
  list.SetHeight(4, 50);
  int y = 0;
  EXPECT_EQ(list.RowAtOffset(3, -60, y), 4);
  EXPECT_EQ(y, -40);
}

// v = 1 px/ms: 499.99998 ms to rest in single precision, 24 steps of 20 ms and the one on release.
TEST_F(InertListTest, AFlingCoastsWithConstantDeceleration) {
  list.SetTop(20);
  Fling(100, 100);
  EXPECT_TRUE(list.IsCoasting());
  EXPECT_EQ(Coast(), 25);
  EXPECT_EQ(sent, (std::vector<int>{ILN_COASTSTART, ILN_COASTEND}));
  EXPECT_EQ(list.Top(), 2);  // 100 by the drag, 250 by the coast: 350 pixels are 17.5 rows
  EXPECT_FALSE(list.IsDragging());
}

TEST_F(InertListTest, CoastsEndWhereTheyMust) {
  const std::tuple<const char*, int, int, int, uint32_t, int, int> rows[] = {
      {"past the end the last rows stay", 0, 0, -120, 20, 300, 24},
      {"past the beginning", 0, 10, 120, 20, 300, 0},
      {"no coast is longer than 201 steps", ILS_WRAP, 0, 120, 1, 201, -1},
      {"slow: one step", 0, 10, 20, 1000, 1, 9},
  };
  for (const auto& [why, style, top, dy, milliseconds, ticks, reached] : rows) {
    SCOPED_TRACE(why);
    list.ChangeStyle(ILS_WRAP, style);
    list.SetTop(top);
    Fling(dy, milliseconds);
    EXPECT_LE(Coast(), ticks);
    EXPECT_TRUE(reached < 0 || list.Top() == reached) << list.Top();
    EXPECT_LT(list.Top(), list.Count());
  }
}

TEST_F(InertListTest, PressesTapsAndDrags) {
  list.Press({50, 45}, 0);
  EXPECT_EQ(list.Selected(), 2);
  EXPECT_TRUE(list.ShowsPressed(2));
  list.Move({53, 50}, 10);  // five pixels of 320 / 50
  list.Release({53, 50}, 20);
  EXPECT_FALSE(list.IsDragging());
  EXPECT_TRUE(sent.empty());
  list.Press({50, 45}, 0);
  list.Move({60, 45}, 10);
  EXPECT_TRUE(list.IsDragging());
  list.Release({60, 45}, 20);  // sideways: both are sent at once
  EXPECT_EQ(sent, (std::vector<int>{ILN_COASTSTART, ILN_COASTEND}));
  EXPECT_FALSE(list.IsDragging());
  Fill(3);
  list.SetTop(0);
  list.Press({50, 100}, 0);
  EXPECT_EQ(list.Selected(), -1);  // below the rows
}

TEST_F(InertListTest, APressStopsACoastAndNothingElse) {
  list.SetTop(20);
  Fling(100, 100);
  const int pressed = list.Selected();
  list.Press({10, 10}, 2000);
  EXPECT_TRUE(list.IsCoasting());
  list.Release({10, 100}, 2010);
  list.CoastTick();
  EXPECT_FALSE(list.IsCoasting());
  EXPECT_EQ(list.Selected(), pressed);
  EXPECT_EQ(list.Top(), 14);  // 100 by the drag, 19 by the first step
}

// A wheel with 24 rows and any fling shows data in every pixel.
TEST_F(InertListTest, AWheelHasNoEnd) {
  Fill(24);
  list.ChangeStyle(0, ILS_WRAP);
  list.SetTop(22);
  for (const int dy : {-300, 17, 300, -40, 20, -20}) {
    SCOPED_TRACE(dy);
    Fling(dy, 30);
    while (list.IsCoasting()) {
      Recording canvas;
      list.Paint(canvas);
      EXPECT_EQ(canvas.out.find("E0E0E0"), std::string::npos) << list.Top();
      list.CoastTick();
    }
    EXPECT_GE(list.Top(), 0);
    EXPECT_LT(list.Top(), 24);
  }
}

TEST_F(InertListTest, PaintsRowsLinesAndWhatLiesBelow) {
  Fill(1);
  list.SetHeight(0, 30);
  list.Resize(100, 45);
  Recording plain;
  list.Paint(plain);
  EXPECT_EQ(plain.out,
            "fill 0-30 C06040; row 0@0,0 FFFFFF; fill 29-30 F0F0F0; fill 30-50 E0E0E0; ");
  list.ChangeStyle(0, ILS_SHADOW);
  list.Press({5, 5}, 0);
  Recording pressed;
  list.Paint(pressed);
  EXPECT_EQ(pressed.out,
            "fill 0-30 DCDCDC; row 0@1,1 808080; row 0@0,0 000000; fill 29-30 000000; "
            "fill 30-50 E0E0E0; ");
}

TEST_F(InertListTest, KeysStayWithinTheRows) {
  const std::tuple<ListKey, int, int, const char*> rows[] = {
      {ListKey::kEnd, 0, 24, "the last page"},
      {ListKey::kDown, 0, 24, "no further"},
      {ListKey::kHome, 0, 0, "the beginning"},
      {ListKey::kUp, 0, 0, "no further"},
      {ListKey::kUp, ILS_WRAP, 29, "every row of a wheel can be reached by the keys"},
      {ListKey::kDown, ILS_WRAP, 0, "round again"},
  };
  for (const auto& [key, style, top, why] : rows) {
    SCOPED_TRACE(why);
    list.ChangeStyle(0, style);
    list.Key(key);
    EXPECT_EQ(list.Top(), top);
  }
  list.ChangeStyle(ILS_WRAP, 0);
  list.Key(ListKey::kEnd);
  list.Resize(100, 200);
  EXPECT_EQ(list.Top(), 21) << "the last rows fill a higher list";
}

template <typename Type>
intptr_t Address(Type& object) {
  return reinterpret_cast<intptr_t>(&object);
}

TEST_F(InertListTest, MessagesReachEverything) {
  InertItem office{0, 0, u"会社"}, home{0, 0, u"自宅"}, station{0, 0, u"駅"}, copy;
  ListRect rect;
  const auto thirtyRows = reinterpret_cast<intptr_t>(+[](ItemStore&) { return 30; });
  const std::tuple<uint32_t, intptr_t, intptr_t, intptr_t> rows[] = {
      {WM_SETFONT, 5, 0, 0},
      {WM_GETFONT, 0, 0, 7},  // a copy, not what was given
      {ILM_GETHEIGHT, -1, 0, 20},
      {ILM_RESET, 0, 0, 0},
      {ILM_ADD, 0, Address(office), 0},
      {ILM_INSERT, 0, Address(home), 0},
      {ILM_COUNT, 0, 0, 2},
      {ILM_FIND, -1, Address(office), 1},
      {ILM_FIND, 0, Address(station), -1},
      {ILM_SETITEM, 1, Address(station), 0},
      {ILM_GETITEM, 1, Address(copy), 0},
      {ILM_SETDATA, 0, 8, 0},
      {ILM_GETDATA, 0, 0, 8},
      {ILM_GETDATA, 2, 0, -100},
      {ILM_SETHEIGHT, 0, 33, 0},
      {ILM_GETHEIGHT, 0, 0, 33},
      {ILM_GETITEMRECT, 0, Address(rect), 0},
      {ILM_SETTOP, 2, 0, -1},
      {ILM_SETTOP, 1, 0, 0},
      {ILM_GETTOP, 0, 0, 1},
      {ILM_SETSEL, 2, 0, -1},
      {ILM_SETSEL, 0, 0, 0},
      {ILM_GETSEL, 0, 0, 0},
      {0x10042, 0, 0x123456, 0},
      {0x10043, 0, 0, 0x123456},
      {ILM_SETSTYLE, 0, ILS_WRAP | ILS_SHADOW, 0},
      {ILM_SETSTYLE, ILS_SHADOW, 0, 0},
      {ILM_GETSTYLE, 0xFF, 0, ILS_WRAP},
      {ILM_DELETE, 0, 0, 0},
      {ILM_SETOP, 9, thirtyRows, 0},
      {ILM_GETOP, 9, 0, thirtyRows},
      {ILM_COUNT, 0, 0, 30},
  };
  for (const auto& [message, wparam, lparam, answer] : rows) {
    SCOPED_TRACE(message);
    EXPECT_EQ(list.Send(message, wparam, lparam), answer);
  }
  EXPECT_EQ(rect.bottom, 33);
  EXPECT_EQ(copy.text, u"駅");
  list.Send(ILM_FREEITEM, 0, Address(copy));
  EXPECT_EQ(copy.text, std::nullopt);
}

}  // namespace
}  // namespace touch
