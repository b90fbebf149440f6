#include "edit/qt/edit_action_screen.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QSignalBlocker>
#include <QTextDocument>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "core/date_time.h"
#include "edit/editor_table.h"
#include "edit/qt/own_screen_pickers.h"
#include "extitems/qt/item_editor_screen.h"
#include "platform/metrics.h"
#include "platform/qt/one_line.h"
#include "platform/qt/qt_text.h"

namespace edit {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::FromQt;
using platform::qt::ToQt;

struct ToolButton {
  int id;
  const char16_t* text;
  const char16_t* name;
  bool isToggle;
};

constexpr ToolButton kToolButtons[] = {
    {kIdToolNew, u"新規", u"新規作成", false},     {kIdToolDelete, u"削除", u"削除", false},
    {kIdToolFollow, u"後続", u"後続", false},      {kIdToolReference, u"参照", u"参照", false},
    {kIdToolContinue, u"連続", u"連続入力", true}, {kIdToolAtStart, u"起動", u"起動時に開く", true},
};

bool IsDate(Editor editor) {
  return editor != Editor::kNone && EntryOf(editor).kind == EditorKind::kDate;
}

QDate ToDate(std::u16string_view text) {
  int year = 0, month = 0, day = 0;
  core::ParseDate(text, year, month, day);
  return QDate(year, month, day);
}

// The text of an edit as it is: unlike its plain text, with no character exchanged.
QString TypedText(const QPlainTextEdit& edit) {
  return edit.document()->toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

}  // namespace

CEditActionDlg::CEditActionDlg(QWidget* over, core::CAppState& app, OpenMode openMode,
                               const std::optional<position::Position>& position)
    : ModalScreen(over),
      app_(app),
      edit_(app),
      openMode_(openMode),
      position_(position),
      title_(new QLabel(this)),
      form_(new EditForm(this, app)),
      keys_(new platform::qt::SoftKeyBar(this)),
      calendar_(new platform::qt::MonthCalendar(this)),
      list_(new pickers::ListPicker(this)),
      memoEdit_(new QPlainTextEdit(this)) {
  edit_.window = Address();
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  MakeTitleRow(*rows);
  rows->addWidget(form_, 1);
  MakeToolBar(*rows);
  rows->addWidget(keys_);
  MakeMenu();
  MakeEditors();
  connect(form_, &EditForm::Tapped, this, &CEditActionDlg::Run);
}

int CEditActionDlg::RunModal() {
  if (!edit_.Open(openMode_, position_)) return platform::qt::kResultCancel;
  ShowState();
  form_->Control(kIdStartDate)->setFocus();
  return ModalScreen::RunModal();
}

bool CEditActionDlg::OnWindowClosing() {
  const bool closes = edit_.OnWindowClosing();
  ShowState();
  return closes;
}

void CEditActionDlg::MakeTitleRow(QVBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(Scaled(3), 0, 0, 0);
  row->setSpacing(0);
  rows.addLayout(row);
  title_->setObjectName(QStringLiteral("1100"));
  title_->setFont(FixedFont(13));
  row->addWidget(title_, 1);
  AddButton(kIdWrite, QString(), *row, 56);
  AddButton(kIdExit, QStringLiteral("終了"), *row, 56);
  AddButton(kIdClose, QStringLiteral("閉じる"), *row, 56);
}

void CEditActionDlg::MakeToolBar(QVBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(0);
  rows.addLayout(row);
  for (const ToolButton& tool : kToolButtons) {
    auto* button = new QToolButton(this);
    button->setObjectName(QString::number(tool.id));
    button->setText(ToQt(tool.text));
    button->setToolTip(ToQt(tool.name));
    button->setFont(FixedFont(11));
    button->setCheckable(tool.isToggle);
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedSize(Scaled(30), Scaled(26));
    connect(button, &QToolButton::clicked, this, [this, id = tool.id] { Run(id); });
    buttons_[tool.id] = button;
    row->addWidget(button);
  }
  row->addStretch(1);
  AddButton(kIdPrevious, QStringLiteral("↑"), *row, 29);
  AddButton(kIdNext, QStringLiteral("↓"), *row, 29);
}

void CEditActionDlg::AddButton(int id, const QString& text, QBoxLayout& row, int width) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::number(id));
  button->setFont(FixedFont(12));
  button->setAutoDefault(false);
  button->setFixedSize(Scaled(width), Scaled(26));
  connect(button, &QPushButton::clicked, this, [this, id] { Run(id); });
  buttons_[id] = button;
  row.addWidget(button);
}

void CEditActionDlg::MakeMenu() {
  QPushButton& writeKey = keys_->LeftKey();
  writeKey.setObjectName(QString::number(kIdKeyWrite));
  connect(&writeKey, &QPushButton::clicked, this, [this] { Run(kIdKeyWrite); });
  buttons_[kIdKeyWrite] = &writeKey;
  QMenu& menu = keys_->Menu();
  AddMenuItem(menu, kIdMenuNew, QStringLiteral("新規作成"));
  AddMenuItem(menu, kIdMenuReference, QStringLiteral("参照"));
  AddMenuItem(menu, kIdMenuFollow, QStringLiteral("後続"));
  AddMenuItem(menu, kIdMenuDelete, QStringLiteral("削除"));
  QMenu& position = *menu.addMenu(QStringLiteral("位置情報"));
  position.setFont(menu.font());
  AddMenuItem(position, kIdAskPosition, QStringLiteral("位置取得"));
  AddMenuItem(position, kIdShowPosition, QStringLiteral("位置表示"));
  AddMenuItem(position, kIdClearPosition, QStringLiteral("位置クリア"));
  AddMenuItem(position, kIdMapLink, QStringLiteral("地図表示"));
  AddMenuItem(menu, kIdMenuExtItems, QStringLiteral("拡張項目編集"));
  AddMenuItem(menu, kIdMenuContinue, QStringLiteral("連続入力"))->setCheckable(true);
  AddMenuItem(menu, kIdMenuAtStart, QStringLiteral("起動時に開く"))->setCheckable(true);
  AddMenuItem(menu, kIdMenuClose, QStringLiteral("閉じる"));
  AddMenuItem(menu, kIdMenuExit, QStringLiteral("終了"));
}

QAction* CEditActionDlg::AddMenuItem(QMenu& menu, int id, const QString& text) {
  QAction* action = menu.addAction(text);
  action->setData(id);
  connect(action, &QAction::triggered, this, [this, id] { Run(id); });
  actions_[id] = action;
  return action;
}

void CEditActionDlg::MakeEditors() {
  calendar_->setObjectName(QStringLiteral("1126"));
  list_->setObjectName(QStringLiteral("1124"));
  memoEdit_->setObjectName(QStringLiteral("1123"));
  memoEdit_->setFont(FixedFont(12));
  memoEdit_->setTabChangesFocus(true);
  calendar_->hide();
  list_->hide();
  memoEdit_->hide();
  connect(calendar_, &platform::qt::MonthCalendar::Moved, this, &CEditActionDlg::TakeDate);
  connect(calendar_, &platform::qt::MonthCalendar::Chosen, this, &CEditActionDlg::ChooseEditor);
  connect(list_, &pickers::ListPicker::TextChanged, this,
          [this](const QString& text) { edit_.editorText = FromQt(text); });
  connect(list_, &pickers::ListPicker::Chosen, this, &CEditActionDlg::ChooseEditor);
  connect(memoEdit_, &QPlainTextEdit::textChanged, this,
          [this] { edit_.editorText = FromQt(TypedText(*memoEdit_)); });
}

void CEditActionDlg::Run(int commandId) {
  QGuiApplication::inputMethod()->commit();  // what is still being composed counts
  if (commandId == kIdMenuExtItems) return EditExtItems();
  edit_.OnCommand(commandId);
  if (edit_.PicksOnOwnScreen()) PickOnOwnScreen(this, edit_);
  ShowState();
}

// The fields lose the colours of waiting before their user is asked about what has come.
void CEditActionDlg::OnPosted(int command) {
  ShowState();
  Run(command);
}

void CEditActionDlg::EditExtItems() {
  const bool taken = edit_.ApplyEditor();
  ShowState();
  if (!taken) return;
  extitems::CItemEditorDlg editor(this, app_, edit_.ExtItems());
  if (editor.RunModal() == platform::qt::kResultOk) edit_.TakeExtItems(editor.Result());
  ShowState();
}

void CEditActionDlg::ChooseEditor() {
  edit_.ChooseEditor();
  ShowState();
}

void CEditActionDlg::TakeEditor() {
  QGuiApplication::inputMethod()->commit();
  edit_.ApplyEditor();
  ShowState();
}

void CEditActionDlg::TakeDate(const QDate& date) {
  edit_.editorText = core::FormatDate(date.year(), date.month(), date.day());
}

// An open editor goes first, then the screen. What was typed into the multi-line edit is kept: too
// much of it would be lost.
void CEditActionDlg::OnEscape() {
  if (edit_.editor == Editor::kNone) {
    Run(kIdClose);
  } else if (edit_.editor == Editor::kMemoEdit) {
    ChooseEditor();
  } else {
    edit_.DropEditor();
    ShowState();
  }
}

// With Ctrl, as Enter alone begins a new line.
void CEditActionDlg::OnEnter() {
  if (edit_.editor == Editor::kMemoEdit) ChooseEditor();
}

// A tap beside an open editor closes it.
void CEditActionDlg::mousePressEvent(QMouseEvent*) {
  TakeEditor();
}

void CEditActionDlg::resizeEvent(QResizeEvent* event) {
  ModalScreen::resizeEvent(event);
  layout()->activate();
  form_->LayOut(buttons_[kIdClose]);
  PlaceEditor();
}

// Tab leaves an open editor for the field behind the one that was picked.
bool CEditActionDlg::focusNextPrevChild(bool forward) {
  if (edit_.editor != Editor::kNone) TakeEditor();
  return ModalScreen::focusNextPrevChild(forward);
}

void CEditActionDlg::ShowState() {
  title_->setText(ToQt(edit_.Title()));
  buttons_[kIdWrite]->setText(ToQt(edit_.WriteText()));
  buttons_[kIdKeyWrite]->setText(ToQt(edit_.WriteText()));
  for (const auto& [id, button] : buttons_) {
    button->setEnabled(edit_.IsEnabled(id));
    if (button->isCheckable()) button->setChecked(edit_.IsChecked(id));
  }
  for (const auto& [id, action] : actions_) {
    action->setEnabled(edit_.IsEnabled(id));
    if (action->isCheckable()) action->setChecked(edit_.IsChecked(id));
  }
  form_->ShowState(edit_);
  if (edit_.editor != shownEditor_) ShowEditor();
  if (!edit_.ended) return;
  if (edit_.closeProgram) CloseWindowAfterwards();
  EndScreen(*edit_.ended);
}

void CEditActionDlg::ShowEditor() {
  QWidget* former = EditorWidget(shownEditor_);
  const Editor closed = std::exchange(shownEditor_, edit_.editor);
  QWidget* opened = EditorWidget(shownEditor_);
  if (opened != nullptr) {
    FillEditor();
    PlaceEditor();
    opened->show();
    opened->raise();
    opened->setFocus();
  }
  if (former == nullptr || former == opened) return;
  const bool hadFocus = former->isAncestorOf(focusWidget());
  former->hide();
  if (hadFocus && opened == nullptr) form_->Control(EntryOf(closed).controlId)->setFocus();
}

void CEditActionDlg::FillEditor() {
  if (IsDate(shownEditor_)) {
    const QSignalBlocker unmoved(calendar_);
    calendar_->Select(ToDate(edit_.editorText));
  } else if (shownEditor_ == Editor::kMemoEdit) {
    const QSignalBlocker untyped(memoEdit_);
    memoEdit_->setPlainText(ToQt(edit_.editorText));
    memoEdit_->moveCursor(QTextCursor::End);
  } else {
    list_->Open(
        edit_.EditorRows(), edit_.EditorRow(), ToQt(edit_.editorText),
        static_cast<int>(edit_.LongestEditorText()),
        EntryOf(shownEditor_).kind == EditorKind::kTime ? platform::qt::kTimeHints : Qt::ImhNone);
  }
}

// The list lies over its field, the multi-line edit too, and the calendar below or above it; none
// covers the soft keys.
void CEditActionDlg::PlaceEditor() {
  if (shownEditor_ == Editor::kNone) return;
  form_->ensureWidgetVisible(form_->Control(EntryOf(shownEditor_).controlId), 0, 0);
  const QRect field = form_->PlaceOf(EntryOf(shownEditor_).controlId);
  const QRect area(0, 0, width(), height() - keys_->height());
  if (IsDate(shownEditor_)) {
    const QSize size = QSize(Scaled(228), Scaled(200)).boundedTo(area.size());
    const bool fitsBelow = field.bottom() + size.height() <= area.bottom();
    const int y = fitsBelow ? field.bottom() + 1 : area.bottom() + 1 - size.height();
    const int x = std::min(field.left(), area.right() + 1 - size.width());
    calendar_->setGeometry(QRect(QPoint(x, y), size));
  } else if (shownEditor_ == Editor::kMemoEdit) {
    const int height = std::max(field.height(), std::min(Scaled(78), field.bottom() + 1));
    memoEdit_->setGeometry(field.x(), field.bottom() + 1 - height, field.width(), height);
  } else {
    list_->PlaceOver(field, area);
  }
}

QWidget* CEditActionDlg::EditorWidget(Editor editor) const {
  if (editor == Editor::kNone) return nullptr;
  if (IsDate(editor)) return calendar_;
  if (editor == Editor::kMemoEdit) return memoEdit_;
  return list_;
}

}  // namespace edit
