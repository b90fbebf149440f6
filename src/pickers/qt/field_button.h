// A field that shows a value and opens its picker when it is tapped. A field of one line sets its
// text smaller before it cuts it; a higher one wraps it and cuts what does not fit.
#pragma once

#include <QString>
#include <QTimer>
#include <functional>
#include <string>
#include <string_view>

#include "platform/qt/controls.h"
#include "platform/qt/painted_button.h"

namespace pickers {

class FieldButton : public platform::qt::PaintedButton {
 public:
  // A line is set in `smallest` units at least.
  FieldButton(int smallest, QWidget* parent);

  // The text as it is: no character of it is a mnemonic.
  void ShowValue(const QString& value);
  // The text of a position field: centred while it says that a position is awaited. Until the
  // receiver's next reading such a field is painted in other colours.
  void ShowPosition(const std::u16string& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
  QSize sizeHint() const override { return minimumSize(); }

 private:
  int LineHeight() const;
  void PaintOneLine(QPainter& painter, const QRect& area);
  void PaintLines(QPainter& painter, const QRect& area);

  int smallest_;
  QString value_;
  bool isPosition_ = false;
  QTimer nextLook_;                          // whether the position is still awaited
  Qt::Alignment alignment_ = Qt::AlignLeft;  // of one line
};

// A field among the controls of a screen, connected to what a tap on it does. `name` is that of its
// label.
FieldButton* AddField(platform::qt::Controls& controls, int id, std::u16string_view name,
                      std::function<void()> onTap, int smallest = 9);

}  // namespace pickers
