// A field that shows a value and opens its picker when it is tapped, or by Enter or Space.
#pragma once

#include <QAbstractButton>
#include <QString>

namespace edit {

class FieldButton : public QAbstractButton {
 public:
  enum class Lines {
    kOne,  // set smaller, down to three quarters, before it is cut with "…"
    kMany  // wrapped, from the top; the last line that fits is cut with "…"
  };

  FieldButton(Lines lines, QWidget* parent);

  // The text as it is: no character of it is a mnemonic.
  void ShowValue(const QString& value);

 protected:
  void paintEvent(QPaintEvent* event) override;
  QSize sizeHint() const override { return minimumSize(); }

 private:
  void PaintOneLine(QPainter& painter, const QRect& area);
  void PaintLines(QPainter& painter, const QRect& area);

  Lines lines_;
  QString value_;
};

}  // namespace edit
