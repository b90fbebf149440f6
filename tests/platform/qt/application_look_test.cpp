#include "platform/qt/application_look.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMenu>
#include <QToolTip>
#include <cmath>

namespace {

double Luminance(const QColor& color) {
  const auto part = [](double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

}  // namespace

TEST(ApplicationLook, IsLightAndReadableWhateverTheDesktopWears) {
  const QPalette dark(Qt::white, Qt::black, Qt::black, Qt::black, Qt::black, Qt::white, Qt::black);
  for (const char* kind : {"QMenu", "QLineEdit", "QTipLabel"}) QApplication::setPalette(dark, kind);
  const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
      {QPalette::WindowText, QPalette::Window},
      {QPalette::Text, QPalette::Base},
      {QPalette::Text, QPalette::Window},
      {QPalette::ButtonText, QPalette::Button},
      {QPalette::PlaceholderText, QPalette::Base},
      {QPalette::Link, QPalette::Window},
      {QPalette::LinkVisited, QPalette::Window},
      {QPalette::ToolTipText, QPalette::ToolTipBase},
      {QPalette::HighlightedText, QPalette::Highlight}};
  const std::pair<const char*, QPalette> palettes[] = {{"a menu", QMenu().palette()},
                                                       {"a line", QLineEdit().palette()},
                                                       {"a tip", QToolTip::palette()},
                                                       {"all else", QApplication::palette()}};
  for (const auto& [of, palette] : palettes) {
    SCOPED_TRACE(of);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
      for (const auto& [text, ground] : pairs) {
        const double on = Luminance(palette.color(group, ground)) + 0.05;
        const double ink = Luminance(palette.color(group, text)) + 0.05;
        EXPECT_GE(std::max(on, ink) / std::min(on, ink), 4.5) << group << " " << text;
      }
      EXPECT_EQ(palette.color(group, QPalette::Window), QApplication::palette().window().color())
          << group;
    }
  }
}
