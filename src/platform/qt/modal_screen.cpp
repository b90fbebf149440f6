#include "platform/qt/modal_screen.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QRadioButton>
#include <QShortcut>
#include <QTimer>
#include <utility>
#include <vector>

namespace platform::qt {
namespace {

constexpr int kLookAgainMilliseconds = 100;

std::vector<ModalScreen*> runningScreens;

}  // namespace

ModalScreen::ModalScreen(QWidget* over)
    : QWidget(over->window()),
      address_([this](int command) { TakePosted(command); }),
      focusAtMaking_(over->window()->focusWidget()) {
  setAutoFillBackground(true);
  setFocusPolicy(Qt::ClickFocus);  // no stop of the Tab key
  auto* quit = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Q")), this);
  quit->setContext(Qt::WidgetWithChildrenShortcut);
  connect(quit, &QShortcut::activated, this, [this] { window()->close(); });
  hide();
}

ModalScreen* ModalScreen::Topmost() {
  return runningScreens.empty() ? nullptr : runningScreens.back();
}

int ModalScreen::RunModal() {
  // A screen is called by its title, which is the first of its labels.
  if (const auto* title = findChild<QLabel*>()) setAccessibleName(title->text());
  QWidget* window = parentWidget();
  const bool hasFocus = isAncestorOf(window->focusWidget());
  const QPointer<QWidget> formerFocus(hasFocus ? focusAtMaking_.data() : window->focusWidget());
  std::vector<QPointer<QWidget>> covered;
  for (QWidget* sibling : window->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (sibling == this || sibling->isWindow() || !sibling->isEnabled()) continue;
    sibling->setEnabled(false);
    covered.emplace_back(sibling);
  }
  setEnabled(true);  // another screen may have covered this one before it was run
  setGeometry(window->rect());
  window->installEventFilter(this);
  runningScreens.push_back(this);
  show();
  raise();
  TakeFocus();
  loop_.exec();
  runningScreens.pop_back();
  window->removeEventFilter(this);
  hide();
  for (const QPointer<QWidget>& sibling : covered) {
    if (sibling) sibling->setEnabled(true);
  }
  if (formerFocus) formerFocus->setFocus();
  // What lies below takes this screen's result first, and then decides for itself.
  if (std::exchange(closesWindow_, false)) QTimer::singleShot(0, window, &QWidget::close);
  return result_;
}

// A field that got the focus while it was hidden gets it once more: the input method only knows the
// place that it had then.
void ModalScreen::TakeFocus() {
  QWidget* field = parentWidget()->focusWidget();
  if (field == nullptr || !isAncestorOf(field)) return setFocus();
  auto* line = qobject_cast<QLineEdit*>(field);
  const int selected = line != nullptr ? line->selectionStart() : -1;
  const int length = line != nullptr ? line->selectionLength() : 0;
  field->clearFocus();
  field->setFocus();
  if (selected >= 0) line->setSelection(selected, length);  // a line without the focus drops it
}

void ModalScreen::EndScreen(int result) {
  result_ = result;
  hasEndedItself_ = true;
  loop_.quit();
}

bool ModalScreen::LetWindowClose() {
  ModalScreen* topmost = Topmost();
  if (topmost == nullptr) return true;
  topmost->closesWindow_ = topmost->OnWindowClosing();
  return false;
}

bool ModalScreen::OnWindowClosing() {
  EndScreen(kResultCancel);
  return true;
}

bool ModalScreen::IsInFront(const ModalScreen* screen) {
  return Topmost() == screen && QApplication::activeModalWidget() == nullptr &&
         QApplication::activePopupWidget() == nullptr;
}

void ModalScreen::TakePosted(int command) {
  if (IsInFront(this)) {
    OnPosted(command);
  } else {
    QTimer::singleShot(kLookAgainMilliseconds, this, [this, command] { TakePosted(command); });
  }
}

bool ModalScreen::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) {
    setGeometry(parentWidget()->rect());
  }
  return QWidget::eventFilter(watched, event);
}

void ModalScreen::keyPressEvent(QKeyEvent* event) {
  auto* button = qobject_cast<QAbstractButton*>(parentWidget()->focusWidget());
  const bool presses = button != nullptr && isAncestorOf(button) &&
                       qobject_cast<QRadioButton*>(button) == nullptr;  // has been pressed already
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Back) {
    OnEscape();
  } else if (isEnter && presses) {
    button->click();
  } else if (isEnter) {
    OnEnter();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace platform::qt
