#include "exchange/qt/exchange_screen.h"

#include <QGridLayout>
#include <QGuiApplication>
#include <QInputMethod>
#include <QRadioButton>
#include <utility>

#include "exchange/action_lines.h"
#include "exchange/import.h"
#include "filedialog/qt/file_select_screen.h"
#include "platform/metrics.h"
#include "platform/qt/qt_text.h"

namespace exchange {
namespace {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::FromQt;
using platform::qt::ToQt;

constexpr std::u16string_view kPathLabel = u"対象ファイル:";
constexpr int kProgressPause = 200;  // milliseconds
constexpr int kChoicesARow = 3;

// Ids of the controls and commands.
enum ExchangeControl {
  kIdTitle = 1200,
  kIdPathLabel = 1201,
  kIdPath = 1202,
  kIdBrowse = 1203,
  kIdFormat = 1204,
  kIdVer1 = 1205,
  kIdVer2 = 1206,
  kIdVer3 = 1207,
  kIdReadMode = 1208,
  kIdAdd = 1209,
  kIdReplace = 1210,
  kIdRun = 1211,
  kIdClose = 1213,
  kIdVer3Utf8 = 1214,
  kIdMenuClose = 32900,
  kIdMenuClear = 33053,
  kIdKeyRun = 40002
};

QGroupBox* MakeGroup(int id, const QString& text, QVBoxLayout& rows) {
  auto* group = new QGroupBox(text);
  group->setObjectName(QString::number(id));
  group->setFont(FixedFont(12));
  auto* choices = new QGridLayout(group);
  choices->setContentsMargins(Scaled(6), 0, Scaled(6), 0);
  choices->setVerticalSpacing(0);
  rows.addWidget(group);
  return group;
}

}  // namespace

CExchangeDlg::CExchangeDlg(QWidget* over, core::CAppState& app, ExchangeKind kind)
    : ModalScreen(over),
      controls_(this),
      exchange_(app, kind),
      path_(new QLineEdit(this)),
      versions_(new QButtonGroup(this)),
      readModes_(new QButtonGroup(this)),
      progress_(new QProgressBar(this)),
      keys_(new platform::qt::SoftKeyBar(this)) {
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  MakeTitleRow(*rows);
  auto* inner = new QVBoxLayout;
  inner->setContentsMargins(Scaled(3), Scaled(2), Scaled(3), Scaled(2));
  inner->setSpacing(Scaled(3));
  rows->addLayout(inner, 1);
  rows->addWidget(keys_);
  MakePathRows(*inner);
  QGroupBox* formats = MakeGroup(kIdFormat, QStringLiteral("データフォーマット"), *inner);
  AddChoice(*formats, *versions_, kIdVer1, QStringLiteral("Ver.1"), kVer1);
  AddChoice(*formats, *versions_, kIdVer2, QStringLiteral("Ver.2"), kVer2);
  AddChoice(*formats, *versions_, kIdVer3, QStringLiteral("Ver.3"), kVer3);
  if (kind == ExchangeKind::kExport) {
    AddChoice(*formats, *versions_, kIdVer3Utf8, QStringLiteral("Ver.3 (UTF-8)"), kVer3Utf8);
  } else {
    readModeGroup_ = MakeGroup(kIdReadMode, QStringLiteral("読込方法"), *inner);
    AddChoice(*readModeGroup_, *readModes_, kIdAdd, QStringLiteral("追加"), kReadAdd);
    AddChoice(*readModeGroup_, *readModes_, kIdReplace, QStringLiteral("置換"), kReadReplace);
  }
  MakeRunRow(*inner);
  MakeMenu();
  const auto choose = [this](QButtonGroup* choices, void (CExchange::*command)(int)) {
    connect(choices, &QButtonGroup::idClicked, this, [this, command](int value) {
      (exchange_.*command)(value);
      ShowState();
    });
  };
  choose(versions_, &CExchange::ChooseVersion);
  choose(readModes_, &CExchange::ChooseReadMode);
}

int CExchangeDlg::RunModal() {
  path_->setText(ToQt(exchange_.Path()));
  ShowState();
  const int result = ModalScreen::RunModal();
  exchange_.SetPath(FromQt(path_->text()));
  exchange_.Close();
  return result;
}

void CExchangeDlg::MakeTitleRow(QVBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  row->setContentsMargins(Scaled(3), 0, 0, 0);
  rows.addLayout(row);
  row->addWidget(controls_.AddLabel(kIdTitle, exchange_.Title()), 1);
  QPushButton* close = AddButton(kIdClose, QStringLiteral("閉じる"), 56, [this] { OnEscape(); });
  row->addWidget(close);
  setTabOrder(close, path_);
}

void CExchangeDlg::MakePathRows(QVBoxLayout& rows) {
  rows.addWidget(controls_.AddLabel(kIdPathLabel, kPathLabel));
  auto* row = new QHBoxLayout;
  row->setSpacing(Scaled(1));
  rows.addLayout(row);
  path_->setObjectName(QString::number(kIdPath));
  platform::qt::NameControl(*path_, kPathLabel);
  path_->setFont(FixedFont(12));
  path_->setFixedHeight(Scaled(26));
  row->addWidget(path_, 1);
  QPushButton* browse = AddButton(kIdBrowse, QStringLiteral("..."), 28, [this] { OnBrowse(); });
  browse->setAccessibleName(QStringLiteral("ファイルの選択"));
  row->addWidget(browse);
}

void CExchangeDlg::MakeRunRow(QVBoxLayout& rows) {
  auto* row = new QHBoxLayout;
  rows.addLayout(row);
  row->addStretch(1);
  QPushButton* run = AddButton(kIdRun, ToQt(exchange_.Title()), 84, [this] { OnRun(); });
  row->addWidget(run);
  keys_->FocusAfter(run);
  progress_->setAccessibleName(QStringLiteral("進行状況"));
  progress_->setFont(FixedFont(12));
  QSizePolicy keepsItsPlace = progress_->sizePolicy();
  keepsItsPlace.setRetainSizeWhenHidden(true);
  progress_->setSizePolicy(keepsItsPlace);
  progress_->hide();
  rows.addWidget(progress_);
  rows.addStretch(1);
}

void CExchangeDlg::MakeMenu() {
  controls_.AddKey(keys_->LeftKey(), kIdKeyRun, ToQt(exchange_.Title()), [this] { OnRun(); });
  QMenu& menu = keys_->Menu();
  controls_.AddMenuItem(menu, kIdMenuClear, QStringLiteral("名称クリア"), [this] {
    path_->clear();
    path_->setFocus();
  });
  controls_.AddMenuItem(menu, kIdMenuClose, QStringLiteral("閉じる"), [this] { OnEscape(); });
}

QPushButton* CExchangeDlg::AddButton(int id, const QString& text, int units,
                                     std::function<void()> onClick) {
  QPushButton* button = controls_.AddButton(id, text, std::move(onClick));
  button->setFixedSize(Scaled(units), Scaled(26));
  return button;
}

void CExchangeDlg::AddChoice(QGroupBox& group, QButtonGroup& choices, int id, const QString& text,
                             int value) {
  auto* button = new QRadioButton(text, &group);
  button->setObjectName(QString::number(id));
  button->setFont(FixedFont(12));
  button->setMinimumHeight(Scaled(24));
  // The Tab key comes to the choice that is made, and the arrows go on from there.
  button->setFocusPolicy(Qt::ClickFocus);
  connect(button, &QRadioButton::toggled, button, [button](bool chosen) {
    button->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
  });
  const int place = static_cast<int>(choices.buttons().size());
  choices.addButton(button, value);
  auto* grid = static_cast<QGridLayout*>(group.layout());
  const int columns = place < kChoicesARow ? 1 : kChoicesARow;  // the fourth has a row of its own
  grid->addWidget(button, place / kChoicesARow, place % kChoicesARow, 1, columns);
}

void CExchangeDlg::OnRun() {
  QGuiApplication::inputMethod()->commit();  // what is still being composed counts
  exchange_.SetPath(FromQt(path_->text()));
  path_->setText(ToQt(exchange_.Path()));
  sinceProgress_.invalidate();
  exchange_.OnRun([this](int done, int total) { ShowProgress(done, total); });
  progress_->hide();
  ShowState();
}

// A run handles no events, so that nothing comes between its steps: the bar is painted here, and
// with it all that the question before it has covered, whose frame may go a moment after it.
void CExchangeDlg::ShowProgress(int done, int total) {
  const bool tooSoon = sinceProgress_.isValid() && sinceProgress_.elapsed() < kProgressPause;
  if (tooSoon && done != total) return;
  sinceProgress_.start();
  if (total > 0) {
    progress_->setRange(0, total);
    progress_->setValue(done);
    progress_->setFormat(QStringLiteral("%v / %m"));
  } else {
    progress_->setRange(0, 1);
    progress_->setValue(0);
    progress_->setFormat(QStringLiteral("読込中... %1行").arg(done));
  }
  progress_->show();
  repaint();
}

void CExchangeDlg::OnBrowse() {
  filedialog::CFileSelectDlg files(this, exchange_.BrowseParams());
  files.RunModal();
  if (files.ResultPath() && !files.ResultPath()->empty()) {
    path_->setText(ToQt(*files.ResultPath()));
  }
  path_->setFocus();
}

void CExchangeDlg::mousePressEvent(QMouseEvent*) {
  path_->setFocus();
}

void CExchangeDlg::ShowState() {
  versions_->button(exchange_.FormatVer())->setChecked(true);
  if (readModeGroup_ != nullptr) {
    readModes_->button(exchange_.ReadMode())->setChecked(true);
    readModeGroup_->setEnabled(exchange_.IsReadModeEnabled());
  }
  path_->setFocus();
}

}  // namespace exchange
