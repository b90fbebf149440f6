#include "platform/qt/text_lines.h"

#include <QFontMetrics>
#include <QTextLayout>

namespace platform::qt {
namespace {

constexpr QChar kBreakHere(0x200B);
constexpr QChar kJoin(0x2060);  // forbids a break
constexpr QChar kEllipsis(0x2026);

bool IsJapanese(QChar c) {
  return c.isLetterOrNumber() && c >= QChar(0x3005);
}

bool IsHiragana(QChar c) {
  return c.script() == QChar::Script_Hiragana;
}

// Particles and endings are written in hiragana, and what follows them begins a phrase. A name with
// a hyphen stays whole.
bool StaysTogether(QChar before, QChar after) {
  if (before == u'-') return after.isLetterOrNumber();
  if (QStringView(u"、。，．」』）！？").contains(after)) return true;
  const bool isInJapanese = IsJapanese(before) || IsJapanese(after);
  return isInJapanese && before.isLetterOrNumber() && after.isLetterOrNumber() &&
         (IsHiragana(after) || !IsHiragana(before));
}

bool IsSeparator(QChar c) {
  return c == u'\\' || c == u'/';
}

bool IsQuote(QChar c) {
  return c == u'\'' || c == u'"';
}

QString WithPlacesToBreak(const QString& text) {
  QString marked;
  for (qsizetype i = 0; i < text.size(); ++i) {
    marked += text[i];
    const bool isRoot = i == 0 || text[i - 1].isSpace() || IsQuote(text[i - 1]);
    const bool isInDate =
        i > 0 && i + 1 < text.size() && text[i - 1].isDigit() && text[i + 1].isDigit();
    const bool endsName = IsSeparator(text[i]) && !isRoot && !isInDate;
    if (text[i] == u'_' || endsName) marked += kBreakHere;
    if (i + 1 < text.size() && StaysTogether(text[i], text[i + 1])) marked += kJoin;
  }
  return marked;
}

QStringList LinesOf(const QString& paragraph, const QFont& font, int width) {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  QTextLayout layout(paragraph, font);
  layout.setTextOption(option);
  QStringList lines;
  layout.beginLayout();
  for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
    line.setLineWidth(width);
    lines += paragraph.mid(line.textStart(), line.textLength());
  }
  layout.endLayout();
  return lines;
}

}  // namespace

QString BreakIntoLines(const QString& text, const QFont& font, int width) {
  QStringList lines;
  for (const QString& paragraph : text.split(u'\n')) {
    lines += LinesOf(WithPlacesToBreak(paragraph), font, width);
  }
  return lines.join(u'\n').remove(kBreakHere).remove(kJoin);
}

QStringList FitLines(const QString& text, const QFont& font, int width, int most) {
  QString paragraphs = text;
  paragraphs.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  QStringList lines;
  for (const QString& paragraph : paragraphs.split(u'\n')) {
    lines += LinesOf(paragraph, font, width);
    if (lines.size() > most) break;
  }
  if (lines.size() <= most) return lines;
  lines.resize(most);
  // With a second ellipsis even a line that just holds the first one is cut.
  const QString last = lines.back().trimmed() + kEllipsis + kEllipsis;
  lines.back() = QFontMetrics(font).elidedText(last, Qt::ElideRight, width);
  return lines;
}

// A week paints hundreds of boxes: those too narrow for a character are left at once, the others
// shaped once.
QString CutToWidth(const QString& text, const QFont& font, int width) {
  const QFontMetricsF metrics(font);
  if (text.isEmpty() || metrics.horizontalAdvance(text[0]) > width) return {};
  QTextLayout layout(text, font);
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(option);
  layout.beginLayout();
  const QTextLine line = layout.createLine();
  layout.endLayout();
  if (line.naturalTextWidth() <= width) return text;
  const qreal ellipsis = metrics.horizontalAdvance(kEllipsis);
  const qreal start = line.cursorToX(0);
  int fitting = 0;
  int beforeEllipsis = 0;
  int characters = 0;
  for (int end = layout.nextCursorPosition(0); end > fitting;
       end = layout.nextCursorPosition(end)) {
    const qreal wide = qAbs(line.cursorToX(end) - start);  // from right to left in some scripts
    if (wide > width) break;
    fitting = end;
    if (wide + ellipsis > width) continue;
    beforeEllipsis = end;
    ++characters;
  }
  return characters > 1 ? text.left(beforeEllipsis) + kEllipsis : text.left(fitting);
}

}  // namespace platform::qt
