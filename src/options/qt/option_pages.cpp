#include "options/qt/option_pages.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "core/settings_choices.h"
#include "platform/host.h"
#include "platform/metrics.h"
#include "platform/qt/controls.h"
#include "platform/qt/finger_scroll.h"
#include "platform/qt/qt_text.h"

namespace options {
namespace {

using platform::Scaled;
using platform::qt::FromQt;
using platform::qt::ToQt;

constexpr std::u16string_view kSystems = u"<既定>";
constexpr std::u16string_view kFileLabel = u"データファイル:";
constexpr int kSmallestSize = 4;
constexpr int kLargestSize = 48;
constexpr int kLevelLabel = 16;  // a lower one stands above the middle of its field

}  // namespace

OptionPage::OptionPage(Page page, COptions& options, const PageCommands& commands)
    : options_(options) {
  setFrameShape(NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidgetResizable(true);
  auto* content = new QWidget;
  content->setFont(platform::qt::FixedFont(12));
  form_ = new QFormLayout(content);
  form_->setContentsMargins(Scaled(4), Scaled(4), Scaled(4), Scaled(4));
  form_->setHorizontalSpacing(Scaled(3));
  form_->setVerticalSpacing(Scaled(3));
  form_->setRowWrapPolicy(QFormLayout::WrapLongRows);
  form_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  switch (page) {
    case kGeneral:
      MakeGeneral();
      break;
    case kDisplay:
      MakeDisplay();
      break;
    case kEditing:
      MakeEditing();
      break;
    case kFind:
      MakeFind();
      break;
    case kNames:
      MakeNames();
      break;
    case kData:
      MakeData(commands);
      break;
  }
  setWidget(content);
  new platform::qt::FingerScroll(this, {}, {});
}

void OptionPage::MakeGeneral() {
  OptionValues& values = options_.values;
  AddChoice("StartupMode", u"起動画面:", values.StartupMode,
            {{u"閲覧画面", core::kStartBrowsing},
             {u"レコーダー画面", core::kStartRecorder},
             {u"新規作成画面", core::kStartNewAction}});
  AddCheck("ViewModeSave", u"終了時の表示形式を保存する", values.ViewModeSave);
  QComboBox* view = AddChoice("InitView", u"初期表示形式:", values.InitView,
                              {{u"1日表示", core::kViewDay},
                               {u"1週間表示", core::kViewWeek},
                               {u"1ヶ月表示", core::kViewMonth},
                               {u"一覧表示", core::kViewList},
                               {u"マップ表示", core::kViewMap}});
  AddCheck("OkBtnVwMode", u"(ok)ボタンを表示する", values.OkBtnVwMode, core::kOkButtonShown,
           core::kOkButtonHidden);
  AddCheck("ActTxtMode", u"アクションテキストを使用する", values.ActTxtMode, core::kActionTextOn,
           core::kActionTextOff);
  AddCheck("ItmSelMode", u"リストビューにて項目値を選択", values.ItmSelMode, core::kPickByLists,
           core::kPickInPlace);
  auto* save = form_->parentWidget()->findChild<QCheckBox*>(QStringLiteral("ViewModeSave"));
  view->setDisabled(save->isChecked());
  connect(save, &QCheckBox::toggled, view, &QWidget::setDisabled);
}

void OptionPage::MakeDisplay() {
  auto* target = AddBox("font_target", u"フォント変更画面:");
  for (const std::u16string_view text : kFontTargets) target->addItem(ToQt(text));
  fontName_ = AddBox("font_name", u"閲覧フォント:");
  fontName_->addItem(ToQt(kSystems));
  for (const std::u16string& family : platform::host().FontFamilies()) {
    fontName_->addItem(ToQt(family));
  }
  fontSize_ = AddBox("font_size", u"閲覧サイズ:");
  fontSize_->addItem(ToQt(kSystems));
  for (int size = kSmallestSize; size <= kLargestSize; ++size) {
    fontSize_->addItem(QString::number(size));
  }
  const auto font = [this, target]() -> FontValue& {
    return options_.values.fonts[static_cast<size_t>(target->currentIndex())];
  };
  connect(target, &QComboBox::activated, this, &OptionPage::ShowFont);
  connect(fontName_, &QComboBox::activated, this, [this, font](int row) {
    font().name = row > 0 ? FromQt(fontName_->currentText()) : std::u16string();
  });
  connect(fontSize_, &QComboBox::activated, this,
          [font](int row) { font().size = row > 0 ? row + kSmallestSize - 1 : -1; });
  ShowFont(0);
  AddChoice("SeqViewRng", u"一覧表示時の表示個数:", options_.values.SeqViewRng,
            {{u"一画面", core::kFitsScreen},
             {u"10", 10},
             {u"15", 15},
             {u"20", 20},
             {u"25", 25},
             {u"30", 30}});
  AddCheck("MonViewTapOpeMode", u"1ヶ月表示にて日付タップ時1日表示",
           options_.values.MonViewTapOpeMode, core::kMonthTapOpensDay, core::kMonthTapSelects);
  AddCheck("ViewAutoUpdate", u"1週間・1ヶ月表示を常に最新にする", options_.values.ViewAutoUpdate);
}

// What the device has not is shown as the system's own, and stays as it is unless it is changed.
void OptionPage::ShowFont(int target) {
  const FontValue& font = options_.values.fonts[static_cast<size_t>(target)];
  fontName_->setCurrentIndex(std::max(0, fontName_->findText(ToQt(font.name))));
  const bool isOffered = font.size >= kSmallestSize && font.size <= kLargestSize;
  fontSize_->setCurrentIndex(isOffered ? font.size - kSmallestSize + 1 : 0);
}

void OptionPage::MakeEditing() {
  OptionValues& values = options_.values;
  AddChoice("TimeInitForNewMode", u"新規作成時の時刻初期値:", values.TimeInitForNewMode,
            {{u"現在時刻", core::kNewAtClock},
             {u"30分単位", core::kNewAtHalfHour},
             {u"終日", core::kNewAllDay}});
  AddCheck("TimeInitForFollowMode", u"後続作成時、現在時刻を設定", values.TimeInitForFollowMode,
           core::kFollowToNow, core::kFollowToHalfHour);
  AddText("PlaceSepaStr", u"レコーダーの移動区切り文字:", values.PlaceSepaStr);
  AddCheck("NoMemPlaceSepaStr", u"移動区切り含む値は履歴に残さない", values.NoMemPlaceSepaStr);
  AddCheck("EditOpeCont", u"作成/変更画面にて操作を継続して行う", values.EditOpeCont);
}

void OptionPage::MakeFind() {
  AddCheck("DispListAfterFind", u"検索終了後、一覧形式にて表示する",
           options_.values.DispListAfterFind);
}

void OptionPage::MakeNames() {
  OptionValues& values = options_.values;
  form_->addRow(new QLabel(QStringLiteral("項目の表示名称:")));
  AddText("StaDtTmName", u"開始：", values.StaDtTmName);
  AddText("EndDtTmName", u"終了：", values.EndDtTmName);
  AddText("LatName", u"緯度：", values.LatName);
  AddText("LonName", u"経度：", values.LonName);
  AddText("PlaceName", u"場所：", values.PlaceName);
  AddText("Cate1Name", u"分類1：", values.Cate1Name);
  AddText("Cate2Name", u"分類2：", values.Cate2Name);
  AddText("MemoName", u"メモ：", values.MemoName);
}

void OptionPage::MakeData(const PageCommands& commands) {
  const auto addButton = [](const char* name, const QString& text,
                            const std::function<void()>& command) {
    auto* button = platform::qt::MakeButton(QString::fromLatin1(name), text, nullptr, command);
    button->setFixedHeight(Scaled(26));
    return button;
  };
  dataFile_ = MakeText("DataFile", options_.values.DataFile);
  QPushButton* browse = addButton("browse", QStringLiteral("..."), commands.browse);
  browse->setAccessibleName(QStringLiteral("ファイルの選択"));
  browse->setFixedWidth(Scaled(36));
  auto* file = new QHBoxLayout;
  file->setSpacing(Scaled(2));
  file->addWidget(dataFile_, 1);
  file->addWidget(browse);
  platform::qt::NameControl(*dataFile_, kFileLabel);
  form_->addRow(new QLabel(ToQt(kFileLabel)));
  form_->addRow(file);
  form_->addRow(addButton("compact", QStringLiteral("データファイルの圧縮"), commands.compact));
  form_->addRow(addButton("inspect", QStringLiteral("データファイルの検査"), commands.inspect));
  formatVersion_ = new QLineEdit;
  formatVersion_->setObjectName(QStringLiteral("DBFmtVer"));
  formatVersion_->setReadOnly(true);
  AddRow(QStringLiteral("フォーマットバージョン:"), formatVersion_);
  AddCheck("AutoBackup", u"1日1回、自動でバックアップする", options_.values.AutoBackup);
  ShowState();
}

void OptionPage::ShowState() {
  if (dataFile_ == nullptr) return;
  dataFile_->setText(ToQt(options_.values.DataFile));
  formatVersion_->setText(ToQt(options_.FormatVersion()));
}

void OptionPage::AddCheck(const char* name, std::u16string_view text, int& value, int on, int off) {
  QCheckBox* check =
      platform::qt::MakeCheck(QString::fromLatin1(name), text, nullptr,
                              [&value, on, off](bool checked) { value = checked ? on : off; });
  check->setMinimumHeight(Scaled(24));
  check->setChecked(value == on);
  form_->addRow(check);
}

void OptionPage::AddRow(const QString& text, QWidget* field) {
  auto* label = new QLabel(text);
  label->setMinimumHeight(Scaled(kLevelLabel));
  platform::qt::NameControl(*field, FromQt(text));
  form_->addRow(label, field);
}

platform::qt::ChoiceBox* OptionPage::AddBox(const char* name, std::u16string_view label) {
  auto* box = new platform::qt::ChoiceBox(nullptr);
  box->setObjectName(QString::fromLatin1(name));
  box->setMinimumHeight(Scaled(24));
  AddRow(ToQt(label), box);
  return box;
}

// A value that is not among the choices shows none of them.
QComboBox* OptionPage::AddChoice(const char* name, std::u16string_view label, int& value,
                                 std::initializer_list<Choice> choices) {
  auto* box = AddBox(name, label);
  for (const Choice& choice : choices) box->addItem(ToQt(choice.text), choice.value);
  box->setCurrentIndex(box->findData(value));
  connect(box, &QComboBox::activated, this,
          [&value, box](int row) { value = box->itemData(row).toInt(); });
  return box;
}

void OptionPage::AddText(const char* name, std::u16string_view label, std::u16string& value) {
  AddRow(ToQt(label), MakeText(name, value));
}

QLineEdit* OptionPage::MakeText(const char* name, std::u16string& value) {
  auto* line = new QLineEdit(ToQt(value));
  line->setObjectName(QString::fromLatin1(name));
  line->setMinimumHeight(Scaled(24));
  connect(line, &QLineEdit::textChanged, this,
          [&value](const QString& text) { value = FromQt(text); });
  return line;
}

}  // namespace options
