// A surface that is painted by its owner and takes taps.
#pragma once

#include <QPainter>
#include <QWidget>
#include <functional>

#include "platform/qt/device_shell.h"
#include "touch/qt/surface.h"

namespace touch {

class Canvas : public QWidget, public Surface {
  Q_OBJECT

 public:
  explicit Canvas(QWidget* parent);

  void SetPaint(std::function<void(QPainter&)> paint) { paint_ = std::move(paint); }
  void SetSpots(std::function<std::vector<Spot>()> spots) { spots_ = std::move(spots); }
  std::vector<Spot> Spots() const override { return spots_ ? spots_() : std::vector<Spot>(); }

 signals:
  // Pressed and released; the owner decides whether both points mean the same thing.
  void Tapped(QPoint press, QPoint release);
  void Held(QPoint press);
  // The menu key, which Shift+F10 is, too.
  void MenuKeyPressed();

 protected:
  // What else the pointer does here. OnPress returns whether the press may become a tap.
  virtual bool OnPress(QPoint) { return true; }
  virtual void OnMove(QPoint) {}
  virtual void OnHold() {}

  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void contextMenuEvent(QContextMenuEvent* event) override;

  platform::qt::TapAndHold* hold_;

 private:
  std::function<void(QPainter&)> paint_;
  std::function<std::vector<Spot>()> spots_;
  QPoint press_;
  bool pressed_ = false;
};

}  // namespace touch
