// What the numbers of the settings mean, under the key that stores them. A file may bring any other
// number, which stays as it is: so the fields are ints, and code asks for the one choice that makes
// a difference.
#pragma once

#include <cstddef>

namespace core {

// ViewModeSave, NoMemPlaceSepaStr, EditOpeCont, DispListAfterFind, ViewAutoUpdate, AutoBackup,
// WindowMaximized.
enum SwitchChoice { kOff = 0, kOn = 1 };

// StartupMode
enum StartupChoice { kStartBrowsing = 0, kStartRecorder = 1, kStartNewAction = 2 };

// SeqViewRng, besides the rows of a page; more than kMostRowsPerPage count as that many.
enum ListRangeChoice { kFitsScreen = 0, kMostRowsPerPage = 1000 };

// MonViewTapOpeMode
enum MonthTapChoice { kMonthTapSelects = 1, kMonthTapOpensDay = 2 };

// DayVwMltDayMode
enum DaySpanChoice { kSingleDayMode = 1, kSpanningDayMode = 2 };

// OkBtnVwMode
enum OkButtonChoice { kOkButtonHidden = 1, kOkButtonShown = 2 };

// ToolBarVwMode
enum ToolBarChoice { kToolBarHidden = 1, kToolBarShown = 2 };

// TimeInitForNewMode; none before a file or the older key has chosen.
enum NewTimeChoice { kNewNotChosen = -1, kNewAtClock = 1, kNewAtHalfHour = 2, kNewAllDay = 3 };

// TimeInitForFollowMode
enum FollowTimeChoice { kFollowToNow = 1, kFollowToHalfHour = 2 };

// ActTxtMode
enum ActionTextChoice { kActionTextOff = 1, kActionTextOn = 2 };

// ItmSelMode: fields are filled in place, or from lists and wheels on screens of their own.
enum PickChoice { kPickInPlace = 1, kPickByLists = 2 };

// Of HalfHourTable, where 24:00 is no choice.
inline constexpr size_t kHalfHoursOffered = 48;

}  // namespace core
