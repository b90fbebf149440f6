// What the recorder's operations share: their two lasting values, how they end early, and what the
// screen shows after each.
#include "core/text.h"
#include "platform/host.h"
#include "recorder/recording.h"
#include "store/action_index.h"
#include "store/session.h"
#include "store/trouble.h"
#include "store/write_burst.h"
#include "store/write_step.h"

namespace recorder {

std::optional<CRecorder::Ending> CRecorder::InBurst(
    store::StepKind kind, std::u16string_view title,
    const std::function<std::optional<Ending>()>& steps) {
  const store::WriteStep step(kind, title, app_.RcdrPreActId);
  store::WriteBurst burst(*store::dbSession().Session);
  if (store::Failed(burst.Begun())) {
    const Ending refused = KeyFault(kPreActIdKey, core::Hex(burst.Begun()));
    burst.End();
    if (store::LastTrouble() == store::Trouble::kExchanged) SetActList();
    return refused;
  }
  std::optional<Ending> ending = steps();
  const store::HRESULT synced = burst.End();
  if (ending || !store::Failed(synced)) return ending;
  return KeyFault(kPreActIdKey, core::Hex(synced));
}

void CRecorder::EndWith(const Ending& ending) {
  if (!ending.text.empty()) {
    Tell(ending.text, ending.title, platform::Icon::kStop);
  }
  if (ending.reloadsIndex) store::ReloadActionIndex(app_);
}

store::HRESULT CRecorder::WriteHistNum() {
  const auto count = static_cast<int32_t>(app_.RcdrHistory.Count());
  const store::HRESULT result = store::dbSession().LongTable->SetLong(kHistNumKey, count);
  if (!store::Failed(result)) app_.RcdrHistNum = count;
  return result;
}

std::optional<CRecorder::Ending> CRecorder::WritePreActId() {
  const store::HRESULT result =
      store::dbSession().TextTable->SetText(kPreActIdKey, app_.RcdrPreActId);
  if (!store::Failed(result)) return {};
  return KeyFault(kPreActIdKey, core::Hex(result));
}

// Kept on purpose: the wording, and that some give the code in hexadecimal and the list in decimal.
std::u16string CRecorder::CountFault(std::u16string_view code) {
  return store::WithReason(u"レコーダーの設定値書込みに時にエラー発生。(" + std::u16string(code) +
                           u")");
}

CRecorder::Ending CRecorder::KeyFault(std::u16string_view key, std::u16string_view code) {
  return {store::WithReason(u"レコーダーの設定値(" + std::u16string(key) +
                            u")書込みに時にエラー発生。(" + std::u16string(code) + u")"),
          kWriteFaultTitle};
}

void CRecorder::SetRunning(std::u16string_view id, const Moment& start) {
  app_.RcdrPreActId = id;
  app_.RcdrPreDate = start.date;
  app_.RcdrPreTime = start.time;
}

// The next recording is for another moment and another position; the place and the categories are
// likely to be the same.
void CRecorder::ResetMoment() {
  fields.time = kCurrentTimeMark;
  fields.latitude.clear();
  fields.longitude.clear();
}

void CRecorder::ShowButtons(bool running) {
  canGoBack = canStop = running || !app_.RcdrHistory.Empty();
  isRunning = running;
}

}  // namespace recorder
