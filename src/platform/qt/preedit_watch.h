// What Qt's side of IBus gets wrong about a preedit, the text that is being composed with an input
// method. One that its user has taken back, with Escape or character by character, it goes on
// holding and puts into a field later. One that is committed because the focus moves comes a second
// time, from IBus itself, and then into the next field.
#pragma once

#include <QElapsedTimer>
#include <QEvent>
#include <QInputMethodEvent>
#include <QObject>
#include <QString>

namespace platform::qt {

// For all fields, as a filter of the application's events.
class PreeditWatch : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsEcho(const QInputMethodEvent& change) const;

  QString preedit_;
  QString committed_;  // the last preedit that was
  QElapsedTimer sinceCommit_;
};

}  // namespace platform::qt
