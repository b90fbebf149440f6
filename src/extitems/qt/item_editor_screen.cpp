#include "extitems/qt/item_editor_screen.h"

#include <QAbstractItemView>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QLabel>
#include <utility>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "filedialog/qt/file_select_screen.h"
#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_select_screen.h"
#include "platform/metrics.h"
#include "platform/qt/controls.h"
#include "platform/qt/one_line.h"
#include "platform/qt/qt_text.h"

namespace extitems {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::FromQt;
using platform::qt::ToQt;
using platform::qt::TypedText;

constexpr int kNoon = 12;
constexpr std::u16string_view kNameLabel = u"名前:";
constexpr std::u16string_view kTypeLabel = u"タイプ:";
constexpr std::u16string_view kValueLabel = u"値:";

Qt::InputMethodHints LineHints(ItemType type) {
  switch (type) {
    case kInt:
      return Qt::ImhFormattedNumbersOnly;
    case kFloat:
      return Qt::ImhPreferNumbers;  // it may hold the "e" of an exponent
    case kDate:
    case kDateTime:
      return platform::qt::kDateHints;
    case kFile:
      return platform::qt::kLatinHints;
    default:
      return Qt::ImhNone;
  }
}

}  // namespace

CItemEditorDlg::CItemEditorDlg(QWidget* over, const core::CAppState& app, std::u16string_view text)
    : ModalScreen(over),
      editor_(text),
      byLists_(app.ItmSelMode == core::kPickByLists),
      rows_(new QVBoxLayout(this)),
      line_(new QLineEdit(this)),
      time_(new QLineEdit(this)),
      lines_(new platform::qt::LinesEdit(this)),
      keys_(new platform::qt::SoftKeyBar(this)),
      calendar_(new platform::qt::MonthCalendar(this)) {
  setFont(FixedFont(12));
  rows_->setContentsMargins(0, 0, 0, 0);
  rows_->setSpacing(Scaled(3));
  QLabel* title = platform::qt::MakeLabel({}, u"拡張項目編集", this);
  title->setIndent(Scaled(3));
  title->setFixedHeight(Scaled(24));
  rows_->addWidget(title);
  MakeName();
  MakeType();
  MakeValue();
  MakeButtons();
  calendar_->hide();
  connect(calendar_, &platform::qt::MonthCalendar::Chosen, this, &CItemEditorDlg::TakeDate);
  editor_.Select(editor_.Items().empty() ? -1 : 0);
  ShowState();
  (byLists_ ? nameLine_ : nameBox_->lineEdit())->setFocus();
}

QHBoxLayout* CItemEditorDlg::AddRow(std::u16string_view label) {
  QLabel* text = platform::qt::MakeLabel({}, label, this);
  text->setFixedSize(Scaled(44), Scaled(25));
  auto* row = new QHBoxLayout;
  row->setContentsMargins(Scaled(3), 0, Scaled(3), 0);
  row->setSpacing(Scaled(2));
  row->addWidget(text, 0, Qt::AlignTop);
  rows_->addLayout(row);
  return row;
}

QPushButton* CItemEditorDlg::AddButton(const char* name, const QString& text,
                                       std::function<void()> command) {
  auto* button = platform::qt::MakeButton(QString::fromLatin1(name), text, this,
                                          [this, run = std::move(command)] { Run(run); });
  button->setFixedHeight(Scaled(25));
  return button;
}

QPushButton* CItemEditorDlg::AddDots(const char* name, const QString& what,
                                     std::function<void()> command) {
  QPushButton* button = AddButton(name, QStringLiteral("..."), std::move(command));
  button->setAccessibleName(what);
  button->setFixedWidth(Scaled(36));
  return button;
}

void CItemEditorDlg::MakeName() {
  QHBoxLayout* row = AddRow(kNameLabel);
  if (byLists_) {
    nameLine_ = new QLineEdit(this);
    nameLine_->setMinimumHeight(Scaled(25));
    row->addWidget(nameLine_, 1);
    row->addWidget(AddDots("pick_name", QStringLiteral("名前の選択"), [this] { PickName(); }));
  } else {
    nameBox_ = new platform::qt::ChoiceBox(this);
    nameBox_->setMinimumHeight(Scaled(25));
    nameBox_->setEditable(true);
    nameBox_->setInsertPolicy(QComboBox::NoInsert);
    nameBox_->setCompleter(nullptr);
    row->addWidget(nameBox_, 1);
    connect(nameBox_, &QComboBox::activated, this, [this](int index) {
      editor_.Select(index);
      ShowState();
    });
    nameBox_->view()->installEventFilter(this);
    nameLine_ = nameBox_->lineEdit();
  }
  if (nameBox_ != nullptr) platform::qt::NameControl(*nameBox_, kNameLabel);
  platform::qt::NameControl(*nameLine_, kNameLabel);
  nameLine_->setObjectName(QStringLiteral("name"));
  nameLine_->setInputMethodHints(platform::qt::kLatinHints);
}

// Delete in the open list of names means the item on the row.
bool CItemEditorDlg::eventFilter(QObject* watched, QEvent* event) {
  const bool deletes = nameBox_ != nullptr && watched == nameBox_->view() &&
                       event->type() == QEvent::KeyPress &&
                       static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete;
  if (!deletes) return ModalScreen::eventFilter(watched, event);
  const int row = nameBox_->view()->currentIndex().row();
  nameBox_->hidePopup();
  editor_.Select(row);
  ShowState();
  Run([this] { editor_.OnBtnDelete(); });
  return true;
}

void CItemEditorDlg::MakeType() {
  QHBoxLayout* row = AddRow(kTypeLabel);
  if (byLists_) {
    typeLine_ = new QLineEdit(this);
    typeLine_->setMinimumHeight(Scaled(25));
    typeLine_->setReadOnly(true);
    platform::qt::NameControl(*typeLine_, kTypeLabel);
    row->addWidget(typeLine_, 1);
    row->addWidget(AddDots("pick_type", QStringLiteral("タイプの選択"), [this] { PickType(); }));
    return;
  }
  typeBox_ = new platform::qt::ChoiceBox(this);
  typeBox_->setObjectName(QStringLiteral("type"));
  platform::qt::NameControl(*typeBox_, kTypeLabel);
  typeBox_->setMinimumHeight(Scaled(25));
  for (const std::u16string_view name : kTypeNames) typeBox_->addItem(ToQt(name));
  row->addWidget(typeBox_, 1);
  connect(typeBox_, &QComboBox::activated, this,
          [this](int type) { Run([&] { editor_.ChangeType(static_cast<ItemType>(type)); }); });
}

// All controls of all types; ShowState hides what the type does not need.
void CItemEditorDlg::MakeValue() {
  line_->setObjectName(QStringLiteral("line"));
  time_->setObjectName(QStringLiteral("time"));
  time_->setInputMethodHints(platform::qt::kTimeHints);
  lines_->setObjectName(QStringLiteral("lines"));
  lines_->setTabChangesFocus(true);
  for (QWidget* value : {static_cast<QWidget*>(line_), static_cast<QWidget*>(lines_)}) {
    platform::qt::NameControl(*value, kValueLabel);
  }
  time_->setAccessibleName(QStringLiteral("時刻"));
  dateButton_ = AddDots("pick_date", QStringLiteral("日付の選択"), [this] { ToggleCalendar(); });
  timeButton_ = AddDots("pick_time", QStringLiteral("時刻の選択"), [this] { PickTime(); });
  fileButton_ = AddDots("pick_file", QStringLiteral("ファイルの選択"), [this] { PickFile(); });
  QHBoxLayout* row = AddRow(kValueLabel);
  auto* values = new QVBoxLayout;
  values->setSpacing(Scaled(3));
  row->addLayout(values, 1);
  auto* lineRow = new QHBoxLayout;
  lineRow->addWidget(line_, 1);
  lineRow->addWidget(dateButton_);
  lineRow->addWidget(fileButton_);
  values->addLayout(lineRow);
  auto* timeRow = new QHBoxLayout;
  timeRow->addWidget(time_, 1);
  timeRow->addWidget(timeButton_);
  values->addLayout(timeRow);
  values->addWidget(lines_, 1);
  values->addStretch();
  rows_->setStretchFactor(row, 1);
  for (QLineEdit* edit : {line_, time_}) edit->setMinimumHeight(Scaled(25));
  QWidget* before = typeBox_;
  if (byLists_) before = findChild<QPushButton*>(QStringLiteral("pick_type"));
  const std::initializer_list<QWidget*> stops = {line_, dateButton_, fileButton_,
                                                 time_, timeButton_, lines_};
  for (QWidget* stop : stops) {
    setTabOrder(before, stop);
    before = stop;
  }
}

void CItemEditorDlg::MakeButtons() {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(Scaled(3), 0, Scaled(3), 0);
  row->addWidget(AddButton("create", QStringLiteral("作成"), [this] { editor_.OnBtnCreate(); }));
  row->addWidget(AddButton("change", QStringLiteral("変更"), [this] { editor_.OnBtnChange(); }));
  QPushButton* last =
      AddButton("delete", QStringLiteral("削除"), [this] { editor_.OnBtnDelete(); });
  row->addWidget(last);
  keys_->FocusAfter(last);
  rows_->addLayout(row);
  rows_->addWidget(keys_);
  keys_->LeftKey().setObjectName(QStringLiteral("apply"));
  keys_->LeftKey().setText(QStringLiteral("変更反映"));
  connect(&keys_->LeftKey(), &QPushButton::clicked, this,
          [this] { Run([this] { editor_.OnBtnApply(); }); });
  keys_->UseRightKey(QStringLiteral("変更破棄"), [this] {
    if (editor_.OnBtnDiscard()) EndScreen(platform::qt::kResultCancel);
  });
}

void CItemEditorDlg::Run(const std::function<void()>& command) {
  Capture();
  command();
  ShowState();
  if (editor_.result) EndScreen(platform::qt::kResultOk);
}

void CItemEditorDlg::Capture() {
  QGuiApplication::inputMethod()->commit();  // what is still being composed counts
  editor_.fields.name = FromQt(nameLine_->text());
  editor_.fields.line = FromQt(platform::qt::TypedOver(ToQt(editor_.fields.line), *line_));
  editor_.fields.time = FromQt(time_->text());
  editor_.fields.lines = TypedText(*lines_);
}

void CItemEditorDlg::ShowState() {
  const CItemEditor::Fields& fields = editor_.fields;
  if (nameBox_ != nullptr) {
    nameBox_->clear();
    for (const ExtItem& item : editor_.Items()) nameBox_->addItem(ToQt(item.name));
    nameBox_->setCurrentIndex(editor_.Selected());
    typeBox_->setCurrentIndex(fields.type);
  } else {
    typeLine_->setText(ToQt(kTypeNames[static_cast<size_t>(fields.type)]));
  }
  nameLine_->setText(ToQt(fields.name));
  line_->setText(ToQt(fields.line));
  line_->setInputMethodHints(LineHints(fields.type));
  time_->setText(ToQt(fields.time));
  if (TypedText(*lines_) != fields.lines) lines_->setPlainText(ToQt(fields.lines));
  line_->setVisible(editor_.HasLine());
  dateButton_->setVisible(fields.type == kDate || fields.type == kDateTime);
  fileButton_->setVisible(fields.type == kFile);
  time_->setVisible(editor_.HasTime());
  timeButton_->setVisible(editor_.HasTime());
  lines_->setVisible(fields.type == kMultiLineString);
  if (dateButton_->isHidden()) calendar_->hide();
}

void CItemEditorDlg::PickName() {
  pickers::ValueSelectParams params{u"名前の選択", editor_.fields.name, {}};
  for (const ExtItem& item : editor_.Items()) params.history.push_back(item.name);
  if (const auto name = pickers::PickValue(this, std::move(params))) editor_.ChooseName(*name);
}

// A typed text that is no type leaves the type as it is.
void CItemEditorDlg::PickType() {
  const auto type = static_cast<size_t>(editor_.fields.type);
  pickers::ValueSelectParams params{u"タイプの選択", std::u16string(kTypeNames[type]), {}};
  for (const std::u16string_view name : kTypeNames) params.history.emplace_back(name);
  const auto name = pickers::PickValue(this, std::move(params));
  if (!name) return;
  const ItemType chosen = ExtItemType(*name);
  if (chosen != kUnknownType) editor_.ChangeType(chosen);
}

void CItemEditorDlg::PickTime() {
  int hour = kNoon, minute = 0, second = 0;
  core::ParseTime(editor_.fields.time, hour, minute, second);
  const auto picked = pickers::PickTime(this, {.flags = pickers::kWithSeconds,
                                               .title = u"時刻",
                                               .extraText = {},
                                               .startHour = static_cast<uint16_t>(hour),
                                               .startMinute = static_cast<uint16_t>(minute),
                                               .startSecond = static_cast<uint16_t>(second)});
  if (!picked) return;
  editor_.fields.time = core::FormatTime(picked->hour, picked->minute, picked->second);
}

void CItemEditorDlg::PickFile() {
  filedialog::CFileSelectDlg dialog(
      this, {filedialog::kSelectToOpen, u"入力元", u"すべてのファイル (*.*)|*.*", u"\\", u""});
  dialog.RunModal();
  if (dialog.ResultPath()) editor_.fields.line = *dialog.ResultPath();
}

void CItemEditorDlg::ToggleCalendar() {
  if (!calendar_->isHidden()) {
    calendar_->hide();
    return;
  }
  int year = 0, month = 0, day = 0;
  core::ParseDate(editor_.fields.line, year, month, day);
  calendar_->Select(QDate(year, month, day));
  PlaceCalendar();
  calendar_->show();
  calendar_->raise();
  calendar_->setFocus();
}

void CItemEditorDlg::TakeDate(const QDate& date) {
  line_->setText(ToQt(core::FormatDate(date.year(), date.month(), date.day())));
  calendar_->hide();
  line_->setFocus();
}

void CItemEditorDlg::PlaceCalendar() {
  calendar_->PlaceBy(line_->geometry(), QRect(0, 0, width(), height() - keys_->height()));
}

void CItemEditorDlg::OnEscape() {
  if (!calendar_->isHidden()) {
    calendar_->hide();
    dateButton_->setFocus();
  } else if (editor_.OnBtnDiscard()) {
    EndScreen(platform::qt::kResultCancel);
  }
}

// Tab leaves an open calendar for what comes after its button.
bool CItemEditorDlg::focusNextPrevChild(bool forward) {
  if (!calendar_->isHidden()) {
    calendar_->hide();
    dateButton_->setFocus();
  }
  return ModalScreen::focusNextPrevChild(forward);
}

// A tap beside the calendar closes it.
void CItemEditorDlg::mousePressEvent(QMouseEvent*) {
  calendar_->hide();
}

void CItemEditorDlg::resizeEvent(QResizeEvent* event) {
  ModalScreen::resizeEvent(event);
  layout()->activate();
  PlaceCalendar();
}

bool CItemEditorDlg::OnWindowClosing() {
  return (!editor_.Changed() || editor_.OnBtnDiscard()) && ModalScreen::OnWindowClosing();
}

}  // namespace extitems
