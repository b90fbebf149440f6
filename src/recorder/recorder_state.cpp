// These rows belong to the data file and not to the device: another file brings its own.
#include "recorder/recorder_state.h"

#include <array>
#include <optional>

#include "core/date_time.h"
#include "core/text.h"
#include "platform/host.h"
#include "store/session.h"
#include "store/trouble.h"
#include "store/write_burst.h"

namespace recorder {
namespace {

using core::CAppState;

constexpr std::u16string_view kPreDateTimeKey = u"RcdrPreDateTime";
constexpr std::u16string_view kDateTimeKey = u"RcdrDateTime";

// The captured texts, in the order in which they are read and written.
struct CapturedText {
  std::u16string_view key;
  std::u16string CAppState::*value;
  int readFailure;
  int writeFailure;
};
constexpr CapturedText kCapturedTexts[] = {
    {u"RcdrLatitude", &CAppState::RcdrLatitude, -6, -8},
    {u"RcdrLongitude", &CAppState::RcdrLongitude, -7, -9},
    {u"RcdrPlace", &CAppState::RcdrPlace, -8, -10},
    {u"RcdrCategory1", &CAppState::RcdrCategory1, -9, -11},
    {u"RcdrCategory2", &CAppState::RcdrCategory2, -10, -12},
};

bool Reads(std::u16string_view key, std::u16string& text) {
  return !store::Failed(store::dbSession().TextTable->GetText(key, text));
}

bool Writes(std::u16string_view key, std::u16string_view text) {
  return !store::Failed(store::dbSession().TextTable->SetText(key, text));
}

// Kept on purpose: the seconds are dropped.
void TakeMoment(std::u16string_view text, std::u16string& date, std::u16string& time) {
  const core::MomentText moment = core::SplitMoment(text);
  date = moment.date;
  time = moment.HourMinute();
}

bool ReadHistory(core::TextList& history, int count) {
  static constexpr std::array<std::u16string_view, 1> kColumns = {u"f_nchActId"};
  store::CRcdrDataTable& table = *store::dbSession().RcdrTable;
  store::HRESULT result =
      table.GetRS(u"select f_nchActId from t_RcdrData order by f_i4SNo asc", kColumns);
  std::array<std::optional<std::u16string>, 1> row;
  for (int i = 0; i < count && !store::Failed(result); ++i) {
    result = table.GetNextRS(row);
    if (result != store::S_OK) break;
    history.Append(row[0] ? *row[0] : std::u16string_view());
  }
  table.CloseRS();
  return !store::Failed(result);
}

}  // namespace

int InitRecorderValues() {
  struct EmptyText {
    std::u16string_view key;
    int failure;
  };
  static constexpr EmptyText kEmptyTexts[] = {{kPreActIdKey, -4},      {kPreDateTimeKey, -5},
                                              {kDateTimeKey, -7},      {u"RcdrLatitude", -8},
                                              {u"RcdrLongitude", -9},  {u"RcdrPlace", -10},
                                              {u"RcdrCategory1", -11}, {u"RcdrCategory2", -12}};
  const store::CDbSession& session = store::dbSession();
  const store::WriteBurst burst(*session.Session);
  if (store::Failed(session.LongTable->SetLong(kHistNumKey, 0))) return -2;
  for (const EmptyText& text : kEmptyTexts) {
    if (!Writes(text.key, u"")) return text.failure;
  }
  return 0;
}

int LoadRecorderData(CAppState& app) {
  if (!store::dbSession().Session) return -1;
  if (store::Failed(store::dbSession().LongTable->GetLong(kHistNumKey, app.RcdrHistNum))) return -1;
  if (!Reads(kPreActIdKey, app.RcdrPreActId)) return -2;
  std::u16string dateTime;
  if (!app.RcdrPreActId.empty() && !Reads(kPreDateTimeKey, dateTime)) return -3;
  TakeMoment(dateTime, app.RcdrPreDate, app.RcdrPreTime);
  app.RcdrHistory.Clear();
  if (app.RcdrHistNum > 0 && !ReadHistory(app.RcdrHistory, app.RcdrHistNum)) return -1;
  if (!Reads(kDateTimeKey, dateTime)) return -5;
  TakeMoment(dateTime, app.RcdrDate, app.RcdrTime);
  if (dateTime.empty()) app.RcdrTime = kCurrentTimeMark;
  for (const CapturedText& captured : kCapturedTexts) {
    if (!Reads(captured.key, app.*captured.value)) return captured.readFailure;
  }
  return 0;
}

int SaveRecorderValues(const CAppState& app) {
  const store::WriteBurst burst(*store::dbSession().Session);
  if (!Writes(kPreDateTimeKey, app.RcdrPreDate + u' ' + app.RcdrPreTime)) return -5;
  const std::u16string captured =
      app.RcdrTime == kCurrentTimeMark ? u"" : app.RcdrDate + u' ' + app.RcdrTime;
  if (!Writes(kDateTimeKey, captured)) return -7;
  for (const CapturedText& text : kCapturedTexts) {
    if (!Writes(text.key, app.*text.value)) return text.writeFailure;
  }
  return 0;
}

void CaptureRecorderFields(CAppState& app, const RecorderFields& fields) {
  app.RcdrDate = core::DateOf(platform::host().Now());
  app.RcdrTime = fields.time;
  app.RcdrLatitude = fields.latitude;
  app.RcdrLongitude = fields.longitude;
  app.RcdrPlace = fields.place;
  app.RcdrCategory1 = fields.category1;
  app.RcdrCategory2 = fields.category2;
}

void CloseRecorderSession(CAppState& app) {
  if (store::dbSession().Session) {
    const bool takesWrites = !store::Failed(store::dbSession().Session->ConfirmPlace());
    const int saved = app.RcdrLoaded && takesWrites ? SaveRecorderValues(app) : 0;
    if (saved != 0) {
      platform::ShowNotice(store::WithReason(u"レコーダーデータ保存中にエラーが発生しました。(" +
                                             core::ZeroPadded(saved, 1) + u")"),
                           u"保存エラー", platform::Icon::kStop);
    }
    store::dbSession().UserTable->CloseRS();
  }
  app.RcdrLoaded = false;
  app.RcdrHistory.Clear();
  app.ActIds.Clear();
  app.ActStarts.Clear();
  app.IndexCount = 0;  // no position may point past the emptied lists
  store::DisconnectDataFile();
}

store::HRESULT ReadRunningId(const core::CAppState& app, std::u16string& id) {
  if (app.RcdrLoaded) {
    id = app.RcdrPreActId;
    return store::S_OK;
  }
  const auto& table = store::dbSession().TextTable;
  const store::HRESULT result = table ? table->GetText(kPreActIdKey, id) : store::E_POINTER;
  return result == store::DB_E_NOTFOUND ? store::S_OK : result;
}

}  // namespace recorder
