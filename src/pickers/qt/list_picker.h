// The shared list picker: a line to type in, right over its field, and the rows to choose from,
// open below or above it.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QRect>
#include <QWidget>
#include <string>
#include <vector>

namespace pickers {

class ListPicker : public QWidget {
  Q_OBJECT

 public:
  explicit ListPicker(QWidget* parent);

  // Of the line and the rows, for a screen reader.
  void SetName(const QString& name);
  // `row` is marked and scrolled to; -1 for none. The line takes `longest` 16-bit units.
  void Open(const std::vector<std::u16string>& rows, int row, const QString& text, int longest,
            Qt::InputMethodHints hints = Qt::ImhNone);
  // Puts the line over the field and the rows below it, or above where `area` has more room, both
  // in the parent's coordinates.
  void PlaceOver(const QRect& wholeField, const QRect& area);

 signals:
  // The text was changed, by typing or by moving along the rows with the arrow keys.
  void TextChanged(const QString& text);
  // Enter, or a tap on a row.
  void Chosen();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool MoveAlongRows(int key);
  void TakeRow(int row);
  void ShowText(const QString& text);

  QLineEdit* line_;
  QListWidget* rows_;
};

}  // namespace pickers
