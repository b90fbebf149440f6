// The main window offscreen: from taps and keys to what is shown.
#include "mainwindow/main_window.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <memory>

#include "platform/qt/qt_text.h"
#include "store/read_action.h"
#include "support/screen_driver.h"
#include "views/diary.h"
#include "views/selection.h"

namespace mainwindow {
namespace {

using namespace views;

using platform::qt::ModalScreen;

enum : int {
  kChange = 32782,
  kFollow = 32784,
  kDelete = 32785,
  kMove = 32787,
  kSpanningMode = 32797,
  kToolBarMode = 32798,
  kFindClear = 32803,
  kOptions = 32804,
  kWeekShowDay = 32852,
  kTotals = 33211,
  kMapPointLink = 33880,
};

class MainWindow : public Diary, protected testing_support::ScreenDriver {
 protected:
  MainWindow() {
    core::MenuBarHeight = 26;
    Add(u"01", u"2010/06/22 09:00:00", u"2010/06/22 10:00:00", u"前の日");
    Add(u"02", u"2010/06/23 10:00:00", u"2010/06/23 11:00:00", u"駅");
    Add(u"03", u"2010/06/23 12:00:00", u"2010/06/23 13:00:00", u"家");
    main = std::make_unique<CMainWnd>(app);
    main->show();
    screen = main.get();
    list = Find<ActionList>("1071");
    rows = list->viewport();
  }

  std::string Title() { return Find("1050")->text().toStdString(); }

  std::string FirstCells() const {
    QStringList texts;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
      texts << list->topLevelItem(row)->text(0);
    }
    return texts.join(u'|').toStdString();
  }
  QPoint RowPoint(int row) const { return list->visualItemRect(list->topLevelItem(row)).center(); }

  static void Key(QEvent::Type type, int key, QWidget* on, Qt::KeyboardModifiers with = {}) {
    QKeyEvent event(type, key, with);
    QApplication::sendEvent(on, &event);
  }
  static void Press(int key, QWidget* on) { Key(QEvent::KeyPress, key, on); }
  static void Stroke(int key, QWidget* on, Qt::KeyboardModifiers with = {}) {
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) Key(type, key, on, with);
  }

  // In the week's picture, a little after the hour; band 3 is the current date's.
  QPoint WeekPoint(int band, int hour) {
    const auto* week = Find<QWidget>("week");
    return {20 + (week->width() - 20) * hour / 24 + 2, band * (week->height() / 7) + 5};
  }
  bool IsBox(QPoint at) { return Find<QWidget>("week")->grab().toImage().pixel(at) == 0xFF2040E0; }

  // Holds a view's picture and chooses a row of the menu, the first is 1; `drive` ends its screen.
  void HoldAndChoose(QWidget* on, QPoint at, int row, const std::function<void()>& drive) {
    QMouseEvent press(QEvent::MouseButtonPress, at, on->mapToGlobal(at), Qt::RightButton,
                      Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(on, &press);
    QCoreApplication::processEvents();
    QWidget* menu = QApplication::activePopupWidget();
    while (row-- > 0) Press(Qt::Key_Down, menu);
    Next(drive);
    Press(Qt::Key_Return, menu);
    QCoreApplication::processEvents();
  }

  // The title of the edit screen that `act` opens, empty if it opens none; leaves the screen again.
  std::string EditTitleAfter(const std::function<void()>& act) {
    std::string title;
    QTimer::singleShot(0, main.get(), [&title] {
      ModalScreen* opened = ModalScreen::Topmost();
      if (opened == nullptr) return;
      title = opened->findChild<QLabel*>(QStringLiteral("1100"))->text().toStdString();
      opened->EndScreen(platform::qt::kResultCancel);
    });
    act();
    QCoreApplication::processEvents();
    return title;
  }
  std::string Opens(QWidget* on, QPoint at) {
    return EditTitleAfter([=] { Tap(on, at); });
  }

  std::unique_ptr<CMainWnd> main;
  ActionList* list;
  QWidget* rows;  // of the list, to be tapped
};

TEST_F(MainWindow, ShowsTheDayAndMovesByButtonsAndKeys) {
  EXPECT_EQ(Title(), "2010/06/23");
  EXPECT_EQ(FirstCells(), "10:00-11:00|12:00-13:00|<新規作成>");
  Press(Qt::Key_Left, list);
  EXPECT_EQ(Title(), "2010/06/23") << "a key acts as it is released";
  Key(QEvent::KeyRelease, Qt::Key_Left, list);
  EXPECT_EQ(Title(), "2010/06/22");
  EXPECT_EQ(FirstCells(), "09:00-10:00|<新規作成>");
  Click("1060");
  EXPECT_EQ(Title(), "2010/06/29");
  Click("1051");
  EXPECT_EQ(Title(), "2010/06/27") << "the Sunday of that week";
  Click("1058");
  EXPECT_EQ(Title(), "2010/06/23") << "the host's today";
  for (const int id : {1050 - 1, 1057 + 6, 4711}) main->OnCommand(id);
  EXPECT_EQ(Title(), "2010/06/23") << "no control has these numbers";
}

TEST_F(MainWindow, AHeldArrowWalksOnAndAHeldDeleteAsksOnce) {
  host.answers = {platform::Answer::kNo};
  for (const int key : {Qt::Key_Delete, Qt::Key_Right}) {
    for (const int stroke : {0, 1, 2}) {
      for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        const bool repeats = stroke != (type == QEvent::KeyPress ? 0 : 2);
        QKeyEvent event(type, key, Qt::NoModifier, {}, repeats);
        QApplication::sendEvent(list, &event);
      }
    }
  }
  EXPECT_EQ(host.messages.size(), 1u);
  EXPECT_EQ(Title(), "2010/06/26");
}

TEST_F(MainWindow, ATapOpensWhatItMeans) {
  EXPECT_EQ(Opens(rows, RowPoint(1)), "変更");
  EXPECT_EQ(app.SelIndex, 2);
  EXPECT_EQ(app.SelActId, u"ID2010062300000003");
  EXPECT_EQ(list->FocusedRow(), 1) << "the Action is still selected after the screen";
  EXPECT_EQ(Opens(rows, RowPoint(2)), "新規作成");
  for (const int width : {8, 120}) {
    for (int column = 0; column < 4; ++column) list->header()->resizeSection(column, width);
    EXPECT_EQ(list->header()->length(), std::max(rows->width(), 4 * width + 100));
    EXPECT_EQ(Opens(rows, {rows->width() - 1, RowPoint(1).y()}), "変更")
        << "at the row's end, columns of " << width;
  }
  EXPECT_EQ(Opens(rows, {20, rows->height() - 5}), "新規作成") << "below the rows";
}

TEST_F(MainWindow, EnterOpensTheRowOnceAndOnlyWhereItWasPressed) {
  EXPECT_EQ(EditTitleAfter([this] { Key(QEvent::KeyRelease, Qt::Key_Return, list); }), "")
      << "pressed on another screen";
  Stroke(Qt::Key_Down, list);
  EXPECT_EQ(EditTitleAfter([this] { Stroke(Qt::Key_Return, list); }), "変更");
  EXPECT_EQ(app.SelActId, u"ID2010062300000003");
}

TEST_F(MainWindow, ADragSelectsRowsForTheDelete) {
  host.answers = {platform::Answer::kYes};
  Send(rows, QEvent::MouseButtonPress, RowPoint(0));
  Send(rows, QEvent::MouseMove, RowPoint(1));
  Send(rows, QEvent::MouseButtonRelease, RowPoint(1));
  main->OnCommand(kDelete);
  EXPECT_EQ(host.messages.back().text, u"これらの 2個のアクションを削除しますか？");
  EXPECT_EQ(FirstCells(), "<新規作成>");
}

TEST_F(MainWindow, TheMenuNamesWhatItTakesBackAndTheDayComesBack) {
  const auto menuText = [this](const char* id) {
    auto* item = main->findChild<QAction*>(QString::fromLatin1(id));
    const auto menus = item->associatedObjects();
    for (QObject* menu : menus) {
      if (auto* open = qobject_cast<QMenu*>(menu)) emit open->aboutToShow();
    }
    return item->isEnabled() ? item->text().toStdString() : "greyed";
  };
  EXPECT_EQ(menuText("33260"), "greyed");
  host.answers = {platform::Answer::kYes};
  main->OnCommand(kDelete);
  EXPECT_EQ(FirstCells(), "12:00-13:00|<新規作成>");
  EXPECT_EQ(menuText("33260"), "元に戻す: 削除");
  Press(Qt::Key_Left, list);
  Key(QEvent::KeyRelease, Qt::Key_Left, list);
  main->OnCommand(33260);
  EXPECT_EQ(Title(), "2010/06/23");
  EXPECT_EQ(FirstCells(), "10:00-11:00|12:00-13:00|<新規作成>");
  EXPECT_EQ(menuText("33261"), "やり直す: 削除");
}

TEST_F(MainWindow, ATapBesideAnOpenCalendarOnlyClosesIt) {
  auto* calendar = Find<platform::qt::MonthCalendar>("1125");
  Click("1050");
  EXPECT_TRUE(calendar->isVisible());
  EXPECT_EQ(calendar->Selected(), QDate(2010, 6, 23));
  EXPECT_EQ(Opens(rows, RowPoint(0)), "");
  EXPECT_FALSE(calendar->isVisible());
  Click("1050");
  emit calendar->Chosen(QDate(2010, 6, 22));
  EXPECT_EQ(Title(), "2010/06/22");
  EXPECT_FALSE(calendar->isVisible());
}

TEST_F(MainWindow, TheListViewPagesByWhatFits) {
  app.SeqViewRng = 0;
  main->OnCommand(kShowList);
  EXPECT_EQ(Title(), "1/1 - 3");
  EXPECT_EQ(app.ListRowsPerScreen, rows->height() / 24);
  EXPECT_FALSE(Find<QWidget>("1051")->isVisible());
  EXPECT_TRUE(FirstCells().starts_with("2010/06/23 12:00-13:00 家:cat:memo|"));
  main->resize(320, 240);
  main->OnCommand(kToolBarMode);
  EXPECT_EQ(app.ListRowsPerScreen, rows->height() / 24) << "in landscape over the bar";
}

TEST_F(MainWindow, MenusGreyWhatIsNotLiveAndCheckTheView) {
  const std::tuple<int, bool, bool> cases[] = {
      {kShowDay, true, true},       {kShowList, true, false}, {kWeekShowDay, false, false},
      {kSpanningMode, true, false}, {kMove, false, false},    {kChange, true, false},
      {kFindClear, true, false}};
  for (const auto& [id, enabled, checked] : cases) {
    SCOPED_TRACE(id);
    const auto* action = screen->findChild<QAction*>(QString::number(id));
    EXPECT_EQ(action->isEnabled(), enabled);
    EXPECT_EQ(action->isChecked(), checked);
    const auto* tool = screen->findChild<QToolButton*>(QString::number(id));
    EXPECT_EQ(tool != nullptr && tool->isChecked(), checked);
  }
  main->OnCommand(kShowList);
  main->OnCommand(kWeekShowDay);
  EXPECT_EQ(app.CurView, core::kViewList) << "a greyed command does nothing";
}

TEST_F(MainWindow, ADraggedWidthGoesToTheOrientationsSetting) {
  list->header()->resizeSection(1, 77);
  main->resize(320, 240);
  list->header()->resizeSection(0, 55);
  EXPECT_EQ(app.DayVwPrtColWdh, (std::array<int, 4>{-1, 77, -1, -1}));
  EXPECT_EQ(app.DayVwLndColWdh, (std::array<int, 4>{55, -1, -1, -1}));
  main->resize(240, 320);
  EXPECT_EQ(list->columnWidth(1), 77);
}

TEST_F(MainWindow, ClosingTheFrameAsksEachScreenFromTheTopDown) {
  app.ItmSelMode = 2;  // places are picked on a screen of their own
  host.answers = {platform::Answer::kCancel, platform::Answer::kNo};
  QTimer::singleShot(0, main.get(), [&] {
    ModalScreen* edit = ModalScreen::Topmost();
    edit->findChild<QAbstractButton*>(QStringLiteral("1107"))->click();  // the Action is changed
    QTimer::singleShot(0, main.get(), [&] { main->close(); });
    edit->findChild<QAbstractButton*>(QStringLiteral("1113"))->click();
    EXPECT_EQ(ModalScreen::Topmost(), edit) << "the picker has gone by itself";
    EXPECT_TRUE(host.messages.empty());
    QTimer::singleShot(0, main.get(), [&, edit] {
      EXPECT_EQ(ModalScreen::Topmost(), edit) << "cancelled: nothing is lost";
      EXPECT_EQ(host.messages.size(), 1u);
      main->close();
    });
  });
  Tap(rows, RowPoint(0));
  EXPECT_EQ(host.messages.size(), 2u);
  EXPECT_TRUE(main->isVisible());
  QCoreApplication::processEvents();
  EXPECT_FALSE(main->isVisible());
}

TEST_F(MainWindow, TheTabKeyVisitsWhatIsInSightFromTheTopDown) {
  for (const bool bars : {false, true}) {
    app.ToolBarVwMode = app.OkBtnVwMode = bars ? 2 : 1;
    for (const int view : {kShowDay, kShowWeek, kShowMonth, kShowList, kShowMap}) {
      SCOPED_TRACE(testing::Message() << view << (bars ? " with bars" : ""));
      main->OnCommand(view);
      QWidget* const first = main->focusWidget();
      int wraps = 0;
      int visited = 0;
      for (int top = 0; visited == 0 || main->focusWidget() != first; ++visited) {
        Press(Qt::Key_Tab, main->focusWidget());
        const QWidget* now = main->focusWidget();
        EXPECT_FALSE(now->visibleRegion().isEmpty()) << now->objectName().toStdString();
        const int formerTop = std::exchange(top, now->mapTo(main.get(), QPoint()).y());
        if (top < formerTop) ++wraps;
        ASSERT_LT(visited, 40);
      }
      EXPECT_EQ(wraps, 1);
      EXPECT_GE(visited, bars ? 17 : 9);
    }
  }
}

TEST_F(MainWindow, EnterPressesTheButtonThatTheTabKeyReached) {
  Find("1050")->setFocus();
  Press(Qt::Key_Tab, main->focusWidget());
  Press(Qt::Key_Return, main->focusWidget());
  EXPECT_EQ(Title(), "2010/06/20") << "the Sunday of that week";
}

TEST_F(MainWindow, TheWeekMovesByBandsAndOpensBoxes) {
  main->OnCommand(kShowWeek);
  auto* week = Find<QWidget>("week");
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(Title(), "2010/06/20") << "three days before the current date";
  for (const auto& [key, title] :
       {std::pair(Qt::Key_Down, "2010/06/21"), std::pair(Qt::Key_Right, "2010/06/28"),
        std::pair(Qt::Key_Left, "2010/06/21"), std::pair(Qt::Key_Up, "2010/06/20")}) {
    Stroke(key, week);
    EXPECT_EQ(Title(), title) << key;
  }
  EXPECT_EQ(Opens(week, WeekPoint(3, 12)), "変更");
  EXPECT_EQ(app.SelActId, u"ID2010062300000003");
  EXPECT_EQ(app.SelIndex, 2);
  EXPECT_EQ(Opens(week, WeekPoint(5, 12)), "新規作成");
  EXPECT_EQ(core::CurDate(), u"2010/06/25") << "a free tap goes to the day of its band";
  EXPECT_EQ(Title(), "2010/06/22");
  Send(week, QEvent::MouseButtonPress, WeekPoint(3, 12));
  Send(week, QEvent::MouseButtonRelease, WeekPoint(4, 12));
  EXPECT_EQ(core::CurDate(), u"2010/06/25") << "a drag to another band is no tap";
}

TEST_F(MainWindow, TheWeekShowsANewActionAndKeepsTheBoxOfADeletedOne) {
  main->OnCommand(kShowWeek);
  auto* week = Find<QWidget>("week");
  app.TimeInitForNewMode = 3;  // the whole day
  HoldAndChoose(week, WeekPoint(4, 8), 1, [this] { Click("1102"); });
  EXPECT_EQ(core::CurDate(), u"2010/06/24");
  EXPECT_EQ(Title(), "2010/06/21");
  EXPECT_EQ(app.IndexCount, 4);
  EXPECT_TRUE(IsBox(WeekPoint(3, 12))) << "on the day that was held";
  host.answers = {platform::Answer::kYes};
  EXPECT_TRUE(FxDeleteAction(app, app.ActIds.At(3)));
  main->ShowChange(Change::kDeleted);
  EXPECT_TRUE(IsBox(WeekPoint(3, 12))) << "until the date moves";
  app.ViewAutoUpdate = 1;
  main->ShowChange(Change::kDeleted);
  EXPECT_FALSE(IsBox(WeekPoint(3, 12))) << "unless its user wants it current";
  app.ViewAutoUpdate = 0;
  host.answers = {platform::Answer::kYes};
  EXPECT_TRUE(IsBox(WeekPoint(2, 12)));
  HoldAndChoose(week, WeekPoint(2, 12), 2, [this] {
    FxDeleteAction(app, app.SelActId);
    ModalScreen::Topmost()->EndScreen(platform::qt::kResultOk);
  });
  EXPECT_EQ(core::CurDate(), u"2010/06/23");
  EXPECT_FALSE(IsBox(WeekPoint(3, 12))) << "the week is read after what was chosen for its day";
}

TEST_F(MainWindow, AnotherDataFileTakesTheBoxesAway) {
  main->OnCommand(kShowWeek);
  EXPECT_TRUE(IsBox(WeekPoint(3, 12)));
  host.answers = {platform::Answer::kYes};
  Next([this] {
    Click("tab5");
    Find<QLineEdit>("DataFile")->setText(platform::qt::ToQt(folder.Path(u"another.sdf")));
    Click("1");
  });
  main->OnCommand(kOptions);
  EXPECT_FALSE(IsBox(WeekPoint(3, 12)));
}

TEST_F(MainWindow, KeysReachTheBoxesOfTheWeek) {
  main->OnCommand(kShowWeek);
  auto* week = Find<QWidget>("week");
  for (const auto& [key, last] :
       {std::pair(Qt::Key_Up, u'2'), std::pair(Qt::Key_Right, u'3'), std::pair(Qt::Key_Right, u'3'),
        std::pair(Qt::Key_Up, u'1'), std::pair(Qt::Key_Down, u'2')}) {
    SCOPED_TRACE(key);
    Stroke(key, week, Qt::ControlModifier);
    EXPECT_EQ(EditTitleAfter([&] { Stroke(Qt::Key_Return, week); }), "変更");
    EXPECT_EQ(app.SelActId.back(), last);
  }
  EXPECT_EQ(core::CurDate(), u"2010/06/23") << "the date has not moved";
  host.answers = {platform::Answer::kYes};
  Stroke(Qt::Key_Delete, week);
  EXPECT_EQ(app.IndexCount, 2);
}

TEST_F(MainWindow, TheEditMenuPointsToTheBoxesOfTheWeek) {
  main->OnCommand(kShowWeek);
  host.answers = {"変更不可|画面上のアクションをタップ&ホールドして操作してください。",
                  "削除不可|画面上のアクションをタップ&ホールドして操作してください。"};
  main->OnCommand(kFollow);
  main->OnCommand(kDelete);
}

TEST_F(MainWindow, TheMonthsNumbersStayWithinTheCellsOfLandscape) {
  main->resize(320, 240);
  main->OnCommand(kShowMonth);
  const QImage month = Find<QWidget>("month")->grab().toImage();
  for (int line = 1; line < 7; ++line) {
    for (int y = 20; y < 60; ++y)
      EXPECT_EQ(month.pixel(line * (160 / 7), y), 0xFF000000u) << line << " " << y;
  }
}

TEST_F(MainWindow, TheMonthGoesToTheTappedDayAndListsIt) {
  Add(u"04", u"2010/06/23 14:00:00", u"2010/06/23 15:00:00", std::u16string(80, u'駅'));
  main->OnCommand(kShowMonth);
  auto* month = Find<QWidget>("month");
  auto* days = Find<ActionList>("1072");
  const auto cell = [](int row, int column) { return QPoint(column * 34 + 10, row * 21 + 25); };
  EXPECT_EQ(Title(), "2010/06/23 - 4(4)");
  EXPECT_LT(2 * days->width(), days->header()->length()) << "all of a long text";
  EXPECT_EQ(days->topLevelItem(0)->text(0), QStringLiteral("10:00-11:00 駅::cat::memo"));
  Tap(month, cell(3, 2));
  EXPECT_EQ(Title(), "2010/06/22 - 4(4)");
  EXPECT_EQ(days->topLevelItemCount(), 2);
  EXPECT_EQ(days->header()->length(), days->viewport()->width()) << "a long text of another day";
  EXPECT_EQ(Opens(days->viewport(), days->visualItemRect(days->topLevelItem(0)).center()), "変更");
  EXPECT_EQ(app.SelActId, u"ID2010062300000001");
  host.answers = {platform::Answer::kYes};
  main->OnCommand(kDelete);
  EXPECT_EQ(Title(), "2010/06/22 - 3(3)");
  EXPECT_EQ(days->topLevelItemCount(), 2) << "the list stays until the date moves";
  Stroke(Qt::Key_Down, month);
  EXPECT_EQ(Title(), "2010/06/29 - 3(3)");
  Tap(month, cell(5, 0));
  EXPECT_EQ(Title(), "2010/07/04 - 0(3)") << "counted for the other month";
  app.MonViewTapOpeMode = 2;
  Tap(month, cell(1, 1));
  EXPECT_EQ(app.CurView, core::kViewDay);
  EXPECT_EQ(Title(), "2010/07/05");
  EXPECT_FALSE(days->isVisible());
}

TEST_F(MainWindow, TheMapIsTappedDraggedAndMoved) {
  store::Action action;
  store::ReadAction(app.ActIds.At(1), action);
  action[store::kLatitude] = u"35";
  action[store::kLongitude] = u"139";
  store::dbSession().UserTable->Update(app.ActIds.At(1), action);
  main->OnCommand(kShowMap);
  auto* map = Find<QWidget>("map");
  EXPECT_EQ(FirstCells(), "1|2|");
  const auto drag = [&](QWidget* on) {
    Send(on, QEvent::MouseButtonPress, {60, 40});
    Send(on, QEvent::MouseMove, {60, 50});
    Send(on, QEvent::MouseMove, {90, 60});
    Send(on, QEvent::MouseButtonRelease, {90, 60});
  };
  EXPECT_EQ(Opens(map, {120, 80}), "変更");
  EXPECT_EQ(app.SelActId, u"ID2010062300000002");
  EXPECT_EQ(EditTitleAfter([&] { drag(map); }), "");
  EXPECT_EQ(Opens(map, {150, 100}), "変更");
  EXPECT_EQ(Opens(map, {120, 80}), "");
  main->OnCommand(kMapPointLink);
  EXPECT_TRUE(host.links.back().ends_with(u"&ll=35.200000,138.700000&z=14"));
  Send(rows, QEvent::MouseButtonPress, RowPoint(0));
  main->OnCommand(kMove);
  main->resize(320, 240);
  EXPECT_EQ(map->geometry(), QRect(0, 25, 240, 160));
  EXPECT_EQ(list->geometry(), QRect(240, 25, 80, 189));
  EXPECT_EQ(Opens(map, {120, 80}), "変更") << "moved to, and kept in the turned window";
  main->OnCommand(kShowWeek);
  drag(Find<QWidget>("week"));
  main->OnCommand(kShowMap);
  EXPECT_EQ(Opens(map, {150, 100}), "変更") << "what is dragged elsewhere moves the map";
}

TEST_F(MainWindow, ShowsWhatWasChangedFromTheTotals) {
  Next([this] {
    Tap(Find<QWidget>("bars"), {20, 10});
    Next([this] {
      Click("1111");  // ends now
      Click("1102");
    });
    Tap(Find<QAbstractItemView>("1619")->viewport(), {20, 10});
    for (int k = 0; k < 2; ++k) Click("33220");
  });
  main->OnCommand(kTotals);
  EXPECT_EQ(FirstCells(), "10:00-10:45|12:00-13:00|<新規作成>");
}

}  // namespace
}  // namespace mainwindow
