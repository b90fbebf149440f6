#include "exchange/exchange.h"

#include "core/paths.h"
#include "core/text.h"
#include "exchange/action_lines.h"
#include "exchange/export.h"
#include "exchange/import.h"
#include "platform/device_paths.h"
#include "platform/host.h"
#include "store/action_index.h"

namespace exchange {

CExchange::CExchange(core::CAppState& app, ExchangeKind kind)
    : app_(app),
      kind_(kind),
      path_(kind == ExchangeKind::kExport ? app.ExportPath : app.ImportPath),
      formatVer_(kVer3),
      readMode_(kReadReplace) {}

std::u16string_view CExchange::Title() const {
  return kind_ == ExchangeKind::kExport ? u"エクスポート" : u"インポート";
}

bool CExchange::IsReadModeEnabled() const {
  return kind_ == ExchangeKind::kImport && formatVer_ != kVer1;
}

// What can't be rooted stays as it is, for the message that there is no such file.
void CExchange::SetPath(std::u16string_view typed) {
  path_ = core::RootedPath(typed).value_or(platform::FromTypedPath(typed));
}

filedialog::FileSelectParams CExchange::BrowseParams() const {
  const bool isExport = kind_ == ExchangeKind::kExport;
  filedialog::FileSelectParams params;
  params.Mode = isExport ? filedialog::kSelectToSave : filedialog::kSelectToOpen;
  params.Caption = isExport ? u"保存先" : u"入力元";
  params.FilterText =
      u"TSV/CSVファイル (*.csv)|*.csv|データファイル (*.dat)|*.dat|テキストファイル "
      u"(*.txt)|*.txt|すべてのファイル (*.*)|*.*";
  params.StartName = isExport ? u"morvenly.csv" : u"";
  return params;
}

void CExchange::OnRun(const Progress& progress) {
  if (path_.empty()) {
    platform::ShowNotice(u"対象ファイルが指定されていません。", u"対象ファイル未指定",
                         platform::Icon::kWarning);
  } else if (kind_ == ExchangeKind::kExport) {
    RunExportAsked(progress);
  } else {
    RunImportAsked(progress);
  }
}

void CExchange::RunExportAsked(const Progress& progress) {
  if (!platform::AskYesNo(u"現在該当している" + core::ZeroPadded(app_.IndexCount, 1) +
                              u"個のアクションを" + path_ + u"へエクスポートしますか？",
                          u"エクスポートの確認")) {
    return;
  }
  const platform::WaitCursor waiting;
  store::ReadWholeActionIndex(app_);
  RunExport(app_, path_, formatVer_, progress);
}

void CExchange::RunImportAsked(const Progress& progress) {
  if (!platform::AskYesNo(path_ + u"をインポートしますか？", u"インポートの確認")) return;
  const platform::WaitCursor waiting;
  RunImport(app_, path_, formatVer_, IsReadModeEnabled() ? readMode_ : kReadAdd, progress);
}

void CExchange::Close() {
  (kind_ == ExchangeKind::kExport ? app_.ExportPath : app_.ImportPath) = path_;
}

}  // namespace exchange
