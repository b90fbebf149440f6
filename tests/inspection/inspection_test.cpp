// What an inspection finds, each in a diary that is sound but for it.
#include "inspection/inspection.h"

#include "recorder/recording.h"
#include "store/store_fixture.h"

namespace store_test {
namespace {

class Inspection : public StoreTest {
 protected:
  Inspection() {
    CreateFile();
    InsertAction(u"2010/06/22 00:00:00", u"2010/06/22 24:00:00");
    InsertAction(u"2010/06/23 10:00:00", u"2010/06/23 11:00:00");
    recorder::CRecorder recorder(app);
    recorder.Open();
    recorder.OnBtnRec();
  }
  void Spoil(std::u16string_view sql) {
    ASSERT_EQ(store::dbSession().Session->Execute(sql), store::S_OK);
  }
};

TEST_F(Inspection, SaysWhatIsWrongAndWhatCanBeDone) {
  host.answers = {"見つかりませんでした。\n3個のアクション"};
  inspection::OnBtnInspect(app);
  const std::tuple<const char*, std::u16string_view, std::u16string_view, const char*, const char*>
      rows[] = {
          {"no date",
           u"update t_UserData set f_nchStaDateTime = '2010/13/45 10:00:00' where rowid=2",
           u"update t_UserData set f_nchStaDateTime = '2010/06/23 10:00:00' where rowid=2",
           "不正な日時: 1個 (2010/13/45 10:00:00)", "直せます"},
          {"no end", u"update t_UserData set f_nchEndDateTime = null where rowid=2",
           u"update t_UserData set f_nchEndDateTime = '2010/06/23 11:00:00' where rowid=2",
           "不正な日時: 1個", "直せます"},
          {"a day that no text order finds",
           u"update t_UserData set f_nchStaDateTime = '2010/6/023 10:00:00' where rowid=2",
           u"update t_UserData set f_nchStaDateTime = '2010/06/23 10:00:00' where rowid=2",
           "不正な日時: 1個", "直せます"},
          {"beyond the pole",
           u"update t_UserData set f_fltLatitude = '95.0', f_fltLongitude = '139.0' where rowid=2",
           u"update t_UserData set f_fltLatitude = null, f_fltLongitude = null where rowid=2",
           "不正な位置: 1個", "直せます"},
          {"the chain is shorter than it says",
           u"update t_LongData set f_i4Value = 3 where f_nvcItem = 'RcdrHistNum'",
           u"update t_LongData set f_i4Value = 1 where f_nvcItem = 'RcdrHistNum'",
           "記録の数が合いません", "レコーダーを開く"},
          {"half a position", u"update t_UserData set f_fltLatitude = '1.5' where rowid=2",
           u"update t_UserData set f_fltLatitude = null where rowid=2", "不正な位置: 1個",
           "直せます"},
          {"one id twice", u"update t_UserData set f_nchActId = 'ID0000000000000001' where rowid=2",
           u"update t_UserData set f_nchActId = 'ID0000000000000002' where rowid=2",
           "重複したID: 1組", "付け直されます"},
          {"an odd id", u"update t_UserData set f_nchActId = 'x' where rowid=2",
           u"update t_UserData set f_nchActId = 'ID0000000000000002' where rowid=2",
           "不正なID: 1個", "付け直されます"},
          {"the running Action is gone", u"delete from t_UserData where rowid=3", u"select 1",
           "無いアクション: 2個", "レコーダーを開く"},
      };
  for (const auto& [why, spoil, mend, problem, remedy] : rows) {
    SCOPED_TRACE(why);
    Spoil(spoil);
    host.answers = {problem};
    inspection::OnBtnInspect(app);
    EXPECT_NE(platform::ToUtf8(host.messages.back().text).find(remedy), std::string::npos);
    Spoil(mend);
  }
}

TEST_F(Inspection, FindsWhatTheDiskHasSpoiled) {
  for (int i = 0; i < 200; ++i) InsertAction(u"2010/06/24 10:00:00");
  store::DisconnectDataFile();
  std::string bytes = FileBytes();
  bytes.replace(bytes.size() - 6000, 2000, 2000, '\xff');
  testing_support::WriteWholeFile(hostPath, bytes);
  ASSERT_EQ(store::ConnectDataFile(path), store::S_OK);
  int calls = 0;
  const inspection::Report report = inspection::Inspect(app, [&](int, int) { ++calls; });
  ASSERT_FALSE(report.IsGood());
  EXPECT_TRUE(report.problems[0].starts_with(u"ファイルが壊れています。"));
  EXPECT_NE(report.remedies[0].find(u"復元"), std::u16string::npos);
  EXPECT_TRUE(FileBytes() == bytes);
}

}  // namespace
}  // namespace store_test
