// The edit of several lines that every screen uses.
#pragma once

#include <QMimeData>
#include <QPlainTextEdit>

namespace platform::qt {

class LinesEdit : public QPlainTextEdit {
 public:
  using QPlainTextEdit::QPlainTextEdit;

 protected:
  // Qt 6.4 takes the first format of what is pasted without looking whether there is one, and an
  // empty clipboard has none.
  void insertFromMimeData(const QMimeData* source) override {
    if (source != nullptr && !source->formats().isEmpty()) {
      QPlainTextEdit::insertFromMimeData(source);
    }
  }
};

}  // namespace platform::qt
