// The labels and fields of the edit screen, which scroll where the window is too small for them.
#pragma once

#include <QFrame>
#include <QScrollArea>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/app_state.h"
#include "edit/edit_action.h"
#include "pickers/qt/field_button.h"
#include "platform/qt/controls.h"

namespace edit {

class EditForm : public QScrollArea {
 public:
  // The labels come from the settings in `app`. `onTap` gets the id of the control.
  EditForm(QWidget* parent, const core::CAppState& app, std::function<void(int)> onTap);

  void ShowState(const CEditAction& state);
  pickers::FieldButton* Field(int id) const { return controls_.At<pickers::FieldButton>(id); }
  // Lays the controls out for the form's size; the Tab key comes to them after `before`, in reading
  // order.
  void LayOut(QWidget* before);

 private:
  void AddField(int id, std::u16string_view name, int smallest = 10);
  void AddLabel(int id, const std::u16string& name);
  void AddNow(int id, const std::u16string& name);
  int LabelWidth() const;

  platform::qt::Controls controls_;
  std::function<void(int)> onTap_;
  QString memoName_;
  std::vector<int> fields_;  // their ids
  std::vector<QLabel*> labels_;
  std::vector<QFrame*> separators_;
};

}  // namespace edit
