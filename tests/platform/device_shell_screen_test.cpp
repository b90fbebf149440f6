#include "platform/qt/device_shell.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTimer>
#include <vector>

#include "platform/qt/modal_screen.h"
#include "platform/qt/one_line.h"

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
  const struct {
    const char* why;
    Qt::MouseButton button;
    QPoint movedTo;  // before half a second is over
    bool released;   // before half a second is over
    bool holds;
  } rows[] = {
      {"a press that stays", Qt::LeftButton, at, false, true},
      {"a finger is never quite still", Qt::LeftButton, at + QPoint(2, 1), false, true},
      {"a drag", Qt::LeftButton, at + QPoint(0, 40), false, false},
      {"a tap", Qt::LeftButton, at, true, false},
      {"the right button, at once", Qt::RightButton, at, false, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    Watched widget;
    std::vector<QPoint> holds;
    TapAndHold hold(&widget, [&holds](QPoint point) { holds.push_back(point); });
    QEventLoop halfASecond;
    QTimer::singleShot(600, &halfASecond, &QEventLoop::quit);

    Mouse(widget, QEvent::MouseButtonPress, at, row.button);
    Mouse(widget, QEvent::MouseMove, row.movedTo, row.button);
    if (row.released) Mouse(widget, QEvent::MouseButtonRelease, at, row.button);
    halfASecond.exec();
    EXPECT_EQ(holds, row.holds ? std::vector<QPoint>{at} : std::vector<QPoint>{});

    const int movesBefore = widget.moves;
    Mouse(widget, QEvent::MouseMove, at + QPoint(50, 50), row.button);
    EXPECT_EQ(widget.moves - movesBefore, row.holds ? 0 : 1);
    if (!row.released) Mouse(widget, QEvent::MouseButtonRelease, at, row.button);
    EXPECT_EQ(widget.presses, 1);
    EXPECT_EQ(widget.releases, row.holds ? 0 : 1);
  }
}

TEST(SoftKeyBar, OpensItsMenuAboveItself) {
  QWidget window;
  window.resize(240, 320);
  SoftKeyBar bar(&window);
  bar.setGeometry(0, 294, 240, 26);
  bar.Menu().addAction(QStringLiteral("終了"));
  window.show();

  bar.findChild<QPushButton*>(QStringLiteral("menu_key"))->click();
  ASSERT_TRUE(bar.Menu().isVisible());
  const QRect menu = bar.Menu().geometry();
  EXPECT_EQ(menu.bottom() + 1, bar.mapToGlobal(QPoint(0, 0)).y());
  EXPECT_EQ(menu.right() + 1, bar.mapToGlobal(QPoint(240, 0)).x());
  bar.Menu().close();
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

TEST(ModalScreen, TheSecondClickOfItsOpeningHitsNothing) {
  QWidget window;
  window.show();
  ModalScreen screen(&window);
  Watched child;
  child.setParent(&screen);
  QTimer::singleShot(0, [&] {
    const QPoint at(5, 5);
    Mouse(child, QEvent::MouseButtonDblClick, at, Qt::LeftButton);
    Mouse(child, QEvent::MouseMove, at, Qt::LeftButton);
    Mouse(child, QEvent::MouseButtonRelease, at, Qt::LeftButton);
    EXPECT_EQ(child.presses + child.moves + child.releases, 0);
    // A double click that begins here acts twice.
    Mouse(child, QEvent::MouseButtonPress, at, Qt::LeftButton);
    Mouse(child, QEvent::MouseButtonRelease, at, Qt::LeftButton);
    Mouse(child, QEvent::MouseButtonDblClick, at, Qt::LeftButton);
    Mouse(child, QEvent::MouseButtonRelease, at, Qt::LeftButton);
    EXPECT_EQ(child.presses, 2);
    EXPECT_EQ(child.releases, 2);
    screen.EndScreen(platform::qt::kResultOk);
  });
  screen.RunModal();
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
