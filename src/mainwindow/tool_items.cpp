// The pictures: a pen, a grid of 16 by 16, a function for each.
#include "mainwindow/tool_items.h"

#include <QPainterPath>

#include "mainwindow/command_table.h"
#include "platform/qt/drawn_icon.h"

namespace mainwindow {
namespace {

struct Colors {
  QColor line;
  QColor accent;
  QColor fill;
};

// A sheet with a coloured head, as far down as 14.
void DrawSheet(QPainter& painter, const Colors& colors) {
  painter.fillRect(QRectF(1.5, 2.5, 13, 12), colors.fill);
  painter.fillRect(QRectF(1.5, 2.5, 13, 3), colors.accent);
  painter.drawRect(QRectF(1.5, 2.5, 13, 12));
}

void DrawDay(QPainter& painter, const Colors& colors) {
  DrawSheet(painter, colors);
  painter.drawLine(QPointF(4, 8.5), QPointF(12, 8.5));
  painter.drawLine(QPointF(4, 11.5), QPointF(12, 11.5));
}

void DrawWeek(QPainter& painter, const Colors& colors) {
  DrawSheet(painter, colors);
  for (const double x : {4.75, 8.0, 11.25}) painter.drawLine(QPointF(x, 5.5), QPointF(x, 14.5));
}

void DrawMonth(QPainter& painter, const Colors& colors) {
  DrawWeek(painter, colors);
  for (const double y : {8.5, 11.5}) painter.drawLine(QPointF(1.5, y), QPointF(14.5, y));
}

void DrawList(QPainter& painter, const Colors& colors) {
  for (const double y : {2.5, 6.5, 10.5}) {
    painter.fillRect(QRectF(1.5, y, 3, 2.5), colors.accent);
    painter.drawLine(QPointF(6.5, y + 1.25), QPointF(14.5, y + 1.25));
  }
}

void DrawMap(QPainter& painter, const Colors& colors) {
  painter.setBrush(colors.accent);
  QPainterPath pin(QPointF(8, 15));
  pin.cubicTo(2, 8, 3, 1.5, 8, 1.5);
  pin.cubicTo(13, 1.5, 14, 8, 8, 15);
  painter.drawPath(pin);
  painter.setBrush(colors.fill);
  painter.drawEllipse(QPointF(8, 6), 2, 2);
}

void DrawToday(QPainter& painter, const Colors& colors) {
  DrawSheet(painter, colors);
  painter.setPen(Qt::NoPen);
  painter.setBrush(colors.accent);
  painter.drawEllipse(QPointF(8, 10), 2.75, 2.75);
}

void DrawNew(QPainter& painter, const Colors& colors) {
  painter.fillRect(QRectF(2.5, 1.5, 9, 13), colors.fill);
  painter.drawRect(QRectF(2.5, 1.5, 9, 13));
  painter.setPen(QPen(colors.accent, 2));
  painter.drawLine(QPointF(11, 8), QPointF(11, 15));
  painter.drawLine(QPointF(7.5, 11.5), QPointF(14.5, 11.5));
}

void DrawDelete(QPainter& painter, const Colors& colors) {
  painter.setPen(QPen(colors.accent, 2.25, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(3.5, 3.5), QPointF(12.5, 12.5));
  painter.drawLine(QPointF(12.5, 3.5), QPointF(3.5, 12.5));
}

void DrawFind(QPainter& painter, const Colors& colors) {
  painter.setBrush(colors.fill);
  painter.drawEllipse(QPointF(6.5, 6.5), 4.5, 4.5);
  painter.setPen(QPen(colors.accent, 2.5, Qt::SolidLine, Qt::RoundCap));
  painter.drawLine(QPointF(10.5, 10.5), QPointF(14, 14));
}

struct Picture {
  int id;
  QRgb accent;
  void (*draw)(QPainter& painter, const Colors& colors);
};

constexpr QRgb kBlue = 0xFF3060C0;
constexpr QRgb kRed = 0xFFC83030;
constexpr QRgb kGreen = 0xFF208040;

constexpr Picture kPictures[] = {
    {kShowDay, kBlue, DrawDay},
    {kShowWeek, kBlue, DrawWeek},
    {kShowMonth, kBlue, DrawMonth},
    {kShowList, kBlue, DrawList},
    {kShowMap, kRed, DrawMap},
    {kMenuToday, kRed, DrawToday},
    {0, 0, nullptr},
    {kToolNew, kGreen, DrawNew},
    {kToolDelete, kRed, DrawDelete},
    {kToolFind, kBlue, DrawFind},
};

QIcon IconOf(const Picture& picture) {
  return platform::qt::DrawnIcon(16, [&picture](QPainter& painter, QIcon::Mode mode) {
    const bool off = mode == QIcon::Disabled;
    const Colors colors = {off ? QColor(0xB0, 0xB0, 0xB0) : QColor(0x40, 0x40, 0x40),
                           off ? QColor(0xB0, 0xB0, 0xB0) : QColor(picture.accent),
                           off ? QColor(0xF0, 0xF0, 0xF0) : QColor(Qt::white)};
    painter.setPen(QPen(colors.line, 1));
    picture.draw(painter, colors);
  });
}

}  // namespace

std::vector<ToolItem> ToolItems() {
  std::vector<ToolItem> items;
  for (const Picture& picture : kPictures) {
    items.push_back({picture.id, picture.draw == nullptr ? QIcon() : IconOf(picture)});
  }
  return items;
}

}  // namespace mainwindow
