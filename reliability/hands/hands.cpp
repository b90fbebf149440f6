#include "hands.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPointingDevice>
#include <QTest>
#include <QTimer>
#include <csignal>
#include <functional>
#include <iterator>
#include <numeric>

#include "platform/qt/modal_screen.h"
#include "targets.h"

namespace hands {
namespace {

constexpr int kStepsToLeave = 600;
constexpr int kPatientSteps = 400;  // then a signal ends the program

}  // namespace

Hands::Hands(const Order& order, Machine& machine, Watch& watch)
    : order_(order), machine_(machine), watch_(watch), fingers_(QTest::createTouchDevice()) {
  clock_.start();
}

Hands::~Hands() = default;

void Hands::Begin() {
  ++step_;
  leaving_ = 0;
  pressed_ = {};
  later_.clear();
  if (!isArmed_) Arm(0);
}

// A timer of its own for each step: what a step does may run a loop in which the next one comes.
void Hands::Arm(int milliseconds) {
  isArmed_ = true;
  QTimer::singleShot(milliseconds, this, &Hands::Step);
}

void Hands::Step() {
  Arm(later_.empty() ? 1 : later_.front().second);
  ++step_;
  chance_.seed(order_.seed * 100003u + static_cast<unsigned>(step_));
  watch_.Beat(step_, Front());
  if (QWidget* window = Window()) CountCommands(*window);
  if (!later_.empty()) {
    const auto deed = std::move(later_.front().first);
    later_.pop_front();
    deed();
  } else if (leaving_ > 0 || IsDone()) {
    Leave();
  } else {
    Act();
  }
}

// Counts the commands of a window that is new.
void Hands::CountCommands(QWidget& window) {
  if (counted_ == &window) return;
  counted_ = &window;
  const auto count = [this](const QObject* sender) {
    watch_.Count("command " + sender->objectName().toStdString());
  };
  for (const auto* action : window.findChildren<QAction*>()) {
    connect(action, &QAction::triggered, this, [count, action] { count(action); });
  }
  for (const auto* button : window.findChildren<QAbstractButton*>()) {
    connect(button, &QAbstractButton::clicked, this, [count, button] { count(button); });
  }
}

void Hands::Act() {
  static constexpr Choice kChoices[] = {{40, "tap", &Hands::TapControl},
                                        {6, "tap anywhere", &Hands::TapAnywhere},
                                        {3, "tap twice", &Hands::TapTwice},
                                        {9, "hold", &Hands::Hold},
                                        {6, "drag", &Hands::Drag},
                                        {4, "wheel", &Hands::TurnWheel},
                                        {3, "fingers", &Hands::TouchByFingers},
                                        {5, "menu", &Hands::OpenMenu},
                                        {12, "key", &Hands::PressKey},
                                        {2, "shortcut", &Hands::PressShortcut},
                                        {6, "letters", &Hands::TypeKeys},
                                        {4, "text", &Hands::Compose},
                                        {2, "clipboard", &Hands::FillClipboard},
                                        {3, "paste", &Hands::Paste},
                                        {2, "size", &Hands::Resize},
                                        {1, "time", &Hands::JumpInTime},
                                        {1, "wait", &Hands::Wait}};
  if (Draw(600) == 0) return StartAgain();
  // The menu leads to most screens, and is opened for what stands in it.
  if (platform::qt::ModalScreen::IsInFront(nullptr) && Draw(8) == 0) return OpenMenu();
  if (qobject_cast<QMenu*>(Front()) != nullptr && Draw(3) != 0) return TapControl();
  int at = Draw(std::transform_reduce(std::begin(kChoices), std::end(kChoices), 0, std::plus(),
                                      [](const Choice& each) { return each.weight; }));
  const Choice* choice = kChoices;
  while (at >= choice->weight) at -= (choice++)->weight;
  watch_.Log(std::string(choice->name) + " in " + ScreenName());
  (this->*choice->deed)();
}

// As its user would: what stands in front is answered, then the window is closed, again and again.
void Hands::Leave() {
  if (++leaving_ > kStepsToLeave) Fault("the program does not let itself be left");
  if (leaving_ == kPatientSteps) {
    raise(SIGTERM);
  } else if (QApplication::activePopupWidget() != nullptr) {
    Stroke(Qt::Key_Escape);
  } else if (QApplication::activeModalWidget() != nullptr) {
    TapControl();
  } else if (QWidget* window = Window()) {
    window->close();
  }
}

void Hands::StartAgain() {
  leaving_ = 1;
  if (Draw(3) == 0) raise(SIGTERM);
}

}  // namespace hands
