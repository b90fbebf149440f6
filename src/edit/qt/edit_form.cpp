#include "edit/qt/edit_form.h"

#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "edit/edit_layout.h"
#include "platform/metrics.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"

namespace edit {
namespace {

using platform::Scaled;
using platform::qt::ToQt;

constexpr int kSmallestDigits = 9;  // below that of a text, where it would blot

}  // namespace

EditForm::EditForm(QWidget* parent, const core::CAppState& app, std::function<void(int)> onTap)
    : QScrollArea(parent),
      controls_(new QWidget),
      onTap_(std::move(onTap)),
      memoName_(ToQt(app.MemoName)) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidget(controls_.Parent());
  AddLabel(kIdStartLabel, app.StaDtTmName);
  AddField(kIdStartDate, app.StaDtTmName + u" 日付");
  AddField(kIdStartTime, app.StaDtTmName + u" 時刻");
  AddNow(kIdStartNow, app.StaDtTmName);
  AddLabel(kIdEndLabel, app.EndDtTmName);
  AddField(kIdEndDate, app.EndDtTmName + u" 日付");
  AddField(kIdEndTime, app.EndDtTmName + u" 時刻");
  AddNow(kIdEndNow, app.EndDtTmName);
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
  controls_.AddButton(kIdMemoInput, {}, [this] { onTap_(kIdMemoInput); });
}

void EditForm::AddField(int id, std::u16string_view name, int smallest) {
  pickers::AddField(
      controls_, id, name, [this, id] { onTap_(id); }, smallest);
  fields_.push_back(id);
}

void EditForm::AddLabel(int id, const std::u16string& name) {
  labels_.push_back(controls_.AddLabel(id, name));
  labels_.back()->setIndent(Scaled(3));
}

void EditForm::AddNow(int id, const std::u16string& name) {
  controls_
      .AddSign(id, QStringLiteral("・"), ToQt(name) + QStringLiteral("を現在時刻にする"),
               [this, id] { onTap_(id); })
      ->setFont(platform::qt::DotFont());
}

void EditForm::ShowState(const CEditAction& state) {
  const CEditAction::Fields& fields = state.fields;
  Field(kIdStartDate)->ShowValue(ToQt(fields.times.staDate));
  Field(kIdStartTime)->ShowValue(ToQt(fields.times.staTime));
  Field(kIdEndDate)->ShowValue(ToQt(fields.times.endDate));
  Field(kIdEndTime)->ShowValue(ToQt(fields.times.endTime));
  Field(kIdLatitude)->ShowPosition(fields.latitude);
  Field(kIdLongitude)->ShowPosition(fields.longitude);
  Field(kIdPlace)->ShowValue(ToQt(fields.place));
  Field(kIdCategory1)->ShowValue(ToQt(fields.category1));
  Field(kIdCategory2)->ShowValue(ToQt(fields.category2));
  Field(kIdMemo)->ShowValue(ToQt(state.ShownMemo()));
  for (const int id : fields_) Field(id)->setEnabled(state.IsEnabled(id));
  const bool isList = state.memoInput == MemoInput::kList;
  auto* memoInput = controls_.At<QPushButton>(kIdMemoInput);
  memoInput->setText(isList ? QStringLiteral("▼") : QStringLiteral("≡"));
  memoInput->setAccessibleName(
      memoName_ + (isList ? QStringLiteral("を一覧から選択") : QStringLiteral("を複数行で入力")));
}

void EditForm::LayOut(QWidget* before) {
  const QSize screen = parentWidget()->size();
  const Orientation orientation = ChooseOrientation(screen.width(), screen.height());
  const int height = std::max(this->height(), MinimumHeight(orientation));
  const int bar = height > this->height() ? verticalScrollBar()->sizeHint().width() : 0;
  widget()->resize(width() - bar, height);
  const EditLayout layout = LayOutFields(orientation, width() - bar, height, LabelWidth());
  for (const PlacedControl& placed : layout.controls) {
    controls_.Place(placed.id, ToQt(placed.rect), before);
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
