// A real data file in a temporary folder with Actions for the tests of the views, the application
// object over it, and the current date on 2010/06/23.
#pragma once

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/store_fixture.h"

namespace views {

class Diary : public store_test::StoreTest {
 protected:
  Diary() {
    CreateFile();
    app.SeqViewRng = 10;
    core::SetCurDate(u"2010/06/23");
  }

  // The id is made of `number`, two digits.
  std::u16string Add(std::u16string_view number, std::u16string_view start, std::u16string_view end,
                     std::u16string_view place = u"place", std::u16string_view memo = u"memo") {
    store::Action action;
    action[store::kActId] = u"ID20100623000000" + std::u16string(number);
    action[store::kStaDateTime] = start;
    action[store::kEndDateTime] = end;
    action[store::kPlace] = place;
    action[store::kCategory1] = u"cat";
    action[store::kMemo] = memo;
    return Add(action);
  }
  std::u16string Add(store::Action action) {
    EXPECT_EQ(store::dbSession().UserTable->Insert(action), 0);
    EXPECT_EQ(store::ReloadActionIndex(app), 0);
    return *action[store::kActId];
  }
};

}  // namespace views
