#include "platform/qt/message_box.h"

#include <QApplication>
#include <QFontMetrics>
#include <QLabel>
#include <QMessageBox>
#include <QStyle>
#include <QTimer>
#include <QWindow>
#include <vector>

#include "platform/qt/qt_text.h"
#include "platform/qt/text_lines.h"

namespace platform::qt {
namespace {

constexpr int kMostTextUnits = 420;  // a line that is still read with ease
constexpr int kGiveBackMilliseconds = 100;

QMessageBox::Icon IconOf(Icon icon) {
  switch (icon) {
    case Icon::kInformation:
      return QMessageBox::Information;
    case Icon::kWarning:
      return QMessageBox::Warning;
    case Icon::kQuestion:
      return QMessageBox::Question;
    case Icon::kStop:
      return QMessageBox::Critical;
    case Icon::kNone:
      break;
  }
  return QMessageBox::NoIcon;
}

struct Choice {
  QMessageBox::StandardButton button;
  Answer answer;
};

// The buttons in their order on the screen; the last one is what closing the box means.
std::vector<Choice> ChoicesOf(Buttons buttons) {
  const Choice ok{QMessageBox::Ok, Answer::kOk};
  const Choice cancel{QMessageBox::Cancel, Answer::kCancel};
  const Choice yes{QMessageBox::Yes, Answer::kYes};
  const Choice no{QMessageBox::No, Answer::kNo};
  switch (buttons) {
    case Buttons::kOkCancel:
      return {ok, cancel};
    case Buttons::kYesNo:
      return {yes, no};
    case Buttons::kYesNoCancel:
      return {yes, no, cancel};
    case Buttons::kOk:
      break;
  }
  return {ok};
}

// What is left of the window's width beside the icon and the box's margins.
int TextWidth(const QWidget* over, const QMessageBox& box) {
  const int window = over != nullptr ? over->window()->width() : 0;
  const QStyle& style = *box.style();
  const int icon = style.pixelMetric(QStyle::PM_MessageBoxIconSize);
  const int margins = 5 * style.pixelMetric(QStyle::PM_LayoutLeftMargin);
  return qMin(qMax(Scaled(240), window) - icon - margins, Scaled(kMostTextUnits));
}

void SetTextOfWidth(QMessageBox& box, const QString& text, int width) {
  const QString lines = BreakIntoLines(text, box.font(), width);
  box.setText(lines);
  // Left to itself the box breaks once more, at half of the screen.
  auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  label->setMinimumWidth(QFontMetrics(box.font()).size(0, lines).width());
}

// Some window managers of small screens give a tap's window the keys, even one that a box covers.
// The box asks for them back until it has them, but not at once: on the way to it they may pass
// that window again.
void KeepKeys(QMessageBox& box) {
  auto* timer = new QTimer(&box);
  timer->setSingleShot(true);
  timer->setInterval(kGiveBackMilliseconds);
  QObject::connect(qApp, &QGuiApplication::focusWindowChanged, timer, [timer] { timer->start(); });
  QObject::connect(timer, &QTimer::timeout, &box, [&box, timer] {
    const QWindow* focus = QGuiApplication::focusWindow();
    const bool isFirst = QApplication::activeModalWidget() == &box;
    if (!isFirst || focus == nullptr || focus == box.windowHandle()) return;
    box.activateWindow();
    timer->start();
  });
}

}  // namespace

Answer RunMessageBox(QWidget* over, const Message& message) {
  QMessageBox box(over);
  box.setFont(FixedFont(12));  // a desktop's plug-in may have set another for the program
  box.setWindowModality(over != nullptr ? Qt::WindowModal : Qt::ApplicationModal);
  box.setWindowTitle(ToQt(message.title));
  box.setIcon(IconOf(message.icon));
  box.setTextFormat(Qt::PlainText);  // "<終日>" is no markup
  SetTextOfWidth(box, ToQt(message.text), TextWidth(over, box));

  const std::vector<Choice> choices = ChoicesOf(message.buttons);
  for (const Choice& choice : choices) box.addButton(choice.button);
  box.setDefaultButton(choices[static_cast<size_t>(message.defaultButton)].button);
  box.setEscapeButton(choices.back().button);

  KeepKeys(box);
  const int pressed = box.exec();
  for (const Choice& choice : choices) {
    if (choice.button == pressed) return choice.answer;
  }
  return choices.back().answer;
}

}  // namespace platform::qt
