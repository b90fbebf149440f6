// The row at the top of the main window: the date label, the seven weekdays, the five steps. It
// shows what the window sets, and reports the number of a pressed control.
#pragma once

#include <QLabel>
#include <QWidget>
#include <array>
#include <functional>

#include "core/app_state.h"
#include "platform/qt/painted_button.h"
#include "views/header_layout.h"

namespace views {

// A flat button in colours of its own.
class HeaderButton : public platform::qt::PaintedButton {
 public:
  struct Colors {
    QRgb text = 0xFF000000;
    QRgb background = 0xFFFFFFFF;
    QRgb pressedText = 0xFFFFFFFF;
    QRgb pressedBackground = 0xFF000000;
  };

  HeaderButton(int id, const QString& text, const Colors& colors, QWidget* parent);
  void SetBackground(QRgb background);
  // What tap and hold does, and the menu key.
  void SetHold(std::function<void()> onHold);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  Colors colors_;
  std::function<void()> onHold_;
};

class HeaderRow : public QWidget {
  Q_OBJECT

 public:
  explicit HeaderRow(QWidget* parent);

  void SetView(core::View view);
  void SetTitle(std::u16string_view title);
  // While a find lasts the views do not show all Actions.
  void MarkFind(bool lasts);
  // Marks the current date's weekday, 1 Sunday .. 7 Saturday; any other number marks none.
  void MarkWeekday(int weekday);
  HeaderButton& DateLabel() { return *dateLabel_; }

 signals:
  void Pressed(int id);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void MakeButton(size_t place);
  void Place();

  core::View view_ = core::kViewDay;
  int markedWeekday_ = 0;
  HeaderButton* dateLabel_;
  std::array<HeaderButton*, kHeaderButtons> buttons_;
  QLabel* weekdayLabel_;
};

}  // namespace views
