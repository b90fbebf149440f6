// Rows to Actions, and the delete of several rows, on a real data file.
#include "views/selection.h"

#include "views/day_view.h"
#include "views/diary.h"
#include "views/list_view.h"

namespace views {
namespace {

using platform::Answer;

class Selection : public Diary {
 protected:
  Selection() { Fill(); }

  // With these four alone.
  void Fill() {
    for (int i = 0; i < app.IndexCount; ++i) Users().Delete(app.ActIds.At(static_cast<size_t>(i)));
    Add(u"01", u"2010/06/20 08:00:00", u"2010/06/25 09:00:00");
    Add(u"02", u"2010/06/21 08:00:00", u"2010/06/22 09:00:00");
    Add(u"03", u"2010/06/23 10:00:00", u"2010/06/23 11:00:00");
    Add(u"04", u"2010/06/23 12:00:00", u"2010/06/23 13:00:00");
  }

  std::u16string LeftIds() const {
    std::u16string ids;
    for (int i = 0; i < app.IndexCount; ++i) {
      ids += app.ActIds.At(static_cast<size_t>(i)).back();
    }
    return ids;
  }
};

TEST_F(Selection, ARowMeansTheActionThatItShows) {
  const std::tuple<ViewRows, int, int, const char*> cases[] = {
      {SetDataDayViewForSingle(app), 1, 3, "counted from the day's first"},
      {SetDataDayViewForSingle(app), 2, -1, "the row of a new Action"},
      {SetDataDayViewForSingle(app), -1, -1, "no row"},
      {SetDataDayViewForMulti(app), 1, 2, "the Action of the 21st is not among the rows"},
      {SetDataListView(app), 0, 3, "newest first"},
      {SetDataListView(app), 3, 0, "down to the oldest"},
      {SetDataListView(app), 4, -1, "the row of a new Action on a page that is not full"},
  };
  for (const auto& [view, row, position, why] : cases) {
    SCOPED_TRACE(why);
    app.SelIndex = -7;
    EXPECT_EQ(SelectRow(app, view, row), position >= 0);
    EXPECT_EQ(app.SelIndex, position >= 0 ? position : -7);
    if (position >= 0) {
      EXPECT_EQ(app.SelActId, app.ActIds.At(static_cast<size_t>(position)));
    }
  }
}

TEST_F(Selection, WithoutAnActionTheCommandsSaySo) {
  const ViewRows rows = SetDataDayViewForSingle(app);
  host.answers = {"変更不可|有効なアクションが選択されていません。",
                  "削除不可|有効なアクションが選択されていません。"};
  EXPECT_FALSE(SelectRowToChange(app, rows, 2));
  const std::vector<int> newRow = {2};
  EXPECT_FALSE(FxEditDelete(app, rows, newRow));
  EXPECT_EQ(host.messages[0].icon, platform::Icon::kWarning);
}

TEST_F(Selection, DeleteTakesTheActionsOfTheMarkedRows) {
  const std::u16string one = u"この", two = u"これらの 2個の";
  const std::tuple<std::vector<int>, Answer, std::u16string, std::u16string, const char*> cases[] =
      {
          {{0, 1}, Answer::kNo, two, u"1234", "No"},
          {{2, 3}, Answer::kYes, one, u"123", "of a spanning day, with the row of a new Action"},
          {{0, 1}, Answer::kYes, two, u"24", "the Action between the two is not on show and stays"},
      };
  for (const auto& [marked, answer, which, left, why] : cases) {
    SCOPED_TRACE(why);
    Fill();
    app.FindWhere = u"1 = 1";
    host.answers = {answer};
    EXPECT_EQ(FxEditDelete(app, SetDataDayViewForMulti(app), marked), answer == Answer::kYes);
    EXPECT_EQ(host.messages.back().text, which + u"アクションを削除しますか？");
    EXPECT_EQ(host.messages.back().title, u"アクションの削除の確認");
    EXPECT_EQ(host.messages.back().icon, platform::Icon::kQuestion);
    EXPECT_EQ(LeftIds(), left);
    EXPECT_EQ(app.FindWhere.has_value(), answer == Answer::kNo) << "a delete ends the find";
  }
}

TEST_F(Selection, DeleteMeansTheRowsThatWereAskedAbout) {
  struct TurningHost : testing_support::FakeHost {
    Answer ShowMessage(const platform::Message&) override {
      rows->RowActIds.front() = rows->RowActIds.back();
      return Answer::kYes;
    }
    ViewRows* rows;
  } turning;
  ViewRows rows = SetDataDayViewForMulti(app);
  turning.rows = &rows;
  const std::vector<int> marked = {0};
  EXPECT_TRUE(FxEditDelete(app, rows, marked));
  EXPECT_EQ(LeftIds(), u"234") << "though the rows were filled again while the question stood";
}

}  // namespace
}  // namespace views
