// These rows belong to the data file and not to the device: another file brings its own.
#include "recorder/recorder_state.h"

#include <string_view>

#include "store/session.h"

namespace recorder {

int InitRecorderValues() {
  struct EmptyText {
    std::u16string_view key;
    int failure;
  };
  static constexpr EmptyText kEmptyTexts[] = {{u"RcdrPreActId", -4},   {u"RcdrPreDateTime", -5},
                                              {u"RcdrDateTime", -7},   {u"RcdrLatitude", -8},
                                              {u"RcdrLongitude", -9},  {u"RcdrPlace", -10},
                                              {u"RcdrCategory1", -11}, {u"RcdrCategory2", -12}};
  const store::CDbSession& session = store::dbSession();
  if (store::Failed(session.LongTable->SetLong(u"RcdrHistNum", 0))) return -2;
  for (const EmptyText& text : kEmptyTexts) {
    if (store::Failed(session.TextTable->SetText(text.key, u""))) return text.failure;
  }
  return 0;
}

void CloseRecorderSession(core::CAppState& app) {
  if (store::dbSession().UserTable) store::dbSession().UserTable->CloseRS();
  app.RcdrLoaded = false;
  app.ActIds.Clear();
  app.ActStarts.Clear();
  app.IndexCount = 0;  // no position may reach behind the emptied lists
  store::DisconnectDataFile();
}

}  // namespace recorder
