#include "options/qt/options_sheet_screen.h"

#include <QPainter>
#include <QShortcut>
#include <QTimer>
#include <algorithm>

#include "core/settings.h"
#include "filedialog/qt/file_select_screen.h"
#include "platform/host.h"
#include "platform/metrics.h"
#include "platform/qt/qt_text.h"

namespace options {
namespace {

using platform::Scaled;

constexpr const char16_t* kTabTexts[kPageCount] = {u"全般", u"表示",         u"編集",
                                                   u"検索", u"カスタマイズ", u"データ"};
constexpr int kHeaderHeight = 25;
constexpr int kTabHeight = 26;

}  // namespace

OptionsSheet::OptionsSheet(QWidget* over, core::CAppState& app, int page)
    : ModalScreen(over),
      options_(app),
      controls_(this),
      title_(platform::qt::MakeLabel({}, u"オプション", this)),
      ok_(controls_.AddButton(1, QStringLiteral("OK"), [this] { OnOk(); })),
      cancel_(controls_.AddButton(2, QStringLiteral("キャンセル"), [this] { OnEscape(); })),
      pages_(new QStackedWidget(this)) {
  MakePages();
  tabs_[static_cast<size_t>(std::clamp(page, 0, kPageCount - 1))]->setChecked(true);
}

void OptionsSheet::MakePages() {
  const PageCommands commands{[this] { Browse(); }, [this] { Compact(); }, [this] { Inspect(); }};
  for (int page = 0; page < kPageCount; ++page) {
    QPushButton* tab = platform::qt::MakeButton(QStringLiteral("tab%1").arg(page),
                                                platform::qt::ToQt(kTabTexts[page]), this, [] {});
    tab->setCheckable(true);
    tab->setAutoExclusive(true);
    tabs_.push_back(tab);
    pages_->addWidget(new OptionPage(static_cast<Page>(page), options_, commands));
    connect(tab, &QPushButton::toggled, this, [this, page](bool chosen) {
      if (chosen) ShowPage(page);
    });
  }
  const auto addKey = [this](const char* key, int step) {
    auto* shortcut = new QShortcut(QKeySequence(QString::fromLatin1(key)), this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, this, [this, step] { StepPage(step); });
  };
  addKey("Ctrl+PgDown", 1);
  addKey("Ctrl+PgUp", -1);
  addKey("Ctrl+Tab", 1);
  addKey("Ctrl+Shift+Tab", -1);
}

void OptionsSheet::ShowPage(int page) {
  options_.OpenPage(page);
  pages_->setCurrentIndex(page);
}

void OptionsSheet::StepPage(int step) {
  const bool onTab = tabs_[static_cast<size_t>(pages_->currentIndex())]->hasFocus();
  const int page = (pages_->currentIndex() + step + kPageCount) % kPageCount;
  QPushButton* tab = tabs_[static_cast<size_t>(page)];
  tab->setChecked(true);
  if (onTab) tab->setFocus();
}

// A path that cannot be taken keeps the sheet open, with all that was changed on it.
void OptionsSheet::OnOk() {
  if (options_.CheckDataFile()) {
    EndScreen(platform::qt::kResultOk);
    return;
  }
  tabs_[kData]->setChecked(true);
  auto* path = pages_->currentWidget()->findChild<QLineEdit*>(QStringLiteral("DataFile"));
  path->setFocus();
  path->selectAll();
}

int OptionsSheet::RunModal() {
  QWidget* window = parentWidget();
  tabs_[static_cast<size_t>(pages_->currentIndex())]->setFocus();
  const bool takesOver = ModalScreen::RunModal() == platform::qt::kResultOk;
  int result = lostDataFile_ ? kNoDataFile : kSheetCancelled;
  if (takesOver) result = options_.OnOk();
  if (result == kNoDataFile) QTimer::singleShot(0, window, &QWidget::close);
  return result;
}

void OptionsSheet::Browse() {
  filedialog::CFileSelectDlg dialog(
      this, {filedialog::kSelectToSave, u"保存先", u"data (*.sdf)|*.sdf|All (*.*)|*.*",
             options_.DataFolder(), std::u16string(core::kDefaultDataFile)});
  dialog.RunModal();
  if (!dialog.ResultPath()) return;
  options_.values.DataFile = *dialog.ResultPath();
  static_cast<OptionPage*>(pages_->currentWidget())->ShowState();
}

void OptionsSheet::Compact() {
  lostDataFile_ = !options_.OnBtnCompact();
  static_cast<OptionPage*>(pages_->currentWidget())->ShowState();
  if (lostDataFile_) EndScreen(platform::qt::kResultCancel);
}

// The button shows how far it has come.
void OptionsSheet::Inspect() {
  auto* button = pages_->currentWidget()->findChild<QPushButton*>(QStringLiteral("inspect"));
  const QString text = button->text();
  const auto show = [button](const QString& progress) {
    button->setText(QStringLiteral("検査中...") + progress);
    button->repaint();
  };
  show({});
  options_.OnBtnInspect([&](int done, int total) {
    platform::host().SignalActivity();
    show(QStringLiteral(" %1%").arg(std::int64_t{done} * 100 / std::max(1, total)));
  });
  button->setText(text);
}

void OptionsSheet::resizeEvent(QResizeEvent* event) {
  ModalScreen::resizeEvent(event);
  const int height = Scaled(kHeaderHeight) - 1;
  cancel_->setGeometry(width() - Scaled(70), 0, Scaled(70), height);
  ok_->setGeometry(width() - Scaled(110), 0, Scaled(40), height);
  title_->setGeometry(Scaled(3), 0, width() - Scaled(113), height);
  const int top = PlaceTabs(Scaled(kHeaderHeight) + 1);
  pages_->setGeometry(0, top, width(), this->height() - top);
}

// In one row where all texts fit it. Answers where the tabs end.
int OptionsSheet::PlaceTabs(int top) {
  int wanted = 0;
  for (const QPushButton* tab : tabs_) {
    wanted += tab->fontMetrics().horizontalAdvance(tab->text()) + Scaled(12);
  }
  const int rows = wanted <= width() ? 1 : 2;
  const int perRow = kPageCount / rows;
  const int spare = std::max(0, width() - wanted) / kPageCount;
  int x = 0;
  for (int i = 0; i < kPageCount; ++i) {
    QPushButton* tab = tabs_[static_cast<size_t>(i)];
    if (i % perRow == 0) x = 0;
    const bool isLast = i % perRow == perRow - 1;
    const int own = tab->fontMetrics().horizontalAdvance(tab->text()) + Scaled(12) + spare;
    const int tabWidth = isLast ? width() - x : rows == 1 ? own : width() / perRow;
    tab->setGeometry(x, top + i / perRow * Scaled(kTabHeight), tabWidth, Scaled(kTabHeight));
    x += tabWidth;
  }
  return top + rows * Scaled(kTabHeight);
}

void OptionsSheet::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawLine(0, Scaled(kHeaderHeight), width(), Scaled(kHeaderHeight));
}

}  // namespace options
