// The toolbar's buttons in a row.
#include "mainwindow/tool_bar.h"

#include "mainwindow/command_table.h"
#include "mainwindow/tool_items.h"
#include "platform/qt/qt_text.h"
#include "views/navigation.h"

namespace mainwindow {
namespace {

using platform::Scaled;

constexpr int kToolBarId = 150;
constexpr int kButtonSize = 24;  // for a finger round a picture of 16
constexpr int kIconSize = 16;
constexpr int kSeparatorWidth = 8;

}  // namespace

ToolBar::ToolBar(QWidget* parent) : QWidget(parent) {
  setObjectName(QString::number(kToolBarId));
  int x = 0;
  for (const ToolItem& item : ToolItems()) {
    if (item.id != 0) AddButton(*FindCommand(item.id), item.icon, x);
    x += Scaled(item.id == 0 ? kSeparatorWidth : kButtonSize);
  }
}

void ToolBar::AddButton(const CommandRow& row, const QIcon& icon, int x) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::number(row.id));
  button->setToolTip(platform::qt::ToQt(row.text));
  button->setAccessibleName(button->toolTip());
  button->setIcon(icon);
  button->setIconSize(QSize(Scaled(kIconSize), Scaled(kIconSize)));
  button->setAutoRaise(true);
  button->setCheckable(row.isChecked != nullptr);
  button->setGeometry(x, 0, Scaled(kButtonSize), Scaled(kButtonSize));
  connect(button, &QToolButton::clicked, this, [this, id = row.id] { emit Pressed(id); });
  buttons_.emplace_back(&row, button);
}

void ToolBar::ShowState(const core::CAppState& app) {
  for (const auto& [row, button] : buttons_) {
    button->setEnabled(IsLive(*row, views::ViewOnShow(app.CurView)));
    if (row->isChecked != nullptr) button->setChecked(row->isChecked(app));
  }
}

}  // namespace mainwindow
