#include "options/about_screen.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>

#include "options/options.h"
#include "platform/metrics.h"
#include "platform/qt/qt_text.h"

namespace options {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::ToQt;

constexpr int kUpperRule = 22;
constexpr int kLowerRule = 115;
constexpr int kRuleMargin = 10;
constexpr int kIconSize = 32;
constexpr int kFieldMargin = 2;  // that the style puts in front of a field's text
constexpr int kIconPlace = 6;    // from the left edge, and below the upper rule

// The program speaks for itself: there is no page of it on the web, and no warranty.
constexpr char16_t kRights[] = u"無保証のソフトウェアです。";
constexpr char16_t kHomePage[] = u"README.md";

QLabel* Line(const QString& text) {
  auto* label = new QLabel(text);
  label->setFont(FixedFont(12));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

QLineEdit* ReadOnly(const char* name, const QString& text) {
  auto* line = new QLineEdit(text);
  line->setObjectName(QString::fromLatin1(name));
  line->setFont(FixedFont(12));
  line->setReadOnly(true);
  return line;
}

// The notebook of the program's icon, on a grid of 64 by 64.
void PaintIcon(QPainter& painter, const QRect& place) {
  const QPen line(QColor(0x40, 0x40, 0x60), 3, Qt::SolidLine, Qt::RoundCap);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(place.topLeft());
  painter.scale(place.width() / 64.0, place.height() / 64.0);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xC0, 0xC0, 0xE0));
  painter.drawRoundedRect(12, 4, 44, 56, 5, 5);
  painter.setBrush(Qt::white);
  painter.drawRoundedRect(17, 9, 34, 46, 2, 2);
  painter.setPen(line);
  for (const int y : {20, 30}) painter.drawLine(23, y, 45, y);
  painter.drawLine(23, 40, 36, 40);
  for (const int y : {14, 26, 38, 50}) painter.drawLine(8, y, 16, y);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xE0, 0, 0));
  painter.drawEllipse(38, 36, 12, 12);
  painter.restore();
}

}  // namespace

AboutDlg::AboutDlg(QWidget* over, const core::CAppState& app) : ModalScreen(over) {
  auto* leave = new QPushButton(QStringLiteral("閉じる"), this);
  leave->setObjectName(QStringLiteral("2"));
  leave->setFont(FixedFont(12));
  leave->setFixedSize(Scaled(56), Scaled(kUpperRule) - 1);
  connect(leave, &QPushButton::clicked, this, [this] { OnEscape(); });
  auto* header = new QHBoxLayout;
  header->setContentsMargins(Scaled(3), 0, 0, 0);
  header->addWidget(Line(QStringLiteral("バージョン情報 ") + ToQt(core::kProgramName)), 1);
  header->addWidget(leave);

  auto* lines = new QVBoxLayout;
  lines->setSpacing(Scaled(2));
  lines->addWidget(Line(ToQt(core::kProgramName)));
  lines->addWidget(Line(QStringLiteral("Ver. ") + ToQt(core::kProgramVersion)));
  lines->addWidget(Line(ToQt(core::kCopyright)));
  lines->addWidget(Line(ToQt(kRights)));
  QLineEdit* home = ReadOnly("url", QStringLiteral("URL: ") + ToQt(kHomePage));
  home->setFrame(false);
  QPalette plain = home->palette();
  plain.setColor(QPalette::Base, Qt::transparent);
  home->setPalette(plain);
  home->setTextMargins(-kFieldMargin, 0, 0, 0);
  lines->addWidget(home);
  lines->setContentsMargins(Scaled(2 * kIconPlace + kIconSize), Scaled(2), Scaled(4), 0);

  auto* group = new QGroupBox(QStringLiteral("データ情報"));
  group->setFont(FixedFont(12));
  auto* form = new QFormLayout(group);
  form->addRow(Line(QStringLiteral("ファイル:")), ReadOnly("file", ToQt(app.DataFile)));
  form->addRow(Line(QStringLiteral("件数:")), ReadOnly("count", ToQt(CountText(app))));

  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addLayout(header);
  auto* upper = new QWidget;
  upper->setLayout(lines);
  upper->setFixedHeight(Scaled(kLowerRule - kUpperRule));
  rows->addWidget(upper);
  auto* lower = new QVBoxLayout;
  lower->setContentsMargins(Scaled(4), Scaled(6), Scaled(4), Scaled(4));
  lower->addWidget(group);
  lower->addStretch(1);
  rows->addLayout(lower, 1);
  leave->setFocus();
}

void AboutDlg::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawLine(0, Scaled(kUpperRule), width(), Scaled(kUpperRule));
  painter.drawLine(Scaled(kRuleMargin), Scaled(kLowerRule), width() - Scaled(kRuleMargin),
                   Scaled(kLowerRule));
  PaintIcon(painter, QRect(Scaled(kIconPlace), Scaled(kUpperRule + kIconPlace), Scaled(kIconSize),
                           Scaled(kIconSize)));
}

}  // namespace options
