// What the finger's pickers share: a label on the left, buttons that follow the right edge, a line
// below them, and the soft keys. Enter is OK and Escape is cancel.
#pragma once

#include <QLabel>
#include <QPushButton>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/qt/device_shell.h"
#include "platform/qt/modal_screen.h"

namespace pickers {

class PickerDlg : public platform::qt::ModalScreen {
 public:
  PickerDlg(QWidget* over, const std::optional<std::u16string>& title);

 protected:
  // Takes the result over; the screen then ends with kResultOk.
  virtual void TakeResult() = 0;
  // Places what lies between the header and the soft keys.
  virtual void PlaceContent(const QRect& area) = 0;

  // A button, `units` wide, in front of those that stand there already.
  QPushButton* AddButton(const char* name, const QString& text, int units,
                         std::function<void()> onClick);
  void Accept();

  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void OnEnter() override { Accept(); }

 private:
  QLabel* label_;
  std::vector<QPushButton*> buttons_;  // from right to left
  platform::qt::SoftKeyBar* keys_;
};

}  // namespace pickers
