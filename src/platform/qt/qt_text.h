// Texts and fonts between the program and Qt.
#pragma once

#include <QFont>
#include <QFontMetrics>
#include <QString>
#include <algorithm>
#include <string>
#include <string_view>

#include "platform/metrics.h"

class QPlainTextEdit;

namespace platform::qt {

inline QString ToQt(std::u16string_view text) {
  return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

inline std::u16string FromQt(const QString& text) {
  return text.toStdU16String();
}

// The text of an edit as it is: unlike its plain text, with no character exchanged.
std::u16string TypedText(const QPlainTextEdit& edit);

// A font by the name and size of a setting: a size below 1 is 9 units, the system's own, and one
// beyond 100 units, which takes minutes and gigabytes to paint, is that; an empty name leaves the
// system's face.
inline QFont SettingFont(std::u16string_view name, int size) {
  QFont font;
  if (!name.empty()) font.setFamily(ToQt(name));
  font.setPixelSize(size > 0 ? std::min(size, Scaled(100)) : Scaled(9));
  return font;
}

// The fixed font of headers and buttons.
inline QFont FixedFont(int units) {
  return SettingFont(u"MS UI Gothic", Scaled(units));
}

// For a key whose text is "・" alone: in the font of the other keys its point is hardly seen.
inline QFont DotFont() {
  return FixedFont(32);
}

// `font`, made as much smaller as the ink of `text` needs to fit `width`.
inline QFont FittedFont(QFont font, const QString& text, int width) {
  while (font.pixelSize() > 1 && QFontMetrics(font).tightBoundingRect(text).width() > width) {
    font.setPixelSize(font.pixelSize() - 1);
  }
  return font;
}

// `font` of the same height, made as much narrower as `text` needs to fit `width`.
inline QFont CondensedFont(QFont font, const QString& text, int width) {
  const int wide = QFontMetrics(font).horizontalAdvance(text);
  if (wide > width) font.setStretch(100 * width / wide);
  return font;
}

}  // namespace platform::qt
