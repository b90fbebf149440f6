#include "platform/qt/one_line.h"

#include <QValidator>
#include <algorithm>

namespace platform::qt {
namespace {

bool IsLineEnd(QChar c) {
  return c == u'\r' || c == u'\n';
}

class WithoutLineEnds : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& cursor) const override {
    cursor -= static_cast<int>(std::count_if(text.cbegin(), text.cbegin() + cursor, IsLineEnd));
    text.removeIf(IsLineEnd);
    return Acceptable;
  }
};

}  // namespace

void KeepToOneLine(QLineEdit& line) {
  if (line.validator() == nullptr) line.setValidator(new WithoutLineEnds(&line));
}

}  // namespace platform::qt
