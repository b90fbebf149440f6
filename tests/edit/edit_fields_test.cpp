#include "edit/edit_action.h"
#include "edit/edit_fixture.h"

namespace edit {
namespace {

class EditFields : public edit_test::EditTest {
 protected:
  CEditAction screen = OpenAt(1);
};

TEST_F(EditFields, TakeATypedTime) {
  const std::tuple<const char*, int, std::u16string> refused[] = {
      {"the end of the day is no entry here", kIdEndTime, u"2400"},
      {"nor is a whole day an end", kIdEndTime, u"<終日>"},
      {"nothing typed", kIdStartTime, u""},
      {"no such minute", kIdStartTime, u"1260"},
  };
  for (const auto& [why, control, typed] : refused) {
    SCOPED_TRACE(why);
    host.answers = {"入力した時刻の値が不正です。入力値を見直してください。"};
    Pick(screen, control, typed);
    EXPECT_EQ(screen.editor, Editor::kNone);
    EXPECT_EQ(screen.fields.times.staTime, u"12:00");
    EXPECT_EQ(screen.fields.times.endTime, u"13:00");
    EXPECT_FALSE(screen.dirty);
  }
  Pick(screen, kIdEndTime, u"9:5");
  EXPECT_EQ(screen.fields.times.endTime, u"09:05");
  EXPECT_TRUE(screen.dirty);
}

TEST_F(EditFields, ARefusedTimeStopsTheCommand) {
  screen.OnCommand(kIdStartTime);
  screen.editorText = u"soon";
  host.answers = {"入力した時刻の値が不正です。"};
  screen.OnCommand(kIdClose);
  EXPECT_FALSE(screen.ended);
  screen.OnCommand(kIdClose);
  EXPECT_EQ(screen.ended, 2);
}

TEST_F(EditFields, OfferHalfHours) {
  screen.OnCommand(kIdStartTime);
  EXPECT_EQ(screen.EditorRows().size(), 49u);
  EXPECT_EQ(screen.EditorRows().front(), u"<終日>");
  EXPECT_EQ(screen.EditorRows()[25], u"12:00");
  EXPECT_EQ(screen.EditorRow(), 25);
  screen.OnCommand(kIdEndTime);
  EXPECT_EQ(screen.EditorRows().size(), 48u);
  screen.editorText = u"13:20";
  EXPECT_EQ(screen.EditorRow(), 26);
  screen.DropEditor();
  EXPECT_FALSE(screen.dirty);
  screen.fields.times.endTime.clear();
  screen.OnCommand(kIdEndTime);
  EXPECT_EQ(screen.editorText, u"11:30");
}

TEST_F(EditFields, AFieldShowsNoMoreThanIsStored) {
  app.EditOpeCont = 1;
  screen.OnCommand(kIdMemoInput);
  const std::u16string shown(500, u'あ');
  const struct {
    const char* why;
    int control;
    store::ActionColumn column;
    std::u16string& field;
    std::u16string typed;
    size_t length;
  } rows[] = {
      {"one more", kIdPlace, store::kPlace, screen.fields.place, shown + u"い", 500},
      {"no half character", kIdCategory1, store::kCategory1, screen.fields.category1,
       shown.substr(1) + u"\U00020BB7", 499},
      {"a memo", kIdMemo, store::kMemo, screen.fields.memo, std::u16string(3000, u'う'), 2000},
      {"no half line end", kIdMemo, store::kMemo, screen.fields.memo,
       std::u16string(1999, u'え') + u"\nお", 1999},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    Pick(screen, row.control, row.typed);
    EXPECT_EQ(row.field, row.typed.substr(0, row.length));
    screen.OnCommand(kIdWrite);
    EXPECT_EQ(Read(noon)[row.column], row.field);
  }
  EXPECT_EQ(app.PlaceHistory.Entries(), std::vector{shown});
  screen.dirty = false;
  Pick(screen, kIdPlace, shown + u"い");
  EXPECT_FALSE(screen.dirty) << "nothing is left of the change";
}

TEST_F(EditFields, TheMemoListKeepsTheLineBreaksOfAnUntouchedMemo) {
  screen.fields.memo = u"一行目\r\n二行目";
  screen.OnCommand(kIdMemo);
  EXPECT_EQ(screen.EditorRows().front(), u"<複数行枠で入力>");
  EXPECT_EQ(screen.editorText, u"一行目二行目");
  screen.OnCommand(kIdClose);
  EXPECT_EQ(screen.fields.memo, u"一行目\r\n二行目");
  EXPECT_FALSE(screen.dirty);
  EXPECT_EQ(app.MemoHistory.Entries().front(), u"一行目\r\n二行目");
}

TEST_F(EditFields, TheTopRowOfTheMemoListOpensTheEdit) {
  screen.fields.memo = u"一行目\n";
  Pick(screen, kIdMemo, u"<複数行枠で入力>");
  ASSERT_EQ(screen.editor, Editor::kMemoEdit);
  EXPECT_EQ(screen.editorText, u"一行目\n");
  screen.ChooseEditor();
  EXPECT_FALSE(screen.dirty) << "the form of its line ends is no change";
  screen.OnCommand(kIdMemo);
  screen.editorText = u"<複数行枠で入力>";
  screen.OnCommand(kIdCategory1);  // the row was marked but not chosen
  EXPECT_EQ(screen.fields.memo, u"一行目\n");
}

TEST_F(EditFields, TheMemoButtonSwitchesTheKindOrTheOpenEditor) {
  screen.OnCommand(kIdMemoInput);
  EXPECT_EQ(screen.editor, Editor::kNone);
  screen.OnCommand(kIdMemo);
  EXPECT_EQ(screen.editor, Editor::kMemoEdit);
  screen.editorText = u"一\n二";
  screen.OnCommand(kIdMemoInput);
  EXPECT_EQ(screen.editor, Editor::kMemoList);
  EXPECT_EQ(screen.editorText, u"一二");
  screen.OnCommand(kIdMemoInput);
  EXPECT_EQ(screen.editor, Editor::kMemoEdit);
  EXPECT_EQ(screen.editorText, u"一\r\n二");
}

}  // namespace
}  // namespace edit
