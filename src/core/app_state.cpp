// The globals that stand beside the application object, and its start values.
#include "core/app_state.h"

#include "core/date_time.h"
#include "core/settings.h"

namespace core {

CAppState* g_App = nullptr;
int CurYear = 0;
int CurMonth = 0;
int CurDay = 0;
int DaySeqVwLineNum = 0;
int MenuBarHeight = 0;

CAppState::CAppState() {
  SetDefaults(*this);
}

int SetCurDate(std::u16string_view text) {
  return ParseDate(text, CurYear, CurMonth, CurDay) == 0 ? 0 : -1;
}

std::u16string CurDate() {
  return FormatDate(CurYear, CurMonth, CurDay);
}

}  // namespace core
