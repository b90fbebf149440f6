#include "options/options.h"

#include <array>
#include <optional>
#include <utility>

#include "core/date_time.h"
#include "core/paths.h"
#include "core/settings.h"
#include "core/text.h"
#include "datafile/compaction.h"
#include "datafile/data_file.h"
#include "platform/files.h"
#include "platform/host.h"
#include "store/action_index.h"
#include "store/session.h"

namespace options {
namespace {

using Text = std::u16string;

void TellBadName(const Text& why) {
  platform::ShowNotice(u"指定されているデータファイル名が不正です。\n" + why,
                       u"データファイル名不正", platform::Icon::kStop);
}

bool NamesFolder(const Text& path) {
  const uint32_t attributes = platform::files().Attributes(path).value_or(0);
  return path.empty() || path.ends_with(u'\\') || (attributes & platform::kAttributeDirectory) != 0;
}

void TellReadError(int line, store::HRESULT result) {
  platform::ShowNotice(u"MainView:FxToolOption GetRS Err (ln=" + core::ZeroPadded(line, 1) +
                           u", hr=" + core::Hex(result) + u")",
                       u"debug", platform::Icon::kNone);
}

// The start of the selected Action; none if it is gone, or cannot be read, which is reported.
std::optional<Text> SelectedStart(const core::CAppState& app) {
  static constexpr std::array<std::u16string_view, 1> kColumns = {u"f_nchStaDateTime"};
  store::CUserDataTable& table = *store::dbSession().UserTable;
  store::HRESULT result =
      table.GetRS(u"select f_nchStaDateTime from t_UserData where f_nchActId = '" +
                      store::SqlQuote(app.SelActId) + u"'",
                  kColumns);
  int line = 1;
  std::optional<Text> start;
  if (!store::Failed(result)) {
    result = table.CRowsetTable::GetNextRS({&start, 1});
    line = 2;
  }
  table.CloseRS();
  if (store::Failed(result)) TellReadError(line, result);
  return start;
}

}  // namespace

COptions::COptions(core::CAppState& app) : values(ReadValues(app)), app_(app) {}

bool COptions::RootDataFile() {
  auto path = core::RootedPath(values.DataFile);
  if (path) {
    values.DataFile = std::move(*path);
  } else {
    TellBadName(u"「/」か「~/」で始まるパス、またはファイル名を指定してください。");
  }
  return path.has_value();
}

bool COptions::CheckDataFile() {
  if (!opened_[kData]) return true;
  if (!RootDataFile()) return false;
  const Text& path = values.DataFile;
  if (path == app_.DataFile) return true;
  if (NamesFolder(path)) {
    TellBadName(u"ファイル名まで指定してください。");
    return false;
  }
  if (core::KeepsDataFile(path)) return true;
  TellBadName(u"設定ファイルに保存できない文字が含まれています。");
  return false;
}

int COptions::OnOk() {
  ApplyValues(values, opened_, app_);
  if (!opened_[kData] || values.DataFile == app_.DataFile) return kSheetApplied;
  DataFileChanged = true;
  return datafile::ChangeDataFile(app_, values.DataFile) == datafile::kConnectionLost
             ? kNoDataFile
             : kSheetApplied;
}

bool COptions::OnBtnCompact() {
  if (RootDataFile()) datafile::OnBtnCompact(app_, values.DataFile);
  return store::dbSession().Session != nullptr;
}

void COptions::OnBtnInspect(const inspection::Progress& progress) const {
  inspection::OnBtnInspect(app_, progress);
}

Text COptions::FormatVersion() const {
  Text version;
  if (store::dbSession().SysInfoTable)
    store::dbSession().SysInfoTable->GetText(u"DBFmtVer", version);
  return version;
}

Text COptions::DataFolder() const {
  Text folder, name;
  core::SplitPath(core::RootedPath(values.DataFile).value_or(u""), folder, name);
  return folder.empty() ? u"\\" : folder;
}

void KeepListPage(core::CAppState& app, int formerRange) {
  if (app.SeqViewRng == formerRange) return;
  const Text moment = SelectedStart(app).value_or(u"");
  app.ListPage = 0;
  if (moment.empty()) return;
  const core::MomentText start = core::SplitMoment(moment);
  const int page = store::FindActionIndexByPosition(app, start.date, start.time, app.SeqViewRng);
  if (page > 0) app.ListPage = page;
}

Text CountText(const core::CAppState& app) {
  const Text total = core::ZeroPadded(app.TotalCount, 1);
  return app.FindWhere ? core::ZeroPadded(app.IndexCount, 1) + u'(' + total + u')' : total;
}

}  // namespace options
