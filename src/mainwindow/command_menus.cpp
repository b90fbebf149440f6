// Menus and keys of the command table.
#include "mainwindow/command_menus.h"

#include <utility>

#include "platform/qt/qt_text.h"
#include "views/navigation.h"

namespace mainwindow {
namespace {

constexpr struct {
  views::Menu menu;
  std::u16string_view text;  // empty for a menu of tap and hold
} kMenus[] = {{views::kFileMenu, u"ファイル"}, {views::kEditMenu, u"編集"},
              {views::kViewMenu, u"表示"},     {views::kToolsMenu, u"ツール"},
              {views::kWeekBoxMenu, {}},       {views::kWeekDayMenu, {}},
              {views::kMonthDayMenu, {}},      {views::kMapMenu, {}}};

}  // namespace

CommandMenus::CommandMenus(QMenu& top, QWidget& keyBearer) : QObject(&top) {
  menus_[views::kTopMenu] = &top;
  for (const auto& [menu, text] : kMenus) {
    menus_[menu] = text.empty() ? MakeHoldMenu(keyBearer) : top.addMenu(platform::qt::ToQt(text));
    menus_[menu]->setFont(top.font());
  }
  for (const CommandRow& row : Commands()) AddCommand(row, keyBearer);
  for (const auto& [bit, menu] : menus_) {
    connect(menu, &QMenu::aboutToShow, this, [this, menu = menu] { ShowTexts(*menu); });
  }
}

QMenu* CommandMenus::MakeHoldMenu(QWidget& keyBearer) {
  auto* menu = new QMenu(&keyBearer);
  // The menu hides before it reports what was chosen. A command may run a screen, whose end must
  // not find the views filled from before it.
  connect(menu, &QMenu::aboutToHide, this, [this] {
    holdEnds_ = true;
    QMetaObject::invokeMethod(this, &CommandMenus::EndHold, Qt::QueuedConnection);
  });
  return menu;
}

void CommandMenus::AddCommand(const CommandRow& row, QWidget& keyBearer) {
  if (row.menus == 0 && row.key.empty()) return;
  auto* action = new QAction(platform::qt::ToQt(row.text), this);
  action->setObjectName(QString::number(row.id));
  action->setCheckable(row.isChecked != nullptr);
  connect(action, &QAction::triggered, this, [this, id = row.id] {
    const bool afterHold = std::exchange(holdEnds_, false);
    emit Chosen(id);
    if (afterHold) emit HoldMenuClosed();
  });
  for (const auto& [bit, menu] : menus_) {
    if ((row.menus & bit) != 0) menu->addAction(action);
  }
  if (!row.key.empty()) {
    action->setShortcut(QKeySequence(QString::fromLatin1(row.key.data())));
    action->setShortcutVisibleInContextMenu(false);
    keyBearer.addAction(action);
  }
  actions_[&row] = action;
}

// The key of a greyed item would do nothing, and the diary may change while no menu is open.
void CommandMenus::ShowTexts(QMenu& menu) {
  for (const auto& [row, action] : actions_) {
    if (row->textNow == nullptr || !menu.actions().contains(action)) continue;
    const std::optional<std::u16string> text = row->textNow();
    action->setText(platform::qt::ToQt(text.value_or(std::u16string(row->text))));
    action->setEnabled(text.has_value());
    connect(
        &menu, &QMenu::aboutToHide, action, [action = action] { action->setEnabled(true); },
        Qt::SingleShotConnection);
  }
}

void CommandMenus::EndHold() {
  if (std::exchange(holdEnds_, false)) emit HoldMenuClosed();
}

void CommandMenus::ShowState(const core::CAppState& app) {
  const core::View view = views::ViewOnShow(app.CurView);
  for (const auto& [row, action] : actions_) {
    action->setEnabled(IsLive(*row, view));
    if (row->isChecked != nullptr) action->setChecked(row->isChecked(app));
  }
}

void CommandMenus::ShowMarker(bool pressed) {
  for (const auto& [row, action] : actions_) {
    if (row->live == kOnMarker) action->setEnabled(pressed);
  }
}

}  // namespace mainwindow
