// The labels and fields of the edit screen, which scroll where the window is too small for them.
#pragma once

#include <QFrame>
#include <QLabel>
#include <QScrollArea>
#include <map>
#include <vector>

#include "core/app_state.h"
#include "edit/edit_action.h"
#include "pickers/qt/field_button.h"

namespace edit {

class EditForm : public QScrollArea {
  Q_OBJECT

 public:
  // The labels come from the settings in `app`.
  EditForm(QWidget* parent, const core::CAppState& app);

  void ShowState(const CEditAction& state);
  QWidget* Control(int id) const { return controls_.at(id); }
  // The place of a control in the coordinates of the screen around the form.
  QRect PlaceOf(int id) const;
  // Lays the controls out anew and puts those that take the focus behind `before`, in reading
  // order.
  void LayOut(QWidget* before);

 signals:
  void Tapped(int id);

 private:
  void AddField(int id, const std::u16string& name, int smallest = 10);
  void AddLabel(int id, const std::u16string& name);
  void AddButton(int id, const QString& text, const QString& name);
  int LabelWidth() const;

  std::map<int, QWidget*> controls_;  // by id
  std::map<int, pickers::FieldButton*> fields_;
  std::vector<QLabel*> labels_;
  std::vector<QFrame*> separators_;
};

}  // namespace edit
