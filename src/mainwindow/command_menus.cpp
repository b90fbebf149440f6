// Menus and keys of the command table.
#include "mainwindow/command_menus.h"

#include <utility>

#include "core/settings_choices.h"
#include "platform/qt/qt_text.h"
#include "views/view_rows.h"

namespace mainwindow {

using enum views::Command;

namespace {

bool IsChecked(int id, const core::CAppState& app) {
  switch (id) {
    case kSpanningMode:
      return views::SpansDays(app);
    case kToolBarMode:
      return app.ToolBarVwMode == core::kToolBarShown;
    default:
      return id == views::CommandOfView(views::ViewOnShow(app.CurView));
  }
}

bool IsCheckable(int id) {
  return (id >= kShowDay && id <= kShowMap) || id == kSpanningMode || id == kToolBarMode;
}

}  // namespace

CommandMenus::CommandMenus(QMenu& top, QWidget& keyBearer) : QObject(&top) {
  menus_[views::Menu::kTop] = &top;
  AddMenu(top, views::Menu::kFile, QStringLiteral("ファイル"));
  AddMenu(top, views::Menu::kEdit, QStringLiteral("編集"));
  AddMenu(top, views::Menu::kView, QStringLiteral("表示"));
  AddMenu(top, views::Menu::kTools, QStringLiteral("ツール"));
  for (const views::CommandRow& row : views::Commands()) AddCommand(row, keyBearer);
  for (const views::HoldMenu& row : views::kHoldMenus) AddHoldMenu(row, keyBearer);
}

void CommandMenus::AddMenu(QMenu& top, views::Menu menu, const QString& text) {
  menus_[menu] = top.addMenu(text);
  menus_[menu]->setFont(top.font());
}

void CommandMenus::AddHoldMenu(const views::HoldMenu& row, QWidget& keyBearer) {
  auto* menu = new QMenu(&keyBearer);
  menu->setFont(menus_.at(views::Menu::kTop)->font());
  for (const int id : row.commands) {
    if (id != 0) menu->addAction(actions_.at(id));
  }
  // The menu hides before it tells what was chosen. A command may run a screen, whose end must not
  // find the views filled from before it.
  connect(menu, &QMenu::aboutToHide, this, [this] {
    holdEnds_ = true;
    QMetaObject::invokeMethod(this, &CommandMenus::EndHold, Qt::QueuedConnection);
  });
  menus_[row.menu] = menu;
}

void CommandMenus::EndHold() {
  if (std::exchange(holdEnds_, false)) emit HoldMenuClosed();
}

void CommandMenus::AddCommand(const views::CommandRow& row, QWidget& keyBearer) {
  auto* action = new QAction(platform::qt::ToQt(row.text), this);
  action->setObjectName(QString::number(row.id));
  action->setData(row.id);
  action->setCheckable(IsCheckable(row.id));
  connect(action, &QAction::triggered, this, [this, id = row.id] {
    const bool afterHold = std::exchange(holdEnds_, false);
    emit Chosen(id);
    if (afterHold) emit HoldMenuClosed();
  });
  if (row.menu != views::Menu::kNone) menus_.at(row.menu)->addAction(action);
  if (!row.key.empty()) {
    action->setShortcut(QKeySequence(QString::fromLatin1(row.key.data())));
    action->setShortcutVisibleInContextMenu(false);
    keyBearer.addAction(action);
  }
  actions_[row.id] = action;
}

void CommandMenus::ShowState(const core::CAppState& app) {
  const core::View view = views::ViewOnShow(app.CurView);
  for (const auto& [id, action] : actions_) {
    action->setEnabled(views::IsLive(id, view));
    if (action->isCheckable()) action->setChecked(IsChecked(id, app));
  }
}

void CommandMenus::ShowMarker(bool pressed) {
  for (const int id : views::kMarkerCommands) actions_.at(id)->setEnabled(pressed);
}

}  // namespace mainwindow
