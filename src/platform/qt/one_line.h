// What fields of one line have in common.
#pragma once

#include <QLineEdit>
#include <QString>

namespace platform::qt {

// A field of one line takes no line end and no tab, wherever the text comes from: one that was
// pasted along would stand in a column or in the settings, and break the lines of their files. For
// the life of `line`; a validator that it already has stays.
void KeepToOneLine(QLineEdit& line);

// What a user has made of the text that the program had put into `line`: that text itself, with
// line ends and tabs that were never shown, as long as the line still shows it.
QString TypedOver(const QString& given, const QLineEdit& line);

// For input methods and on-screen keyboards.
inline constexpr Qt::InputMethodHints kTimeHints = Qt::ImhTime | Qt::ImhPreferNumbers;
inline constexpr Qt::InputMethodHints kDateHints = Qt::ImhDate | Qt::ImhPreferNumbers;
inline constexpr Qt::InputMethodHints kLatinHints =
    Qt::ImhPreferLatin | Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText;

}  // namespace platform::qt
