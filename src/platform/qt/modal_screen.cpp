#include "platform/qt/modal_screen.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QList>
#include <vector>

namespace platform::qt {
namespace {

std::vector<ModalScreen*> runningScreens;

}  // namespace

ModalScreen::ModalScreen(QWidget* over) : QWidget(over->window()) {
  setAutoFillBackground(true);
  setFocusPolicy(Qt::StrongFocus);
  hide();
}

ModalScreen* ModalScreen::Topmost() {
  return runningScreens.empty() ? nullptr : runningScreens.back();
}

int ModalScreen::RunModal() {
  QWidget* window = parentWidget();
  const QPointer<QWidget> formerFocus = window->focusWidget();
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
  if (window->focusWidget() == nullptr || !isAncestorOf(window->focusWidget())) setFocus();
  loop_.exec();
  runningScreens.pop_back();
  window->removeEventFilter(this);
  hide();
  for (const QPointer<QWidget>& sibling : covered) {
    if (sibling) sibling->setEnabled(true);
  }
  if (formerFocus) formerFocus->setFocus();
  return result_;
}

void ModalScreen::EndScreen(int result) {
  result_ = result;
  loop_.quit();
}

bool ModalScreen::OnWindowClosing() {
  EndScreen(kResultCancel);
  return true;
}

bool ModalScreen::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) {
    setGeometry(parentWidget()->rect());
  }
  return QWidget::eventFilter(watched, event);
}

void ModalScreen::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Back) {
    OnEscape();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace platform::qt
