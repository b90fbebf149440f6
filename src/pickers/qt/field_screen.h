// A screen with fields that open their editors in place. An open editor goes before the screen:
// Escape drops it, Tab and a tap beside it take what it holds.
#pragma once

#include <string>

#include "pickers/qt/field_button.h"
#include "pickers/qt/inline_editor.h"
#include "platform/qt/controls.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/modal_screen.h"

namespace pickers {

class FieldScreen : public platform::qt::ModalScreen {
 protected:
  explicit FieldScreen(QWidget* over);

  FieldButton* AddField(int id, std::u16string_view name, std::function<void()> onTap);
  FieldButton* Field(int id) const { return controls_.At<FieldButton>(id); }
  QPushButton* Button(int id) const { return controls_.At<QPushButton>(id); }

  // The screen has another size. The soft keys are in their place before, unless a layout holds
  // them; the open editor is placed after.
  virtual void LayOut() = 0;

  // What the open editor's user does: types, or walks along rows or days; is done, by Enter or a
  // tap on a row or a day; goes on elsewhere, also where none is open; gives it up.
  virtual void TakeText(const std::u16string& text) = 0;
  virtual void ChooseEditor() = 0;
  virtual void ApplyEditor() = 0;
  virtual void DropEditor() = 0;
  // Escape where no editor is open.
  virtual void OnClose() = 0;

  void OnEscape() final;
  void mousePressEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) final;
  bool focusNextPrevChild(bool forward) final;

  platform::qt::Controls controls_;
  platform::qt::SoftKeyBar* keys_;
  InlineEditor* editor_;
};

}  // namespace pickers
