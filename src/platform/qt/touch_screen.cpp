#include "platform/qt/touch_screen.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QInputDevice>
#include <QPointingDevice>
#include <QScrollBar>
#include <algorithm>

namespace platform::qt {
namespace {

bool isKnown = false;

bool IsTouchScreen(const QInputDevice* device) {
  return device->type() == QInputDevice::DeviceType::TouchScreen;
}

// A touch screen that no one had named: what stands there already is laid out again.
void Learn(const QInputDevice* device) {
  if (HasTouchScreen() || device == nullptr || !IsTouchScreen(device)) return;
  isKnown = true;
  for (QWidget* widget : QApplication::allWidgets()) {
    auto* area = qobject_cast<QAbstractScrollArea*>(widget);
    if (area == nullptr) continue;
    area->verticalScrollBar()->updateGeometry();  // forgets the width that it had
    area->horizontalScrollBar()->updateGeometry();
    QEvent restyled(QEvent::StyleChange);
    QCoreApplication::sendEvent(widget, &restyled);
  }
}

QAbstractScrollArea* ScrollAreaOf(QWidget* widget) {
  while (widget != nullptr && qobject_cast<QAbstractScrollArea*>(widget) == nullptr) {
    widget = widget->parentWidget();
  }
  return static_cast<QAbstractScrollArea*>(widget);
}

// What a step of the vertical bar is in units: a row, in a list that scrolls by rows.
int StepHeight(const QAbstractScrollArea& area) {
  const auto* view = qobject_cast<const QAbstractItemView*>(&area);
  const bool isByRows =
      view != nullptr && view->verticalScrollMode() == QAbstractItemView::ScrollPerItem;
  return isByRows ? std::max(1, view->visualRect(view->indexAt(QPoint())).height()) : 1;
}

// Answers what is left of the way.
double Scroll(QScrollBar& bar, double way, int step) {
  const int steps = static_cast<int>(way / step);
  bar.setValue(bar.value() - steps);
  return way - steps * step;
}

}  // namespace

bool HasTouchScreen() {
  if (!isKnown) isKnown = std::ranges::any_of(QInputDevice::devices(), IsTouchScreen);
  return isKnown;
}

TouchWatch::TouchWatch(QObject* parent) : QObject(parent) {
  qApp->installEventFilter(this);
}

// Touches come to the window first, and as a mouse's to the widget after.
bool TouchWatch::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
      if (watched->isWindowType()) {
        TakeTouch(*static_cast<QWindow*>(watched), *static_cast<QTouchEvent*>(event));
      }
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
      return watched->isWidgetType() && KeepsMouse(event->type());
    default:
      return false;
  }
}

void TouchWatch::TakeTouch(const QWindow& window, const QTouchEvent& touch) {
  if (touch.type() == QEvent::TouchBegin) {
    Learn(touch.device());
    state_ = State::kIdle;
  }
  if (touch.type() == QEvent::TouchEnd) {
    if (state_ == State::kScrolling) state_ = State::kReleased;
    return;
  }
  int fingers = 0;
  QPointF sum;
  for (const QEventPoint& point : touch.points()) {
    if (point.state() == QEventPoint::State::Released) continue;
    ++fingers;
    sum += point.scenePosition();
  }
  if (fingers < 2 || (state_ != State::kScrolling && !Begin(window, touch))) return;
  const QPointF middle = sum / fingers;
  if (fingers == fingers_) ScrollBy(middle - middle_);
  fingers_ = fingers;
  middle_ = middle;
}

bool TouchWatch::Begin(const QWindow& window, const QTouchEvent& touch) {
  QWidget* top = QWidget::find(window.winId());
  if (top == nullptr) return false;
  area_ = ScrollAreaOf(top->childAt(touch.points().first().scenePosition().toPoint()));
  if (area_ == nullptr) return false;
  state_ = State::kScrolling;
  fingers_ = 0;
  rest_ = {};
  QTouchEvent cancel(QEvent::TouchCancel, touch.pointingDevice());
  QCoreApplication::sendEvent(area_->viewport(), &cancel);
  return true;
}

void TouchWatch::ScrollBy(QPointF way) {
  if (area_ == nullptr) return;
  rest_ += way;
  rest_.setX(Scroll(*area_->horizontalScrollBar(), rest_.x(), 1));
  rest_.setY(Scroll(*area_->verticalScrollBar(), rest_.y(), StepHeight(*area_)));
}

bool TouchWatch::KeepsMouse(QEvent::Type type) {
  const bool isPress = type == QEvent::MouseButtonPress || type == QEvent::MouseButtonDblClick;
  if (state_ == State::kReleased && isPress) state_ = State::kIdle;
  const bool keeps = state_ != State::kIdle;
  if (state_ == State::kReleased && type == QEvent::MouseButtonRelease) state_ = State::kIdle;
  return keeps;
}

}  // namespace platform::qt
