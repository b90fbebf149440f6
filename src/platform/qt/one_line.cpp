#include "platform/qt/one_line.h"

#include <QValidator>
#include <algorithm>

namespace platform::qt {
namespace {

bool IsRefused(QChar c) {
  return c == u'\r' || c == u'\n' || c == u'\t';
}

class OneLineOnly : public QValidator {
 public:
  using QValidator::QValidator;

  State validate(QString& text, int& cursor) const override {
    cursor -= static_cast<int>(std::count_if(text.cbegin(), text.cbegin() + cursor, IsRefused));
    text.removeIf(IsRefused);
    return Acceptable;
  }
};

}  // namespace

void KeepToOneLine(QLineEdit& line) {
  if (line.validator() == nullptr) line.setValidator(new OneLineOnly(&line));
}

QString TypedOver(const QString& given, const QLineEdit& line) {
  QString shown = given;
  return shown.removeIf(IsRefused) == line.text() ? given : line.text();
}

}  // namespace platform::qt
