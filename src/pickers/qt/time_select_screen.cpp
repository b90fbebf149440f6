#include "pickers/qt/time_select_screen.h"

#include <QPainter>
#include <QPolygon>

#include "platform/host.h"
#include "platform/metrics.h"
#include "platform/qt/qt_text.h"

namespace pickers {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;

constexpr int kRowsShown = 7;
constexpr int kValueRow = 3;
constexpr int kCentred = 1;  // a window style of the wheels
constexpr QRgb kMarkColour = 0xFF404080;

struct WheelColour {
  touch::ListColour which;
  uint32_t colour;
};
constexpr WheelColour kColours[] = {
    {touch::kRowText, 0x404040},       {touch::kUnusedRow, 0xE0E0E0},
    {touch::kRowBack, 0xE0E0E0},       {touch::kRowShadow, 0x404040},
    {touch::kRowLine, 0xFFFFFF},       {touch::kPressedText, 0x404040},
    {touch::kUnusedPressed, 0xE0E0E0}, {touch::kPressedBack, 0xE0E0E0},
    {touch::kPressedShadow, 0x404040}, {touch::kPressedLine, 0xFFFFFF},
};

}  // namespace

TimeSelectDlg::TimeSelectDlg(QWidget* over, TimeSelectParams& params)
    : PickerDlg(over, params.title), params_(params) {
  const platform::LocalTime now = platform::host().Now();
  const bool onExtra = params.startHour == kExtraHour;
  wheels_.push_back(AddWheel("hour", u"時", 24, onExtra ? now.hour : params.startHour));
  wheels_.push_back(AddWheel("minute", u"分", 60, onExtra ? now.minute : params.startMinute));
  if ((params.flags & kWithSeconds) != 0) {
    wheels_.push_back(AddWheel("second", u"秒", 60, onExtra ? now.second : params.startSecond));
  }
  wheels_.front()->setFocus();
  if (params.showExtra <= 0) return;
  QPushButton* extra =
      AddButton("extra", platform::qt::ToQt(params.extraText), 62, [this] { TakeExtraButton(); });
  if (onExtra) extra->setFocus();
}

touch::INERT_LIST_VIEW* TimeSelectDlg::AddWheel(const char* name, std::u16string_view unit,
                                                int count, int value) {
  auto* wheel = new touch::INERT_LIST_VIEW(kCentred, touch::ILS_WRAP, this);
  wheel->setObjectName(QString::fromLatin1(name));
  wheel->setAccessibleName(platform::qt::ToQt(unit));
  wheel->SetValueRow(kValueRow);
  wheel->SetFont(FixedFont(24));
  for (const WheelColour& colour : kColours) wheel->List().SetColour(colour.which, colour.colour);
  for (std::u16string& text : WheelRows(count)) wheel->List().Add({0, 0, std::move(text)});
  wheel->List().SetTop(WheelTop(value, count));
  return wheel;
}

// The wheels stand side by side in the middle.
void TimeSelectDlg::PlaceContent(const QRect& area) {
  const int rowHeight = wheels_.front()->List().GetHeight(-1);
  const int count = static_cast<int>(wheels_.size());
  int x = area.center().x() - (count * Scaled(50) + (count - 1) * Scaled(4)) / 2;
  for (touch::INERT_LIST_VIEW* wheel : wheels_) {
    wheel->setGeometry(x, area.top() + Scaled(4), Scaled(50), kRowsShown * rowHeight);
    x += Scaled(54);
  }
}

// Two marks point at the row of the value.
void TimeSelectDlg::paintEvent(QPaintEvent* event) {
  PickerDlg::paintEvent(event);
  const QRect first = wheels_.front()->geometry();
  const QRect last = wheels_.back()->geometry();
  const int rowHeight = first.height() / kRowsShown;
  const int top = first.top() + kValueRow * rowHeight;
  const int middle = top + rowHeight / 2;
  const int bottom = top + rowHeight;
  const int left = first.left() - Scaled(3);
  const int right = last.right() + Scaled(3);
  QPainter painter(this);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgb(kMarkColour));
  painter.drawPolygon(QPolygon(
      {QPoint(left - Scaled(20), top), QPoint(left, middle), QPoint(left - Scaled(20), bottom)}));
  painter.drawPolygon(QPolygon({QPoint(right + Scaled(20), top), QPoint(right, middle),
                                QPoint(right + Scaled(20), bottom)}));
}

// What shows counts, also while a wheel still turns.
void TimeSelectDlg::TakeResult() {
  for (touch::INERT_LIST_VIEW* wheel : wheels_) wheel->List().StopCoast();
  std::optional<int> secondTop;
  if (wheels_.size() > 2) secondTop = wheels_[2]->List().Top();
  TakeWheels(params_, wheels_[0]->List().Top(), wheels_[1]->List().Top(), secondTop);
}

void TimeSelectDlg::TakeExtraButton() {
  TakeExtra(params_);
  EndScreen(platform::qt::kResultOk);
}

std::optional<TimeSelectParams> PickTime(QWidget* over, TimeSelectParams params) {
  if (TimeSelectDlg(over, params).RunModal() != platform::qt::kResultOk) return {};
  return params;
}

}  // namespace pickers
