// What a new file is stamped with, and what brings an older one up to date: all of it or nothing,
// as a file with some of the changes would be refused from then on.
#include <string>

#include "core/date_time.h"
#include "core/text.h"
#include "core/version.h"
#include "datafile/data_file.h"
#include "platform/host.h"
#include "store/diary_check.h"
#include "store/session.h"
#include "store/trouble.h"

namespace datafile {
namespace {

using platform::AskYesNo;
using platform::Icon;
using platform::ShowNotice;
using Text = std::u16string;

constexpr std::u16string_view kFormatWithRcdrPosition = u"3.1.2010.0430";
constexpr std::u16string_view kFormatWithExtItems = u"3.1.2010.0623";

UpgradeStep ChangeFormat(std::u16string_view oldVersion) {
  store::CNamedValueTable& texts = *store::dbSession().TextTable;
  if (oldVersion < kFormatWithRcdrPosition) {
    if (store::Failed(texts.SetText(u"RcdrLatitude", u""))) return kLatitudeStep;
    if (store::Failed(texts.SetText(u"RcdrLongitude", u""))) return kLongitudeStep;
  }
  const bool hasColumns = oldVersion >= kFormatWithExtItems;
  return hasColumns || !store::Failed(store::AlterUserData()) ? kEveryStep : kColumnsStep;
}

bool WriteStamps() {
  store::CNamedValueTable& values = *store::dbSession().SysInfoTable;
  return !store::Failed(values.SetText(u"UpdProgVer", core::kProgramVersion)) &&
         !store::Failed(values.SetText(u"UpdateTime", core::MomentOf(platform::host().Now()))) &&
         !store::Failed(values.SetText(u"DBFmtVer", kFormatVersion));
}

}  // namespace

UpgradeResult UpgradeDataFile(core::CAppState& app) {
  static constexpr std::u16string_view kTitle = u"バージョン更新確認";
  Text version;
  if (!store::IsDiary(*store::dbSession().Session) ||
      store::Failed(store::dbSession().SysInfoTable->GetText(u"DBFmtVer", version))) {
    return kNotOurs;
  }
  if (version >= kFormatVersion) {  // kept on purpose: a later one is taken as it is
    store::dbSession().Session->TakeCharge();
    return kCurrent;
  }
  if (!AskYesNo(u"データファイルのフォーマットが最新ではありません。\n"
                u"処理を継続するためにはフォーマットを更新する必要があります。\n"
                u"フォーマットを更新しますか。",
                Text(kTitle) + u"(1/2)", Icon::kQuestion, platform::kNoButton)) {
    return kUpgradeRefused;
  }
  // Kept on purpose: a closing quotation mark without an opening one.
  if (!AskYesNo(u"更新の前にデータファイル\n" + app.DataFile +
                    u"\"をバックアップされることを推奨します。\n"
                    u"フォーマットの更新を開始してもよろしいですか。",
                Text(kTitle) + u"(2/2)", Icon::kQuestion, platform::kNoButton)) {
    return kUpgradeRefused;
  }
  if (ApplyFormatUpgrade(app, version) != kEveryStep) return kUpgradeFailed;
  ShowNotice(u"データファイルのフォーマットを " + Text(kFormatVersion) + u" に更新しました。",
             u"更新完了", Icon::kInformation);
  return kUpgraded;
}

UpgradeStep ApplyFormatUpgrade(core::CAppState&, std::u16string_view oldVersion) {
  const platform::WaitCursor waiting;
  store::Engine& engine = *store::dbSession().Session;
  // Kept on purpose: stamps alone that can't be written are no failure; the next start asks again.
  const UpgradeStep unwritten = oldVersion < kFormatWithExtItems ? kColumnsStep : kEveryStep;
  if (store::Failed(engine.BeginTransaction())) return unwritten;
  const UpgradeStep failed = ChangeFormat(oldVersion);
  if (failed == kEveryStep && WriteStamps() && !store::Failed(engine.Commit())) return kEveryStep;
  engine.Rollback();
  return failed == kEveryStep ? unwritten : failed;
}

int WriteSystemInfo() {
  struct Row {
    std::u16string_view key;
    Text value;
    int failure;
  };
  const Row rows[] = {{u"ProgName", Text(core::kProgramName), -101},
                      {u"ProgVer", Text(core::kProgramVersion), -102},
                      {u"DBFmtVer", Text(kFormatVersion), -103},
                      {u"CreateTime", core::MomentOf(platform::host().Now()), -104}};
  for (const Row& row : rows) {
    const store::HRESULT result = store::dbSession().SysInfoTable->SetText(row.key, row.value);
    if (!store::Failed(result)) continue;
    ShowNotice(store::WithReason(u"DBへのシステム情報設定にてエラーが発生しました。(" +
                                     core::ZeroPadded(result, 1) + u")",
                                 result),
               u"システム情報設定エラー", Icon::kStop);
    return row.failure;
  }
  return 0;
}

}  // namespace datafile
