// A finger on a list or a page: a drag scrolls it, a press that is let go without a drag is a tap.
// The second click of a double click may drag, but is no tap: what it would hit has just changed.
#pragma once

#include <QAbstractScrollArea>
#include <QObject>
#include <QPoint>
#include <functional>

namespace platform::qt {

// Watches the viewport of a scroll area and keeps the left button's events from it. Where tap and
// hold is watched too, that watcher is made after this one.
class FingerScroll : public QObject {
 public:
  using Handler = std::function<void(QPoint)>;

  // The points are in the viewport's coordinates. Either handler may be empty.
  FingerScroll(QAbstractScrollArea* area, Handler onPress, Handler onTap);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Press(QPoint point);
  void Move(QPoint point);
  void Release(QPoint point);

  QAbstractScrollArea* area_;
  Handler onPress_;
  Handler onTap_;
  QPoint press_;
  int scrollAtPress_ = 0;
  bool pressed_ = false;
  bool mayTap_ = false;
  bool dragging_ = false;
};

}  // namespace platform::qt
