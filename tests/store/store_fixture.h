// A data file of the test's own in a temporary folder, and an application object for it.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "core/app_state.h"
#include "core/text.h"
#include "datafile/data_file.h"
#include "platform/utf.h"
#include "store/session.h"
#include "support/fake_host.h"
#include "support/temp_folder.h"

namespace store_test {

class StoreTest : public testing::Test {
 protected:
  ~StoreTest() override { store::DisconnectDataFile(); }

  void CreateFile() { ASSERT_EQ(datafile::CreateDataFile(path), 0); }

  static store::Action MakeAction(std::u16string_view start, std::u16string_view end) {
    store::Action action;
    action[store::kStaDateTime] = start;
    action[store::kEndDateTime] = end;
    return action;
  }

  // An Action with an id of its own; it ends at its start if `end` is empty.
  std::u16string InsertAction(std::u16string_view start, std::u16string_view end = {},
                              std::u16string_view place = {}) {
    store::Action action = MakeAction(start, end.empty() ? start : end);
    if (!place.empty()) action[store::kPlace] = place;
    return InsertAction(action);
  }
  std::u16string InsertAction(store::Action action) {
    action[store::kActId] = u"ID" + core::ZeroPadded(++lastId_, 16);
    EXPECT_EQ(Users().Insert(action), 0);
    return *action[store::kActId];
  }

  // The number of Actions in a file, -1 if it doesn't open. No file is open after it.
  static int RowsIn(std::u16string_view file) {
    store::DisconnectDataFile();
    core::CAppState other;
    other.DataFile = file;
    const int opened = datafile::OpenDataFile(other);
    store::DisconnectDataFile();
    return opened == 0 ? other.IndexCount : -1;
  }
  std::string FileBytes() const { return testing_support::ReadWholeFile(hostPath); }

  static store::CUserDataTable& Users() { return *store::dbSession().UserTable; }

  testing_support::FakeHost host;
  testing_support::TempFolder folder;
  core::CAppState app;
  std::u16string path = folder.Path(u"user.sdf");
  std::string hostPath = folder.HostPath("user.sdf");

 private:
  int lastId_ = 0;
};

// Readable in the output of a failed test.
inline std::string Readable(const std::optional<std::u16string>& text) {
  return text ? platform::ToUtf8(*text) : "(none)";
}

}  // namespace store_test
