#include "targets.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTabBar>

#include "core/app_state.h"
#include "mainwindow/main_window.h"
#include "platform/qt/modal_screen.h"
#include "touch/qt/surface.h"
#include "watch.h"

namespace hands {
namespace {

constexpr QStringView kQuit = u"40102";  // of the menu
constexpr QStringView kOk = u"1";        // in the window's caption

bool IsSurface(const QWidget& widget) {
  return qobject_cast<const QAbstractItemView*>(widget.parentWidget()) != nullptr ||
         dynamic_cast<const touch::Surface*>(&widget) != nullptr;
}

bool IsTapped(const QWidget& widget) {
  return qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
         qobject_cast<const QLineEdit*>(&widget) != nullptr ||
         qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
         qobject_cast<const QPlainTextEdit*>(widget.parentWidget()) != nullptr || IsSurface(widget);
}

std::string NameIn(const std::string& screen, const QObject& control) {
  const std::string name = control.objectName().toStdString();
  return screen + "/" + (name.empty() ? ClassName(control) : name);
}

void AddMenu(QMenu& menu, std::vector<Target>& targets) {
  for (QAction* action : menu.actions()) {
    if (!action->isEnabled() || action->isSeparator()) continue;
    targets.push_back({&menu, menu.actionGeometry(action), "menu/" + action->text().toStdString(),
                       action->objectName() == kQuit});
  }
}

void AddTabs(QTabBar& tabs, std::vector<Target>& targets) {
  for (int tab = 0; tab < tabs.count(); ++tab) {
    targets.push_back({&tabs, tabs.tabRect(tab), "tab/" + std::to_string(tab)});
  }
}

}  // namespace

QWidget* Window() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->isVisible() && qobject_cast<mainwindow::CMainWnd*>(widget) != nullptr)
      return widget;
  }
  return nullptr;
}

QWidget* Front() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup;
  if (QWidget* message = QApplication::activeModalWidget()) return message;
  return Window();
}

std::string ScreenName() {
  QWidget* front = Front();
  if (front == nullptr) return "nothing";
  if (front != Window()) return ClassName(*front);
  if (const QWidget* screen = platform::qt::ModalScreen::Topmost()) return ClassName(*screen);
  return "view " + std::to_string(core::g_App->CurView);
}

std::vector<Target> TargetsIn(QWidget* front) {
  std::vector<Target> targets;
  if (front == nullptr) return targets;
  if (auto* menu = qobject_cast<QMenu*>(front)) AddMenu(*menu, targets);
  const std::string screen = ScreenName();
  for (QWidget* widget : front->findChildren<QWidget*>()) {
    if (widget->window() != front || !widget->isVisible() || !widget->isEnabled()) continue;
    const QRect seen = widget->visibleRegion().boundingRect();
    if (seen.isEmpty()) continue;
    if (auto* tabs = qobject_cast<QTabBar*>(widget)) {
      AddTabs(*tabs, targets);
    } else if (IsTapped(*widget)) {
      const bool isViewport = widget->objectName() == QStringLiteral("qt_scrollarea_viewport");
      targets.push_back(
          {widget, seen, NameIn(screen, isViewport ? *widget->parent() : *widget),
           widget->objectName() == kOk && platform::qt::ModalScreen::IsInFront(nullptr),
           IsSurface(*widget)});
    }
  }
  return targets;
}

}  // namespace hands
