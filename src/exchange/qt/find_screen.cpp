#include "exchange/qt/find_screen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QInputMethod>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <algorithm>

#include "core/settings_choices.h"
#include "exchange/find_layout.h"
#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_select_screen.h"
#include "platform/metrics.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"

namespace exchange {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::FromQt;
using platform::qt::ToQt;

constexpr int kLongestFindText = 2000;  // the longest column that is looked into
constexpr int kLongestTime = 8;
constexpr std::u16string_view kTextLabel = u"検索文字列:";
const QString kFindText = QStringLiteral("検索");

struct SpanField {
  FindEditor editor;
  int id;
};
constexpr SpanField kSpanFields[] = {{FindEditor::kStartDate, kIdStartDate},
                                     {FindEditor::kStartTime, kIdStartTime},
                                     {FindEditor::kEndDate, kIdEndDate},
                                     {FindEditor::kEndTime, kIdEndTime}};

bool IsDate(FindEditor editor) {
  return editor == FindEditor::kStartDate || editor == FindEditor::kEndDate;
}

// Of any editor but kNone.
int FieldOf(FindEditor editor) {
  const SpanField* field = kSpanFields;
  while (field->editor != editor) ++field;
  return field->id;
}

// All that its user does while a find runs is taken here, so that nothing else of the program comes
// in between: Escape, or a press on a button, asks for its end.
class Interruption : public QObject {
 public:
  explicit Interruption(QWidget& button) : button_(button) { qApp->installEventFilter(this); }

  bool isAsked = false;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (QApplication::activeModalWidget() != nullptr) return false;  // a message must be answered
    switch (event->type()) {
      case QEvent::KeyPress:
        isAsked = isAsked || static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        return true;
      case QEvent::MouseButtonPress: {
        // It's the window that sees it first, not the button.
        const QPoint at = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
        isAsked = isAsked || button_.rect().contains(button_.mapFromGlobal(at));
        return true;
      }
      case QEvent::Close:
        event->ignore();
        return true;
      case QEvent::KeyRelease:
      case QEvent::ShortcutOverride:
      case QEvent::Shortcut:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseMove:
      case QEvent::Wheel:
      case QEvent::ContextMenu:
      case QEvent::InputMethod:
        return true;
      default:
        return false;
    }
  }

 private:
  QWidget& button_;
};

}  // namespace

CFindDlg::CFindDlg(QWidget* over, core::CAppState& app)
    : FieldScreen(over),
      app_(app),
      find_(app),
      text_(controls_.Add(kIdText, new platform::qt::ChoiceBox(this))) {
  controls_.AddLabel(kIdFindTitle, u"検索");
  MakeText();
  MakeTargets();
  MakeSpans();
  MakeButtons();
  MakeMenu();
}

int CFindDlg::RunModal() {
  ShowState();
  controls_.At(text_->isHidden() ? kIdTextField : kIdText)->setFocus();
  const int result = ModalScreen::RunModal();
  if (!HasEndedItself()) find_.Keep();
  return result;
}

void CFindDlg::MakeText() {
  controls_.AddLabel(kIdTextLabel, kTextLabel);
  text_->setEditable(true);
  text_->setInsertPolicy(QComboBox::NoInsert);
  text_->setCompleter(nullptr);
  text_->lineEdit()->setMaxLength(kLongestFindText);
  for (const std::u16string& entry : app_.FindHistory.Entries()) text_->addItem(ToQt(entry));
  text_->setCurrentIndex(-1);
  text_->installEventFilter(this);
  text_->lineEdit()->installEventFilter(this);
  connect(text_, &QComboBox::editTextChanged, this,
          [this](const QString& text) { find_.fields.text = FromQt(text); });
  const bool byLists = app_.ItmSelMode == core::kPickByLists;
  text_->setHidden(byLists);
  for (QWidget* part : {static_cast<QWidget*>(text_), static_cast<QWidget*>(text_->lineEdit())}) {
    platform::qt::NameControl(*part, kTextLabel);
  }
  AddField(kIdTextField, kTextLabel, [this] { OnTextField(); })->setHidden(!byLists);
}

void CFindDlg::MakeTargets() {
  auto* group = controls_.Add(kIdTargets, new QGroupBox(QStringLiteral("検索対象"), this));
  group->setFont(FixedFont(12));
  AddCheck(kIdInPlace, app_.PlaceName, &CFind::Fields::inPlace);
  AddCheck(kIdInCategory1, app_.Cate1Name, &CFind::Fields::inCategory1);
  AddCheck(kIdInCategory2, app_.Cate2Name, &CFind::Fields::inCategory2);
  AddCheck(kIdInMemo, app_.MemoName, &CFind::Fields::inMemo);
}

void CFindDlg::MakeSpans() {
  controls_.AddLabel(kIdStartLabel, app_.StaDtTmName);
  controls_.AddLabel(kIdEndLabel, app_.EndDtTmName);
  for (const SpanField& field : kSpanFields) {
    const bool isStart =
        field.editor == FindEditor::kStartDate || field.editor == FindEditor::kStartTime;
    const std::u16string name = (isStart ? app_.StaDtTmName : app_.EndDtTmName) +
                                (IsDate(field.editor) ? u" 日付" : u" 時刻");
    AddField(field.id, name, [this, which = field.editor] {
      const bool byWheels = app_.ItmSelMode == core::kPickByLists && !IsDate(which);
      byWheels ? OnTimeField(which) : OpenEditor(which);
    });
  }
  const auto addToday = [this](int id, const std::u16string& name, void (CFind::*command)()) {
    const auto take = [this, command] {
      (find_.*command)();
      ShowState();
    };
    controls_.AddSign(id, QStringLiteral("・"), ToQt(name) + QStringLiteral("を今日にする"), take)
        ->setFont(platform::qt::DotFont());
  };
  addToday(kIdStartToday, app_.StaDtTmName, &CFind::OnBtnStartToday);
  addToday(kIdEndToday, app_.EndDtTmName, &CFind::OnBtnEndToday);
}

void CFindDlg::MakeButtons() {
  controls_.AddButton(kIdFind, kFindText, [this] { OnFind(); });
  find_.OnLongFind([this](int hundredths) { return ShowLongFind(hundredths); });
  controls_.AddButton(kIdFindClose, QStringLiteral("閉じる"), [this] { Leave(); });
  AddCheck(kIdDispList, u"検索終了後、一覧形式にて表示する", &CFind::Fields::dispListAfterFind);
  controls_.AddButton(kIdReset, QStringLiteral("クリア"), [this] { OnReset(); });
}

void CFindDlg::MakeMenu() {
  controls_.AddKey(keys_->LeftKey(), kIdKeyFind, QStringLiteral("検索"), [this] { OnFind(); });
  QMenu& menu = keys_->Menu();
  controls_.AddMenuItem(menu, kIdMenuFind, QStringLiteral("検索"), [this] { OnFind(); });
  controls_.AddMenuItem(menu, kIdMenuReset, QStringLiteral("クリア"), [this] { OnReset(); });
  controls_.AddMenuItem(menu, kIdMenuClose, QStringLiteral("閉じる"), [this] { Leave(); });
}

void CFindDlg::AddCheck(int id, const std::u16string& text, bool CFind::Fields::*field) {
  checks_[controls_.AddCheck(id, text, [this, field](bool checked) {
    find_.fields.*field = checked;
    ApplyEditor();
  })] = field;
}

int CFindDlg::LabelWidth() const {
  const int width = std::max(controls_.At(kIdStartLabel)->sizeHint().width(),
                             controls_.At(kIdEndLabel)->sizeHint().width());
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

bool CFindDlg::ShowLongFind(int hundredths) {
  auto* button = static_cast<QAbstractButton*>(controls_.At(kIdFind));
  const bool isDone = hundredths == kFindIsThrough;
  button->setText(isDone ? kFindText : QStringLiteral("中止 %1%").arg(hundredths));
  if (isDone) return true;
  const Interruption interruption(*button);
  QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
  return !interruption.isAsked;
}

void CFindDlg::OnReset() {
  find_.ResetFindDialog();
  ShowState();
}

void CFindDlg::OnTextField() {
  if (find_.ApplyEditor()) {
    const auto picked =
        pickers::PickValue(this, {u"検索文字列", find_.fields.text, app_.FindHistory.Entries()});
    if (picked) find_.fields.text = *picked;
  }
  ShowState();
}

void CFindDlg::OnTimeField(FindEditor which) {
  if (find_.ApplyEditor()) {
    const bool isStart = which == FindEditor::kStartTime;
    int hour = 0, minute = 0;
    find_.PickerTime(which, hour, minute);
    const auto picked = pickers::PickTime(this, {.title = isStart ? u"開始時刻" : u"終了時刻",
                                                 .extraText = u"終日",
                                                 .showExtra = isStart ? 1 : 0,
                                                 .startHour = static_cast<uint16_t>(hour),
                                                 .startMinute = static_cast<uint16_t>(minute)});
    if (picked) find_.TakeTime(which, picked->hour, picked->minute);
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

void CFindDlg::ChooseEditor() {
  find_.ChooseEditor();
  ShowState();
}

void CFindDlg::ApplyEditor() {
  find_.ApplyEditor();
  ShowState();
}

void CFindDlg::DropEditor() {
  find_.DropEditor();
  ShowState();
}

// The find text and its list take the focus away from an open editor.
bool CFindDlg::eventFilter(QObject* watched, QEvent* event) {
  const bool isText = watched == text_ || watched == text_->lineEdit();
  if (isText && event->type() == QEvent::MouseButtonPress) ApplyEditor();
  return ModalScreen::eventFilter(watched, event);
}

void CFindDlg::LayOut() {
  QWidget* before = nullptr;
  for (const platform::PlacedControl& placed :
       LayOutFind(width(), height() - keys_->height(), LabelWidth())) {
    controls_.Place(placed.id, ToQt(placed.rect), before);
  }
  keys_->FocusAfter(before);
}

void CFindDlg::ShowState() {
  const CFind::Fields& shown = find_.fields;
  Field(kIdStartDate)->ShowValue(ToQt(shown.staDate));
  Field(kIdStartTime)->ShowValue(ToQt(shown.staTime));
  Field(kIdEndDate)->ShowValue(ToQt(shown.endDate));
  Field(kIdEndTime)->ShowValue(ToQt(shown.endTime));
  Field(kIdEndTime)->setEnabled(find_.IsEndTimeEnabled());
  Field(kIdTextField)->ShowValue(ToQt(shown.text));
  if (FromQt(text_->currentText()) != shown.text) text_->setEditText(ToQt(shown.text));
  for (const auto& [check, field] : checks_) check->setChecked(shown.*field);
  ShowEditor();
}

void CFindDlg::ShowEditor() {
  const int which = static_cast<int>(find_.editor);
  if (which == editor_->Which()) return;
  if (find_.editor == FindEditor::kNone) return editor_->Close();
  pickers::FieldButton* field = Field(FieldOf(find_.editor));
  if (IsDate(find_.editor)) {
    editor_->OpenCalendar({which, kIdCalendar, field}, find_.editorText);
  } else {
    editor_->OpenList({which, kIdTimeEditor, field}, {find_.EditorRows(), find_.EditorRow(),
                                                      find_.editorText, kLongestTime, true});
  }
}

}  // namespace exchange
