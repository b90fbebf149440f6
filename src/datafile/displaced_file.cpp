#include "datafile/displaced_file.h"

#include <string>

#include "core/app_state.h"
#include "core/paths.h"
#include "datafile/data_file.h"
#include "platform/files.h"
#include "platform/host.h"
#include "recorder/recorder_state.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/trouble.h"

namespace datafile {
namespace {

using platform::Answer;
using platform::Icon;
using Text = std::u16string;

constexpr char16_t kTitle[] = u"データファイルの置換え";

Answer AskWhatToDo(const Text& path, const Text& kept) {
  if (!platform::files().Exists(path)) {
    return platform::host().ShowMessage(
        {u"データファイル '" + path + u"' が、開いている間になくなりました。\n" +
             u"開いているデータファイルを '" + kept + u"' に保存して続けますか。",
         kTitle, Icon::kWarning, platform::Buttons::kYesNo});
  }
  return platform::host().ShowMessage(
      {u"データファイル '" + path +
           u"' が、開いている間に別のファイルに置換されました。このファイルには書込みません。"
           u"\nはい: 開いているデータファイルを '" +
           kept + u"' に保存して続けます。\nいいえ: '" + kept +
           u"' に保存したうえで、置換されたファイルを開きます。\n"
           u"キャンセル: 何もしません。",
       kTitle, Icon::kWarning, platform::Buttons::kYesNoCancel});
}

void TellFailed(const Text& text) {
  platform::ShowNotice(store::WithReason(text), kTitle, Icon::kStop);
}

bool GoOnWith(core::CAppState& app, const Text& path) {
  if (store::Failed(store::MoveToDataFile(path))) {
    TellFailed(u"データファイル '" + path + u"' を開けません。");
    return false;
  }
  app.DataFile = path;
  return true;
}

// The file that took the place, if it is one of ours; else on with the one that was open.
void TakeNewFile(core::CAppState& app, const Text& kept) {
  const bool opened = !store::Failed(store::MoveToDataFile(app.DataFile));
  const UpgradeResult upgraded = opened ? UpgradeDataFile(app) : kNotOurs;
  if (upgraded == kCurrent || upgraded == kUpgraded) {
    store::NoteTrouble(store::Trouble::kExchanged);
  } else {
    if (opened) store::NoteTrouble(store::Trouble::kUnknown);
    TellFailed(u"置換されたファイルを開けないので、'" + kept + u"' で続けます。");
    GoOnWith(app, kept);
    store::NoteTrouble(store::Trouble::kDisplaced);
  }
  store::ReloadActionIndex(app);
  app.SelActId.clear();
  app.SelIndex = -1;
  if (app.RcdrLoaded) app.RcdrLoaded = recorder::LoadRecorderData(app) == 0;
}

}  // namespace

bool SettleDisplaced() {
  if (core::g_App == nullptr) return false;
  core::CAppState& app = *core::g_App;
  store::Engine& engine = *store::dbSession().Session;
  const auto whereabouts = engine.Whereabouts();
  const Text kept = whereabouts.value_or(core::FreePath(app.DataFile));
  const Answer answer = AskWhatToDo(app.DataFile, kept);
  const bool takesNew = answer == Answer::kNo && platform::files().Exists(app.DataFile);
  if (answer != Answer::kYes && !takesNew) return false;
  if (!whereabouts && store::Failed(engine.CopyTo(kept))) {
    TellFailed(u"'" + kept + u"' に保存できません。");
    store::NoteTrouble(store::Trouble::kDisplaced);
    return false;
  }
  if (!takesNew) return GoOnWith(app, kept);
  TakeNewFile(app, kept);
  return false;
}

}  // namespace datafile
