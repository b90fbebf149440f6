// What the tests of finding and exchanging share: a data file of their own.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "core/text.h"
#include "datafile/data_file.h"
#include "store/action_index.h"
#include "store/session.h"
#include "support/fake_host.h"
#include "support/temp_folder.h"

namespace exchange {

class ExchangeTest : public testing::Test {
 protected:
  ExchangeTest() {
    EXPECT_EQ(datafile::CreateDataFile(folder.Path(u"user.sdf")), 0);
    core::SetCurDate(u"2010/06/23");
  }
  ~ExchangeTest() override { store::DisconnectDataFile(); }

  void Insert(store::Action action) {
    action[store::kActId] = u"ID" + core::ZeroPadded(++lastId_, 16);
    EXPECT_EQ(store::dbSession().UserTable->Insert(action), 0);
    EXPECT_EQ(store::ReloadActionIndex(app), 0);
  }

  // Of the 23rd of June 2010; its other columns are absent.
  static store::Action Of(std::u16string_view start, std::u16string_view end) {
    store::Action action;
    action[store::kStaDateTime] = u"2010/06/23 " + std::u16string(start);
    action[store::kEndDateTime] = u"2010/06/23 " + std::u16string(end);
    return action;
  }

  // The last two digits of the ids of the index.
  std::string Found() const {
    std::string found;
    for (int i = 0; i < app.IndexCount; ++i) {
      const std::u16string_view id = app.ActIds.At(static_cast<size_t>(i));
      found += static_cast<char>(id.back());
    }
    return found;
  }

  testing_support::FakeHost host;
  testing_support::TempFolder folder;
  core::CAppState app;

 private:
  int lastId_ = 0;
};

}  // namespace exchange
