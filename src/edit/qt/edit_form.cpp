#include "edit/qt/edit_form.h"

#include <QPushButton>
#include <QScrollBar>
#include <algorithm>

#include "edit/edit_layout.h"
#include "platform/metrics.h"
#include "platform/qt/elided_label.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"

namespace edit {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::ToQt;

constexpr int kSmallestDigits = 9;  // below that of a text, where it would blot

}  // namespace

EditForm::EditForm(QWidget* parent, const core::CAppState& app) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidget(new QWidget);
  AddLabel(kIdStartLabel, app.StaDtTmName);
  AddField(kIdStartDate, app.StaDtTmName);
  AddField(kIdStartTime, app.StaDtTmName);
  AddButton(kIdStartNow, QStringLiteral("・"), ToQt(app.StaDtTmName));
  AddLabel(kIdEndLabel, app.EndDtTmName);
  AddField(kIdEndDate, app.EndDtTmName);
  AddField(kIdEndTime, app.EndDtTmName);
  AddButton(kIdEndNow, QStringLiteral("・"), ToQt(app.EndDtTmName));
  AddLabel(kIdLatitudeLabel, app.LatName);
  AddField(kIdLatitude, app.LatName, kSmallestDigits);
  AddLabel(kIdLongitudeLabel, app.LonName);
  AddField(kIdLongitude, app.LonName, kSmallestDigits);
  AddLabel(kIdPlaceLabel, app.PlaceName);
  AddField(kIdPlace, app.PlaceName);
  AddLabel(kIdCategory1Label, app.Cate1Name);
  AddField(kIdCategory1, app.Cate1Name);
  AddLabel(kIdCategory2Label, app.Cate2Name);
  AddField(kIdCategory2, app.Cate2Name);
  AddLabel(kIdMemoLabel, app.MemoName);
  AddField(kIdMemo, app.MemoName);
  AddButton(kIdMemoInput, QString(), ToQt(app.MemoName));
}

void EditForm::AddField(int id, const std::u16string& name, int smallest) {
  auto* field = new pickers::FieldButton(smallest, widget());
  field->setObjectName(QString::number(id));
  field->setAccessibleName(ToQt(name));
  connect(field, &pickers::FieldButton::clicked, this, [this, id] { emit Tapped(id); });
  fields_[id] = field;
  controls_[id] = field;
}

void EditForm::AddLabel(int id, const std::u16string& name) {
  auto* label = new platform::qt::ElidedLabel(widget());
  label->setObjectName(QString::number(id));
  label->setText(ToQt(name));
  label->setFont(FixedFont(12));
  label->setIndent(Scaled(3));
  labels_.push_back(label);
  controls_[id] = label;
}

void EditForm::AddButton(int id, const QString& text, const QString& name) {
  auto* button = new QPushButton(text, widget());
  button->setObjectName(QString::number(id));
  button->setAccessibleName(name);
  button->setFont(id == kIdMemoInput ? FixedFont(12) : platform::qt::DotFont());
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, [this, id] { emit Tapped(id); });
  controls_[id] = button;
}

void EditForm::ShowState(const CEditAction& state) {
  const CEditAction::Fields& fields = state.fields;
  fields_[kIdStartDate]->ShowValue(ToQt(fields.times.staDate));
  fields_[kIdStartTime]->ShowValue(ToQt(fields.times.staTime));
  fields_[kIdEndDate]->ShowValue(ToQt(fields.times.endDate));
  fields_[kIdEndTime]->ShowValue(ToQt(fields.times.endTime));
  fields_[kIdLatitude]->ShowPosition(fields.latitude);
  fields_[kIdLongitude]->ShowPosition(fields.longitude);
  fields_[kIdPlace]->ShowValue(ToQt(fields.place));
  fields_[kIdCategory1]->ShowValue(ToQt(fields.category1));
  fields_[kIdCategory2]->ShowValue(ToQt(fields.category2));
  fields_[kIdMemo]->ShowValue(ToQt(state.ShownMemo()));
  for (const auto& [id, field] : fields_) field->setEnabled(state.IsEnabled(id));
  static_cast<QPushButton*>(controls_[kIdMemoInput])
      ->setText(state.memoInput == MemoInput::kList ? QStringLiteral("▼") : QStringLiteral("≡"));
}

QRect EditForm::PlaceOf(int id) const {
  const QWidget* control = Control(id);
  return QRect(control->mapTo(parentWidget(), QPoint()), control->size());
}

void EditForm::LayOut(QWidget* before) {
  const QSize screen = parentWidget()->size();
  const Orientation orientation = ChooseOrientation(screen.width(), screen.height());
  const int height = std::max(this->height(), MinimumHeight(orientation));
  const int bar = height > this->height() ? verticalScrollBar()->sizeHint().width() : 0;
  widget()->resize(width() - bar, height);
  const EditLayout layout = LayOutFields(orientation, width() - bar, height, LabelWidth());
  for (const PlacedControl& placed : layout.controls) {
    QWidget* control = controls_[placed.id];
    control->setGeometry(ToQt(placed.rect));
    if (control->focusPolicy() == Qt::NoFocus) continue;
    QWidget::setTabOrder(before, control);
    before = control;
  }
  while (separators_.size() < layout.separators.size()) {
    separators_.push_back(new QFrame(widget()));
    separators_.back()->setAutoFillBackground(true);
    separators_.back()->setBackgroundRole(QPalette::Mid);
  }
  for (size_t i = 0; i < separators_.size(); i++) {
    separators_[i]->setGeometry(ToQt(layout.separators[i]));
    separators_[i]->show();
  }
}

// As wide as the widest label, within reason.
int EditForm::LabelWidth() const {
  int widest = 0;
  for (const QLabel* label : labels_) {
    widest = std::max(widest, label->fontMetrics().horizontalAdvance(label->text()));
  }
  return std::clamp(widest + Scaled(7), Scaled(34), Scaled(64));
}

}  // namespace edit
