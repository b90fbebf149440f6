#include "platform/qt/touch_screen.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QScrollBar>
#include <QTimer>

#include "platform/metrics.h"
#include "platform/qt/device_shell.h"

namespace {

class TouchScreen : public testing::Test {
 protected:
  TouchScreen() {
    list.resize(200, 200);
    for (int i = 0; i < 100; ++i) list.addItem(QString::number(i));
    list.show();
  }

  void Touch(QEvent::Type type, std::initializer_list<QPointF> fingers) {
    QList<QEventPoint> points;
    for (const QPointF& at : fingers) {
      points << QEventPoint(static_cast<int>(points.size()), QEventPoint::State::Updated, at,
                            list.mapToGlobal(at));
    }
    QTouchEvent touch(type, &device, Qt::NoModifier, points);
    QApplication::sendEvent(list.windowHandle(), &touch);
  }
  void Mouse(QEvent::Type type, QPoint at) {
    QMouseEvent mouse(type, at, list.viewport()->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(list.viewport(), &mouse);
  }

  QPointingDevice device{QStringLiteral("screen"),
                         1,
                         QInputDevice::DeviceType::TouchScreen,
                         QPointingDevice::PointerType::Finger,
                         QInputDevice::Capability::Position,
                         10,
                         0};
  QListWidget list;
};

}  // namespace

TEST_F(TouchScreen, TwoFingersScrollByRowsAndSelectNothing) {
  int holds = 0;
  platform::qt::TapAndHold hold(list.viewport(), [&holds](QPoint) { ++holds; });
  const int row = list.visualItemRect(list.item(0)).height();
  Touch(QEvent::TouchBegin, {{50, 150}});
  Mouse(QEvent::MouseButtonPress, {50, 150});
  const int pressed = list.currentRow();
  Touch(QEvent::TouchUpdate, {{50, 150}, {100, 150}});
  Touch(QEvent::TouchUpdate, {{50, 150.0 - 3 * row}, {100, 150.0 - row}});
  EXPECT_EQ(list.verticalScrollBar()->value(), 2) << "as far as the middle between them";
  Mouse(QEvent::MouseMove, {50, 20});
  Touch(QEvent::TouchEnd, {{50, 20}, {100, 150}});
  Mouse(QEvent::MouseButtonRelease, {50, 20});
  EXPECT_EQ(list.currentRow(), pressed);
  QEventLoop halfASecond;
  QTimer::singleShot(600, &halfASecond, &QEventLoop::quit);
  halfASecond.exec();
  EXPECT_EQ(holds, 0);

  Mouse(QEvent::MouseButtonPress, {50, 20});
  EXPECT_NE(list.currentRow(), pressed) << "the next finger taps again";
}

TEST_F(TouchScreen, TheFirstTouchMakesScrollBarsAsWideAsAFinger) {
  Touch(QEvent::TouchBegin, {{50, 150}});
  QApplication::processEvents();
  EXPECT_EQ(list.verticalScrollBar()->width(), platform::Scaled(20));
}
