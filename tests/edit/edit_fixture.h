// What the tests of the edit screen share: three Actions of one day, on which it is 10:45.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "edit/edit_action.h"
#include "platform/utf.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/store_fixture.h"

namespace edit_test {

class EditTest : public store_test::StoreTest {
 protected:
  EditTest() {
    core::SetCurDate(u"2010/06/23");
    CreateFile();
    morning = InsertAction(u"2010/06/23 09:00:00", u"2010/06/23 10:00:00", u"会社");
    noon = InsertAction(u"2010/06/23 12:00:00", u"2010/06/23 13:00:00", u"レストラン");
    evening = InsertAction(u"2010/06/23 19:00:00", u"2010/06/23 20:00:00", u"自宅");
    store::ReloadActionIndex(app);
  }

  // The screen on a position of the index.
  edit::CEditAction OpenAt(int index, edit::OpenMode mode = edit::kOpenChange) {
    app.SelIndex = index;
    edit::CEditAction screen(app);
    EXPECT_TRUE(screen.Open(mode));
    return screen;
  }
  // Chooses in the editor that a field opens.
  static void Pick(edit::CEditAction& screen, int controlId, std::u16string_view text) {
    screen.OnCommand(controlId);
    screen.editorText = text;
    screen.ChooseEditor();
  }

  static store::Action Read(std::u16string_view id) {
    store::Action action;
    EXPECT_EQ(Users().ReadById(id, action), 0);
    return action;
  }

  // One column of a stored Action, "(none)" where it is NULL.
  static std::string Stored(std::u16string_view id, store::ActionColumn column) {
    const store::Action action = Read(id);
    return action[column] ? platform::ToUtf8(*action[column]) : "(none)";
  }

  std::u16string morning, noon, evening;  // ids
};

}  // namespace edit_test
