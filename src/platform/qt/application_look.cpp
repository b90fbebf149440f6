#include "platform/qt/application_look.h"

#include <QDialogButtonBox>
#include <QFont>
#include <QLibraryInfo>
#include <QLocale>
#include <QMenu>
#include <QProxyStyle>
#include <QScreen>
#include <QStyleOptionMenuItem>
#include <QTranslator>
#include <clocale>

#include "platform/qt/device_shell.h"
#include "platform/qt/drawn_icon.h"
#include "platform/qt/focus_frame.h"
#include "platform/qt/input_filter.h"
#include "platform/qt/light_palette.h"
#include "platform/qt/menu_place.h"
#include "platform/qt/message_icons.h"
#include "platform/qt/one_line.h"
#include "platform/qt/preedit_watch.h"
#include "platform/qt/qt_text.h"
#include "platform/qt/touch_screen.h"

namespace platform::qt {
namespace {

constexpr char kScaleVariable[] = "QT_SCALE_FACTOR";

constexpr int kMenuRowHeight = 24;
constexpr int kSeparatorHeight = 10;  // at most, in a menu
constexpr int kFingerBar = 20;        // a scroll bar
constexpr int kCheckColumn = 16;      // of Fusion's menus, which keep it where nothing is checked

QByteArray usersScale;  // as the environment has it

// As high as the row of a menu should be, or as the window leaves for each of all rows above the
// soft keys.
int RowHeight(const QMenu* menu) {
  if (menu == nullptr || menu->actions().isEmpty()) return kMenuRowHeight;
  const int frames = 2 * (menu->style()->pixelMetric(QStyle::PM_MenuPanelWidth) +
                          menu->style()->pixelMetric(QStyle::PM_MenuVMargin));
  const auto rows = static_cast<int>(menu->actions().size());
  const int room = RoomFor(*menu).height() - Scaled(kSoftKeyHeight) - frames;
  return qMin(kMenuRowHeight, room / rows);
}

int UnusedColumn(const QStyleOption* option) {
  const auto* row = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  const bool isUsed = row == nullptr || row->menuHasCheckableItems || row->maxIconWidth > 0;
  return isUsed ? 0 : kCheckColumn;
}

// Fusion for a finger on a small screen: three buttons of a message fit 240 units, and each is high
// enough to be hit. It also meets every field and every menu that is shown.
class FingerStyle : public QProxyStyle {
 public:
  FingerStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

  QPalette standardPalette() const override { return LightPalette(); }

  using QProxyStyle::polish;
  // Every palette of the desktop comes through here, the one of a kind of widget too, at the start
  // and whenever its user changes it.
  void polish(QPalette& palette) override { palette = LightPalette(); }
  void polish(QWidget* widget) override {
    QProxyStyle::polish(widget);
    if (auto* line = qobject_cast<QLineEdit*>(widget)) KeepToOneLine(*line);
    if (auto* menu = qobject_cast<QMenu*>(widget)) KeepInWindow(*menu);
  }

  QIcon standardIcon(StandardPixmap picture, const QStyleOption* option,
                     const QWidget* widget) const override {
    const QIcon sign = MessageIcon(picture);
    return sign.isNull() ? QProxyStyle::standardIcon(picture, option, widget) : sign;
  }

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
  }

  int pixelMetric(PixelMetric metric, const QStyleOption* option,
                  const QWidget* widget) const override {
    if (metric == PM_MessageBoxIconSize) return 32;
    if (metric == PM_ScrollBarExtent && HasTouchScreen()) return Scaled(kFingerBar);
    return QProxyStyle::pixelMetric(metric, option, widget);
  }

  // A row without the column for checks begins to the left of its menu, which clips it.
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override {
    if (element == CE_CheckBoxLabel) return DrawCheckBoxLabel(option, painter, widget);
    if (element == CE_PushButton) {
      QProxyStyle::drawControl(element, option, painter, widget);
      return DrawFocus(option, painter, widget);
    }
    const int column = element == CE_MenuItem ? UnusedColumn(option) : 0;
    if (column == 0) return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionMenuItem row = *qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    row.rect.setLeft(row.rect.left() - column);
    QProxyStyle::drawControl(element, &row, painter, widget);
  }

  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                          QPainter* painter, const QWidget* widget) const override {
    QProxyStyle::drawComplexControl(control, option, painter, widget);
    if (control == CC_ToolButton || control == CC_ComboBox) DrawFocus(option, painter, widget);
  }

  // Fusion's own is a line that is hardly seen at a pixel a unit, and nothing after a tap.
  static void DrawFocus(const QStyleOption* option, QPainter* painter, const QWidget* widget) {
    if (widget != nullptr && (option->state & State_HasFocus) != 0) {
      PaintFocusFrame(*painter, *widget);
    }
  }

  // A field's name is its user's own and may be longer than the place of its box.
  void DrawCheckBoxLabel(const QStyleOption* option, QPainter* painter,
                         const QWidget* widget) const {
    QStyleOptionButton label = *qstyleoption_cast<const QStyleOptionButton*>(option);
    label.text = label.fontMetrics.elidedText(label.text, Qt::ElideRight, label.rect.width(),
                                              Qt::TextShowMnemonic);
    QProxyStyle::drawControl(CE_CheckBoxLabel, &label, painter, widget);
  }

  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                         const QWidget* widget) const override {
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_MenuItem && size.height() > kSeparatorHeight) {
      const int height = RowHeight(qobject_cast<const QMenu*>(widget));
      return QSize(size.width() - UnusedColumn(option),
                   qMax(height, contents.height() + Scaled(1)));
    }
    const bool inDialog = type == CT_PushButton && widget != nullptr &&
                          qobject_cast<QDialogButtonBox*>(widget->parentWidget()) != nullptr;
    return inDialog ? QSize(qMax(60, contents.width() + 10), qMax(30, size.height())) : size;
  }
};

// The classes for which a desktop may have had a palette of its own before our style was there to
// meet it.
constexpr const char* kDesktopColored[] = {"QAbstractButton", "QAbstractItemView", "QCheckBox",
                                           "QComboBox",       "QGroupBox",         "QHeaderView",
                                           "QLabel",          "QLineEdit",         "QMenu",
                                           "QMenuBar",        "QMessageBoxLabel",  "QPushButton",
                                           "QRadioButton",    "QTabBar",           "QTextControl",
                                           "QTextEdit",       "QTipLabel",         "QToolButton"};

void SetLightPalette() {
  QApplication::setPalette(LightPalette());
  for (const char* name : kDesktopColored) QApplication::setPalette(QPalette(), name);
}

void SubstituteFonts() {
  QFont::insertSubstitutions(QStringLiteral("MS UI Gothic"),
                             {QStringLiteral("VL PGothic"), QStringLiteral("IPAPGothic"),
                              QStringLiteral("Noto Sans CJK JP")});
  QFont::insertSubstitutions(QStringLiteral("MS Gothic"),
                             {QStringLiteral("VL Gothic"), QStringLiteral("IPAGothic"),
                              QStringLiteral("Noto Sans Mono CJK JP")});
}

void SpeakJapanese(QApplication& application) {
  const QLocale japanese(QLocale::Japanese, QLocale::Japan);
  QLocale::setDefault(japanese);
  // The application object has taken over the user's locale, which may write 1,5 for 1.5.
  std::setlocale(LC_NUMERIC, "C");
  auto* translator = new QTranslator(&application);
  if (translator->load(japanese, QStringLiteral("qtbase"), QStringLiteral("_"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(translator);
  }
}

}  // namespace

ScreenPlan ScaleToScreen(int& argc, char** argv) {
  usersScale = qgetenv(kScaleVariable);
  const double usersPixels = usersScale.toDouble();  // 0 where it's no number
  qunsetenv(kScaleVariable);
  ScreenPlan plan;
  {
    const QGuiApplication probe(argc, argv);
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
      const QSize pixels = screen->size();
      const QSize millimetres = screen->physicalSize().toSize();
      const ScreenSize size{pixels.width(), pixels.height(), millimetres.width(),
                            millimetres.height()};
      plan = usersPixels > 0 ? PlanScreen(size, usersPixels) : PlanScreen(size);
    }
  }
  qputenv(kScaleVariable, QByteArray::number(plan.pixelsPerUnit));
  return plan;
}

void DressApplication(QApplication& application) {
  // Ours isn't for the browser that we may start.
  usersScale.isEmpty() ? qunsetenv(kScaleVariable) : qputenv(kScaleVariable, usersScale);
  QApplication::setStyle(new FingerStyle);
  new InputFilter(&application);
  new TouchWatch(&application);
  SetLightPalette();
  SubstituteFonts();
  QApplication::setFont(FixedFont(12));
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  QApplication::setWindowIcon(ProgramIcon());
  QGuiApplication::setDesktopFileName(QStringLiteral("org.morvenly.Morvenly"));
  application.installEventFilter(new PreeditWatch(&application));
  SpeakJapanese(application);
}

}  // namespace platform::qt
