// Each allocation of the engine's fails once: what is reported is true, and the next write works.
#include <sqlite3.h>

#include "store/action_index.h"
#include "store/store_fixture.h"

namespace store_test {
namespace {

using namespace store;

int untilFault = -1;  // how many allocations are made before one fails; below 0: none does
sqlite3_mem_methods real;

bool Fails() {
  return untilFault >= 0 && untilFault-- == 0;
}

class OutOfMemory : public StoreTest {
 protected:
  OutOfMemory() {
    path = memory_.Path(u"user.sdf");
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &real);
    sqlite3_mem_methods failing = real;
    failing.xMalloc = [](int size) { return Fails() ? nullptr : real.xMalloc(size); };
    failing.xRealloc = [](void* block, int size) {
      return Fails() ? nullptr : real.xRealloc(block, size);
    };
    sqlite3_config(SQLITE_CONFIG_MALLOC, &failing);
    sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0);
  }
  ~OutOfMemory() override {
    DisconnectDataFile();
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_MALLOC, &real);
  }

  testing_support::TempFolder memory_{"/dev/shm"};
};

TEST_F(OutOfMemory, NothingIsReportedThatIsNot) {
  CreateFile();
  int rows = 0;
  bool reached = true;
  for (int allocation = 0; reached; allocation += 1) {
    SCOPED_TRACE(allocation);
    ASSERT_EQ(ConnectDataFile(path), S_OK);
    Action action = MakeAction(u"2010/06/23 10:00:00", u"2010/06/23 11:00:00"), read;
    action[kActId] = u"ID9" + core::ZeroPadded(allocation, 15);
    action[kMemo] = std::u16string(2000, u'長');
    untilFault = allocation;
    const HRESULT written = Users().Insert(action);
    const HRESULT got = Users().ReadById(*action[kActId], read);
    const int loaded = LoadActionIndex(app);
    reached = untilFault < 0;
    untilFault = -1;
    rows += written == S_OK;
    EXPECT_TRUE(got != S_OK || (written == S_OK && read[kMemo] == action[kMemo]));
    EXPECT_TRUE(loaded != 0 || app.IndexCount == rows);
    InsertAction(u"2010/06/23 10:00:00");
    EXPECT_EQ(LoadActionIndex(app), 0);
    EXPECT_EQ(app.IndexCount, ++rows);
    EXPECT_EQ(app.ActIds.At(static_cast<size_t>(rows) - 2).size(), 18u);
  }
}

}  // namespace
}  // namespace store_test
