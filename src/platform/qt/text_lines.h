// Texts that are broken into lines, or cut, so that they fit: at whole characters always.
#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace platform::qt {

// A message's `text` with line breaks so that no line is wider than `width`: between words, after
// the separators and underscores of a path, and in Japanese where a phrase ends. A word or phrase
// is taken apart only if it is wider than a line.
QString BreakIntoLines(const QString& text, const QFont& font, int width);

// The lines of a value, broken where the script allows it: `most` at most, which is 1 or more. The
// last one ends in an ellipsis where more follows. Every form of line end counts as one.
QStringList FitLines(const QString& text, const QFont& font, int width, int most);

// As many whole characters of the beginning as fit `width`; with an ellipsis in place of the last
// where two characters and more stand before it. Empty if not even one fits.
QString CutToWidth(const QString& text, const QFont& font, int width);

}  // namespace platform::qt
