#include "exchange/import.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "core/text.h"
#include "exchange/import_reader.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/utf.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/trouble.h"
#include "store/write_step.h"

namespace exchange {
namespace {

using platform::Icon;
using platform::ShowNotice;
using store::HRESULT;

constexpr int kNoFile = -101;
constexpr int kNotRead = -1;
constexpr int kNoId = -2;
constexpr int kNotWritten = -3;

constexpr size_t kRowsASignal = 50;
constexpr size_t kRowsAGroup = 500;

constexpr std::u16string_view kStopped = u"\nインポートを中止します。";

int TellStopped(std::u16string text, int result) {
  ShowNotice(text.append(kStopped), u"インポート中止", Icon::kStop);
  return result;
}

int TellNotRead(int result, int lineNumber, int detail) {
  const std::u16string line = core::ZeroPadded(lineNumber, 1);
  const std::u16string code = u"(" + core::ZeroPadded(detail, 1) + u")";
  switch (result) {
    case kBadActId:
      return TellStopped(line + u" 行目のアクションIDの値が不正です。" + code, kNotRead);
    case kBadTimes:
      return TellStopped(line + u" 行目の値が不正です。" + code, kNotRead);
    case kTooFewColumns:
      return TellStopped(line + u" 行目には開始または終了日時がありません。", kNotRead);
    default:
      return TellStopped(line + u" 行目にてエラーが発生しました。" + code, kNotRead);
  }
}

std::optional<std::u16string> PositionText(double degrees) {
  if (degrees == kNoPosition) return {};
  return core::FloatText(degrees);
}

store::Action ToAction(ImportRecord&& record) {
  static_assert(store::kExtItems + 1 == store::kActionColumnCount, "a column for each field");
  store::Action action;
  action[store::kActId] = std::move(record.ActId);
  action[store::kStaDateTime] = std::move(record.StaDateTime);
  action[store::kEndDateTime] = std::move(record.EndDateTime);
  action[store::kLatitude] = PositionText(record.Latitude);
  action[store::kLongitude] = PositionText(record.Longitude);
  action[store::kSubject] = std::move(record.Subject);
  action[store::kPlace] = std::move(record.Place);
  action[store::kCategory1] = std::move(record.Category1);
  action[store::kCategory2] = std::move(record.Category2);
  action[store::kMemo] = std::move(record.Memo);
  action[store::kExtItems] = std::move(record.ExtItems);
  return action;
}

// A file doesn't distinguish absent from empty: a column that it has nothing for stays absent where
// it is.
class Replacer {
 public:
  explicit Replacer(store::CUserDataTable& table) : table_(table) {}

  // Makes of the file's Action what is to replace the one of its id, whose row it finds, none if
  // there is no such Action.
  HRESULT Complete(store::Action& action, std::optional<int64_t>& row) {
    const size_t count = ChooseEmpty(action);
    const HRESULT read =
        table_.ReadById(*action[store::kActId], std::span(names_).first(count + 1), texts_);
    row.reset();
    if (store::Failed(read)) return read == store::DB_E_NOTFOUND ? store::S_OK : read;
    for (size_t i = 0; i < count; ++i) {
      if (!texts_[i] || texts_[i]->empty()) action[columns_[i]] = texts_[i];
    }
    row = std::stoll(platform::ToUtf8(texts_[count].value_or(u"0")));
    return store::S_OK;
  }

 private:
  static constexpr std::array kTexts = {store::kSubject,   store::kPlace, store::kCategory1,
                                        store::kCategory2, store::kMemo,  store::kExtItems};

  // The columns that are empty in the file, and after them the row's own number.
  size_t ChooseEmpty(const store::Action& action) {
    size_t count = 0;
    for (const store::ActionColumn column : kTexts) {
      if (!TextOf(action, column).empty()) continue;
      names_[count] = store::kActionColumns[column];
      columns_[count++] = column;
    }
    names_[count] = u"rowid";
    return count;
  }

  store::CUserDataTable& table_;
  std::array<std::u16string_view, kTexts.size() + 1> names_;
  std::array<std::optional<std::u16string>, kTexts.size() + 1> texts_;
  std::array<store::ActionColumn, kTexts.size()> columns_{};
};

// Writes the records of one import. A sync a record would make a long one take minutes.
class Writer {
 public:
  Writer(store::CDbSession& session, ReadMode mode)
      : engine_(*session.Session), table_(*session.UserTable), mode_(mode) {}

  // 0, kNoId or kNotWritten, with `code` then. What had been written before stays.
  int WriteAll(ImportList& list, const Progress& progress, HRESULT& code) {
    platform::host().SignalActivity();
    const size_t size = list.size();
    int result = 0;
    for (size_t i = 0; result == 0 && i < size; ++i) {
      if (i % kRowsASignal == 0) {
        platform::host().SignalActivity();
        if (progress) progress(static_cast<int>(i), static_cast<int>(size));
      }
      if (i % kRowsAGroup == 0) {
        code = BeginGroup(std::span(list).subspan(i, std::min(kRowsAGroup, size - i)), i == 0);
      }
      result = store::Failed(code) ? kNotWritten : Write(group_[i % kRowsAGroup], code);
    }
    if (result == 0 && progress) progress(static_cast<int>(size), static_cast<int>(size));
    const HRESULT committed = size == 0 ? store::S_OK : Commit();
    if (result == 0 && store::Failed(committed)) {
      code = committed;
      result = kNotWritten;
    }
    return result;
  }

 private:
  struct Prepared {
    store::Action action;
    bool isComplete;  // and replaces an Action that is there
  };

  HRESULT BeginGroup(std::span<ImportRecord> records, bool isFirst) {
    HRESULT result = isFirst ? store::S_OK : Commit();
    if (!store::Failed(result)) result = engine_.BeginTransaction();
    group_.clear();
    std::set<int64_t> rows;
    for (ImportRecord& record : records) {
      Prepared& next = group_.emplace_back(Prepared{ToAction(std::move(record)), false});
      if (store::Failed(result) || mode_ == kReadAdd) continue;
      // What can't be read is left to its turn, so that those before it are written.
      std::optional<int64_t> row;
      const bool isRead = !store::Failed(replacer_.Complete(next.action, row));
      next.isComplete = isRead && row && rows.insert(*row).second;
    }
    if (!store::Failed(result)) result = table_.Log().BeginGroup({rows.begin(), rows.end()});
    return store::Failed(result) ? GiveUp(result) : result;
  }

  HRESULT Commit() {
    const HRESULT noted = table_.Log().EndGroup();
    return store::Failed(noted) ? GiveUp(noted) : engine_.Commit();
  }

  // Rows that could not be noted are not to stay.
  HRESULT GiveUp(HRESULT result) {
    const store::Trouble trouble = store::LastTrouble();
    engine_.Rollback();
    store::NoteTrouble(trouble);
    return result;
  }

  int Write(Prepared& prepared, HRESULT& code) {
    store::Action& action = prepared.action;
    if (mode_ == kReadReplace) {
      code = Replace(prepared);
    } else {
      code = table_.MakeUniqueActId(moment_, action[store::kActId]);
      if (store::Failed(code)) return kNoId;
      code = table_.Insert(action);
    }
    return code == store::S_OK ? 0 : kNotWritten;
  }

  // An id that its group has already written is looked for once more.
  HRESULT Replace(Prepared& prepared) {
    std::optional<int64_t> row;
    if (!prepared.isComplete) {
      const HRESULT read = replacer_.Complete(prepared.action, row);
      if (store::Failed(read)) return read;
    }
    if (!prepared.isComplete && !row) return table_.Insert(prepared.action);
    const std::u16string id = *prepared.action[store::kActId];
    return table_.Update(id, prepared.action);
  }

  store::Engine& engine_;
  store::CUserDataTable& table_;
  ReadMode mode_;
  Replacer replacer_{table_};
  std::vector<Prepared> group_;
  platform::LocalTime moment_ = platform::host().Now();  // of the ids to be made
};

int WriteRecords(core::CAppState& app, ImportList& list, ReadMode mode, const Progress& progress) {
  store::CDbSession& session = store::dbSession();
  HRESULT code = store::E_POINTER;
  int result = kNotWritten;
  if (session.UserTable != nullptr) {
    code = store::S_OK;
    const store::WriteStep step(store::StepKind::kCounted, u"インポート");
    result = Writer(session, mode).WriteAll(list, progress, code);
  }
  if (result == kNoId) {
    // Kept on purpose: two buttons, which do the same.
    platform::host().ShowMessage(
        {store::WithReason(u"ユニークキーの生成に失敗しました。", code).append(kStopped),
         u"インポート中止", Icon::kNone, platform::Buttons::kOkCancel});
  } else if (result == kNotWritten) {
    TellStopped(
        store::WithReason((mode == kReadAdd ? u"レコード作成エラー(" : u"レコード更新エラー(") +
                              core::Hex(code) + u")",
                          code),
        kNotWritten);
  }
  store::ReloadActionIndex(app);
  return result;
}

int Import(core::CAppState& app, std::u16string_view path, int version, ReadMode mode,
           const Progress& progress) {
  ImportList list;
  int lineNumber = 0, detail = 0;
  const int read = ReadImportFile(list, path, version, lineNumber, detail, progress);
  if (read != 0) return TellNotRead(read, lineNumber, detail);
  return WriteRecords(app, list, mode, progress);
}

}  // namespace

int ImportAdd(core::CAppState& app, std::u16string_view path, int version,
              const Progress& progress) {
  return Import(app, path, version, kReadAdd, progress);
}

int ImportReplace(core::CAppState& app, std::u16string_view path, int version,
                  const Progress& progress) {
  return Import(app, path, version, kReadReplace, progress);
}

int RunImport(core::CAppState& app, std::u16string_view path, int version, int mode,
              const Progress& progress) {
  const auto attributes = platform::files().Attributes(path);
  if (!attributes || (*attributes & platform::kAttributeDirectory) != 0) {
    ShowNotice(u"指定されたファイル" + std::u16string(path) +
                   u"が存在しません。ファイル名を見直してください。",
               u"ファイル名不正", Icon::kStop);
    return kNoFile;
  }
  // To close it again would drop the locks that the engine has on it.
  const std::unique_ptr<store::Engine>& diary = store::dbSession().Session;
  if (diary && diary->Keeps(path)) {
    ShowNotice(u"ファイル" + std::u16string(path) +
                   u"は開いているデータファイルのため、インポートできません。"
                   u"ファイル名を見直してください。",
               u"ファイル名不正", Icon::kStop);
    return kNoFile;
  }
  const int result = mode == kReadReplace ? ImportReplace(app, path, version, progress)
                                          : ImportAdd(app, path, version, progress);
  // Kept on purpose: the reader or the writer has shown a message of its own by now.
  if (result == 0) {
    ShowNotice(u"インポートが完了しました。", u"インポート完了", Icon::kInformation);
  } else {
    ShowNotice(u"インポートに失敗しました。", u"インポート失敗", Icon::kStop);
  }
  return result;
}

}  // namespace exchange
