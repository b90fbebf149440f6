// The rows and markers of the map on a real data file, and the commands on them.
#include "views/map_view.h"

#include "views/diary.h"
#include "views/selection.h"

namespace views {
namespace {

class MapView : public Diary {
 protected:
  MapView() { pane.Resize(240, 160); }

  void AddAt(char16_t number, std::optional<std::u16string> latitude,
             std::optional<std::u16string> longitude) {
    store::Action action;
    action[store::kActId] = u"ID201006230000000" + std::u16string(1, number);
    action[store::kStaDateTime] = u"2010/06/23 1" + std::u16string(1, number) + u":00:00";
    action[store::kEndDateTime] = u"2010/06/24 08:00:00";
    action[store::kLatitude] = latitude;
    action[store::kLongitude] = longitude;
    action[store::kMemo] = u"a\r\nb";
    Add(action);
  }

  MapPane pane;
};

TEST_F(MapView, TheRowsAreThoseOfTheSpanningDayWithANumber) {
  app.DayVwMltDayMode = 1;
  AddAt(u'1', u"35.000000", u"139.000000");
  AddAt(u'2', u"-33.500000", std::nullopt);
  AddAt(u'3', u"37.000000", u"-141.500000");
  const ViewRows rows = SetDataMapViewForLV(app, pane);
  using Texts = std::vector<std::u16string>;
  EXPECT_EQ(rows.cells[1], (Texts{u"2", u"12:00-06/24", u"", u"", u"ab"}));
  EXPECT_EQ(rows.newRowColumn, 1);
  ASSERT_EQ(pane.MapItems.size(), 3u);
  EXPECT_FALSE(pane.MapItems[1].valid) << "half a position is none";
  EXPECT_TRUE(pane.MapItems[2].valid);
  EXPECT_DOUBLE_EQ(36, pane.mLat) << "the average of the two that have one";
  EXPECT_DOUBLE_EQ(-1.25, pane.mLon);
}

TEST_F(MapView, TheReferenceIsTakenOnce) {
  for (const char16_t number : {u'1', u'2'}) {
    AddAt(number, u"1" + std::u16string(308, u'7'), u"1");
  }
  pane.mLat = 1;
  SetDataMapViewForLV(app, pane);
  EXPECT_EQ(pane.mLat, 36.5626) << "a sum that is no number is no reference";
  AddAt(u'4', u"40", u"20");
  app.FindWhere = u"f_nchActId = 'ID2010062300000004'";
  SetDataMapViewForLV(app, pane);
  EXPECT_EQ(pane.mLat, 40);
  pane.MoveTo({50, 30});
  SetDataMapViewForLV(app, pane);
  EXPECT_EQ(pane.mLat, 50) << "a later fill leaves the map where the user has moved it";
}

TEST_F(MapView, TheCommandsNeedAnActionWithAPosition) {
  AddAt(u'1', u"35.6895", u"139.6917");
  AddAt(u'2', std::nullopt, u"139");
  const ViewRows rows = SetDataMapViewForLV(app, pane);
  pane.Ox = 7;
  EXPECT_TRUE(FxMapMove(pane, std::vector{0, 1}));
  EXPECT_EQ(pane.Ox, 120);
  EXPECT_EQ(pane.mLat, 35.6895);
  host.answers = {"位置情報なし|このアクションは位置情報が取得されていません。",
                  "移動不可|有効なアクションが選択されていません。",
                  "位置情報なし|このアクションは位置情報が取得されていません。",
                  "変更不可|有効なアクションが選択されていません。",
                  "Error|CMainWnd::OnEditDispMap Select Err (ln=1, hr=80004003)"};
  EXPECT_FALSE(FxMapMove(pane, std::vector{1}));
  EXPECT_FALSE(FxMapMove(pane, std::vector{2})) << "the row for a new one";
  for (const int row : {0, 1, 2}) OnEditDispMap(app, rows, row);
  store::DisconnectDataFile();
  OnEditDispMap(app, rows, 0);
  ASSERT_EQ(host.links.size(), 1u);
  EXPECT_TRUE(host.links[0].ends_with(u"&ll=35.689500,139.691700&z=14"));
}

}  // namespace
}  // namespace views
