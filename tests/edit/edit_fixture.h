// What the tests of the edit screen share: three Actions of one day in a data file of their own.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "core/app_state.h"
#include "core/settings.h"
#include "core/text.h"
#include "platform/utf.h"
#include "store/action_index.h"
#include "store/data_file.h"
#include "store/session.h"
#include "support/fake_host.h"
#include "support/temp_folder.h"

namespace edit_test {

class EditTest : public testing::Test {
 protected:
  EditTest() {
    core::SetDefaults(app);
    app.TimeInitForNewMode = 1;
    core::SetCurDate(u"2010/06/23");
    EXPECT_EQ(store::CreateDataFile(folder.Path(u"user.sdf")), 0);
    morning = Insert(u"2010/06/23 09:00:00", u"2010/06/23 10:00:00", u"会社");
    noon = Insert(u"2010/06/23 12:00:00", u"2010/06/23 13:00:00", u"レストラン");
    evening = Insert(u"2010/06/23 19:00:00", u"2010/06/23 20:00:00", u"自宅");
    store::ReloadActionIndex(app);
  }

  ~EditTest() override { store::DisconnectDataFile(); }

  std::u16string Insert(std::u16string_view start, std::u16string_view end,
                        std::u16string_view place) {
    store::Action action;
    action[store::kActId] = u"ID" + core::ZeroPadded(++lastId_, 16);
    action[store::kStaDateTime] = start;
    action[store::kEndDateTime] = end;
    action[store::kPlace] = place;
    EXPECT_EQ(Users().Insert(action), 0);
    return *action[store::kActId];
  }

  static store::CUserDataTable& Users() { return *store::dbSession().UserTable; }

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

  std::string LastMessage() const {
    return host.messages.empty() ? "" : platform::ToUtf8(host.messages.back().text);
  }
  std::string LastTitle() const {
    return host.messages.empty() ? "" : platform::ToUtf8(host.messages.back().title);
  }

  testing_support::FakeHost host;  // 2010/06/23 10:45
  testing_support::TempFolder folder;
  core::CAppState app;
  std::u16string morning, noon, evening;  // ids

 private:
  int lastId_ = 0;
};

}  // namespace edit_test
