// The menus of the right soft key and of tap and hold, made from the command table, and the keys of
// the commands.
#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <map>

#include "core/app_state.h"
#include "mainwindow/command_table.h"

namespace mainwindow {

class CommandMenus : public QObject {
  Q_OBJECT

 public:
  // Fills `top`. The keys work while `keyBearer` is enabled.
  CommandMenus(QMenu& top, QWidget& keyBearer);

  QMenu& At(views::Menu menu) { return *menus_.at(menu); }
  // Greys what is not live in the view on show and sets the check marks.
  void ShowState(const core::CAppState& app);
  // Greys in the map's menu what needs a marker, if there is none under the press.
  void ShowMarker(bool pressed);

 signals:
  void Chosen(int id);
  // A menu of tap and hold has closed, and what was chosen in it is done.
  void HoldMenuClosed();

 private:
  QMenu* MakeHoldMenu(QWidget& keyBearer);
  void AddCommand(const CommandRow& row, QWidget& keyBearer);
  void ShowTexts(QMenu& menu);
  void EndHold();

  std::map<unsigned, QMenu*> menus_;
  std::map<const CommandRow*, QAction*> actions_;
  bool holdEnds_ = false;  // a menu of tap and hold has closed, which is still to be announced
};

}  // namespace mainwindow
