#include "recorder/qt/recorder_screen.h"

#include <QTimer>
#include <algorithm>
#include <utility>

#include "core/settings_choices.h"
#include "edit/qt/edit_action_screen.h"
#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_select_screen.h"
#include "platform/metrics.h"
#include "platform/qt/menu_place.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"
#include "recorder/recording_layout.h"
#include "store/session.h"

namespace recorder {
namespace {

using platform::Scaled;
using platform::qt::ToQt;

struct ValueField {
  InlineEditTarget target;
  int id;
  std::u16string core::CAppState::*name;
};
constexpr ValueField kValueFields[] = {
    {InlineEditTarget::kPlace, kIdPlace, &core::CAppState::PlaceName},
    {InlineEditTarget::kCategory1, kIdCategory1, &core::CAppState::Cate1Name},
    {InlineEditTarget::kCategory2, kIdCategory2, &core::CAppState::Cate2Name},
};

int FieldOf(InlineEditTarget target) {
  for (const ValueField& field : kValueFields) {
    if (field.target == target) return field.id;
  }
  return kIdTime;
}

}  // namespace

CRecorderDlg::CRecorderDlg(QWidget* over, core::CAppState& app)
    : FieldScreen(over),
      app_(app),
      recorder_(app),
      list_(controls_.Add(kIdList, new HistoryListView(this))),
      holdMenu_(new QMenu(this)) {
  recorder_.window = Address();
  MakeLabels();
  MakeFields();
  MakeButtons();
  MakeList();
  MakeMenu();
}

int CRecorderDlg::RunModal() {
  recorder_.Open();
  ShowState();
  Button(kIdRecord)->setFocus();
  QTimer::singleShot(0, this, [] { store::PrepareToWrite(); });  // shown, it awaits the first tap
  const int result = ModalScreen::RunModal();
  if (!HasEndedItself()) {  // what the fields hold is kept
    recorder_.DropEditor();
    recorder_.Close();
  }
  return result;
}

void CRecorderDlg::MakeLabels() {
  controls_.AddLabel(kIdTitle, u"レコーダー");
  controls_.AddLabel(kIdTimeLabel, u"時刻:");
  controls_.AddLabel(kIdLatitudeLabel, app_.LatName + u"：");
  controls_.AddLabel(kIdLongitudeLabel, app_.LonName + u"：");
  controls_.AddLabel(kIdPlaceLabel, app_.PlaceName + u"：");
  controls_.AddLabel(kIdCategory1Label, app_.Cate1Name + u"：");
  controls_.AddLabel(kIdCategory2Label, app_.Cate2Name + u"：");
}

void CRecorderDlg::MakeFields() {
  AddField(kIdTime, u"時刻", [this] { OnTimeField(); });
  AddField(kIdLatitude, app_.LatName, [this] { Run(&CRecorder::AskPosition); });
  AddField(kIdLongitude, app_.LonName, [this] { Run(&CRecorder::AskPosition); });
  for (const ValueField& field : kValueFields) {
    AddField(field.id, app_.*field.name,
             [this, &field] { OnValueField(field.target, app_.*field.name); });
  }
}

void CRecorderDlg::MakeButtons() {
  const auto add = [this](int id, const QString& text, void (CRecorder::*command)()) {
    return controls_.AddButton(id, text, [this, command] { Run(command); });
  };
  controls_.AddButton(kIdExit, QStringLiteral("終了"), [this] { OnBtnExit(); });
  controls_.AddButton(kIdClose, QStringLiteral("閉じる"), [this] { Leave(); });
  const auto addSign = [this](int id, const QString& sign, const QString& name,
                              void (CRecorder::*command)()) {
    return controls_.AddSign(id, sign, name, [this, command] { Run(command); });
  };
  addSign(kIdNow, QStringLiteral("・"), QStringLiteral("現在時刻"), &CRecorder::OnBtnNow)
      ->setFont(platform::qt::DotFont());
  add(kIdClear, QStringLiteral("クリア"), &CRecorder::OnBtnClear);
  add(kIdDelete, QStringLiteral("削除"), &CRecorder::FxBtnDelete);
  addSign(kIdBack, QStringLiteral("<="), QStringLiteral("戻る"), &CRecorder::OnBtnBack);
  addSign(kIdRecord, QStringLiteral("●"), QStringLiteral("記録"), &CRecorder::OnBtnRec);
  add(kIdStop, QString(), &CRecorder::OnBtnStop);
}

void CRecorderDlg::MakeList() {
  list_->setAccessibleName(QStringLiteral("記録の一覧"));
  list_->setFont(platform::qt::SettingFont(app_.RcdrFntName, app_.RcdrFntSize));
  connect(list_, &QListWidget::itemSelectionChanged, this,
          [this] { recorder_.lines.selected = list_->SelectedLines(); });
  connect(list_, &HistoryListView::Tapped, this, &CRecorderDlg::OnListChange);
  connect(list_, &HistoryListView::Dragged, this, [this] {
    if (recorder_.editor != InlineEditTarget::kNone) ApplyEditor();
  });
  connect(list_, &HistoryListView::Held, this, [this](QPoint point, const QRect& line) {
    platform::qt::OpenMenuAt(*holdMenu_, point, line);
  });
  connect(list_, &HistoryListView::ReturnLetGo, this, [this] { recorder_.TellKey(u"LB RETURN"); });
  connect(list_, &HistoryListView::DeleteLetGo, this, [this] { recorder_.TellKey(u"LB DELETE"); });
}

void CRecorderDlg::MakeMenu() {
  controls_.AddKey(keys_->LeftKey(), kKeyRecord, QStringLiteral("記録"),
                   [this] { Run(&CRecorder::OnBtnRec); });
  const auto add = [this](int id, const char16_t* text, std::function<void()> onChosen) {
    return controls_.AddMenuItem(keys_->Menu(), id, ToQt(text), std::move(onChosen));
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
  add(kMenuAtStart, u"起動時に開く", [this] {
    recorder_.opensAtStart = MenuItem(kMenuAtStart)->isChecked();
  })->setCheckable(true);
  add(kMenuClose, u"閉じる", [this] { Leave(); });
  add(kMenuExit, u"終了", [this] { OnBtnExit(); });
  holdMenu_->setFont(platform::qt::FixedFont(12));
  for (const int id : {kMenuChange, kMenuDelete, kMenuClear}) holdMenu_->addAction(MenuItem(id));
}

int CRecorderDlg::LabelWidth() const {
  int width = 0;
  for (const int id : {kIdTimeLabel, kIdLatitudeLabel, kIdLongitudeLabel, kIdPlaceLabel,
                       kIdCategory1Label, kIdCategory2Label}) {
    width = std::max(width, controls_.At<QLabel>(id)->sizeHint().width());
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
  if (recorder_.ValidateInlineEdit() == 0) PickTime();
  ShowState();
}

void CRecorderDlg::PickTime() {
  int hour = pickers::kExtraHour, minute = 0;
  recorder_.FieldTime(hour, minute);
  const auto picked = pickers::PickTime(this, {.title = u"時刻の選択",
                                               .extraText = u"現在時刻",
                                               .showExtra = 1,
                                               .startHour = static_cast<uint16_t>(hour),
                                               .startMinute = static_cast<uint16_t>(minute)});
  if (picked && picked->hour == pickers::kExtraHour) {
    recorder_.TakeValue(InlineEditTarget::kTime, kCurrentTimeMark);
  } else if (picked) {
    recorder_.TakeTime(picked->hour, picked->minute);
  }
}

void CRecorderDlg::OnValueField(InlineEditTarget target, const std::u16string& name) {
  if (app_.ItmSelMode != core::kPickByLists) return OpenEditor(target);
  if (recorder_.ValidateInlineEdit() == 0) {
    const auto picked = pickers::PickValue(
        this, {name + u"の選択", recorder_.FieldText(target), recorder_.EditorRows(target),
               static_cast<int>(edit::kLongestText)});
    if (picked) recorder_.TakeValue(target, *picked);
  }
  ShowState();
}

void CRecorderDlg::OpenEditor(InlineEditTarget target) {
  recorder_.OpenEditor(target);
  ShowState();
}

void CRecorderDlg::ApplyEditor() {
  recorder_.ValidateInlineEdit();
  ShowState();
}

void CRecorderDlg::DropEditor() {
  recorder_.DropEditor();
  ShowState();
}

void CRecorderDlg::OnListChange() {
  const bool opens = recorder_.OnListChange();
  ShowState();
  Button(kIdRecord)->setFocus();
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

// Not over the list, which has its own use for it.
void CRecorderDlg::OnEnter() {
  if (!list_->hasFocus()) Button(kIdRecord)->click();
}

void CRecorderDlg::mousePressEvent(QMouseEvent* event) {
  FieldScreen::mousePressEvent(event);
  Button(kIdRecord)->setFocus();
}

void CRecorderDlg::LayOut() {
  const RecorderLayout layout = LayOutRecorder(width(), height() - keys_->height(), LabelWidth());
  QWidget* before = nullptr;
  for (const platform::PlacedControl& placed : layout.controls) {
    controls_.Place(placed.id, ToQt(placed.rect), before);
  }
  keys_->FocusAfter(before);
  qDeleteAll(separators_);
  separators_.clear();
  for (const platform::Rect& separator : layout.separators) {
    auto* line = new QFrame(this);
    line->setFrameShape(QFrame::HLine);
    line->setGeometry(ToQt(separator));
    line->show();
    line->lower();
    separators_.push_back(line);
  }
  recorder_.SelectLastLine();
  ShowLines();
}

void CRecorderDlg::ShowState() {
  Field(kIdTime)->ShowValue(ToQt(recorder_.fields.time));
  Field(kIdLatitude)->ShowPosition(recorder_.fields.latitude);
  Field(kIdLongitude)->ShowPosition(recorder_.fields.longitude);
  Field(kIdPlace)->ShowValue(ToQt(recorder_.fields.place));
  Field(kIdCategory1)->ShowValue(ToQt(recorder_.fields.category1));
  Field(kIdCategory2)->ShowValue(ToQt(recorder_.fields.category2));
  Button(kIdBack)->setEnabled(recorder_.canGoBack);
  Button(kIdStop)->setEnabled(recorder_.canStop);
  Button(kIdStop)->setText(recorder_.isRunning ? QStringLiteral("■") : QStringLiteral("◆"));
  const QString stop = recorder_.isRunning ? QStringLiteral("停止") : QStringLiteral("再開");
  Button(kIdStop)->setAccessibleName(stop);
  MenuItem(kMenuStop)->setText(stop);
  MenuItem(kMenuAtStart)->setChecked(recorder_.opensAtStart);
  ShowLines();
  ShowEditor();
}

void CRecorderDlg::ShowLines() {
  const HistoryLines lines = recorder_.lines;  // filling the list changes its selection
  list_->ShowLines(lines);
  recorder_.lines = lines;
}

void CRecorderDlg::ShowEditor() {
  const InlineEditTarget target = recorder_.editor;
  const int which = static_cast<int>(target);
  if (which == editor_->Which()) return;
  if (target == InlineEditTarget::kNone) return editor_->Close();
  const bool isTime = target == InlineEditTarget::kTime;
  editor_->OpenList({which, isTime ? kIdTimeEditor : kIdValueEditor, Field(FieldOf(target))},
                    {recorder_.EditorRows(target), recorder_.EditorRow(), recorder_.editorText,
                     static_cast<int>(edit::kLongestText), isTime});
}

}  // namespace recorder
