// The toolbar (control 150): the commands that are wanted most, as pictures.
#pragma once

#include <QToolButton>
#include <QWidget>
#include <utility>
#include <vector>

#include "core/app_state.h"
#include "mainwindow/command_table.h"

namespace mainwindow {

class ToolBar : public QWidget {
  Q_OBJECT

 public:
  explicit ToolBar(QWidget* parent);

  // Greys what is not live in the view on show, and marks the view itself.
  void ShowState(const core::CAppState& app);

 signals:
  void Pressed(int id);

 private:
  void AddButton(const CommandRow& row, const QIcon& icon, int x);

  std::vector<std::pair<const CommandRow*, QToolButton*>> buttons_;
};

}  // namespace mainwindow
