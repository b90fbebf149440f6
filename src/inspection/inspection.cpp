#include "inspection/inspection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>

#include "core/action_id.h"
#include "core/date_time.h"
#include "core/day.h"
#include "core/text.h"
#include "platform/host.h"
#include "position/coordinate.h"
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/session.h"

namespace inspection {
namespace {

using Text = std::u16string;

constexpr int kRowsBetweenProgress = 500;
constexpr std::u16string_view kRestore =
    u"読めるアクションはエクスポートで取り出せます。その後、復元でバックアップに戻せます。";
constexpr std::u16string_view kMend = u"日時と位置は一覧表示から開いて直せます。";
constexpr std::u16string_view kImportAgain =
    u"IDは、エクスポートして新しいデータファイルにインポートで追加すると付け直されます。";
constexpr std::u16string_view kOpenRecorder =
    u"レコーダーの記録は、レコーダーを開くと整えられます。";

Text Number(int count) {
  return core::ZeroPadded(count, 1);
}

class Inspector {
 public:
  explicit Inspector(const Progress& progress) : progress_(progress) {}

  Report Run() {
    CheckFile();
    CheckIndex();
    CheckRows();
    CheckIds();
    CheckRecorder();
    return std::move(report_);
  }

 private:
  // Of Actions that have one fault in common: how many, and the first.
  struct Faulty {
    int count = 0;
    Text example;

    void Add(const store::Action& action) {
      if (++count > 1) return;
      example = action[store::kStaDateTime].value_or(action[store::kActId].value_or(u""));
    }
  };

  void Note(Text problem, std::u16string_view remedy) {
    report_.problems.push_back(std::move(problem));
    if (std::ranges::find(report_.remedies, remedy) == report_.remedies.end()) {
      report_.remedies.emplace_back(remedy);
    }
  }

  void Note(std::u16string_view what, const Faulty& faulty, std::u16string_view remedy) {
    if (faulty.count == 0) return;
    Text problem = Text(what) + u": " + Number(faulty.count) + u"個";
    if (!faulty.example.empty())
      problem += u" (" + faulty.example + (faulty.count > 1 ? u" など)" : u")");
    Note(std::move(problem), remedy);
  }

  // The first column of a select's first row.
  static std::optional<Text> ReadOne(std::u16string_view sql, std::u16string_view column) {
    std::unique_ptr<store::RowSet> rows;
    std::array<std::optional<Text>, 1> row;
    if (store::Failed(store::dbSession().Session->OpenRows(sql, rows)) ||
        store::Failed(rows->Bind({&column, 1})) || rows->Next(row) != store::S_OK) {
      return {};
    }
    return row[0];
  }

  void CheckFile() {
    const auto found = ReadOne(u"PRAGMA integrity_check(1)", u"integrity_check");
    if (found == u"ok") return;
    const Text words = found ? u" (" + *found + u")" : Text();
    Note(u"ファイルが壊れています。" + words, kRestore);
  }

  // Loads what the views would show, to be held against the rows.
  void CheckIndex() {
    if (store::LoadActionIndex(index_) != 0) {
      Note(u"アクションの索引を作れません。", kRestore);
    }
    for (int i = 0; i < index_.IndexCount; ++i) {
      const auto at = static_cast<size_t>(i);
      indexed_ += Hash(index_.ActIds.At(at), index_.ActStarts.At(at));
      isSorted_ = isSorted_ && (i == 0 || index_.ActStarts.At(at - 1) <= index_.ActStarts.At(at));
    }
  }

  void CheckRows() {
    store::CUserDataTable& table = *store::dbSession().UserTable;
    store::HRESULT result = table.Select(u"select * from t_UserData");
    store::Action action;
    while (!store::Failed(result) && (result = table.GetNextRS(action)) == store::S_OK) {
      CheckAction(action);
      ++report_.actions;
      if (progress_ && report_.actions % kRowsBetweenProgress == 0) {
        progress_(report_.actions, index_.IndexCount);
      }
    }
    table.CloseRS();
    if (store::Failed(result)) {
      Note(u"アクションを途中までしか読めません。(" + Number(report_.actions) + u"個)", kRestore);
    } else if (!isSorted_ || indexed_ != stored_) {
      Note(u"アクションの索引が内容と一致しません。", kRestore);
    }
    Note(u"不正なID", badIds_, kImportAgain);
    Note(u"不正な日時", badTimes_, kMend);
    Note(u"不正な位置", badPositions_, kMend);
  }

  void CheckAction(const store::Action& action) {
    const std::u16string_view id = TextOf(action[store::kActId]);
    stored_ += Hash(id, TextOf(action[store::kStaDateTime]));
    if (core::CheckActId(id) != 0) badIds_.Add(action);
    if (store::CheckActionTimes(action) != 0 || !IsPadded(action[store::kStaDateTime]) ||
        !IsPadded(action[store::kEndDateTime])) {
      badTimes_.Add(action);
    }
    if (!IsPosition(action)) badPositions_.Add(action);
  }

  // "2026/1/011" is a day to a reader, and stands in the order of texts where nobody looks for it.
  static bool IsPadded(const std::optional<Text>& moment) {
    const std::u16string_view date = core::SplitMoment(TextOf(moment)).date;
    const std::optional<core::Day> day = core::ReadDay(date);
    return day && core::DayText(*day) == date;
  }

  static bool IsPosition(const store::Action& action) {
    if (!action[store::kLatitude] && !action[store::kLongitude]) return true;
    const auto latitude = position::ReadDecimalDegrees(TextOf(action[store::kLatitude]));
    const auto longitude = position::ReadDecimalDegrees(TextOf(action[store::kLongitude]));
    return latitude && longitude && std::abs(*latitude) <= 90 && std::abs(*longitude) <= 180;
  }

  void CheckIds() {
    const auto doubled = ReadOne(
        u"select count(*) as doubled from (select f_nchActId from t_UserData group by "
        u"f_nchActId having count(*) > 1)",
        u"doubled");
    if (!doubled || *doubled == u"0") return;
    Note(u"重複したID: " + *doubled + u"組", kImportAgain);
  }

  void CheckRecorder() {
    core::CAppState chain;
    if (recorder::LoadRecorderData(chain) != 0) {
      Note(u"レコーダーの記録を読めません。", kRestore);
      return;
    }
    if (static_cast<size_t>(chain.RcdrHistNum) != chain.RcdrHistory.Count()) {
      Note(u"レコーダーの記録の数が合いません。", kOpenRecorder);
    }
    const auto isGone = [](std::u16string_view id) {
      store::Action action;
      return store::dbSession().UserTable->ReadById(id, action) == store::DB_E_NOTFOUND;
    };
    int gone = !chain.RcdrPreActId.empty() && isGone(chain.RcdrPreActId);
    for (size_t i = 0; i < chain.RcdrHistory.Count(); ++i) gone += isGone(chain.RcdrHistory.At(i));
    if (gone > 0) {
      Note(u"レコーダーの記録にあるのに無いアクション: " + Number(gone) + u"個", kOpenRecorder);
    }
  }

  static std::u16string_view TextOf(const std::optional<Text>& column) {
    return column ? std::u16string_view(*column) : std::u16string_view();
  }
  static size_t Hash(std::u16string_view id, std::u16string_view start) {
    return std::hash<std::u16string_view>()(id) * 31 + std::hash<std::u16string_view>()(start);
  }

  const Progress& progress_;
  Report report_;
  core::CAppState index_;
  bool isSorted_ = true;
  size_t indexed_ = 0;  // sums of what the index has, and what the rows have
  size_t stored_ = 0;
  Faulty badIds_, badTimes_, badPositions_;
};

}  // namespace

Report Inspect(core::CAppState& app, const Progress& progress) {
  const platform::WaitCursor waiting;
  store::ReadWholeActionIndex(app);
  return Inspector(progress).Run();
}

void OnBtnInspect(core::CAppState& app, const Progress& progress) {
  const Report report = Inspect(app, progress);
  const Text title = u"データファイルの検査";
  if (report.IsGood()) {
    platform::ShowNotice(u"問題は見つかりませんでした。\n" + Number(report.actions) +
                             u"個のアクションを検査しました。",
                         title, platform::Icon::kInformation);
    return;
  }
  Text text = u"次の問題が見つかりました。";
  for (const Text& problem : report.problems) text += u"\n・" + problem;
  text += u'\n';
  for (const Text& remedy : report.remedies) text += u'\n' + remedy;
  platform::ShowNotice(text, title, platform::Icon::kWarning);
}

}  // namespace inspection
