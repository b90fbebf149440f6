#include "pickers/qt/field_button.h"

#include <QPainter>
#include <utility>

#include "platform/metrics.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/text_lines.h"
#include "position/position_fields.h"
#include "position/position_request.h"

namespace pickers {
namespace {

using platform::Scaled;

constexpr QRgb kFieldColor = 0xFFFFFFFF;
constexpr QRgb kDisabledColor = 0xFFEFEFEF;
constexpr QRgb kPositionColor = 0xFFE0E0E0;
constexpr QRgb kPressedColor = 0xFFC0C0C0;
constexpr QRgb kEdgeColor = 0xFFA0A0A0;
constexpr QRgb kTextColor = 0xFF000000;
constexpr QRgb kDisabledTextColor = 0xFF606060;
constexpr int kLookMilliseconds = 1000;
constexpr QRgb kAcquiringColor = 0xFFFFFF00;
constexpr QRgb kAcquiringTextColor = 0xFF0000FF;

}  // namespace

FieldButton::FieldButton(int smallest, QWidget* parent)
    : PaintedButton(parent), smallest_(Scaled(smallest)) {
  setFocusPolicy(Qt::StrongFocus);
  setFont(platform::qt::FixedFont(12));
  nextLook_.setSingleShot(true);
  connect(&nextLook_, &QTimer::timeout, this, [this] { update(); });
}

void FieldButton::ShowValue(const QString& value) {
  if (value_ == value) return;
  value_ = value;
  setAccessibleDescription(value);
  update();
}

void FieldButton::ShowPosition(const std::u16string& text) {
  isPosition_ = true;
  alignment_ = text == position::kAcquiring ? Qt::AlignHCenter : Qt::AlignLeft;
  ShowValue(platform::qt::ToQt(text));
  update();  // its colours may have changed alone
}

// A reading that another screen has asked for is reported to that one alone: look again.
void FieldButton::paintEvent(QPaintEvent*) {
  const bool isAcquiring = isPosition_ && position::IsRequestInProgress();
  if (isAcquiring) nextLook_.start(kLookMilliseconds);
  QPainter painter(this);
  painter.fillRect(rect(), QColor(isDown()       ? kPressedColor
                                  : isAcquiring  ? kAcquiringColor
                                  : isPosition_  ? kPositionColor
                                  : !isEnabled() ? kDisabledColor
                                                 : kFieldColor));
  painter.setPen(QColor(kEdgeColor));
  painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  painter.setPen(QColor(isAcquiring   ? kAcquiringTextColor
                        : isEnabled() ? kTextColor
                                      : kDisabledTextColor));
  const QRect area = rect().adjusted(Scaled(3), Scaled(3), -Scaled(3), -Scaled(3));
  if (area.height() < 2 * LineHeight()) {
    PaintOneLine(painter, area);
  } else {
    PaintLines(painter, area);
  }
  PaintFocus(painter);
}

int FieldButton::LineHeight() const {
  return QFontMetrics(font()).height() + Scaled(2);
}

void FieldButton::PaintOneLine(QPainter& painter, const QRect& area) {
  QFont shrunk = font();
  const auto fitted = [&] {
    return QFontMetrics(shrunk).elidedText(value_, Qt::ElideRight, area.width());
  };
  while (fitted() != value_ && shrunk.pixelSize() > smallest_) {
    shrunk.setPixelSize(shrunk.pixelSize() - 1);
  }
  painter.setFont(shrunk);
  painter.drawText(area, alignment_ | Qt::AlignVCenter | Qt::TextSingleLine, fitted());
}

void FieldButton::PaintLines(QPainter& painter, const QRect& area) {
  const int lineHeight = LineHeight();
  const int most = (area.height() + Scaled(2)) / lineHeight;
  QRect line(area.topLeft(), QSize(area.width(), lineHeight));
  painter.setFont(font());
  for (const QString& text : platform::qt::FitLines(value_, font(), area.width(), most)) {
    painter.drawText(line, Qt::TextSingleLine, text);
    line.translate(0, lineHeight);
  }
}

FieldButton* AddField(platform::qt::Controls& controls, int id, std::u16string_view name,
                      std::function<void()> onTap, int smallest) {
  auto* field = controls.Add(id, new FieldButton(smallest, controls.Parent()));
  platform::qt::NameControl(*field, name);
  QObject::connect(field, &FieldButton::clicked, field, std::move(onTap));
  return field;
}

}  // namespace pickers
