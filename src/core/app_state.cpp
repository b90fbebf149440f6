// The globals that stand beside the application object, and its start values.
#include "core/app_state.h"

#include "core/settings.h"
#include "core/settings_choices.h"

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

Day CurrentDay() {
  return {CurYear, CurMonth, CurDay};
}

void SetCurrentDay(const Day& day) {
  CurYear = day.year;
  CurMonth = day.month;
  CurDay = day.day;
}

int SetCurDate(std::u16string_view text) {
  const std::optional<Day> day = ReadDay(text);
  if (day) SetCurrentDay(*day);
  return day ? 0 : -1;
}

std::u16string CurDate() {
  return DayText(CurrentDay());
}

void RememberPlace(CAppState& app, std::u16string_view place) {
  const std::u16string& separator = app.PlaceSepaStr;
  const bool isMovement = separator.empty() || place.find(separator) != place.npos;
  if (app.NoMemPlaceSepaStr == kOff || !isMovement) app.PlaceHistory.Add(place);
}

}  // namespace core
