#include "tidy/qt/tidy_screen.h"

#include <QShortcut>

#include "core/date_time.h"
#include "core/settings_choices.h"
#include "edit/qt/edit_action_screen.h"
#include "pickers/qt/time_select_screen.h"
#include "pickers/qt/value_input_screen.h"
#include "platform/metrics.h"
#include "platform/qt/menu_place.h"
#include "platform/qt/qt_text.h"
#include "undo/undo.h"

namespace tidy {
namespace {

using platform::Scaled;
using platform::qt::ToQt;
using store::Turn;

constexpr int kIdTitle = 33270;
constexpr int kIdBefore = 33271;
constexpr int kIdAfter = 33272;
constexpr int kIdList = 33273;
constexpr int kIdBar = 33274;
constexpr int kIdUndo = 33275;
constexpr int kIdRedo = 33276;
constexpr int kIdRow = 33277;
constexpr int kIdClose = 33278;

QString TitleOf(const core::Day& day) {
  static const char16_t* const kWeekdays[] = {u"日", u"月", u"火", u"水", u"木", u"金", u"土"};
  const int weekday = core::WeekdayOf(day);
  QString title = QStringLiteral("一日の整理 ") + ToQt(core::DayText(day));
  if (weekday > 0) title += QStringLiteral("(%1)").arg(ToQt(kWeekdays[weekday - 1]));
  return title;
}

}  // namespace

TidyDlg::TidyDlg(QWidget* over, core::CAppState& app)
    : ModalScreen(over),
      app_(app),
      day_(app),
      controls_(this),
      bar_(controls_.Add(kIdBar, new DayBar(this))),
      list_(controls_.Add(kIdList, new TidyList(this))),
      keys_(new platform::qt::SoftKeyBar(this)),
      rowMenu_(new QMenu(this)) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(Scaled(2));
  MakeTitle(*rows);
  bar_->show();
  bar_->setFixedHeight(Scaled(30));
  rows->addWidget(bar_);
  rows->addWidget(list_, 1);
  keys_->setFixedHeight(Scaled(platform::qt::kSoftKeyHeight));
  rows->addWidget(keys_);
  rowMenu_->setFont(platform::qt::FixedFont(12));
  platform::qt::KeepInWindow(*rowMenu_);
  connect(list_, &TidyList::Chosen, this, &TidyDlg::OpenRow);
  connect(list_, &TidyList::DaysWanted, this, &TidyDlg::MoveDate);
  MakeMenu();
}

void TidyDlg::MakeTitle(QVBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(Scaled(3), 0, 0, 0);
  row->setSpacing(Scaled(2));
  row->addWidget(controls_.AddLabel(kIdTitle, u""), 1);
  const auto add = [&](int id, const char* sign, const char* name, int days) {
    QPushButton* button = controls_.AddSign(id, QString::fromLatin1(sign), QString::fromUtf8(name),
                                            [this, days] { MoveDate(days); });
    button->setFixedSize(Scaled(30), Scaled(24));
    button->setFocusPolicy(Qt::TabFocus);
    row->addWidget(button);
  };
  add(kIdBefore, "<", "前の日", -1);
  add(kIdAfter, ">", "次の日", 1);
  rows.addLayout(row);
}

void TidyDlg::MakeMenu() {
  controls_.AddKey(keys_->LeftKey(), kIdUndo, QStringLiteral("元に戻す"),
                   [this] { Take(Turn::kUndo); });
  for (QPushButton* soft : keys_->findChildren<QPushButton*>()) {
    soft->setFocusPolicy(Qt::TabFocus);
  }
  QMenu& menu = keys_->Menu();
  controls_.AddMenuItem(menu, kIdRow, QStringLiteral("この行..."),
                        [this] { OpenRow(list_->currentRow()); });
  QAction* redo = controls_.AddMenuItem(menu, kIdRedo, QStringLiteral("やり直す"),
                                        [this] { Take(Turn::kRedo); });
  connect(&menu, &QMenu::aboutToShow, redo, [redo] {
    const auto text = undo::CommandText(Turn::kRedo);
    redo->setText(ToQt(text.value_or(u"やり直す")));
    redo->setEnabled(text.has_value());
  });
  controls_.AddMenuItem(menu, kIdClose, QStringLiteral("閉じる"),
                        [this] { EndScreen(platform::qt::kResultOk); });
  const auto key = [this](const char* keys, Turn turn) {
    auto* shortcut = new QShortcut(QKeySequence(QString::fromLatin1(keys)), this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, turn] { Take(turn); });
  };
  key("Ctrl+Z", Turn::kUndo);
  key("Ctrl+Shift+Z", Turn::kRedo);
}

int TidyDlg::RunModal() {
  day_.Read();
  ShowDay();
  return ModalScreen::RunModal();
}

void TidyDlg::ShowDay() {
  controls_.At<QLabel>(kIdTitle)->setText(TitleOf(day_.Chain().day));
  bar_->ShowDay(day_);
  list_->ShowDay(day_);
  list_->setFocus();
}

void TidyDlg::MoveDate(int days) {
  const auto day = core::DaysLater(core::CurrentDay(), days);
  if (!day) return;
  core::SetCurrentDay(*day);
  day_.Read();
  list_->setCurrentRow(0);
  ShowDay();
}

// The menu may be the last to hold what is chosen in it: it's emptied before the next one.
void TidyDlg::OpenRow(int row) {
  const auto& links = day_.Chain().links;
  if (row < 0 || row >= static_cast<int>(links.size())) return;
  rowMenu_->clear();
  const Link link = links[static_cast<size_t>(row)];
  const std::vector<Command> commands = day_.CommandsOf(link);
  if (commands.empty()) {
    day_.TellWhyNone(link);
    return;
  }
  for (const Command command : commands) {
    QAction* item = rowMenu_->addAction(ToQt(TextOf(command)));
    connect(
        item, &QAction::triggered, this, [this, command, link] { Run(command, link); },
        Qt::QueuedConnection);
  }
  const QRect place = list_->GlobalRow(row);
  platform::qt::OpenMenuAt(*rowMenu_, place.center(), place);
}

void TidyDlg::Run(Command command, const Link& link) {
  if (command == Command::kNew || command == Command::kChange) return OpenEdit(command, link);
  int64_t at = 0;
  if (TakesTime(command)) {
    const std::optional<int64_t> asked = AskTime(command, link);
    if (!asked) return;
    at = *asked;
  }
  day_.Run(command, link, at);
  ShowDay();
}

std::optional<int64_t> TidyDlg::AskTime(Command command, const Link& link) {
  const std::u16string title(TimeNameOf(command));
  const int64_t now = TidyDay::TimeFor(command, link);
  if (app_.ItmSelMode != core::kPickByLists) {
    pickers::ValueInputParams params{title, TidyDay::TimeText(now)};
    const int result = pickers::ValueInputDlg(this, params).RunModal();
    return result == platform::qt::kResultOk ? TidyDay::ReadTime(params.value) : std::nullopt;
  }
  const auto minutes = static_cast<int>(now / 60);
  const bool isEnd = now == kDaySeconds;
  const auto picked = pickers::PickTime(
      this, {.title = title,
             .extraText = u"24:00",
             .showExtra = 1,
             .startHour = isEnd ? pickers::kExtraHour : static_cast<uint16_t>(minutes / 60),
             .startMinute = static_cast<uint16_t>(minutes % 60)});
  if (!picked) return {};
  return picked->hour == pickers::kExtraHour ? kDaySeconds
                                             : picked->hour * 3600 + picked->minute * 60;
}

void TidyDlg::OpenEdit(Command command, const Link& link) {
  const bool isNew = command == Command::kNew;
  if (!isNew) day_.Select(link);
  edit::CEditActionDlg screen(this, app_, isNew ? edit::kOpenNew : edit::kOpenChange);
  if (isNew) {
    screen.SetTimesOfNew(edit::FromStored(day_.MomentOf(link.from), day_.MomentOf(link.to)));
  }
  screen.RunModal();
  core::SetCurrentDay(day_.Chain().day);
  day_.Read();
  ShowDay();
}

void TidyDlg::Take(Turn turn) {
  undo::Take(app_, turn);
  day_.Read();
  ShowDay();
}

}  // namespace tidy
