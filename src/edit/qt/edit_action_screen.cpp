#include "edit/qt/edit_action_screen.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QToolButton>

#include "edit/editor_table.h"
#include "edit/qt/own_screen_pickers.h"
#include "extitems/qt/item_editor_screen.h"
#include "platform/metrics.h"
#include "platform/qt/qt_text.h"

namespace edit {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::ToQt;

// Ids of controls that are no commands.
constexpr int kIdTitle = 1100;
constexpr int kIdLines = 1123;
constexpr int kIdList = 1124;
constexpr int kIdCalendar = 1126;

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

}  // namespace

CEditActionDlg::CEditActionDlg(QWidget* over, core::CAppState& app, OpenMode openMode,
                               const std::optional<position::Position>& position)
    : FieldScreen(over),
      app_(app),
      edit_(app),
      openMode_(openMode),
      position_(position),
      form_(new EditForm(this, app, [this](int id) { Run(id); })) {
  edit_.window = Address();
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  MakeTitleRow(*rows);
  rows->addWidget(form_, 1);
  MakeToolBar(*rows);
  rows->addWidget(keys_);
  MakeMenu();
}

int CEditActionDlg::RunModal() {
  if (!edit_.Open(openMode_, position_)) return platform::qt::kResultCancel;
  ShowState();
  form_->Field(kIdStartDate)->setFocus();
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
  QLabel* title = controls_.AddLabel(kIdTitle, {});
  title->setFont(FixedFont(13));
  row->addWidget(title, 1);
  AddButton(kIdWrite, QString(), *row, 56);
  AddButton(kIdExit, QStringLiteral("終了"), *row, 56);
  AddButton(kIdClose, QStringLiteral("閉じる"), *row, 56);
}

void CEditActionDlg::MakeToolBar(QVBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(0);
  rows.addLayout(row);
  for (const ToolButton& tool : kToolButtons) {
    auto* button = controls_.Add(tool.id, new QToolButton(this));
    button->setText(ToQt(tool.text));
    button->setToolTip(ToQt(tool.name));
    button->setAccessibleName(button->toolTip());
    button->setFont(FixedFont(11));
    button->setCheckable(tool.isToggle);
    button->setFocusPolicy(Qt::NoFocus);
    button->setFixedSize(Scaled(30), Scaled(26));
    connect(button, &QToolButton::clicked, this, [this, id = tool.id] { Run(id); });
    row->addWidget(button);
  }
  row->addStretch(1);
  AddButton(kIdPrevious, QStringLiteral("↑"), *row, 29)
      ->setAccessibleName(QStringLiteral("前のアクション"));
  AddButton(kIdNext, QStringLiteral("↓"), *row, 29)
      ->setAccessibleName(QStringLiteral("次のアクション"));
}

QPushButton* CEditActionDlg::AddButton(int id, const QString& text, QBoxLayout& row, int width) {
  QPushButton* button = controls_.AddButton(id, text, [this, id] { Run(id); });
  button->setFixedSize(Scaled(width), Scaled(26));
  row.addWidget(button);
  return button;
}

void CEditActionDlg::MakeMenu() {
  controls_.AddKey(keys_->LeftKey(), kIdKeyWrite, QString(), [this] { Run(kIdKeyWrite); });
  QMenu& menu = keys_->Menu();
  const auto add = [this](QMenu& to, int id, const char16_t* text) {
    return controls_.AddMenuItem(to, id, ToQt(text), [this, id] { Run(id); });
  };
  add(menu, kIdMenuNew, u"新規作成");
  add(menu, kIdMenuReference, u"参照");
  add(menu, kIdMenuFollow, u"後続");
  add(menu, kIdMenuDelete, u"削除");
  QMenu& position = *menu.addMenu(QStringLiteral("位置情報"));
  position.setFont(menu.font());
  add(position, kIdAskPosition, u"位置取得");
  add(position, kIdShowPosition, u"位置表示");
  add(position, kIdClearPosition, u"位置クリア");
  add(position, kIdMapLink, u"地図表示");
  add(menu, kIdMenuExtItems, u"拡張項目編集");
  add(menu, kIdMenuContinue, u"連続入力")->setCheckable(true);
  add(menu, kIdMenuAtStart, u"起動時に開く")->setCheckable(true);
  add(menu, kIdMenuClose, u"閉じる");
  add(menu, kIdMenuExit, u"終了");
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

void CEditActionDlg::ApplyEditor() {
  edit_.ApplyEditor();
  ShowState();
}

// What was typed into the edit of several lines is kept: too much of it would be lost.
void CEditActionDlg::DropEditor() {
  if (edit_.editor == Editor::kMemoEdit) return ChooseEditor();
  edit_.DropEditor();
  ShowState();
}

// With Ctrl, as Enter alone begins a new line.
void CEditActionDlg::OnEnter() {
  if (edit_.editor == Editor::kMemoEdit) ChooseEditor();
}

void CEditActionDlg::LayOut() {
  form_->LayOut(Button(kIdClose));
}

void CEditActionDlg::ShowState() {
  controls_.At<QLabel>(kIdTitle)->setText(ToQt(edit_.Title()));
  Button(kIdWrite)->setText(ToQt(edit_.WriteText()));
  Button(kIdKeyWrite)->setText(ToQt(edit_.WriteText()));
  const auto show = [this](auto* control, int id) {
    if (control == nullptr) return;
    control->setEnabled(edit_.IsEnabled(id));
    if (control->isCheckable()) control->setChecked(edit_.IsChecked(id));
  };
  for (const auto& [id, control] : controls_) {
    show(qobject_cast<QAbstractButton*>(control), id);
    show(qobject_cast<QAction*>(control), id);
  }
  form_->ShowState(edit_);
  ShowEditor();
  if (!edit_.ended) return;
  if (edit_.closeProgram) CloseWindowAfterwards();
  EndScreen(*edit_.ended);
}

void CEditActionDlg::ShowEditor() {
  const int which = static_cast<int>(edit_.editor);
  if (which == editor_->Which()) return;
  if (edit_.editor == Editor::kNone) return editor_->Close();
  const EditorEntry& entry = EntryOf(edit_.editor);
  pickers::FieldButton* field = form_->Field(entry.controlId);
  if (entry.kind == EditorKind::kDate) {
    editor_->OpenCalendar({which, kIdCalendar, field}, edit_.editorText);
  } else if (edit_.editor == Editor::kMemoEdit) {
    editor_->OpenLines({which, kIdLines, field}, edit_.editorText);
  } else {
    editor_->OpenList(
        {which, kIdList, field},
        {edit_.EditorRows(), edit_.EditorRow(), edit_.editorText,
         static_cast<int>(edit_.LongestEditorText()), entry.kind == EditorKind::kTime});
  }
}

}  // namespace edit
