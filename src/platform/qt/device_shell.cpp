#include "platform/qt/device_shell.h"

#include <QApplication>
#include <QMouseEvent>
#include <QShortcut>

#include "platform/metrics.h"
#include "platform/qt/menu_place.h"
#include "platform/qt/qt_text.h"

namespace platform::qt {
namespace {

constexpr int kHoldMilliseconds = 500;

QPushButton* MakeKey(QWidget* bar, Qt::Key shortcut) {
  auto* key = new QPushButton(bar);
  key->setFont(FixedFont(12));
  key->setAutoDefault(false);
  auto* press = new QShortcut(QKeySequence(shortcut), bar);
  press->setContext(Qt::WindowShortcut);
  QObject::connect(press, &QShortcut::activated, key, [key] { key->click(); });
  return key;
}

}  // namespace

SoftKeyBar::SoftKeyBar(QWidget* screen)
    : QWidget(screen),
      left_(MakeKey(this, Qt::Key_F1)),
      right_(MakeKey(this, Qt::Key_F2)),
      menu_(new QMenu(this)) {
  setFixedHeight(Scaled(kSoftKeyHeight));
  right_->setText(QStringLiteral("メニュー"));
  right_->setObjectName(QStringLiteral("menu_key"));
  menu_->setFont(FixedFont(12));
  connect(right_, &QPushButton::clicked, this, [this] { OpenMenu(); });
}

void SoftKeyBar::UseRightKey(const QString& text, std::function<void()> onPress) {
  right_->disconnect(this);
  right_->setText(text);
  connect(right_, &QPushButton::clicked, this, std::move(onPress));
}

void SoftKeyBar::FocusAfter(QWidget* last) {
  setTabOrder(last, left_);
  setTabOrder(left_, right_);
}

void SoftKeyBar::resizeEvent(QResizeEvent*) {
  left_->setGeometry(0, 0, width() / 2, height());
  right_->setGeometry(width() / 2, 0, width() - width() / 2, height());
}

void SoftKeyBar::OpenMenu() {
  const QRect bar(mapToGlobal(QPoint()), size());
  OpenMenuAt(*menu_, bar.topRight() + QPoint(1, 0), bar);
}

TapAndHold::TapAndHold(QWidget* watched, std::function<void(QPoint)> onHold)
    : QObject(watched), onHold_(std::move(onHold)) {
  timer_.setSingleShot(true);
  timer_.setInterval(kHoldMilliseconds);
  connect(&timer_, &QTimer::timeout, this, [this] { Hold(); });
  watched->installEventFilter(this);
}

bool TapAndHold::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      const auto* mouse = static_cast<QMouseEvent*>(event);
      press_ = mouse->pos();
      held_ = false;
      if (mouse->button() == Qt::LeftButton) timer_.start();
      // The watched widget comes to see the press first.
      if (mouse->button() == Qt::RightButton) QTimer::singleShot(0, this, [this] { Hold(); });
      break;
    }
    case QEvent::MouseMove:
      if (held_) return true;
      if ((static_cast<QMouseEvent*>(event)->pos() - press_).manhattanLength() >=
          QApplication::startDragDistance()) {
        timer_.stop();
      }
      break;
    case QEvent::TouchCancel:
      timer_.stop();
      break;
    case QEvent::MouseButtonRelease:
      timer_.stop();
      if (held_) {
        held_ = false;
        return true;
      }
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

void TapAndHold::Hold() {
  held_ = true;
  onHold_(press_);
}

}  // namespace platform::qt
