// What leaves the screen of totals: its table, on the clipboard and in a file.
#include <algorithm>

#include "platform/files.h"
#include "platform/host.h"
#include "store/session.h"
#include "totals/totals.h"

namespace totals {

using platform::Icon;
using platform::ShowNotice;

std::u16string CTotals::ClipboardText() const {
  return TabbedText(MakeTable());
}

filedialog::FileSelectParams CTotals::AskForCsv() const {
  std::u16string name = u"集計";
  if (!Title().empty()) name += u" " + Title();
  std::ranges::replace(name, u'/', u'-');
  filedialog::FileSelectParams params;
  params.Mode = filedialog::kSelectToSave;
  params.Caption = u"集計の保存先";
  params.FilterText = u"CSVファイル (*.csv)|*.csv|すべてのファイル (*.*)|*.*";
  params.StartName = name + u".csv";
  return params;
}

void CTotals::WriteCsv(std::u16string_view path) const {
  const std::u16string name(path);
  if (platform::files().Exists(path) &&
      !platform::AskYesNo(u"'" + name + u"' は既に存在します。\n置き換えますか。", u"集計の保存",
                          Icon::kQuestion, platform::kNoButton)) {
    return;
  }
  // The diary itself is chosen with one tap in the file dialog.
  const auto& diary = store::dbSession().Session;
  const auto file = diary && diary->Keeps(path) ? nullptr : platform::files().Create(path);
  if (file == nullptr) {
    return ShowNotice(
        u"ファイル" + name + u"のオープンに失敗しました。ファイル名を見直してください。",
        u"オープンエラー", Icon::kStop);
  }
  if (!file->Write(CsvBytes(MakeTable())) || !file->Sync()) {
    return ShowNotice(u"ファイル" + name + u"の書込みに失敗しました。", u"書込みエラー",
                      Icon::kStop);
  }
  ShowNotice(u"集計を保存しました。", u"集計の保存", Icon::kInformation);
}

}  // namespace totals
