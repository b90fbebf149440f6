#include "platform/qt/qt_text.h"

#include <QPlainTextEdit>
#include <QTextDocument>

namespace platform::qt {

std::u16string TypedText(const QPlainTextEdit& edit) {
  return FromQt(edit.document()->toRawText().replace(QChar::ParagraphSeparator, u'\n'));
}

}  // namespace platform::qt
