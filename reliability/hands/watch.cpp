#include "watch.h"

#include <cxxabi.h>
#include <pthread.h>

#include <QApplication>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <thread>
#include <typeindex>

namespace hands {
namespace {

std::atomic<int> currentStep = 0;
unsigned seedOfLife = 0;

// What the offscreen platform says for want of a window system, Qt of a gesture whose widget has
// gone or been covered meanwhile, and of a script for which it then takes another font.
bool IsHarmless(const QString& warning) {
  return warning.startsWith(QStringLiteral("This plugin does not support")) ||
         warning.startsWith(QStringLiteral("QGestureManager::deliverEvent: could not find")) ||
         warning.startsWith(QStringLiteral("  OpenType support missing for"));
}

void OnQtMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtDebugMsg || type == QtInfoMsg || IsHarmless(text)) return;
  Fault("Qt warns: " + text.toStdString());
}

// The interface thread takes the signal, so that its own stack is shown.
void WatchLoop(pthread_t interfaceThread, int patience) {
  int last = -1;
  for (int still = 0; still < patience; ++still) {
    std::this_thread::sleep_for(std::chrono::seconds(1));
    const int now = currentStep;
    if (now != last) still = -1;
    last = now;
  }
  std::fprintf(stderr, "random_hands: the event loop stands still, seed %u, step %d\n", seedOfLife,
               last);
  pthread_kill(interfaceThread, SIGABRT);
}

// The toolkit's own classes have no namespace.
bool IsOurs(const std::string& name) {
  return name.find("::") != std::string::npos && name.find('(') == std::string::npos;
}

}  // namespace

std::string ClassName(const QObject& object) {
  static std::map<std::type_index, std::string> names;
  std::string& name = names[typeid(object)];
  if (name.empty()) {
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> plain(
        abi::__cxa_demangle(typeid(object).name(), nullptr, nullptr, &status), std::free);
    name = plain ? plain.get() : typeid(object).name();
  }
  return name;
}

void Fault(const std::string& what) {
  std::fprintf(stderr, "random_hands: %s, seed %u, step %d\n", what.c_str(), seedOfLife,
               currentStep.load());
  std::abort();
}

Watch::Watch(unsigned seed, int patience, const std::string& log) : log_(log) {
  seedOfLife = seed;
  qInstallMessageHandler(OnQtMessage);
  std::thread(WatchLoop, pthread_self(), patience).detach();
}

void Watch::Beat(int step, const QWidget* window) {
  currentStep = step;
  if (window != nullptr) NoteScreens(*window);
  if (QApplication::overrideCursor() != nullptr) Fault("a wait cursor is left on");
}

void Watch::Log(const std::string& what) {
  log_ << currentStep << ' ' << what << std::endl;  // whatever ends us, it stands there
}

void Watch::NoteScreens(const QWidget& window) {
  std::set<std::string> names = {ClassName(window)};
  for (const QWidget* child : window.findChildren<QWidget*>()) {
    const std::string name = ClassName(*child);
    if (IsOurs(name) && child->isVisible() && child->isEnabled()) names.insert(name);
  }
  for (const std::string& name : names) Count("screen " + name);
}

}  // namespace hands
