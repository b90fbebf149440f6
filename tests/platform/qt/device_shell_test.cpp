#include "platform/qt/device_shell.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QEventLoop>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QTimer>
#include <QWindow>
#include <vector>

#include "platform/qt/choice_box.h"
#include "platform/qt/lines_edit.h"
#include "platform/qt/modal_screen.h"
#include "platform/qt/one_line.h"
#include "platform/qt/preedit_watch.h"

using platform::qt::ModalScreen;
using platform::qt::SoftKeyBar;
using platform::qt::TapAndHold;

namespace {

void Mouse(QWidget& widget, QEvent::Type type, QPoint at, Qt::MouseButton button) {
  QMouseEvent event(type, at, widget.mapToGlobal(at), button, button, Qt::NoModifier);
  QApplication::sendEvent(&widget, &event);
}

// Counts what reaches it.
class Watched : public QWidget {
 public:
  int presses = 0;
  int moves = 0;
  int releases = 0;

 protected:
  void mousePressEvent(QMouseEvent*) override { presses++; }
  void mouseMoveEvent(QMouseEvent*) override { moves++; }
  void mouseReleaseEvent(QMouseEvent*) override { releases++; }
};

}  // namespace

TEST(TapAndHold, TellsAHoldFromATapAndADrag) {
  const QPoint at(20, 30);
  const std::tuple<const char*, Qt::MouseButton, QPoint, bool, bool> rows[] = {
      {"a press that stays", Qt::LeftButton, at, false, true},
      {"a finger is never quite still", Qt::LeftButton, at + QPoint(2, 1), false, true},
      {"a drag", Qt::LeftButton, at + QPoint(0, 40), false, false},
      {"a tap", Qt::LeftButton, at, true, false},
      {"the right button, at once", Qt::RightButton, at, false, true},
  };
  for (const auto& [why, button, movedTo, released, holds] : rows) {
    SCOPED_TRACE(why);
    Watched widget;
    std::vector<QPoint> held;
    TapAndHold hold(&widget, [&held](QPoint point) { held.push_back(point); });
    QEventLoop halfASecond;
    QTimer::singleShot(600, &halfASecond, &QEventLoop::quit);

    Mouse(widget, QEvent::MouseButtonPress, at, button);
    Mouse(widget, QEvent::MouseMove, movedTo, button);
    if (released) Mouse(widget, QEvent::MouseButtonRelease, at, button);
    halfASecond.exec();
    EXPECT_EQ(held, holds ? std::vector<QPoint>{at} : std::vector<QPoint>{});

    const int movesBefore = widget.moves;
    Mouse(widget, QEvent::MouseMove, at + QPoint(50, 50), button);
    EXPECT_EQ(widget.moves - movesBefore, holds ? 0 : 1);
    if (!released) Mouse(widget, QEvent::MouseButtonRelease, at, button);
    EXPECT_EQ(widget.presses, 1);
    EXPECT_EQ(widget.releases, holds ? 0 : 1);
  }
}

TEST(LinesEdit, AnEmptyClipboardPastesNothing) {
  platform::qt::LinesEdit lines;
  lines.setPlainText(QStringLiteral("a"));
  QGuiApplication::clipboard()->setMimeData(new QMimeData);
  lines.paste();
  EXPECT_EQ(lines.toPlainText(), QStringLiteral("a"));
  QGuiApplication::clipboard()->setText(QStringLiteral("b"));
  lines.paste();
  EXPECT_EQ(lines.toPlainText(), QStringLiteral("ba"));
}

TEST(OneLine, APastedLineEndOrTabIsLeftOut) {
  QLineEdit line;
  line.show();
  QGuiApplication::clipboard()->setText(QStringLiteral("a\t\r\n[Find]\n"));
  line.paste();
  EXPECT_EQ(line.text(), QStringLiteral("a[Find]"));
  const QString given = QStringLiteral("from a\tfile");
  line.setText(given);
  EXPECT_EQ(platform::qt::TypedOver(given, line), given);
  line.insert(QStringLiteral("s"));
  EXPECT_EQ(platform::qt::TypedOver(given, line), QStringLiteral("from afiles"));
}

TEST(PreeditWatch, WhatIsCommittedByMovingOnDoesNotComeTwice) {
  platform::qt::PreeditWatch watch;
  qApp->installEventFilter(&watch);
  QLineEdit left, next;
  const auto send = [](QLineEdit& line, const char16_t* preedit, const char16_t* commit) {
    QInputMethodEvent event(QString::fromUtf16(preedit), {});
    event.setCommitString(QString::fromUtf16(commit));
    QApplication::sendEvent(&line, &event);
  };
  send(left, u"あ", u"");
  send(left, u"", u"あ");
  send(next, u"", u"");
  send(next, u"", u"あ");
  EXPECT_EQ(left.text() + u'|' + next.text(), QStringLiteral("あ|"));
  send(next, u"あ", u"");
  send(next, u"", u"あ");
  EXPECT_EQ(next.text(), QStringLiteral("あ")) << "composed again";
}

TEST(InputFilter, TheSecondTapOfADoubleTapMeansWhatTheFirstOneHit) {
  QWidget window;
  Watched below;
  below.setParent(&window);
  window.show();
  // What the tap at that time adds to the presses and releases of the widget, which share it alike.
  const auto taps = [](Watched& widget, quint64 time, const QPoint& at = QPoint(5, 5)) {
    const int before = widget.presses;
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
      QMouseEvent event(type, at, widget.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
      event.setTimestamp(time);
      QApplication::sendEvent(&widget, &event);
    }
    EXPECT_EQ(widget.presses, widget.releases);
    return widget.presses - before;
  };
  EXPECT_EQ(taps(below, 10000) + taps(below, 10200), 2) << "it is still there";
  ModalScreen screen(&window);
  Watched child;
  child.setParent(&screen);
  QTimer::singleShot(0, [&] {
    EXPECT_EQ(taps(child, 10400), 0) << "the screen has opened under the finger";
    EXPECT_EQ(taps(child, 10500, {50, 5}), 1) << "another finger";
    EXPECT_EQ(taps(child, 12000), 1);
    screen.EndScreen(platform::qt::kResultOk);
  });
  screen.RunModal();
  EXPECT_EQ(taps(below, 12200), 0) << "and closed";
  EXPECT_EQ(taps(below, 14000), 1) << "a tap of its own";
  QDialog message(&window);
  Watched key;
  key.setParent(&message);
  message.move(100, 100);
  message.show();
  EXPECT_EQ(taps(key, 14200), 1) << "a quick user who knows where the message comes";
  message.hide();
  EXPECT_EQ(taps(below, 14400), 1) << "and goes on at once";
}

TEST(InputFilter, EnterDecidesOnceAndShiftF10IsTheMenuKey) {
  class Field : public QPlainTextEdit {
   public:
    using QPlainTextEdit::QPlainTextEdit;
    int menus = 0;

   protected:
    void contextMenuEvent(QContextMenuEvent*) override { ++menus; }
  };
  QWidget window;
  QLineEdit line(&window);
  Field field(&window);
  window.show();
  QApplication::setActiveWindow(&window);
  int enters = 0;
  QObject::connect(&line, &QLineEdit::returnPressed, [&] { ++enters; });
  const auto press = [&](int key, bool repeats, Qt::KeyboardModifiers with = {}) {
    QKeyEvent event(QEvent::KeyPress, key, with, QStringLiteral("\r"), repeats);
    QApplication::sendEvent(window.windowHandle(), &event);
  };
  field.setFocus();
  press(Qt::Key_Return, false);
  press(Qt::Key_Return, true);
  EXPECT_EQ(field.document()->blockCount(), 3) << "a text may repeat its own line end";
  line.setFocus();
  press(Qt::Key_Return, true);
  EXPECT_EQ(enters, 0) << "pressed elsewhere, as in a screen that it has closed";
  press(Qt::Key_Return, false);
  EXPECT_EQ(enters, 1);
  for (const auto type : {QEvent::KeyRelease, QEvent::KeyPress}) {  // as X repeats a key
    QKeyEvent event(type, Qt::Key_Return, {}, QStringLiteral("\r"));
    event.setTimestamp(70000);
    QApplication::sendEvent(window.windowHandle(), &event);
  }
  EXPECT_EQ(enters, 1);
  field.setFocus();
  press(Qt::Key_F10, false, Qt::ShiftModifier);
  EXPECT_EQ(field.menus, 1);
}

TEST(MenuPlace, ASubmenuOpensInTheWindowAndNeverOverItsRow) {
  for (const QSize size : {QSize(240, 320), QSize(320, 240), QSize(130, 320), QSize(240, 200)}) {
    SCOPED_TRACE(size.width() * 1000 + size.height());
    QWidget window;
    window.resize(size);
    SoftKeyBar bar(&window);
    bar.setGeometry(0, size.height() - 26, size.width(), 26);
    QMenu& top = bar.Menu();
    top.addAction(QStringLiteral("新規作成"));
    QMenu* tools = top.addMenu(QStringLiteral("ツール"));
    for (int row = 0; row < 5; ++row) tools->addAction(QStringLiteral("バージョン"));
    for (int row = 0; row < 6; ++row) top.addAction(QStringLiteral("終了"));
    window.show();
    bar.findChild<QPushButton*>(QStringLiteral("menu_key"))->click();
    top.setActiveAction(tools->menuAction());
    ASSERT_TRUE(tools->isVisible());
    const QRect row = top.actionGeometry(tools->menuAction()).translated(top.pos());
    for (const QMenu* menu : {&top, tools})
      EXPECT_TRUE(window.geometry().contains(menu->geometry()));
    EXPECT_FALSE(tools->geometry().intersects(row));
    EXPECT_EQ(top.geometry().bottom() + 1, bar.mapToGlobal(QPoint()).y()) << "not over its key";
    EXPECT_EQ(top.geometry().right(), window.geometry().right());
    top.close();
  }
}

TEST(ChoiceBox, OpensRoundTheCurrentRowOrAtItsTop) {
  QWidget window;
  platform::qt::ChoiceBox box(&window);
  for (int row = 0; row < 40; ++row) box.addItem(QString::number(row));
  window.show();
  const auto middleRow = [&](int current) {
    box.setCurrentIndex(current);
    box.showPopup();
    const int row = box.view()->indexAt(box.view()->viewport()->rect().center()).row();
    box.hidePopup();
    return row;
  };
  EXPECT_NEAR(middleRow(20), 20, 1);
  EXPECT_NEAR(middleRow(-1), 4, 1) << "not where it was left";
}

TEST(ModalScreen, CoversTheWindowAndGivesItBack) {
  QWidget window;
  window.resize(240, 320);
  QPushButton below(&window);
  window.show();
  QApplication::setActiveWindow(&window);
  below.setFocus();

  ModalScreen outer(&below);
  ModalScreen inner(&outer);
  QPushButton first(&outer);
  first.setFocus();
  QTimer::singleShot(0, [&] {
    EXPECT_FALSE(below.isEnabled());
    EXPECT_TRUE(outer.isAncestorOf(window.focusWidget()) || window.focusWidget() == &outer);
    window.resize(320, 240);
    QTimer::singleShot(0, [&] {
      EXPECT_EQ(ModalScreen::Topmost(), &inner);
      EXPECT_FALSE(outer.isEnabled());
      EXPECT_EQ(inner.size(), QSize(320, 240));
      QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
      QApplication::sendEvent(&inner, &escape);
    });
    EXPECT_EQ(inner.RunModal(), platform::qt::kResultCancel);
    EXPECT_EQ(ModalScreen::Topmost(), &outer);
    EXPECT_TRUE(outer.isEnabled());
    EXPECT_FALSE(below.isEnabled());
    outer.EndScreen(platform::qt::kResultOk);
  });
  EXPECT_EQ(outer.RunModal(), platform::qt::kResultOk);
  EXPECT_EQ(ModalScreen::Topmost(), nullptr);
  EXPECT_TRUE(below.isEnabled());
  EXPECT_EQ(window.focusWidget(), &below);
}
