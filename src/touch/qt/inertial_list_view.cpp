// Laid-out texts are kept from frame to frame: laying out Japanese text costs more than drawing it.
#include "touch/qt/inertial_list_view.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>

#include "platform/host.h"
#include "platform/qt/focus_frame.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/text_lines.h"

namespace touch {
namespace {

constexpr int kTickMilliseconds = 20;
constexpr int kMaxKeptTexts = 256;
constexpr int kMargin = 2;
constexpr int kWheelNotch = 120;  // eighths of a degree; a touchpad gives parts of it

QColor ToColour(uint32_t colour) {
  return QColor(static_cast<int>(colour & 0xFF), static_cast<int>(colour >> 8 & 0xFF),
                static_cast<int>(colour >> 16 & 0xFF));
}

int LongerSide(const QWidget* window) {
  return std::max(window->width(), window->height());
}

int Placed(RowTextFormat::Align align, int room, int length) {
  if (align == RowTextFormat::Align::kBegin) return 0;
  return align == RowTextFormat::Align::kCentre ? (room - length) / 2 : room - length;
}

// With the ellipsis after a word, where the text has words.
QString Cut(const QString& text, const QFontMetrics& metrics, int width, bool anywhere) {
  QString cut = metrics.elidedText(text, Qt::ElideRight, width);
  if (anywhere || cut == text) return cut;
  const qsizetype blank = cut.lastIndexOf(u' ');
  return blank > 0 ? cut.left(blank) + QChar(u'…') : cut;
}

}  // namespace

class INERT_LIST_VIEW::Canvas : public ListCanvas {
 public:
  explicit Canvas(INERT_LIST_VIEW& view) : view_(view), painter_(&view) {}

  void Fill(const ListRect& area, uint32_t colour) override {
    painter_.fillRect(ToQt(area), ToColour(colour));
  }

  void DrawText(const ListRect& area, int row, std::u16string_view text, uint32_t colour) override {
    const QRect room = ToQt(area).adjusted(kMargin, 0, -kMargin, -1);
    const QStaticText& layout = view_.LayoutOf(row, platform::qt::ToQt(text), room.size());
    const QSizeF size = layout.size();
    const int y = Placed(view_.format_.down, room.height(), static_cast<int>(size.height()));
    painter_.setPen(ToColour(colour));
    painter_.setClipRect(room);
    painter_.drawStaticText(room.left(), room.top() + std::max(y, 0), layout);
    painter_.setClipping(false);
  }

 private:
  static QRect ToQt(const ListRect& area) {
    return QRect(QPoint(area.left, area.top), QPoint(area.right - 1, area.bottom - 1));
  }

  INERT_LIST_VIEW& view_;
  QPainter painter_;
};

INERT_LIST_VIEW::INERT_LIST_VIEW(int windowStyle, int listStyle, QWidget* parent)
    : QWidget(parent),
      format_(RowTextFormat::OfStyle(windowStyle)),
      list_({[this] { update(); }, [this](int code) { emit Notified(code); },
             [this] { pressSeen_ = false; }, [this](intptr_t font) { return TakeFont(font); },
             [this] { return reinterpret_cast<intptr_t>(&font()); }},
            listStyle, LongerSide(parent->window())) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setFocusPolicy(Qt::StrongFocus);
  coast_.setTimerType(Qt::PreciseTimer);
  coast_.setInterval(kTickMilliseconds);
  connect(&coast_, &QTimer::timeout, this, &INERT_LIST_VIEW::Tick);
  list_.SetHeight(-1, fontMetrics().height());
}

void INERT_LIST_VIEW::SetFont(const QFont& font) {
  list_.SetFont(reinterpret_cast<intptr_t>(&font));
}

int INERT_LIST_VIEW::TakeFont(intptr_t font) {
  if (font != 0) setFont(*reinterpret_cast<const QFont*>(font));
  return fontMetrics().height();
}

const QStaticText& INERT_LIST_VIEW::LayoutOf(int row, const QString& text, QSize room) {
  if (kept_.size() > kMaxKeptTexts) kept_.clear();
  KeptText& kept = kept_[row];
  if (kept.room == room && kept.text == text) return kept.layout;
  kept.text = text;
  kept.room = room;
  const Qt::Alignment across = format_.across == RowTextFormat::Align::kBegin    ? Qt::AlignLeft
                               : format_.across == RowTextFormat::Align::kCentre ? Qt::AlignHCenter
                                                                                 : Qt::AlignRight;
  QTextOption option(across);
  option.setWrapMode(format_.breaksWords ? QTextOption::WrapAtWordBoundaryOrAnywhere
                                         : QTextOption::NoWrap);
  kept.layout.setText(
      format_.breaksWords
          ? platform::qt::FitLines(text, font(), room.width(),
                                   std::max(1, room.height() / fontMetrics().height()))
                .join(u'\n')
          : Cut(text, fontMetrics(), room.width(), format_.cutsAnywhere));
  kept.layout.setTextFormat(Qt::PlainText);
  kept.layout.setTextOption(option);
  kept.layout.setTextWidth(room.width());
  kept.layout.setPerformanceHint(QStaticText::AggressiveCaching);
  kept.layout.prepare(QTransform(), font());
  return kept.layout;
}

void INERT_LIST_VIEW::paintEvent(QPaintEvent*) {
  {
    Canvas canvas(*this);
    list_.Paint(canvas);
  }
  if (!hasFocus()) return;
  QPainter painter(this);
  platform::qt::PaintFocusFrame(painter, *this);
}

void INERT_LIST_VIEW::resizeEvent(QResizeEvent*) {
  list_.Resize(width(), height());
}

void INERT_LIST_VIEW::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  setFocus();
  pressSeen_ = !list_.IsCoasting();
  list_.Press({event->pos().x(), event->pos().y()}, platform::host().TickCount());
}

void INERT_LIST_VIEW::mouseMoveEvent(QMouseEvent* event) {
  list_.Move({event->pos().x(), event->pos().y()}, platform::host().TickCount());
}

void INERT_LIST_VIEW::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const bool isTap = pressSeen_ && !list_.IsDragging();
  pressSeen_ = false;
  list_.Release({event->pos().x(), event->pos().y()}, platform::host().TickCount());
  if (list_.IsCoasting()) coast_.start();
  if (isTap && list_.Selected() >= 0) emit Tapped(list_.Selected());
}

void INERT_LIST_VIEW::wheelEvent(QWheelEvent* event) {
  wheel_ += event->angleDelta().y();
  for (; wheel_ >= kWheelNotch; wheel_ -= kWheelNotch) Step(ListKey::kUp);
  for (; wheel_ <= -kWheelNotch; wheel_ += kWheelNotch) Step(ListKey::kDown);
}

void INERT_LIST_VIEW::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Home:
      return Step(ListKey::kHome);
    case Qt::Key_End:
      return Step(ListKey::kEnd);
    case Qt::Key_Up:
      return Step(ListKey::kUp);
    case Qt::Key_Down:
      return Step(ListKey::kDown);
    default:
      QWidget::keyPressEvent(event);
  }
}

void INERT_LIST_VIEW::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) kept_.clear();
  QWidget::changeEvent(event);
}

void INERT_LIST_VIEW::Tick() {
  list_.CoastTick();
  if (list_.IsCoasting()) return;
  coast_.stop();
  TellCurrentSpot(*this);
}

void INERT_LIST_VIEW::Step(ListKey key) {
  list_.Key(key);
  TellCurrentSpot(*this);
}

// The row that is the wheel's value, -1 in a list.
int INERT_LIST_VIEW::WheelRow() const {
  const bool isWheel = valueRow_ >= 0 && list_.Count() > 0;
  return isWheel ? (list_.Top() + valueRow_) % list_.Count() : -1;
}

// Below the window's top edge, as long as nothing drags the rows.
int INERT_LIST_VIEW::TopOf(int row) const {
  const bool wraps = (list_.Style() & ILS_WRAP) != 0;
  const int down = row - list_.Top();
  return (wraps && down < 0 ? down + list_.Count() : down) * list_.GetHeight(-1);
}

std::vector<Spot> INERT_LIST_VIEW::Spots() const {
  std::vector<Spot> spots;
  spots.reserve(static_cast<size_t>(list_.Count()));
  auto* list = const_cast<INERT_LIST_VIEW*>(this);
  for (int row = 0; row < list_.Count(); ++row) {
    spots.push_back({.place = {0, TopOf(row), width(), list_.GetHeight(-1)},
                     .name = platform::qt::ToQt(list_.GetText(row)),
                     .press = [list, row] { list->PressRow(row); },
                     .isCurrent = row == WheelRow()});
  }
  return spots;
}

void INERT_LIST_VIEW::PressRow(int row) {
  if (valueRow_ < 0) {
    emit Tapped(row);
    return;
  }
  list_.SetTop((row - valueRow_ + list_.Count()) % list_.Count());
  TellCurrentSpot(*this);
}

}  // namespace touch
