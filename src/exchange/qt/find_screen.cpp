#include "exchange/qt/find_screen.h"

#include <QGroupBox>
#include <QGuiApplication>
#include <QInputMethod>
#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>
#include <utility>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "exchange/find_layout.h"
#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_select_screen.h"
#include "platform/metrics.h"
#include "platform/qt/elided_label.h"
#include "platform/qt/one_line.h"
#include "platform/qt/qt_text.h"

namespace exchange {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::FromQt;
using platform::qt::ToQt;

constexpr int kLongestFindText = 2000;  // the longest column that is looked into
constexpr int kLongestTime = 8;

bool IsDate(FindEditor editor) {
  return editor == FindEditor::kStartDate || editor == FindEditor::kEndDate;
}

QDate ToDate(std::u16string_view text) {
  int year = 0, month = 0, day = 0;
  core::ParseDate(text, year, month, day);
  return QDate(year, month, day);
}

}  // namespace

CFindDlg::CFindDlg(QWidget* over, core::CAppState& app)
    : ModalScreen(over),
      app_(app),
      find_(app),
      text_(new platform::qt::ChoiceBox(this)),
      timeEditor_(new pickers::ListPicker(this)),
      calendar_(new platform::qt::MonthCalendar(this)),
      keys_(new platform::qt::SoftKeyBar(this)) {
  AddLabel(kIdFindTitle, u"検索");
  MakeText();
  MakeTargets();
  MakeSpans();
  MakeButtons();
  MakeMenu();
  MakeEditors();
}

int CFindDlg::RunModal() {
  ShowState();
  controls_[text_->isHidden() ? kIdTextField : kIdText]->setFocus();
  const int result = ModalScreen::RunModal();
  if (!HasEndedItself()) find_.Keep();
  return result;
}

void CFindDlg::MakeText() {
  AddLabel(kIdTextLabel, u"検索文字列:");
  text_->setObjectName(QString::number(kIdText));
  text_->setEditable(true);
  text_->setInsertPolicy(QComboBox::NoInsert);
  text_->setCompleter(nullptr);
  text_->lineEdit()->setMaxLength(kLongestFindText);
  for (const std::u16string& entry : app_.FindHistory.Entries()) text_->addItem(ToQt(entry));
  text_->setCurrentIndex(-1);
  text_->installEventFilter(this);
  text_->lineEdit()->installEventFilter(this);
  controls_[kIdText] = text_;
  connect(text_, &QComboBox::editTextChanged, this,
          [this](const QString& text) { find_.fields.text = FromQt(text); });
  AddField(kIdTextField, FindEditor::kNone);
  connect(fields_[kIdTextField], &QAbstractButton::clicked, this, &CFindDlg::OnTextField);
  const bool byLists = app_.ItmSelMode == core::kPickByLists;
  text_->setHidden(byLists);
  fields_[kIdTextField]->setHidden(!byLists);
}

void CFindDlg::MakeTargets() {
  auto* group = new QGroupBox(QStringLiteral("検索対象"), this);
  group->setObjectName(QString::number(kIdTargets));
  group->setFont(FixedFont(12));
  controls_[kIdTargets] = group;
  AddCheck(kIdInPlace, app_.PlaceName, &CFind::Fields::inPlace);
  AddCheck(kIdInCategory1, app_.Cate1Name, &CFind::Fields::inCategory1);
  AddCheck(kIdInCategory2, app_.Cate2Name, &CFind::Fields::inCategory2);
  AddCheck(kIdInMemo, app_.MemoName, &CFind::Fields::inMemo);
}

void CFindDlg::MakeSpans() {
  AddLabel(kIdStartLabel, app_.StaDtTmName);
  AddField(kIdStartDate, FindEditor::kStartDate);
  AddField(kIdStartTime, FindEditor::kStartTime);
  AddLabel(kIdEndLabel, app_.EndDtTmName);
  AddField(kIdEndDate, FindEditor::kEndDate);
  AddField(kIdEndTime, FindEditor::kEndTime);
  const auto addToday = [this](int id, void (CFind::*command)()) {
    QPushButton* today = AddButton(id, QStringLiteral("・"));
    today->setFont(platform::qt::DotFont());
    connect(today, &QPushButton::clicked, this, [this, command] {
      (find_.*command)();
      ShowState();
    });
  };
  addToday(kIdStartToday, &CFind::OnBtnStartToday);
  addToday(kIdEndToday, &CFind::OnBtnEndToday);
}

void CFindDlg::MakeButtons() {
  connect(AddButton(kIdFind, QStringLiteral("検索")), &QPushButton::clicked, this,
          &CFindDlg::OnFind);
  connect(AddButton(kIdFindClose, QStringLiteral("閉じる")), &QPushButton::clicked, this,
          &CFindDlg::Leave);
  AddCheck(kIdDispList, u"検索終了後、一覧形式にて表示する", &CFind::Fields::dispListAfterFind);
  connect(AddButton(kIdReset, QStringLiteral("クリア")), &QPushButton::clicked, this,
          &CFindDlg::OnReset);
}

void CFindDlg::MakeMenu() {
  QPushButton& key = keys_->LeftKey();
  key.setObjectName(QString::number(kIdKeyFind));
  key.setText(QStringLiteral("検索"));
  connect(&key, &QPushButton::clicked, this, &CFindDlg::OnFind);
  const auto add = [this](int id, const char16_t* text, auto onChosen) {
    QAction* action = keys_->Menu().addAction(ToQt(text));
    action->setData(id);
    connect(action, &QAction::triggered, this, onChosen);
  };
  add(kIdMenuFind, u"検索", [this] { OnFind(); });
  add(kIdMenuReset, u"クリア", [this] { OnReset(); });
  add(kIdMenuClose, u"閉じる", [this] { Leave(); });
}

void CFindDlg::MakeEditors() {
  timeEditor_->setObjectName(QString::number(kIdTimeEditor));
  calendar_->setObjectName(QString::number(kIdCalendar));
  calendar_->hide();
  connect(timeEditor_, &pickers::ListPicker::TextChanged, this,
          [this](const QString& text) { find_.editorText = FromQt(text); });
  connect(timeEditor_, &pickers::ListPicker::Chosen, this, &CFindDlg::ApplyEditor);
  connect(calendar_, &platform::qt::MonthCalendar::Chosen, this, [this](const QDate& date) {
    find_.editorText = core::FormatDate(date.year(), date.month(), date.day());
    find_.ChooseEditor();
    ShowState();
  });
}

void CFindDlg::AddLabel(int id, const std::u16string& text) {
  auto* label = new platform::qt::ElidedLabel(this);
  label->setObjectName(QString::number(id));
  label->setText(ToQt(text));
  label->setFont(FixedFont(12));
  controls_[id] = label;
}

QCheckBox* CFindDlg::AddCheck(int id, const std::u16string& text, bool CFind::Fields::*field) {
  auto* check = new QCheckBox(ToQt(text).replace(u'&', QStringLiteral("&&")), this);
  check->setObjectName(QString::number(id));
  check->setFont(FixedFont(12));
  controls_[id] = check;
  checks_[check] = field;
  connect(check, &QCheckBox::clicked, this, [this, field](bool checked) {
    find_.fields.*field = checked;
    ApplyEditor();
  });
  return check;
}

void CFindDlg::AddField(int id, FindEditor which) {
  auto* field = new pickers::FieldButton(9, this);
  field->setObjectName(QString::number(id));
  controls_[id] = fields_[id] = field;
  if (which == FindEditor::kNone) return;
  connect(field, &QAbstractButton::clicked, this, [this, which] {
    const bool byWheels = app_.ItmSelMode == core::kPickByLists && !IsDate(which);
    byWheels ? OnTimeField(which) : OpenEditor(which);
  });
}

QPushButton* CFindDlg::AddButton(int id, const QString& text) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::number(id));
  button->setFont(FixedFont(12));
  button->setAutoDefault(false);
  controls_[id] = button;
  return button;
}

int CFindDlg::LabelWidth() const {
  const int width = std::max(controls_.at(kIdStartLabel)->sizeHint().width(),
                             controls_.at(kIdEndLabel)->sizeHint().width());
  return std::min(width, Scaled(90)) + Scaled(3);
}

void CFindDlg::OnFind() {
  QGuiApplication::inputMethod()->commit();  // what is still being composed counts
  const bool leaves = find_.OnFind();
  ShowState();
  if (leaves) EndScreen(platform::qt::kResultOk);
}

bool CFindDlg::Leave() {
  QGuiApplication::inputMethod()->commit();
  const bool leaves = find_.OnClose();
  ShowState();
  if (leaves) EndScreen(platform::qt::kResultCancel);
  return leaves;
}

bool CFindDlg::OnWindowClosing() {
  return Leave();
}

void CFindDlg::OnReset() {
  find_.ResetFindDialog();
  ShowState();
}

void CFindDlg::OnTextField() {
  if (find_.ApplyEditor()) {
    pickers::ValueSelectParams params{u"検索文字列", find_.fields.text, app_.FindHistory.Entries()};
    if (pickers::ValueSelectDlg(this, params).RunModal() == platform::qt::kResultOk) {
      find_.fields.text = params.value;
    }
  }
  ShowState();
}

void CFindDlg::OnTimeField(FindEditor which) {
  if (find_.ApplyEditor()) {
    const bool isStart = which == FindEditor::kStartTime;
    pickers::TimeSelectParams params;
    params.title = isStart ? u"開始時刻" : u"終了時刻";
    params.extraText = u"終日";
    params.showExtra = isStart ? 1 : 0;
    int hour = 0, minute = 0;
    find_.PickerTime(which, hour, minute);
    params.startHour = static_cast<uint16_t>(hour);
    params.startMinute = static_cast<uint16_t>(minute);
    if (pickers::TimeSelectDlg(this, params).RunModal() == platform::qt::kResultOk) {
      find_.TakeTime(which, params.hour, params.minute);
    }
  }
  ShowState();
}

// A second tap on the field closes its editor.
void CFindDlg::OpenEditor(FindEditor which) {
  if (find_.editor == which) {
    find_.ApplyEditor();
  } else {
    find_.OpenEditor(which);
  }
  ShowState();
}

void CFindDlg::ApplyEditor() {
  find_.ApplyEditor();
  ShowState();
}

// An open editor goes first, then the dialog.
void CFindDlg::OnEscape() {
  if (find_.editor == FindEditor::kNone) {
    Leave();
  } else {
    find_.DropEditor();
    ShowState();
  }
}

// A tap beside everything closes an open editor.
void CFindDlg::mousePressEvent(QMouseEvent*) {
  ApplyEditor();
}

// The find text and its list take the focus away from an open editor.
bool CFindDlg::eventFilter(QObject* watched, QEvent* event) {
  const bool isText = watched == text_ || watched == text_->lineEdit();
  if (isText && event->type() == QEvent::MouseButtonPress) ApplyEditor();
  return ModalScreen::eventFilter(watched, event);
}

void CFindDlg::resizeEvent(QResizeEvent* event) {
  ModalScreen::resizeEvent(event);
  keys_->setGeometry(0, height() - keys_->height(), width(), keys_->height());
  QWidget* before = nullptr;
  for (const PlacedControl& placed :
       LayOutFind(width(), height() - keys_->height(), LabelWidth())) {
    QWidget* control = controls_.at(placed.id);
    control->setGeometry(placed.x, placed.y, placed.width, placed.height);
    if (control->focusPolicy() == Qt::NoFocus) continue;
    if (before != nullptr) setTabOrder(before, control);
    before = control;
  }
  keys_->FocusAfter(before);
  PlaceEditor();
}

// Tab leaves an open editor and takes its value.
bool CFindDlg::focusNextPrevChild(bool forward) {
  if (find_.editor != FindEditor::kNone) ApplyEditor();
  return ModalScreen::focusNextPrevChild(forward);
}

void CFindDlg::ShowState() {
  const CFind::Fields& shown = find_.fields;
  fields_[kIdStartDate]->ShowValue(ToQt(shown.staDate));
  fields_[kIdStartTime]->ShowValue(ToQt(shown.staTime));
  fields_[kIdEndDate]->ShowValue(ToQt(shown.endDate));
  fields_[kIdEndTime]->ShowValue(ToQt(shown.endTime));
  fields_[kIdEndTime]->setEnabled(find_.IsEndTimeEnabled());
  fields_[kIdTextField]->ShowValue(ToQt(shown.text));
  if (FromQt(text_->currentText()) != shown.text) text_->setEditText(ToQt(shown.text));
  for (const auto& [check, field] : checks_) check->setChecked(shown.*field);
  if (find_.editor != shownEditor_) ShowEditor();
}

void CFindDlg::ShowEditor() {
  QWidget* former = EditorWidget(shownEditor_);
  const FindEditor closed = std::exchange(shownEditor_, find_.editor);
  QWidget* opened = EditorWidget(shownEditor_);
  if (opened != nullptr) {
    if (IsDate(shownEditor_)) {
      calendar_->Select(ToDate(find_.editorText));
    } else {
      timeEditor_->Open(find_.EditorRows(), find_.EditorRow(), ToQt(find_.editorText), kLongestTime,
                        platform::qt::kTimeHints);
    }
    PlaceEditor();
    opened->show();
    opened->raise();
    opened->setFocus();
  }
  if (former == nullptr || former == opened) return;
  const bool hadFocus = former->isAncestorOf(focusWidget());
  former->hide();
  if (hadFocus && opened == nullptr) controls_[FieldOf(closed)]->setFocus();
}

// The list lies over its field, the calendar below or above it; none covers the soft keys.
void CFindDlg::PlaceEditor() {
  if (shownEditor_ == FindEditor::kNone) return;
  const QRect field = controls_[FieldOf(shownEditor_)]->geometry();
  const QRect area(0, 0, width(), height() - keys_->height());
  if (!IsDate(shownEditor_)) return timeEditor_->PlaceOver(field, area);
  const QSize size = QSize(Scaled(228), Scaled(200)).boundedTo(area.size());
  const bool fitsBelow = field.bottom() + size.height() <= area.bottom();
  const bool fitsAbove = field.top() >= size.height();
  const int y = fitsBelow   ? field.bottom() + 1
                : fitsAbove ? field.top() - size.height()
                            : area.bottom() + 1 - size.height();
  const int x = std::min(field.left(), area.right() + 1 - size.width());
  calendar_->setGeometry(QRect(QPoint(x, y), size));
}

QWidget* CFindDlg::EditorWidget(FindEditor which) const {
  if (which == FindEditor::kNone) return nullptr;
  return IsDate(which) ? static_cast<QWidget*>(calendar_) : timeEditor_;
}

int CFindDlg::FieldOf(FindEditor which) {
  switch (which) {
    case FindEditor::kStartDate:
      return kIdStartDate;
    case FindEditor::kStartTime:
      return kIdStartTime;
    case FindEditor::kEndDate:
      return kIdEndDate;
    default:
      return kIdEndTime;
  }
}

}  // namespace exchange
