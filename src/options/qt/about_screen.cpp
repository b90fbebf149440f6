#include "options/qt/about_screen.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>

#include "core/version.h"
#include "options/options.h"
#include "platform/metrics.h"
#include "platform/qt/controls.h"
#include "platform/qt/drawn_icon.h"
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
constexpr int kLevelLabel = 16;  // a lower one stands above the middle of its field
constexpr int kIconPlace = 6;    // from the left edge, and below the upper rule

constexpr char16_t kRights[] = u"無保証のソフトウェアです。";
constexpr std::u16string_view kHomePage = MORVENLY_HOME_PAGE;  // empty: it has none

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

QLineEdit* HomePageLine() {
  QLineEdit* line = ReadOnly("url", QStringLiteral("URL: ") + ToQt(kHomePage));
  line->setAccessibleName(QStringLiteral("ホームページ"));
  line->setFrame(false);
  QPalette plain = line->palette();
  plain.setColor(QPalette::Base, Qt::transparent);
  line->setPalette(plain);
  line->setTextMargins(-kFieldMargin, 0, 0, 0);
  return line;
}

}  // namespace

AboutDlg::AboutDlg(QWidget* over, const core::CAppState& app) : ModalScreen(over) {
  QPushButton* leave = platform::qt::MakeButton(QStringLiteral("2"), QStringLiteral("閉じる"), this,
                                                [this] { OnEscape(); });
  leave->setFixedSize(Scaled(56), Scaled(kUpperRule) - 1);
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
  if (!kHomePage.empty()) lines->addWidget(HomePageLine());
  lines->setContentsMargins(Scaled(2 * kIconPlace + kIconSize), Scaled(2), Scaled(4), 0);

  auto* group = new QGroupBox(QStringLiteral("データ情報"));
  group->setFont(FixedFont(12));
  auto* form = new QFormLayout(group);
  const auto addRow = [form](const char16_t* text, QLineEdit* field) {
    QLabel* label = Line(ToQt(text));
    label->setMinimumHeight(Scaled(kLevelLabel));
    platform::qt::NameControl(*field, text);
    form->addRow(label, field);
  };
  addRow(u"ファイル:", ReadOnly("file", ToQt(app.DataFile)));
  addRow(u"件数:", ReadOnly("count", ToQt(CountText(app))));

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
  platform::qt::ProgramIcon().paint(&painter, Scaled(kIconPlace), Scaled(kUpperRule + kIconPlace),
                                    Scaled(kIconSize), Scaled(kIconSize));
}

}  // namespace options
