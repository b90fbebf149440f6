#include "options/options.h"

#include <array>
#include <optional>

#include "core/paths.h"
#include "core/text.h"
#include "platform/device_paths.h"
#include "platform/host.h"
#include "store/action_index.h"
#include "store/compaction.h"
#include "store/data_file.h"
#include "store/session.h"

namespace options {
namespace {

using Text = std::u16string;

constexpr int kConnectionLost = -10;

void TellReadError(int line, store::HRESULT result) {
  platform::ShowNotice(u"MainView:FxToolOption GetRS Err (ln=" + core::ZeroPadded(line, 1) +
                           u", hr=" + core::Hex(result) + u")",
                       u"debug", platform::Icon::kNone);
}

// The start of the selected Action; none if it is gone, or cannot be read, which is told.
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

int COptions::OnOk() {
  ApplyValues(values, opened_, app_);
  const Text path = platform::FromTypedPath(values.DataFile);
  if (!opened_[kData] || path == app_.DataFile) return kSheetApplied;
  DataFileChanged = true;
  return store::ChangeDataFile(app_, path) == kConnectionLost ? kNoDataFile : kSheetApplied;
}

bool COptions::OnBtnCompact() {
  store::OnBtnCompact(app_, platform::FromTypedPath(values.DataFile));
  return store::dbSession().Session != nullptr;
}

Text COptions::FormatVersion() const {
  Text version;
  if (store::dbSession().SysInfoTable)
    store::dbSession().SysInfoTable->GetText(u"DBFmtVer", version);
  return version;
}

Text COptions::DataFolder() const {
  Text folder, name;
  core::SplitPath(platform::FromTypedPath(values.DataFile), folder, name);
  return folder.empty() ? u"\\" : folder;
}

void KeepListPage(core::CAppState& app, int formerRange) {
  if (app.SeqViewRng == formerRange) return;
  const Text start = SelectedStart(app).value_or(u"");
  app.ListPage = 0;
  if (start.empty()) return;
  const int page = store::FindActionIndexByPosition(
      app, start.substr(0, 10), start.size() > 11 ? start.substr(11) : u"", app.SeqViewRng);
  if (page > 0) app.ListPage = page;
}

Text CountText(const core::CAppState& app) {
  const Text total = core::ZeroPadded(app.TotalCount, 1);
  return app.FindWhere ? core::ZeroPadded(app.IndexCount, 1) + u'(' + total + u')' : total;
}

}  // namespace options
