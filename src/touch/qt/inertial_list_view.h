// The window of an inertial list: pointer, keys and the tick of a coast go in, rows are painted.
#pragma once

#include <QHash>
#include <QStaticText>
#include <QTimer>
#include <QWidget>

#include "touch/inertial_list.h"
#include "touch/qt/surface.h"

namespace touch {

class INERT_LIST_VIEW : public QWidget, public Surface {
  Q_OBJECT

 public:
  // The low bits of `windowStyle` say how the texts are drawn (RowTextFormat), `listStyle` is made
  // of ILS_ bits.
  INERT_LIST_VIEW(int windowStyle, int listStyle, QWidget* parent);

  InertList& List() { return list_; }
  // Of the rows, whose height becomes that of its text.
  void SetFont(const QFont& font);
  // The list is a wheel: its value is the text of this row, counted from the top one in sight.
  void SetValueRow(int row) { valueRow_ = row; }
  std::vector<Spot> Spots() const override;
  // The list's interface for those who know it by its messages; a font is a const QFont*.
  intptr_t SendMessage(uint32_t message, intptr_t wparam, intptr_t lparam) {
    return list_.Send(message, wparam, lparam);
  }

 signals:
  // ILN_COASTSTART or ILN_COASTEND.
  void Notified(int code);
  // Pressed and released on a row, without a drag.
  void Tapped(int row);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class Canvas;

  // A text as it was laid out and cut for the rows' width.
  struct KeptText {
    QString text;
    QSize room;
    QStaticText layout;
  };

  int TakeFont(intptr_t font);
  const QStaticText& LayoutOf(int row, const QString& text, QSize room);
  int WheelRow() const;
  int TopOf(int row) const;
  void Step(ListKey key);
  void PressRow(int row);
  void Tick();

  RowTextFormat format_;
  QHash<int, KeptText> kept_;  // by row
  InertList list_;
  QTimer coast_;
  bool pressSeen_ = false;
  int valueRow_ = -1;  // of a wheel
  int wheel_ = 0;      // turned, not yet a notch
};

}  // namespace touch
