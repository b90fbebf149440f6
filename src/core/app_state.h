// The one application object: settings, the Action index, the histories and what the screens hand
// to one another. Interface thread only. A field that bears a settings key's name holds that
// setting; settings_choices.h says what its numbers mean.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/day.h"
#include "core/history.h"
#include "core/text_list.h"

namespace core {

inline constexpr std::u16string_view kProgramName = u"Morvenly";
inline constexpr std::u16string_view kCopyright = u"Copyright (C) 2026 The Morvenly founders";

enum View { kViewDay = 1, kViewWeek = 2, kViewMonth = 3, kViewList = 4, kViewMap = 5 };

class CAppState {
 public:
  // With the defaults of the settings. Asks the host, which must be set before.
  CAppState();

  // Action index: position i of one list belongs to position i of the other, by start ascending.
  TextList ActIds;
  TextList ActStarts;                       // f_nchStaDateTime
  int IndexCount = 0;                       // entries of the index
  int TotalCount = 0;                       // Actions in the data file, by the last full reload
  std::optional<std::u16string> FindWhere;  // condition of the active find, as SQL; none: no find

  // What the views and the edit screen hand to one another.
  int CurView = kViewDay;
  int ListPage = 0;           // 0 the newest
  int ListRowsPerScreen = 1;  // rows that the list control shows now, at least 1
  int SelIndex = -1;          // position in the index, -1 for none
  std::u16string SelActId;    // empty for none

  // What the find dialog showed when it was last left, for the run of the program.
  std::u16string FindStaDate, FindEndDate;  // yyyy/mm/dd; empty for no bound
  std::u16string FindStaTime, FindEndTime;  // hh:mm, kAllDayMark or empty
  int FindInPlace = 1;
  int FindInCategory1 = 1;
  int FindInCategory2 = 1;
  int FindInMemo = 1;

  // The last paths of the exchange screen, for the run of the program.
  std::u16string ExportPath, ImportPath;

  // Settings.
  std::optional<std::u16string> FileVersion;  // "Version" as read; none in a first run
  int StartupMode;
  int ViewModeSave;
  int InitView;
  int SeqViewRng;
  int MonViewTapOpeMode;
  int DayVwMltDayMode;
  int OkBtnVwMode;
  int ToolBarVwMode;
  std::u16string DayVwGrdFntName, WekVwGrdFntName, MthVwGrdFntName, MthVwLstFntName,
      LstVwGrdFntName, MapVwGrdFntName, MapVwLstFntName, RcdrFntName;
  int DayVwGrdFntSize, WekVwGrdFntSize, MthVwGrdFntSize, MthVwLstFntSize, LstVwGrdFntSize,
      MapVwGrdFntSize, MapVwLstFntSize, RcdrFntSize;
  std::array<int, 4> DayVwPrtColWdh{-1, -1, -1, -1};
  std::array<int, 4> DayVwLndColWdh{-1, -1, -1, -1};
  std::array<int, 5> MapVwPrtColWdh{-1, -1, -1, -1, -1};
  std::array<int, 5> MapVwLndColWdh{-1, -1, -1, -1, -1};
  int SetNowForCreate;
  int TimeInitForNewMode;
  int TimeInitForFollowMode;
  std::u16string PlaceSepaStr;
  int NoMemPlaceSepaStr;
  int EditOpeCont;
  int DispListAfterFind;
  int ViewAutoUpdate;
  int AutoBackup;
  std::u16string StaDtTmName, EndDtTmName, LatName, LonName, SbjctName, PlaceName, Cate1Name,
      Cate2Name, MemoName;
  int ActTxtMode;
  int ItmSelMode;
  std::u16string DataFile;  // full path, device form
  // The main window, in units and not maximized; 0 where nothing is kept, as on a screen that the
  // window always fills.
  int WindowWidth = 0;
  int WindowHeight = 0;
  int WindowMaximized = 0;

  HistoryList PlaceHistory{80};
  HistoryList Category1History{80};
  HistoryList Category2History{80};
  HistoryList MemoHistory{20};
  HistoryList FindHistory{10};

  std::array<std::u16string, 49> HalfHourTable;  // "00:00", "00:30" .. "23:30", "24:00"

  // The recorder: a chain of Actions of which the last may still be running.
  bool RcdrLoaded = false;      // the values below have been read from the open data file
  std::u16string RcdrPreActId;  // the running Action; empty if nothing is running
  std::u16string RcdrPreDate;   // its start, kept for the data file alone
  std::u16string RcdrPreTime;
  TextList RcdrHistory;  // ids of the chain, oldest first
  int RcdrHistNum = 0;   // length of the history as the data file has it
  // What the recorder's screen held when its fields were last captured, and on which day.
  std::u16string RcdrDate, RcdrTime, RcdrLatitude, RcdrLongitude, RcdrPlace, RcdrCategory1,
      RcdrCategory2;
};

extern CAppState* g_App;

// The current date of the views. Code that takes it as a whole calls CurrentDay.
extern int CurYear;
extern int CurMonth;
extern int CurDay;
extern int DaySeqVwLineNum;  // a setting that is read and written back, nothing else
extern int MenuBarHeight;    // the bottom menu bar

// A step by months keeps the day's number, so it may be a day that doesn't exist.
Day CurrentDay();
void SetCurrentDay(const Day& day);
// The same from a date text: 0, or -1 and no change if it doesn't parse.
int SetCurDate(std::u16string_view text);
// As yyyy/mm/dd.
std::u16string CurDate();

// A place that its user chose or typed goes into the history. With NoMemPlaceSepaStr on, movements
// stay out: places that hold the separator; with an empty separator all do (kept on purpose). Any
// number but kOff is on.
void RememberPlace(CAppState& app, std::u16string_view place);

}  // namespace core
