// The memo as a template: what is stored, what is shown, and when it is run again.
#include "edit/edit_action.h"
#include "edit/edit_fixture.h"

namespace edit {
namespace {

using platform::Answer;

class EditActionText : public edit_test::EditTest {
 protected:
  EditActionText() { app.ActTxtMode = 2; }

  CEditAction OpenWithMemo(std::u16string_view memo) {
    store::Action action = Read(noon);
    action[store::kMemo] = memo;
    EXPECT_EQ(Users().Update(noon, action), 0);
    app.SelActId = noon;
    return OpenAt(1);
  }

  static std::string Shown(const CEditAction& screen) {
    return platform::ToUtf8(screen.ShownMemo());
  }
};

TEST_F(EditActionText, RunsAgainAfterWhateverChangesAField) {
  CEditAction screen = OpenWithMemo(u"#SIPlace#で#SISubject#");
  EXPECT_EQ(Shown(screen), "レストランで");
  Pick(screen, kIdPlace, u"公園");
  EXPECT_EQ(Shown(screen), "公園で");
  Pick(screen, kIdMemo, u"#SIStaDateTime#");
  Pick(screen, kIdStartTime, u"11:00");
  EXPECT_EQ(Shown(screen), "2010/06/23 11:00:00");
  screen.OnCommand(kIdStartNow);
  EXPECT_EQ(Shown(screen), "2010/06/23 10:45:00");
  host.answers = {Answer::kNo};
  screen.OnCommand(kIdNext);
  EXPECT_EQ(Shown(screen), "") << "the next Action's memo";
}

TEST_F(EditActionText, RunsAfterNothingElse) {
  host.now.second = 1;
  CEditAction screen = OpenWithMemo(u"#LocalTime()#");
  host.answers = {"位置情報が未取得です。", Answer::kNo};
  for (const int command : {kIdToolContinue, kIdMenuAtStart, kIdMapLink, kIdMenuDelete, kIdMemo}) {
    host.now.second += 1;
    screen.OnCommand(command);
    EXPECT_EQ(Shown(screen), "2010/06/23 10:45:01") << command;
  }
  screen.ChooseEditor();
  EXPECT_EQ(Shown(screen), "2010/06/23 10:45:06") << "a editor closes";
  host.now.second += 1;
  screen.OnCommand(kIdWrite);
  EXPECT_EQ(Shown(screen), "2010/06/23 10:45:07");
}

TEST_F(EditActionText, TheTemplateIsWhatIsEditedAndStored) {
  CEditAction screen = OpenWithMemo(u"#SIPlace#で");
  screen.OnCommand(kIdMemo);
  EXPECT_EQ(platform::ToUtf8(screen.editorText), "#SIPlace#で");
  screen.editorText = u"#SIPlace#にて";
  screen.ChooseEditor();
  EXPECT_TRUE(screen.dirty);
  EXPECT_EQ(Shown(screen), "レストランにて");
  screen.OnCommand(kIdWrite);
  EXPECT_EQ(Stored(noon, store::kMemo), "#SIPlace#にて");
}

TEST_F(EditActionText, SwitchedOffTheMemoIsShownAsItStands) {
  app.ActTxtMode = 1;
  EXPECT_EQ(Shown(OpenWithMemo(u"#SIPlace#で")), "#SIPlace#で");
}

}  // namespace
}  // namespace edit
