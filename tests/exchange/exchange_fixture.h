// What the tests of finding and exchanging share: a data file of their own.
#pragma once

#include <string>
#include <string_view>

#include "store/action_index.h"
#include "store/store_fixture.h"

namespace exchange {

class ExchangeTest : public store_test::StoreTest {
 protected:
  ExchangeTest() {
    CreateFile();
    core::SetCurDate(u"2010/06/23");
  }

  void Insert(const store::Action& action) {
    InsertAction(action);
    EXPECT_EQ(store::ReloadActionIndex(app), 0);
  }

  // Of the 23rd of June 2010; its other columns are absent.
  static store::Action Of(std::u16string_view start, std::u16string_view end) {
    const std::u16string day = u"2010/06/23 ";
    return MakeAction(day + std::u16string(start), day + std::u16string(end));
  }

  // The last digits of the ids of the index.
  std::string Found() const {
    std::string found;
    for (int i = 0; i < app.IndexCount; ++i) {
      const std::u16string id = app.ActIds.At(static_cast<size_t>(i));
      found += static_cast<char>(id.back());
    }
    return found;
  }
};

}  // namespace exchange
