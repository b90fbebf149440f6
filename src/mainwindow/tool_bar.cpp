// The toolbar's buttons in a row.
#include "mainwindow/tool_bar.h"

#include "mainwindow/command_icons.h"
#include "platform/qt/qt_text.h"
#include "views/command_table.h"

namespace mainwindow {

using enum views::Command;

namespace {

using platform::Scaled;

constexpr int kToolBarId = 150;
constexpr int kButtonSize = 24;  // for a finger round a picture of 16
constexpr int kIconSize = 16;
constexpr int kSeparatorWidth = 8;

bool IsView(int id) {
  return id >= views::CommandOfView(core::kViewDay) && id <= views::CommandOfView(core::kViewMap);
}

}  // namespace

ToolBar::ToolBar(QWidget* parent) : QWidget(parent) {
  setObjectName(QString::number(kToolBarId));
  int x = 0;
  for (const int id : views::kToolBarCommands) {
    if (id != 0) AddButton(id, x);
    x += Scaled(id == 0 ? kSeparatorWidth : kButtonSize);
  }
}

void ToolBar::AddButton(int id, int x) {
  auto* button = new QToolButton(this);
  button->setObjectName(QString::number(id));
  button->setToolTip(platform::qt::ToQt(views::FindCommand(id)->text));
  button->setAccessibleName(button->toolTip());
  button->setIcon(CommandIcon(id));
  button->setIconSize(QSize(Scaled(kIconSize), Scaled(kIconSize)));
  button->setAutoRaise(true);
  button->setCheckable(IsView(id));
  button->setGeometry(x, 0, Scaled(kButtonSize), Scaled(kButtonSize));
  connect(button, &QToolButton::clicked, this, [this, id] { emit Pressed(id); });
  buttons_.push_back(button);
}

void ToolBar::ShowState(core::View view) {
  for (QToolButton* button : buttons_) {
    const int id = button->objectName().toInt();
    button->setEnabled(views::IsLive(id, view));
    button->setChecked(id == views::CommandOfView(view));
  }
}

}  // namespace mainwindow
