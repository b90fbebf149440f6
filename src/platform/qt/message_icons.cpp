#include "platform/qt/message_icons.h"

#include <QPainterPath>

#include "platform/qt/drawn_icon.h"

namespace platform::qt {
namespace {

constexpr int kGrid = 32;
const QRectF kDisc(2, 2, 28, 28);

void SetPen(QPainter& painter, const QColor& color, double width) {
  painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.setBrush(Qt::NoBrush);
}

void FillDisc(QPainter& painter, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(kDisc);
}

void DrawDot(QPainter& painter, const QPointF& at, const QColor& color) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(at, 2.0, 2.0);
}

void DrawInformation(QPainter& painter, QIcon::Mode) {
  FillDisc(painter, QColor(0x24, 0x68, 0xA8));
  DrawDot(painter, QPointF(16, 9.5), Qt::white);
  SetPen(painter, Qt::white, 3.5);
  painter.drawLine(QPointF(16, 15), QPointF(16, 23.5));
}

void DrawQuestion(QPainter& painter, QIcon::Mode) {
  FillDisc(painter, QColor(0x24, 0x68, 0xA8));
  SetPen(painter, Qt::white, 3.2);
  QPainterPath hook(QPointF(11.5, 12.5));
  hook.cubicTo(11.5, 6.5, 20.5, 6.5, 20.5, 12);
  hook.cubicTo(20.5, 15.5, 16, 15.5, 16, 19.5);
  painter.drawPath(hook);
  DrawDot(painter, QPointF(16, 24.5), Qt::white);
}

void DrawWarning(QPainter& painter, QIcon::Mode) {
  SetPen(painter, QColor(0x80, 0x58, 0x00), 1.5);
  painter.setBrush(QColor(0xFF, 0xD0, 0x30));
  QPainterPath triangle(QPointF(16, 3));
  triangle.lineTo(30, 28.5);
  triangle.lineTo(2, 28.5);
  triangle.closeSubpath();
  painter.drawPath(triangle);
  SetPen(painter, Qt::black, 3.2);
  painter.drawLine(QPointF(16, 12), QPointF(16, 19));
  DrawDot(painter, QPointF(16, 24.2), Qt::black);
}

void DrawStop(QPainter& painter, QIcon::Mode) {
  FillDisc(painter, QColor(0xC8, 0x20, 0x20));
  SetPen(painter, Qt::white, 3.8);
  painter.drawLine(QPointF(10.5, 10.5), QPointF(21.5, 21.5));
  painter.drawLine(QPointF(21.5, 10.5), QPointF(10.5, 21.5));
}

}  // namespace

QIcon MessageIcon(QStyle::StandardPixmap sign) {
  switch (sign) {
    case QStyle::SP_MessageBoxInformation:
      return DrawnIcon(kGrid, DrawInformation);
    case QStyle::SP_MessageBoxQuestion:
      return DrawnIcon(kGrid, DrawQuestion);
    case QStyle::SP_MessageBoxWarning:
      return DrawnIcon(kGrid, DrawWarning);
    case QStyle::SP_MessageBoxCritical:
      return DrawnIcon(kGrid, DrawStop);
    default:
      return {};
  }
}

}  // namespace platform::qt
