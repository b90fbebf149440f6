// The toolbar (control 150): the commands that are wanted most, as pictures.
#pragma once

#include <QToolButton>
#include <QWidget>
#include <vector>

#include "core/app_state.h"

namespace mainwindow {

class ToolBar : public QWidget {
  Q_OBJECT

 public:
  explicit ToolBar(QWidget* parent);

  // Greys what is not live in the view on show, and marks the view itself.
  void ShowState(core::View view);

 signals:
  void Pressed(int id);

 private:
  void AddButton(int id, int x);

  std::vector<QToolButton*> buttons_;
};

}  // namespace mainwindow
