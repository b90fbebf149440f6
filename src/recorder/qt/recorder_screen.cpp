#include "recorder/qt/recorder_screen.h"

#include <QTimer>
#include <algorithm>
#include <utility>

#include "core/settings_choices.h"
#include "edit/qt/edit_action_screen.h"
#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_select_screen.h"
#include "platform/metrics.h"
#include "platform/qt/elided_label.h"
#include "platform/qt/menu_place.h"
#include "platform/qt/one_line.h"
#include "platform/qt/qt_text.h"
#include "recorder/recording_layout.h"
#include "store/session.h"

namespace recorder {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::FromQt;
using platform::qt::ToQt;

// Commands of the menu.
enum MenuId {
  kMenuChange = 32782,
  kMenuDelete = 32785,
  kMenuClose = 32900,
  kMenuClear = 32950,
  kMenuRecord = 32951,
  kMenuStop = 32952,
  kMenuBack = 32953,
  kMenuAtStart = 32955,
  kMenuAskPosition = 33100,
  kMenuShowPosition = 33101,
  kMenuClearPosition = 33102,
  kMenuMapLink = 33104,
  kKeyRecord = 40002,
  kMenuExit = 40102
};

}  // namespace

CRecorderDlg::CRecorderDlg(QWidget* over, core::CAppState& app)
    : ModalScreen(over),
      app_(app),
      recorder_(app),
      list_(new HistoryListView(this)),
      keys_(new platform::qt::SoftKeyBar(this)),
      holdMenu_(new QMenu(this)) {
  recorder_.window = Address();
  MakeLabels();
  MakeFields();
  MakeButtons();
  MakeList();
  MakeMenu();
  MakeEditor(timeEditor_, kIdTimeEditor);
  MakeEditor(valueEditor_, kIdValueEditor);
}

int CRecorderDlg::RunModal() {
  recorder_.Open();
  ShowState();
  buttons_[kIdRecord]->setFocus();
  QTimer::singleShot(0, this, [] { store::PrepareToWrite(); });  // shown, it awaits the first tap
  const int result = ModalScreen::RunModal();
  if (!HasEndedItself()) {  // what the fields hold is kept
    recorder_.DropEditor();
    recorder_.Close();
  }
  return result;
}

void CRecorderDlg::MakeLabels() {
  AddLabel(kIdTitle, u"レコーダー");
  AddLabel(kIdTimeLabel, u"時刻:");
  AddLabel(kIdLatitudeLabel, app_.LatName + u"：");
  AddLabel(kIdLongitudeLabel, app_.LonName + u"：");
  AddLabel(kIdPlaceLabel, app_.PlaceName + u"：");
  AddLabel(kIdCategory1Label, app_.Cate1Name + u"：");
  AddLabel(kIdCategory2Label, app_.Cate2Name + u"：");
}

void CRecorderDlg::AddLabel(int id, const std::u16string& text) {
  auto* label = new platform::qt::ElidedLabel(this);
  label->setObjectName(QString::number(id));
  label->setText(ToQt(text));
  label->setFont(FixedFont(12));
  controls_[id] = label;
}

void CRecorderDlg::MakeFields() {
  AddField(kIdTime, [this] { OnTimeField(); });
  AddField(kIdLatitude, [this] { Run(&CRecorder::AskPosition); });
  AddField(kIdLongitude, [this] { Run(&CRecorder::AskPosition); });
  AddField(kIdPlace, [this] { OnValueField(InlineEditTarget::kPlace); });
  AddField(kIdCategory1, [this] { OnValueField(InlineEditTarget::kCategory1); });
  AddField(kIdCategory2, [this] { OnValueField(InlineEditTarget::kCategory2); });
}

void CRecorderDlg::AddField(int id, std::function<void()> onTap) {
  auto* field = new pickers::FieldButton(9, this);
  field->setObjectName(QString::number(id));
  field->setFont(FixedFont(12));
  connect(field, &QAbstractButton::clicked, this, std::move(onTap));
  controls_[id] = fields_[id] = field;
}

void CRecorderDlg::MakeButtons() {
  AddButton(kIdExit, QStringLiteral("終了"), nullptr);
  AddButton(kIdClose, QStringLiteral("閉じる"), nullptr);
  AddButton(kIdNow, QStringLiteral("・"), &CRecorder::OnBtnNow);
  AddButton(kIdClear, QStringLiteral("クリア"), &CRecorder::OnBtnClear);
  AddButton(kIdDelete, QStringLiteral("削除"), &CRecorder::FxBtnDelete);
  AddButton(kIdBack, QStringLiteral("<="), &CRecorder::OnBtnBack);
  AddButton(kIdRecord, QStringLiteral("●"), &CRecorder::OnBtnRec);
  AddButton(kIdStop, QString(), &CRecorder::OnBtnStop);
  buttons_[kIdNow]->setFont(platform::qt::DotFont());
  connect(buttons_[kIdExit], &QPushButton::clicked, this, &CRecorderDlg::OnBtnExit);
  connect(buttons_[kIdClose], &QPushButton::clicked, this, &CRecorderDlg::Leave);
}

void CRecorderDlg::AddButton(int id, const QString& text, void (CRecorder::*command)()) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::number(id));
  button->setFont(FixedFont(12));
  button->setAutoDefault(false);
  if (command != nullptr) {
    connect(button, &QPushButton::clicked, this, [this, command] { Run(command); });
  }
  controls_[id] = buttons_[id] = button;
}

void CRecorderDlg::MakeList() {
  list_->setObjectName(QString::number(kIdList));
  list_->setFont(platform::qt::SettingFont(app_.RcdrFntName, app_.RcdrFntSize));
  controls_[kIdList] = list_;
  connect(list_, &QListWidget::itemSelectionChanged, this,
          [this] { recorder_.lines.selected = list_->SelectedLines(); });
  connect(list_, &HistoryListView::Tapped, this, &CRecorderDlg::OnListChange);
  connect(list_, &HistoryListView::Dragged, this, [this] {
    if (recorder_.editor != InlineEditTarget::kNone) ChooseEditor();
  });
  connect(list_, &HistoryListView::Held, this, &CRecorderDlg::OnListHeld);
  connect(list_, &HistoryListView::ReturnLetGo, this, [this] { recorder_.TellKey(u"LB RETURN"); });
  connect(list_, &HistoryListView::DeleteLetGo, this, [this] { recorder_.TellKey(u"LB DELETE"); });
}

void CRecorderDlg::MakeMenu() {
  QPushButton& key = keys_->LeftKey();
  key.setObjectName(QString::number(kKeyRecord));
  key.setText(QStringLiteral("記録"));
  connect(&key, &QPushButton::clicked, this, [this] { Run(&CRecorder::OnBtnRec); });
  QMenu& menu = keys_->Menu();
  const auto add = [&](int id, const char16_t* text, auto onChosen) {
    connect(AddMenuItem(menu, id, ToQt(text)), &QAction::triggered, this, onChosen);
  };
  add(kMenuRecord, u"記録", [this] { Run(&CRecorder::OnBtnRec); });
  add(kMenuStop, u"停止", [this] { Run(&CRecorder::OnBtnStop); });
  add(kMenuBack, u"戻る", [this] { Run(&CRecorder::OnBtnBack); });
  add(kMenuClear, u"クリア", [this] { Run(&CRecorder::OnBtnClear); });
  add(kMenuChange, u"変更...", [this] { OnListChange(); });
  add(kMenuDelete, u"削除", [this] { Run(&CRecorder::FxBtnDelete); });
  add(kMenuAskPosition, u"位置取得", [this] { Run(&CRecorder::AskPosition); });
  add(kMenuShowPosition, u"位置表示", [this] { Run(&CRecorder::ShowPosition); });
  add(kMenuClearPosition, u"位置クリア", [this] { Run(&CRecorder::ClearPosition); });
  add(kMenuMapLink, u"地図表示", [this] { Run(&CRecorder::OpenMapLink); });
  add(kMenuAtStart, u"起動時に開く", [this](bool checked) { recorder_.opensAtStart = checked; });
  add(kMenuClose, u"閉じる", [this] { Leave(); });
  add(kMenuExit, u"終了", [this] { OnBtnExit(); });
  actions_[kMenuAtStart]->setCheckable(true);
  holdMenu_->setFont(FixedFont(12));
  for (const int id : {kMenuChange, kMenuDelete, kMenuClear}) holdMenu_->addAction(actions_[id]);
}

QAction* CRecorderDlg::AddMenuItem(QMenu& menu, int id, const QString& text) {
  QAction* action = menu.addAction(text);
  action->setData(id);
  actions_[id] = action;
  return action;
}

void CRecorderDlg::MakeEditor(pickers::ListPicker*& editor, int id) {
  editor = new pickers::ListPicker(this);
  editor->setObjectName(QString::number(id));
  connect(editor, &pickers::ListPicker::TextChanged, this,
          [this](const QString& text) { recorder_.editorText = FromQt(text); });
  connect(editor, &pickers::ListPicker::Chosen, this, &CRecorderDlg::ChooseEditor);
}

int CRecorderDlg::LabelWidth() const {
  int width = 0;
  for (const int id : {kIdTimeLabel, kIdLatitudeLabel, kIdLongitudeLabel, kIdPlaceLabel,
                       kIdCategory1Label, kIdCategory2Label}) {
    width = std::max(width, controls_.at(id)->sizeHint().width());
  }
  return std::min(width, Scaled(90)) + Scaled(2);
}

void CRecorderDlg::Run(void (CRecorder::*command)()) {
  (recorder_.*command)();
  ShowState();
}

// The only command that is posted: the fields lose the colours of waiting before their user is
// asked about the position that has come.
void CRecorderDlg::OnPosted(int) {
  ShowState();
  Run(&CRecorder::OnPositionArrived);
}

void CRecorderDlg::OnTimeField() {
  if (app_.ItmSelMode != core::kPickByLists) return OpenEditor(InlineEditTarget::kTime);
  if (recorder_.ValidateInlineEdit() == 0) {
    pickers::TimeSelectParams params;
    params.title = u"時刻の選択";
    params.extraText = u"現在時刻";
    params.showExtra = 1;
    int hour = pickers::kExtraHour, minute = 0;
    recorder_.FieldTime(hour, minute);
    params.startHour = static_cast<uint16_t>(hour);
    params.startMinute = static_cast<uint16_t>(minute);
    const int result = pickers::TimeSelectDlg(this, params).RunModal();
    if (result == platform::qt::kResultOk && params.hour == pickers::kExtraHour) {
      recorder_.TakeValue(InlineEditTarget::kTime, kCurrentTimeMark);
    } else if (result == platform::qt::kResultOk) {
      recorder_.TakeTime(params.hour, params.minute);
    }
  }
  ShowState();
}

void CRecorderDlg::OnValueField(InlineEditTarget which) {
  if (app_.ItmSelMode != core::kPickByLists) return OpenEditor(which);
  if (recorder_.ValidateInlineEdit() == 0) {
    const std::u16string& name = which == InlineEditTarget::kPlace       ? app_.PlaceName
                                 : which == InlineEditTarget::kCategory1 ? app_.Cate1Name
                                                                         : app_.Cate2Name;
    pickers::ValueSelectParams params{name + u"の選択", recorder_.FieldText(which),
                                      recorder_.EditorRows(which),
                                      static_cast<int>(edit::kLongestText)};
    if (pickers::ValueSelectDlg(this, params).RunModal() == platform::qt::kResultOk) {
      recorder_.TakeValue(which, params.value);
    }
  }
  ShowState();
}

void CRecorderDlg::OpenEditor(InlineEditTarget which) {
  recorder_.OpenEditor(which);
  ShowState();
}

void CRecorderDlg::ChooseEditor() {
  recorder_.ValidateInlineEdit();
  ShowState();
}

void CRecorderDlg::OnListChange() {
  const bool opens = recorder_.OnListChange();
  ShowState();
  buttons_[kIdRecord]->setFocus();
  if (!opens) return;
  edit::CEditActionDlg(this, app_, edit::kOpenChange).RunModal();
  Run(&CRecorder::AfterChange);
}

bool CRecorderDlg::Leave() {
  const bool leaves = recorder_.Close();
  ShowState();
  if (leaves) EndScreen(platform::qt::kResultOk);
  return leaves;
}

void CRecorderDlg::OnBtnExit() {
  if (Leave()) CloseWindowAfterwards();
}

bool CRecorderDlg::OnWindowClosing() {
  return Leave();
}

void CRecorderDlg::OnListHeld(QPoint globalPoint, const QRect& globalLine) {
  platform::qt::OpenMenuAt(*holdMenu_, globalPoint, globalLine);
}

// An open editor goes first, then the screen.
void CRecorderDlg::OnEscape() {
  if (recorder_.editor == InlineEditTarget::kNone) {
    Leave();
  } else {
    recorder_.DropEditor();
    ShowState();
  }
}

// Not over the list, which has its own use for it.
void CRecorderDlg::OnEnter() {
  if (!list_->hasFocus()) buttons_[kIdRecord]->click();
}

// A tap beside everything closes an open editor.
void CRecorderDlg::mousePressEvent(QMouseEvent*) {
  ChooseEditor();
  buttons_[kIdRecord]->setFocus();
}

void CRecorderDlg::resizeEvent(QResizeEvent* event) {
  ModalScreen::resizeEvent(event);
  keys_->setGeometry(0, height() - keys_->height(), width(), keys_->height());
  const RecorderLayout layout = LayOutRecorder(width(), height() - keys_->height(), LabelWidth());
  QWidget* before = nullptr;
  for (const Placed& placed : layout.controls) {
    QWidget* control = controls_.at(placed.id);
    control->setGeometry(placed.x, placed.y, placed.width, placed.height);
    if (control->focusPolicy() == Qt::NoFocus) continue;
    if (before != nullptr) setTabOrder(before, control);
    before = control;
  }
  keys_->FocusAfter(before);
  qDeleteAll(separators_);
  separators_.clear();
  for (const Placed& placed : layout.separators) {
    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setGeometry(placed.x, placed.y, placed.width, placed.height);
    line->show();
    line->lower();
    separators_.push_back(line);
  }
  ShowEditor();
  recorder_.SelectLastLine();
  ShowLines();
}

// Tab leaves an open editor and takes its value.
bool CRecorderDlg::focusNextPrevChild(bool forward) {
  if (recorder_.editor != InlineEditTarget::kNone) ChooseEditor();
  return ModalScreen::focusNextPrevChild(forward);
}

void CRecorderDlg::ShowState() {
  fields_[kIdTime]->ShowValue(ToQt(recorder_.fields.time));
  fields_[kIdLatitude]->ShowPosition(recorder_.fields.latitude);
  fields_[kIdLongitude]->ShowPosition(recorder_.fields.longitude);
  fields_[kIdPlace]->ShowValue(ToQt(recorder_.fields.place));
  fields_[kIdCategory1]->ShowValue(ToQt(recorder_.fields.category1));
  fields_[kIdCategory2]->ShowValue(ToQt(recorder_.fields.category2));
  buttons_[kIdBack]->setEnabled(recorder_.canGoBack);
  buttons_[kIdStop]->setEnabled(recorder_.canStop);
  buttons_[kIdStop]->setText(recorder_.isRunning ? QStringLiteral("■") : QStringLiteral("◆"));
  actions_[kMenuStop]->setText(recorder_.isRunning ? QStringLiteral("停止")
                                                   : QStringLiteral("再開"));
  actions_[kMenuAtStart]->setChecked(recorder_.opensAtStart);
  ShowLines();
  if (recorder_.editor != shownEditor_) ShowEditor();
}

void CRecorderDlg::ShowLines() {
  const HistoryLines lines = recorder_.lines;  // filling the list changes its selection
  list_->ShowLines(lines);
  recorder_.lines = lines;
}

void CRecorderDlg::ShowEditor() {
  const InlineEditTarget former = std::exchange(shownEditor_, recorder_.editor);
  pickers::ListPicker* editor = Editor(shownEditor_);
  if (editor != nullptr) {
    if (former != shownEditor_) {
      editor->Open(
          recorder_.EditorRows(shownEditor_), recorder_.EditorRow(), ToQt(recorder_.editorText),
          static_cast<int>(edit::kLongestText),
          shownEditor_ == InlineEditTarget::kTime ? platform::qt::kTimeHints : Qt::ImhNone);
    }
    const QRect area(0, 0, width(), height() - keys_->height());
    editor->PlaceOver(controls_[FieldOf(shownEditor_)]->geometry(), area);
    editor->show();
    editor->raise();
    editor->setFocus();
  }
  pickers::ListPicker* closed = Editor(former);
  if (closed == nullptr || closed == editor) return;
  const bool hadFocus = closed->isAncestorOf(focusWidget());
  closed->hide();
  if (hadFocus && editor == nullptr) controls_[FieldOf(former)]->setFocus();
}

pickers::ListPicker* CRecorderDlg::Editor(InlineEditTarget which) const {
  if (which == InlineEditTarget::kNone) return nullptr;
  return which == InlineEditTarget::kTime ? timeEditor_ : valueEditor_;
}

int CRecorderDlg::FieldOf(InlineEditTarget which) {
  switch (which) {
    case InlineEditTarget::kPlace:
      return kIdPlace;
    case InlineEditTarget::kCategory1:
      return kIdCategory1;
    case InlineEditTarget::kCategory2:
      return kIdCategory2;
    default:
      return kIdTime;
  }
}

}  // namespace recorder
