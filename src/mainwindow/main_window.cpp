// The main window: its children, its keys, and what it shows again after a change.
#include "mainwindow/main_window.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <set>

#include "backup/daily_copy.h"
#include "core/settings_choices.h"
#include "mainwindow/command_table.h"
#include "platform/qt/menu_place.h"
#include "platform/qt/modal_screen.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"
#include "store/action_index.h"
#include "touch/qt/key_tap.h"
#include "views/navigation.h"
#include "views/qt/day_view_screen.h"
#include "views/qt/list_view_screen.h"
#include "views/qt/map_view_screen.h"
#include "views/qt/month_view_screen.h"
#include "views/qt/week_view_screen.h"
#include "views/selection.h"

namespace mainwindow {
namespace {

using platform::Scaled;
using platform::qt::ToQt;

constexpr int kActionListId = 1071;
constexpr int kLookAgainMilliseconds = 100;

}  // namespace

CMainWnd::CMainWnd(core::CAppState& app)
    : app_(app),
      address_([this](int) { OnDailyCopyEnd(); }),
      caption_(new QWidget(this)),
      header_(new views::HeaderRow(this)),
      list_(new views::ActionList(this, kActionListId)),
      toolBar_(new ToolBar(this)),
      softKeys_(new platform::qt::SoftKeyBar(this)),
      menus_(new CommandMenus(softKeys_->Menu(), *softKeys_)),
      popups_(new views::DatePopups(this, *header_)) {
  app_.CurView = app_.InitView;
  list_->setAccessibleName(QStringLiteral("アクションの一覧"));
  setWindowTitle(ToQt(core::kProgramName));
  resize(Scaled(240), Scaled(320));
  setMinimumSize(Scaled(240), Scaled(200));
  softKeys_->LeftKey().setText(ToQt(FindCommand(kSoftKeyNew)->text));
  softKeys_->LeftKey().setObjectName(QString::number(kSoftKeyNew));
  // A tap on a key leaves the focus in the list.
  for (QPushButton* key : softKeys_->findChildren<QPushButton*>()) {
    key->setFocusPolicy(Qt::TabFocus);
  }
  MakeCaption();
  const views::SharedControls controls{*header_, *list_, *popups_, map_};
  AddView(core::kViewDay, std::make_unique<views::DayViewScreen>(app, controls));
  AddView(core::kViewWeek, std::make_unique<views::WeekViewScreen>(app, controls));
  AddView(core::kViewMonth, std::make_unique<views::MonthViewScreen>(app, controls));
  AddView(core::kViewList, std::make_unique<views::ListViewScreen>(app, controls));
  AddView(core::kViewMap, std::make_unique<views::MapViewScreen>(app, controls));
  ConnectChildren();
  OrderFocus();
  WatchKeys();
  connect(&readAhead_, &QTimer::timeout, this, &CMainWnd::ReadAhead);
  ShowState();
  backup::PostDailyCopies(address_.Id(), kDailyCopyEnd);
}

// The device's shell showed the title and the (ok) button above every window.
void CMainWnd::MakeCaption() {
  auto* title = new QLabel(windowTitle(), caption_);
  connect(this, &QWidget::windowTitleChanged, title, &QLabel::setText);
  auto* ok = new QPushButton(QStringLiteral("ok"), caption_);
  ok->setObjectName(QString::number(kShellOk));
  ok->setAccessibleName(QStringLiteral("終了"));
  ok->setFixedWidth(Scaled(36));
  ok->setFocusPolicy(Qt::TabFocus);
  for (QWidget* part : {static_cast<QWidget*>(title), static_cast<QWidget*>(ok)}) {
    part->setFont(platform::qt::FixedFont(12));
  }
  auto* row = new QHBoxLayout(caption_);
  row->setContentsMargins(Scaled(4), 0, 0, 0);
  row->addWidget(title, 1);
  row->addWidget(ok);
  connect(ok, &QPushButton::clicked, this, [this] { OnCommand(kShellOk); });
}

void CMainWnd::AddView(core::View number, std::unique_ptr<views::ViewScreen> view) {
  connect(view.get(), &views::ViewScreen::Commanded, this, &CMainWnd::OnCommand);
  connect(view.get(), &views::ViewScreen::RowTapped, this, &CMainWnd::OpenRow);
  connect(view.get(), &views::ViewScreen::MenuWanted, this,
          [this](views::Menu menu, QPoint globalPoint, const QRect& globalRow) {
            menus_->ShowMarker(!View().TapItem().empty());
            platform::qt::OpenMenuAt(menus_->At(menu), globalPoint, globalRow);
          });
  view->SetShown(false);
  views_[number] = std::move(view);
}

void CMainWnd::ConnectChildren() {
  connect(&softKeys_->LeftKey(), &QPushButton::clicked, this, [this] { OnCommand(kSoftKeyNew); });
  connect(&softKeys_->Menu(), &QMenu::aboutToShow, this, [this] { popups_->Close(); });
  connect(menus_, &CommandMenus::Chosen, this, &CMainWnd::OnCommand);
  connect(menus_, &CommandMenus::HoldMenuClosed, this, &CMainWnd::ShowMovedDate);
  connect(toolBar_, &ToolBar::Pressed, this, &CMainWnd::OnCommand);
  connect(header_, &views::HeaderRow::Pressed, this, &CMainWnd::OnCommand);
  connect(popups_, &views::DatePopups::DateChosen, this, &CMainWnd::OnDateChosen);
  connect(popups_, &views::DatePopups::PageChosen, this, &CMainWnd::OnPageChosen);
  connect(list_, &views::ActionList::RowTapped, this, &CMainWnd::OpenRow);
  connect(list_, &views::ActionList::NewTapped, this, &CMainWnd::New);
  connect(list_, &views::ActionList::Held, this,
          [this](QPoint globalPoint, const QRect& globalRow) {
            platform::qt::OpenMenuAt(menus_->At(views::kEditMenu), globalPoint, globalRow);
          });
  connect(list_, &views::ActionList::ColumnDragged, this,
          [this](int column, int width) { View().OnColumnDragged(column, width); });
  list_->SetPopupCloser([this] { return popups_->Close(); });
}

// From the top down, as the eye goes. The views were made last and stand in the middle.
void CMainWnd::OrderFocus() {
  QWidget* before = &views_.rbegin()->second->FocusWidget();
  for (const auto& [number, view] : views_) {
    if (&view->FocusWidget() != before) setTabOrder(before, &view->FocusWidget());
    before = &view->FocusWidget();
  }
  for (QToolButton* button : toolBar_->findChildren<QToolButton*>()) {
    setTabOrder(before, button);
    before = button;
  }
  softKeys_->FocusAfter(before);
}

void CMainWnd::WatchKeys() {
  std::set<QWidget*> watched;  // views share the list
  for (const auto& [number, view] : views_) watched.insert(&view->FocusWidget());
  for (QWidget* widget : watched) {
    new touch::KeyTap(widget, [this](QKeyCombination key) { return OnKeyReleased(key); });
  }
}

void CMainWnd::Relayout() {
  // What is not shown must be hidden, or the Tab key walks through it.
  caption_->setVisible(app_.OkBtnVwMode == core::kOkButtonShown);
  toolBar_->setVisible(views::ShowsToolBar(app_));
  const views::WindowLayout layout =
      views::LayoutWindow(width(), height(), !toolBar_->isHidden(), !caption_->isHidden());
  caption_->setGeometry(ToQt(layout.caption));
  header_->setGeometry(ToQt(layout.header));
  toolBar_->setGeometry(ToQt(layout.toolBar));
  softKeys_->setGeometry(ToQt(layout.softKeys));
  const views::MapLayout map =
      views::LayoutMap(layout.content, views::IsPortrait(width(), height()));
  map_.Resize(map.pane.width, map.pane.height);
  View().Place(layout.content);
  app_.ListRowsPerScreen = list_->RowsPerScreen();
  views::KeepPageInRange(app_);
}

void CMainWnd::resizeEvent(QResizeEvent*) {
  popups_->Close();
  Relayout();
  if (isVisible()) Refresh();
}

void CMainWnd::showEvent(QShowEvent* event) {
  if (!event->spontaneous()) ShowView(app_.CurView);
}

void CMainWnd::closeEvent(QCloseEvent* event) {
  event->setAccepted(platform::qt::ModalScreen::LetWindowClose());
}

// Tab leaves an open calendar for what comes after the date.
bool CMainWnd::focusNextPrevChild(bool forward) {
  if (popups_->Close()) header_->DateLabel().setFocus();
  return QWidget::focusNextPrevChild(forward);
}

void CMainWnd::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) popups_->Close();
  const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  auto* button = qobject_cast<QAbstractButton*>(focusWidget());
  if (isEnter && button != nullptr) button->click();
}

void CMainWnd::ShowState() {
  menus_->ShowState(app_);
  toolBar_->ShowState(app_);
}

void CMainWnd::ShowFind() {
  const bool lasts = app_.FindWhere.has_value();
  const QString name = ToQt(core::kProgramName);
  setWindowTitle(lasts ? name + QStringLiteral(" - 検索中") : name);
  header_->MarkFind(lasts);
}

void CMainWnd::Refresh() {
  ShowFind();
  View().Refill();
  View().FocusWidget().setFocus();
  readAhead_.start();
}

void CMainWnd::ShowMovedDate() {
  View().OnDateMoved();
  Refresh();
}

void CMainWnd::ForgetWhatWasRead() {
  for (const auto& [number, view] : views_) view->Forget();
}

// New Actions show in the week in whichever view they were made. Kept on purpose: what was changed,
// deleted or found does not, before the date moves, unless the user wants it to.
void CMainWnd::ShowChange(views::Change change) {
  const bool adds = change == views::Change::kAdded || change == views::Change::kRecorded;
  if (adds || views::StaysCurrent(app_)) ForgetWhatWasRead();
  ShowFind();
  View().OnChange(change);
  View().FocusWidget().setFocus();
  readAhead_.start();
}

void CMainWnd::OnCommand(int id) {
  const CommandRow* row = FindCommand(id);
  if (row == nullptr || !IsLive(*row, views::ViewOnShow(app_.CurView))) return;
  if (!row->keepsPopups) popups_->Close();
  row->run(*this);
}

// Whenever nothing else is to be done: a paint or a tap waits for one slice at most.
void CMainWnd::ReadAhead() {
  const store::Ahead ahead = store::ReadAhead();
  if (ahead == store::Ahead::kMore) return;
  readAhead_.stop();
  if (ahead == store::Ahead::kDamaged) MendIndex();
}

// Once nothing stands over the window: a screen knows its Action by its position, a find that lasts
// has begun to replace the index, and a message may stand while rows are being read.
void CMainWnd::MendIndex() {
  if (!platform::qt::ModalScreen::IsInFront(nullptr)) {
    QTimer::singleShot(kLookAgainMilliseconds, &readAhead_, qOverload<>(&QTimer::start));
    return;
  }
  store::MendActionIndex(app_);
  ForgetWhatWasRead();
  View().OnChange(views::Change::kEdited);
}

// The copy has its name at once. A failure is reported once nothing stands over the window.
void CMainWnd::OnDailyCopyEnd() {
  if (!backup::FinishDailyCopy()) return;
  if (platform::qt::ModalScreen::IsInFront(nullptr)) return backup::TellDailyFailure();
  QTimer::singleShot(kLookAgainMilliseconds, this, [this] { OnDailyCopyEnd(); });
}

void CMainWnd::OnDateChosen(const core::Day& day) {
  popups_->Close();
  core::SetCurrentDay(day);
  // Kept on purpose: neither the boxes of the week nor the counts of the month follow.
  if (!views::StaysCurrent(app_)) return Refresh();
  ShowMovedDate();
}

void CMainWnd::OnPageChosen(int page) {
  popups_->Close();
  app_.ListPage = page;
  Refresh();
}

bool CMainWnd::OnKeyReleased(QKeyCombination key) {
  if (View().TakesKey(key)) return true;
  const auto step = [this](views::Arrow arrow) {
    popups_->Close();
    const bool moved = views::TakeArrow(app_, arrow);
    if (moved) ShowMovedDate();
    return !moved;
  };
  switch (key.key()) {
    case Qt::Key_Left:
      return step(views::Arrow::kLeft);
    case Qt::Key_Right:
      return step(views::Arrow::kRight);
    case Qt::Key_Up:
      return step(views::Arrow::kUp);
    case Qt::Key_Down:
      return step(views::Arrow::kDown);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      popups_->Close();
      if (&View().FocusWidget() == list_) OpenRow(list_->FocusedRow());
      return true;
    case Qt::Key_Delete:
      popups_->Close();
      if (!View().IsHeldOnly()) FxEditDelete();
      return true;
    default:
      return false;
  }
}

void CMainWnd::OpenRow(int row) {
  RunEditScreen(views::SelectRow(app_, View().Rows(), row) ? edit::kOpenChange : edit::kOpenNew);
}

}  // namespace mainwindow
