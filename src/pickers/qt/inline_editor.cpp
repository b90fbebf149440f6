#include "pickers/qt/inline_editor.h"

#include <QScrollArea>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "core/date_time.h"
#include "pickers/qt/list_picker.h"
#include "platform/metrics.h"
#include "platform/qt/lines_edit.h"
#include "platform/qt/month_calendar.h"
#include "platform/qt/one_line.h"
#include "platform/qt/qt_text.h"

namespace pickers {
namespace {

using platform::Scaled;
using platform::qt::FromQt;
using platform::qt::LinesEdit;
using platform::qt::MonthCalendar;
using platform::qt::ToQt;

// Some lines high; it grows upward, as a field that is edited so is the last of its form.
QRect PlaceOfLines(const QRect& field) {
  const int height = std::max(field.height(), std::min(Scaled(78), field.bottom() + 1));
  return QRect(field.x(), field.bottom() + 1 - height, field.width(), height);
}

void BringIntoView(QWidget* field) {
  for (QWidget* around = field; around != nullptr; around = around->parentWidget()) {
    if (auto* form = qobject_cast<QScrollArea*>(around)) form->ensureWidgetVisible(field, 0, 0);
  }
}

}  // namespace

InlineEditor::InlineEditor(QWidget* screen, const QWidget* keys)
    : QObject(screen), screen_(screen), keys_(keys) {}

template <typename Editor>
Editor* InlineEditor::Known(int id) const {
  const auto known = editors_.find(id);
  return known == editors_.end() ? nullptr : static_cast<Editor*>(known->second);
}

template <typename Editor>
Editor* InlineEditor::Adopt(int id, Editor* editor) {
  editor->setObjectName(QString::number(id));
  editor->hide();
  editors_[id] = editor;
  return editor;
}

void InlineEditor::OpenList(const Target& target, const ListContent& content) {
  auto* list = Known<ListPicker>(target.id);
  if (list == nullptr) {
    list = Adopt(target.id, new ListPicker(screen_));
    connect(list, &ListPicker::TextChanged, this,
            [this](const QString& text) { emit TextChanged(FromQt(text)); });
    connect(list, &ListPicker::Chosen, this, &InlineEditor::Chosen);
  }
  list->SetName(target.field->accessibleName());
  list->Open(content.rows, content.row, ToQt(content.text), content.longest,
             content.isTime ? platform::qt::kTimeHints : Qt::ImhNone);
  Open(target, list,
       [list](const QRect& field, const QRect& area) { list->PlaceOver(field, area); });
}

void InlineEditor::OpenCalendar(const Target& target, std::u16string_view date) {
  auto* calendar = Known<MonthCalendar>(target.id);
  if (calendar == nullptr) {
    calendar = Adopt(target.id, new MonthCalendar(screen_));
    const auto report = [this](const QDate& day) {
      emit TextChanged(core::FormatDate(day.year(), day.month(), day.day()));
    };
    connect(calendar, &MonthCalendar::Moved, this, report);
    connect(calendar, &MonthCalendar::Chosen, this, [this, report](const QDate& day) {
      report(day);
      emit Chosen();
    });
  }
  int year = 0, month = 0, day = 0;
  core::ParseDate(date, year, month, day);
  const QSignalBlocker unmoved(calendar);
  calendar->Select(QDate(year, month, day));
  Open(target, calendar,
       [calendar](const QRect& field, const QRect& area) { calendar->PlaceBy(field, area); });
}

void InlineEditor::OpenLines(const Target& target, std::u16string_view text) {
  auto* lines = Known<LinesEdit>(target.id);
  if (lines == nullptr) {
    lines = Adopt(target.id, new LinesEdit(screen_));
    lines->setFont(platform::qt::FixedFont(12));
    lines->setTabChangesFocus(true);
    connect(lines, &QPlainTextEdit::textChanged, this,
            [this, lines] { emit TextChanged(platform::qt::TypedText(*lines)); });
  }
  lines->setAccessibleName(target.field->accessibleName());
  const QSignalBlocker untyped(lines);
  lines->setPlainText(ToQt(text));
  lines->moveCursor(QTextCursor::End);
  Open(target, lines,
       [lines](const QRect& field, const QRect&) { lines->setGeometry(PlaceOfLines(field)); });
}

void InlineEditor::Open(const Target& target, QWidget* editor, Placing placing) {
  QWidget* former = std::exchange(open_, editor);
  which_ = target.which;
  field_ = target.field;
  placing_ = std::move(placing);
  Place();
  open_->show();
  open_->raise();
  open_->setFocus();
  if (former != nullptr && former != open_) former->hide();
}

void InlineEditor::Close() {
  QWidget* closed = std::exchange(open_, nullptr);
  if (closed == nullptr) return;
  which_ = 0;
  const bool hadFocus = closed->isAncestorOf(screen_->focusWidget());
  closed->hide();
  if (hadFocus) field_->setFocus();
}

void InlineEditor::Place() {
  if (open_ == nullptr) return;
  BringIntoView(field_);
  const QRect field(field_->mapTo(screen_, QPoint()), field_->size());
  placing_(field, QRect(0, 0, screen_->width(), screen_->height() - keys_->height()));
}

}  // namespace pickers
