#include "platform/qt/preedit_watch.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <utility>

namespace platform::qt {
namespace {

constexpr int kEchoMilliseconds = 1000;

}  // namespace

bool PreeditWatch::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::InputMethod) return QObject::eventFilter(watched, event);
  const auto& change = *static_cast<QInputMethodEvent*>(event);
  const QString& commit = change.commitString();
  if (IsEcho(change)) {
    committed_.clear();
    return true;
  }
  const QString former = std::exchange(preedit_, change.preeditString());
  if (!preedit_.isEmpty()) {
    committed_.clear();
  } else if (!former.isEmpty() && commit == former) {
    committed_ = commit;
    sinceCommit_.start();
  } else if (!former.isEmpty() && commit.isEmpty()) {
    QGuiApplication::inputMethod()->reset();
  }
  return false;
}

// Nothing is composed between a commit and its echo, so that the same word typed twice is none.
bool PreeditWatch::IsEcho(const QInputMethodEvent& change) const {
  return !committed_.isEmpty() && preedit_.isEmpty() && change.commitString() == committed_ &&
         !sinceCommit_.hasExpired(kEchoMilliseconds);
}

}  // namespace platform::qt
