#include "platform/qt/drawn_icon.h"

#include <QIconEngine>
#include <utility>

namespace platform::qt {
namespace {

class DrawingEngine : public QIconEngine {
 public:
  DrawingEngine(int units, IconDrawing draw) : units_(units), draw_(std::move(draw)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / double(units_), rect.height() / double(units_));
    draw_(*painter, mode);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  QIconEngine* clone() const override { return new DrawingEngine(units_, draw_); }

 private:
  int units_;
  IconDrawing draw_;
};

// As packaging/morvenly.svg has it, for the desktops that look for a file.
void DrawNotebook(QPainter& painter, QIcon::Mode) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xC0, 0xC0, 0xE0));
  painter.drawRoundedRect(12, 4, 44, 56, 5, 5);
  painter.setBrush(Qt::white);
  painter.drawRoundedRect(17, 9, 34, 46, 2, 2);
  painter.setPen(QPen(QColor(0x40, 0x40, 0x60), 3, Qt::SolidLine, Qt::RoundCap));
  for (const int y : {20, 30}) painter.drawLine(23, y, 45, y);
  painter.drawLine(23, 40, 36, 40);
  for (const int y : {14, 26, 38, 50}) painter.drawLine(8, y, 16, y);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xE0, 0, 0));
  painter.drawEllipse(38, 36, 12, 12);
}

}  // namespace

QIcon DrawnIcon(int units, IconDrawing draw) {
  return QIcon(new DrawingEngine(units, std::move(draw)));
}

QIcon ProgramIcon() {
  return DrawnIcon(64, DrawNotebook);
}

}  // namespace platform::qt
