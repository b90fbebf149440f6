#include "pickers/qt/value_select_screen.h"

#include <QKeyEvent>
#include <algorithm>
#include <utility>

#include "platform/metrics.h"
#include "platform/qt/one_line.h"
#include "platform/qt/qt_text.h"

namespace pickers {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::FromQt;
using platform::qt::ToQt;

constexpr int kWordBreak = 16;  // a window style of the list

}  // namespace

ValueSelectDlg::ValueSelectDlg(QWidget* over, ValueSelectParams& params)
    : PickerDlg(over, params.title),
      params_(params),
      line_(new QLineEdit(this)),
      rows_(new touch::INERT_LIST_VIEW(kWordBreak, 0, this)) {
  const QFont font = FixedFont(12);
  line_->setAccessibleName(QStringLiteral("値"));
  rows_->setAccessibleName(QStringLiteral("履歴"));
  line_->setObjectName(QStringLiteral("value"));
  line_->setFont(font);
  line_->setMaxLength(params.longest);
  Give(ToQt(params.value));
  line_->setFocus();
  line_->installEventFilter(this);
  rows_->setObjectName(QStringLiteral("rows"));
  rows_->setFocusPolicy(Qt::NoFocus);  // the arrow keys in the line walk it
  rows_->SetFont(font);
  touch::InertList& list = rows_->List();
  list.SetHeight(-1, 2 * list.GetHeight(-1));
  for (const std::u16string& text : params.history) list.Add({0, 0, text});
  connect(rows_, &touch::INERT_LIST_VIEW::Tapped, this, &ValueSelectDlg::Choose);
}

void ValueSelectDlg::PlaceContent(const QRect& area) {
  line_->setGeometry(area.left(), area.top(), area.width(), Scaled(24));
  rows_->setGeometry(area.adjusted(0, Scaled(25), 0, 0));
}

void ValueSelectDlg::TakeResult() {
  params_.value = FromQt(platform::qt::TypedOver(given_, *line_));
}

void ValueSelectDlg::Choose(int row) {
  Give(ToQt(rows_->List().GetText(row)));
  Accept();
}

bool ValueSelectDlg::eventFilter(QObject* watched, QEvent* event) {
  const int key = watched == line_ && event->type() == QEvent::KeyPress
                      ? static_cast<QKeyEvent*>(event)->key()
                      : 0;
  if (key == Qt::Key_Up || key == Qt::Key_Down) {
    WalkRows(key == Qt::Key_Up ? -1 : 1);
    return true;
  }
  return PickerDlg::eventFilter(watched, event);
}

// The line takes the text of the row above or below the one that it holds.
void ValueSelectDlg::WalkRows(int step) {
  touch::InertList& list = rows_->List();
  if (list.Count() == 0) return;
  const int held = list.Find(0, {0, 0, FromQt(platform::qt::TypedOver(given_, *line_))});
  const int row = held < 0 ? 0 : std::clamp(held + step, 0, list.Count() - 1);
  Give(ToQt(list.GetText(row)));
  ShowRow(row);
}

// In the middle, if there are rows enough above and below.
void ValueSelectDlg::ShowRow(int row) {
  touch::InertList& list = rows_->List();
  const int last = list.LastTopRow();
  const int rowsInSight = list.Count() - last;
  list.SetTop(std::clamp(row - rowsInSight / 2, 0, last));
}

// Only now does the list know how many rows it shows.
void ValueSelectDlg::showEvent(QShowEvent*) {
  const int held = rows_->List().Find(0, {0, 0, params_.value});
  if (held >= 0) ShowRow(held);
}

void ValueSelectDlg::Give(const QString& text) {
  given_ = text;
  line_->setText(text);
  line_->selectAll();
}

std::optional<std::u16string> PickValue(QWidget* over, ValueSelectParams params) {
  if (ValueSelectDlg(over, params).RunModal() != platform::qt::kResultOk) return {};
  return std::move(params.value);
}

}  // namespace pickers
