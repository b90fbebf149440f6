#include "filedialog/qt/file_select_screen.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "pickers/qt/value_input_screen.h"
#include "platform/metrics.h"
#include "platform/qt/controls.h"
#include "platform/qt/finger_scroll.h"
#include "platform/qt/menu_place.h"
#include "platform/qt/qt_text.h"

namespace filedialog {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::FromQt;
using platform::qt::ToQt;

// The lines are made as they come into sight: a folder may hold very many.
class CFileSelectDlg::Lines : public QAbstractListModel {
 public:
  Lines(const CFileSelect& select, QObject* parent) : QAbstractListModel(parent), select_(select) {}

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : select_.LineCount();
  }

  QVariant data(const QModelIndex& index, int role) const override {
    if (role == Qt::DisplayRole) return ToQt(select_.LineText(index.row()));
    if (role == Qt::SizeHintRole) return QSize(0, Scaled(24));
    return {};
  }

  void Reset() {
    beginResetModel();
    endResetModel();
  }

 private:
  const CFileSelect& select_;
};

CFileSelectDlg::CFileSelectDlg(QWidget* over, FileSelectParams params)
    : ModalScreen(over),
      select_(std::move(params)),
      lines_(new Lines(select_, this)),
      folder_(new QLineEdit(this)),
      list_(new QListView(this)),
      unreadable_(platform::qt::MakeLabel({}, u"フォルダを開けません。", list_)),
      name_(new QLineEdit(ToQt(select_.StartName()), this)),
      filter_(new platform::qt::ChoiceBox(this)),
      keys_(new platform::qt::SoftKeyBar(this)),
      holdMenu_(new QMenu(this)) {
  setFont(FixedFont(12));
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(Scaled(1));
  MakeHeader(*rows);
  MakeFolderRow(*rows);
  MakeList(*rows);
  MakeNameRows(*rows);
  rows->addWidget(keys_);
  MakeMenus();
}

CFileSelectDlg::~CFileSelectDlg() = default;

QPushButton* CFileSelectDlg::AddButton(const char* name, const QString& text, int units,
                                       std::function<void()> onClick) {
  auto* button =
      platform::qt::MakeButton(QString::fromLatin1(name), text, this, std::move(onClick));
  button->setFixedSize(Scaled(units), Scaled(24));
  return button;
}

void CFileSelectDlg::MakeHeader(QVBoxLayout& rows) {
  QLabel* caption = platform::qt::MakeLabel(QStringLiteral("1402"), select_.Caption(), this);
  caption->setIndent(Scaled(3));
  auto* row = new QHBoxLayout;
  row->setSpacing(0);
  row->addWidget(caption, 1);
  row->addWidget(AddButton("1", QStringLiteral("OK"), 40, [this] { Accept(); }));
  row->addWidget(AddButton("1401", QStringLiteral("キャンセル"), 70, [this] { OnEscape(); }));
  rows.addLayout(row);
  auto* line = new QFrame(this);
  line->setFrameStyle(QFrame::HLine | QFrame::Plain);
  line->setFixedHeight(1);
  rows.addWidget(line);
}

void CFileSelectDlg::MakeFolderRow(QVBoxLayout& rows) {
  folder_->setObjectName(QStringLiteral("1403"));
  folder_->setAccessibleName(QStringLiteral("フォルダー"));
  folder_->setReadOnly(true);
  folder_->setFocusPolicy(Qt::ClickFocus);
  folder_->setFixedHeight(Scaled(24));
  auto* row = new QHBoxLayout;
  row->setContentsMargins(Scaled(2), 0, 0, 0);
  row->setSpacing(Scaled(2));
  row->addWidget(folder_, 1);
  QPushButton* up = AddButton("1404", QStringLiteral("↑"), 36, [this] { GoUp(); });
  for (QPushButton* key : {up, &keys_->LeftKey()}) {
    key->setAccessibleName(QStringLiteral("上のフォルダーへ"));
  }
  row->addWidget(up);
  rows.addLayout(row);
}

void CFileSelectDlg::MakeList(QVBoxLayout& rows) {
  list_->setObjectName(QStringLiteral("1405"));
  list_->setAccessibleName(QStringLiteral("ファイルの一覧"));
  list_->setModel(lines_);
  list_->setUniformItemSizes(true);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setTextElideMode(Qt::ElideMiddle);  // the extension stays in sight
  list_->setFocusPolicy(Qt::TabFocus);
  list_->installEventFilter(this);
  auto* cover = new QVBoxLayout(list_->viewport());
  unreadable_->setAlignment(Qt::AlignCenter);
  cover->addWidget(unreadable_);
  rows.addWidget(list_, 1);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this](const QModelIndex& line) { select_.SelectLine(line.row()); });
  new platform::qt::FingerScroll(
      list_, [this](QPoint point) { PressLine(point); },
      [this](QPoint point) { TapLine(list_->indexAt(point).row()); });
  new platform::qt::TapAndHold(list_->viewport(), [this](QPoint point) { ShowHoldMenu(point); });
}

void CFileSelectDlg::MakeNameRows(QVBoxLayout& rows) {
  name_->setObjectName(QStringLiteral("1407"));
  filter_->setObjectName(QStringLiteral("1409"));
  const auto addRow = [&](const char* id, std::u16string_view text, QWidget* field) {
    QLabel* label = platform::qt::MakeLabel(QString::fromLatin1(id), text, this);
    label->setFixedWidth(Scaled(66));
    label->setBuddy(field);
    field->setFixedHeight(Scaled(24));
    auto* row = new QHBoxLayout;
    row->setContentsMargins(Scaled(3), 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(label);
    row->addWidget(field, 1);
    rows.addLayout(row);
  };
  addRow("1406", u"ファイル名:", name_);
  addRow("1408", u"種類:", filter_);
  connect(name_, &QLineEdit::returnPressed, this, [this] { Accept(); });
  connect(filter_, &QComboBox::activated, this, [this](int position) {
    select_.ChooseFilter(position);
    ShowFolder();
  });
}

void CFileSelectDlg::MakeMenus() {
  const auto add = [this](QMenu& menu, int id, const QString& text, auto command) {
    QAction* action = menu.addAction(text);
    action->setObjectName(QString::number(id));
    connect(action, &QAction::triggered, this, command);
  };
  keys_->LeftKey().setObjectName(QStringLiteral("33050"));
  keys_->LeftKey().setText(QStringLiteral("↑"));
  connect(&keys_->LeftKey(), &QPushButton::clicked, this, [this] { GoUp(); });
  const QString newFolder = QStringLiteral("新規フォルダー");
  add(keys_->Menu(), 33051, newFolder, [this] { NewFolder(); });
  add(keys_->Menu(), 32900, QStringLiteral("閉じる"), [this] { OnEscape(); });
  holdMenu_->setFont(FixedFont(12));
  add(*holdMenu_, 33051, newFolder, [this] { NewFolder(); });
  add(*holdMenu_, 33052, QStringLiteral("名前の変更"), [this] { Rename(); });
  add(*holdMenu_, 32785, QStringLiteral("削除"), [this] { Delete(); });
}

int CFileSelectDlg::RunModal() {
  if (!select_.Open()) return platform::qt::kResultCancel;
  for (const CFileSelect::Filter& filter : select_.Filters()) filter_->addItem(ToQt(filter.label));
  ShowFolder();
  name_->setFocus();
  name_->selectAll();
  return ModalScreen::RunModal();
}

void CFileSelectDlg::ShowFolder() {
  const QString folder = ToQt(select_.CurFolder());
  const int scroll = folder == folder_->text() ? list_->verticalScrollBar()->value() : 0;
  const int selected = select_.SelectedLine();  // the reset forgets it
  folder_->setText(folder);
  lines_->Reset();
  list_->doItemsLayout();
  list_->verticalScrollBar()->setValue(scroll);
  if (selected >= 0) list_->setCurrentIndex(lines_->index(selected));
  unreadable_->setVisible(select_.Unreadable());
}

void CFileSelectDlg::PressLine(QPoint point) {
  list_->setAutoScroll(false);  // a line that is half in sight stays under the finger
  list_->setCurrentIndex(list_->indexAt(point));
  list_->setAutoScroll(true);
}

void CFileSelectDlg::TapLine(int line) {
  const auto name = select_.TapLine(line);
  if (name) name_->setText(ToQt(*name));
  if (!name && line >= 0) ShowFolder();
  name_->setFocus();
}

void CFileSelectDlg::ShowHoldMenu(QPoint point) {
  const QWidget& lines = *list_->viewport();
  const QRect line = list_->visualRect(list_->indexAt(point)) & lines.rect();
  platform::qt::OpenMenuAt(*holdMenu_, lines.mapToGlobal(point),
                           {lines.mapToGlobal(line.topLeft()), line.size()});
}

void CFileSelectDlg::GoUp() {
  select_.GoUp();
  ShowFolder();
  name_->setFocus();
}

std::optional<std::u16string> CFileSelectDlg::AskName(std::u16string title, std::u16string first) {
  pickers::ValueInputParams params{std::move(title), std::move(first)};
  if (pickers::ValueInputDlg(this, params).RunModal() != platform::qt::kResultOk) return {};
  return std::move(params.value);
}

void CFileSelectDlg::NewFolder() {
  const auto name = AskName(u"新規フォルダ名", {});
  if (!name) return;
  select_.MakeFolder(*name);
  ShowFolder();
}

void CFileSelectDlg::Rename() {
  const int line = select_.SelectedLine();
  if (line < 0) return;
  const auto name = AskName(u"変更後の名称", select_.Name(line));
  if (!name) return;
  select_.Rename(*name);
  ShowFolder();
  name_->setFocus();
}

void CFileSelectDlg::Delete() {
  select_.Delete();
  ShowFolder();
}

void CFileSelectDlg::Accept() {
  const std::u16string folder = select_.CurFolder();
  if (select_.OnOk(FromQt(name_->text()))) {
    EndScreen(platform::qt::kResultOk);
  } else if (select_.CurFolder() != folder) {
    name_->setText(ToQt(select_.StartName()));
    ShowFolder();
  }
}

// By keyboard Enter on a line is a tap, and the menu key a hold.
bool CFileSelectDlg::eventFilter(QObject* watched, QEvent* event) {
  if (watched != list_) return ModalScreen::eventFilter(watched, event);
  if (event->type() == QEvent::ContextMenu) {
    const bool byKey =
        static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard;
    if (byKey) ShowHoldMenu(list_->visualRect(list_->currentIndex()).center());
    return byKey;
  }
  return event->type() == QEvent::KeyPress && TakeKey(static_cast<QKeyEvent*>(event)->key());
}

bool CFileSelectDlg::TakeKey(int key) {
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      TapLine(select_.SelectedLine());
      return true;
    case Qt::Key_Delete:
      Delete();
      return true;
    default:
      return false;
  }
}

}  // namespace filedialog
