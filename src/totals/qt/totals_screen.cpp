#include "totals/qt/totals_screen.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <set>

#include "edit/qt/edit_action_screen.h"
#include "filedialog/qt/file_select_screen.h"
#include "platform/metrics.h"
#include "platform/qt/finger_scroll.h"
#include "platform/qt/qt_rect.h"
#include "platform/qt/qt_text.h"
#include "totals/totals_layout.h"

namespace totals {

using platform::Scaled;
using platform::qt::FixedFont;
using platform::qt::ToQt;

namespace {

constexpr std::u16string_view kKindNames[] = {u"1日",  u"1週間",    u"1ヶ月",   u"1年",
                                              u"全部", u"期間指定", u"検索結果"};

void Fill(QComboBox& box, const QStringList& texts, int chosen) {
  const QSignalBlocker quiet(box);
  box.clear();
  box.addItems(texts);
  box.setCurrentIndex(chosen);
}

}  // namespace

CTotalsDlg::CTotalsDlg(QWidget* over, core::CAppState& app, Choices& choices)
    : FieldScreen(over), app_(app), totals_(app, choices) {
  controls_.AddLabel(kIdTitle, u"集計");
  MakePeriod();
  MakeChoices();
  for (const int id : {kIdSum, kIdCount, kIdWritten, kIdRest, kIdNote}) {
    controls_.AddLabel(id, u"");
  }
  controls_.At<QLabel>(kIdCount)->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  MakePictures();
  MakeList();
  MakeMenu();
  ShowState();
  bars_->setFocus();
}

void CTotalsDlg::MakePeriod() {
  const auto addDay = [this](int id, std::u16string_view name, auto day) {
    constexpr int kSmallest = 8;  // units, of two dates on a narrow screen
    pickers::AddField(
        controls_, id, name, [this, id, day] { OpenCalendar(id, day(totals_.ShownPeriod())); },
        kSmallest);
  };
  addDay(kIdPeriod, u"期間", [](const Period& period) { return period.first; });
  addDay(kIdFirst, u"最初の日", [](const Period& period) { return period.first; });
  addDay(kIdLast, u"最後の日", [](const Period& period) { return period.after - 1; });
  const auto add = [this](int id, const QString& sign, const QString& name, auto command) {
    controls_.AddSign(id, sign, name, [this, command] { Run(command); });
  };
  add(kIdBigBack, QStringLiteral("《"), QStringLiteral("大きく前へ"),
      [this] { totals_.BigStep(-1); });
  add(kIdBack, QStringLiteral("<"), QStringLiteral("前の期間"), [this] { totals_.Step(-1); });
  add(kIdToday, QStringLiteral("・"), QStringLiteral("今日の期間"),
      [this] { totals_.GoToToday(); });
  add(kIdForward, QStringLiteral(">"), QStringLiteral("次の期間"), [this] { totals_.Step(1); });
  add(kIdBigForward, QStringLiteral("》"), QStringLiteral("大きく次へ"),
      [this] { totals_.BigStep(1); });
  Button(kIdToday)->setFont(platform::qt::DotFont());
}

platform::qt::ChoiceBox* CTotalsDlg::AddChoice(int id, std::u16string_view name,
                                               std::function<void(int)> onChosen) {
  auto* box = controls_.Add(id, new platform::qt::ChoiceBox(this));
  box->setFont(FixedFont(12));
  platform::qt::NameControl(*box, name);
  connect(box, &QComboBox::activated, this,
          [this, choose = std::move(onChosen)](int chosen) { Run([&] { choose(chosen); }); });
  return box;
}

void CTotalsDlg::MakeChoices() {
  AddChoice(kIdKind, u"期間の種類", [this](int chosen) {
    totals_.ChooseKind(totals_.Kinds()[static_cast<size_t>(chosen)]);
  });
  AddChoice(kIdBy, u"グループ", [this](int chosen) {
    totals_.ChooseLevel(totals_.Levels()[static_cast<size_t>(chosen)]);
  });
  AddChoice(kIdWithin, u"内訳", [this](int chosen) {
    totals_.ChooseInnerLevel(totals_.InnerLevels()[static_cast<size_t>(chosen)]);
  });
}

void CTotalsDlg::MakePictures() {
  auto* area = controls_.Add(kIdBars, new BarsArea(this));
  bars_ = new BarsCanvas(totals_, area);
  columns_ = controls_.Add(kIdColumns, new ColumnsCanvas(totals_, this));
  connect(bars_, &BarsCanvas::BarTapped, this, &CTotalsDlg::TapBar);
  connect(bars_, &BarsCanvas::StepWanted, this,
          [this](int steps) { Run([&] { totals_.Step(steps); }); });
  connect(columns_, &ColumnsCanvas::ColumnTapped, this, &CTotalsDlg::TapColumn);
}

void CTotalsDlg::MakeList() {
  controls_.AddLabel(kIdGroup, u"");
  controls_.AddLabel(kIdGroupFigures, u"");
  controls_.At<QLabel>(kIdGroupFigures)->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  list_ = controls_.Add(kIdActions, new QListView(this));
  lines_ = new ActionLines(totals_, this);
  list_->setModel(lines_);
  list_->setAccessibleName(QStringLiteral("グループのアクション"));
  list_->setFont(FixedFont(12));
  list_->setFrameShape(QFrame::NoFrame);
  list_->setUniformItemSizes(true);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  new platform::qt::FingerScroll(
      list_, [this](QPoint point) { list_->setCurrentIndex(list_->indexAt(point)); },
      [this](QPoint point) { OpenAction(list_->indexAt(point).row()); });
}

void CTotalsDlg::MakeMenu() {
  controls_.AddKey(keys_->LeftKey(), kIdKeyBack, QStringLiteral("戻る"), [this] { OnEscape(); });
  QMenu& menu = keys_->Menu();
  controls_.AddMenuItem(menu, kIdMenuCopy, QStringLiteral("表をコピー"), [this] {
    QGuiApplication::clipboard()->setText(ToQt(totals_.ClipboardText()));
  });
  controls_.AddMenuItem(menu, kIdMenuCsv, QStringLiteral("CSVファイルに保存..."),
                        [this] { SaveCsv(); });
  controls_.AddMenuItem(menu, kIdMenuMovements, QStringLiteral("移動を場所ごとに数える"), [this] {
    Run([this] { totals_.SetMovementsApart(!totals_.ShownChoices().movementsApart); });
  });
  controls_.At<QAction>(kIdMenuMovements)->setCheckable(true);
  controls_.AddMenuItem(menu, kIdMenuClose, QStringLiteral("閉じる"),
                        [this] { EndScreen(platform::qt::kResultCancel); });
}

template <typename Command>
void CTotalsDlg::Run(Command command) {
  editor_->Close();
  command();
  ShowState();
}

// A second tap on the field closes its calendar.
void CTotalsDlg::OpenCalendar(int id, DayNumber day) {
  if (editor_->Which() == id) return editor_->Close();
  editorText_ = core::DayText(DayOf(day));
  editor_->OpenCalendar({id, kIdCalendar, Field(id)}, editorText_);
}

void CTotalsDlg::ApplyEditor() {
  const int id = editor_->Which();
  const std::optional<core::Day> day = core::ReadDay(editorText_);
  if (id == 0 || !day) return editor_->Close();
  Run([&] {
    if (id == kIdPeriod) totals_.GoToDay(*day);
    if (id == kIdFirst) totals_.SetFirst(*day);
    if (id == kIdLast) totals_.SetLast(*day);
  });
}

void CTotalsDlg::TapBar(int bar) {
  Run([&] { totals_.TapBar(bar); });
  bars_->SetCurrentBar(bar);
}

// A day has no columns for the keys to stay at.
void CTotalsDlg::TapColumn(int column) {
  const bool hadFocus = columns_->hasFocus();
  Run([&] { totals_.TapColumn(column); });
  if (hadFocus && !totals_.HasColumns()) bars_->setFocus();
}

void CTotalsDlg::OnClose() {
  const bool hadList = list_->hasFocus();
  const Period left = totals_.ShownPeriod();
  if (!totals_.GoBack()) return EndScreen(platform::qt::kResultCancel);
  ShowState();
  if (totals_.ShownPeriod() != left) columns_->SetCurrentDay(left.first);
  if (hadList) bars_->setFocus();
}

// What Space does on a picture, and besides goes on into what it opens.
void CTotalsDlg::OnEnter() {
  if (bars_->hasFocus()) {
    if (totals_.OpenBar() != bars_->CurrentBar()) TapBar(bars_->CurrentBar());
    if (totals_.OpenBar() < 0) return;
    list_->setFocus();
    list_->setCurrentIndex(lines_->index(0));
  } else if (columns_->hasFocus()) {
    TapColumn(columns_->CurrentColumn());
  } else if (list_->hasFocus()) {
    OpenAction(list_->currentIndex().row());
  } else if (auto* box = qobject_cast<QComboBox*>(focusWidget())) {
    box->showPopup();
  }
}

void CTotalsDlg::OpenAction(int action) {
  if (!totals_.SelectAction(action)) return;
  edit::CEditActionDlg screen(this, app_, edit::kOpenChange);
  hasEdited_ |= screen.RunModal() == platform::qt::kResultOk;
  hasAdded_ |= screen.HasAdded();
  const int scroll = list_->verticalScrollBar()->value();
  totals_.ReadAgain();
  ShowState();
  list_->verticalScrollBar()->setValue(scroll);
  const int selected = totals_.SelectedAction();
  const int nearest = std::min(action, totals_.ActionCount() - 1);
  list_->setCurrentIndex(lines_->index(selected < 0 ? nearest : selected));
  if (totals_.OpenBar() < 0) return bars_->setFocus();
  bars_->SetCurrentBar(totals_.OpenBar());
  list_->setFocus();
}

void CTotalsDlg::SaveCsv() {
  filedialog::CFileSelectDlg files(this, totals_.AskForCsv());
  files.RunModal();
  if (files.ResultPath() && !files.ResultPath()->empty()) totals_.WriteCsv(*files.ResultPath());
}

// What isn't placed isn't shown, and no stop of the Tab key.
void CTotalsDlg::LayOut() {
  const Period& period = totals_.ShownPeriod();
  const Shown shown{.isFromTo = period.kind == PeriodKind::kFromTo,
                    .canStep = period.IsBounded(),
                    .hasNote = !totals_.Summarized().note.empty(),
                    .hasColumns = totals_.HasColumns(),
                    .isOpen = totals_.OpenBar() >= 0,
                    .groupFigures = controls_.At<QLabel>(kIdGroupFigures)->sizeHint().width()};
  std::set<int> placed;
  QWidget* before = nullptr;
  for (const platform::PlacedControl& control :
       LayOutTotals(width(), height() - keys_->height(), shown)) {
    controls_.Place(control.id, ToQt(control.rect), before);
    placed.insert(control.id);
    if (control.id != kIdBars) continue;
    if (before != nullptr) setTabOrder(before, bars_);
    before = bars_;
  }
  for (const auto& [id, control] : controls_) {
    auto* widget = qobject_cast<QWidget*>(control);
    if (widget != nullptr && id >= kIdTitle && id < kIdCalendar) {
      widget->setVisible(placed.contains(id));
    }
  }
  keys_->FocusAfter(before);
}

void CTotalsDlg::ShowState() {
  const Period& period = totals_.ShownPeriod();
  Field(kIdPeriod)->ShowValue(ToQt(totals_.Title()));
  Field(kIdPeriod)->setEnabled(period.IsBounded());
  Field(kIdFirst)->ShowValue(ToQt(core::DayText(DayOf(period.first))));
  Field(kIdLast)->ShowValue(ToQt(core::DayText(DayOf(period.after - 1))));
  const Summary summary = totals_.Summarized();
  controls_.At<QLabel>(kIdSum)->setText(ToQt(summary.sum));
  controls_.At<QLabel>(kIdCount)->setText(ToQt(summary.count));
  controls_.At<QLabel>(kIdWritten)->setText(ToQt(summary.written));
  controls_.At<QLabel>(kIdRest)->setText(ToQt(summary.rest));
  controls_.At<QLabel>(kIdNote)->setText(ToQt(summary.note));
  ShowChoices();
  if (totals_.OpenBar() >= 0) {
    const Bar& open = totals_.Bars()[static_cast<size_t>(totals_.OpenBar())];
    controls_.At<QLabel>(kIdGroup)->setText(ToQt(open.name));
    controls_.At<QLabel>(kIdGroupFigures)->setText(ToQt(CountAndMean(*open.group, totals_.Sums())));
  }
  lines_->Reset();
  LayOut();
  const std::pair shown(period, totals_.ShownChoices());
  bars_->ShowBars(shown_ != shown);
  shown_ = shown;
  columns_->ShowColumns();
  if (focusWidget() == nullptr || !focusWidget()->isVisible()) bars_->setFocus();
}

void CTotalsDlg::ShowChoices() {
  const auto index = [](const auto& all, auto one) {
    return static_cast<int>(std::ranges::find(all, one) - all.begin());
  };
  QStringList kinds, levels, inner;
  for (const PeriodKind kind : totals_.Kinds()) kinds << ToQt(kKindNames[static_cast<int>(kind)]);
  for (const By by : totals_.Levels()) levels << ToQt(ByName(app_, by));
  for (const By by : totals_.InnerLevels()) inner << ToQt(ByName(app_, by));
  const Choices& choices = totals_.ShownChoices();
  Fill(*controls_.At<QComboBox>(kIdKind), kinds,
       index(totals_.Kinds(), totals_.ShownPeriod().kind));
  Fill(*controls_.At<QComboBox>(kIdBy), levels, index(totals_.Levels(), choices.by));
  Fill(*controls_.At<QComboBox>(kIdWithin), inner, index(totals_.InnerLevels(), choices.within));
  controls_.At<QAction>(kIdMenuMovements)->setChecked(!choices.movementsApart);
}

}  // namespace totals
