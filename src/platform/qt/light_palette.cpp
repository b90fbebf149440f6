#include "platform/qt/light_palette.h"

namespace platform::qt {
namespace {

struct RoleColor {
  QPalette::ColorRole role;
  QRgb color;
};

constexpr RoleColor kColors[] = {
    {QPalette::Window, 0xFFEFEFEF},        {QPalette::WindowText, 0xFF000000},
    {QPalette::Base, 0xFFFFFFFF},          {QPalette::Text, 0xFF000000},
    {QPalette::AlternateBase, 0xFFF7F7F7}, {QPalette::PlaceholderText, 0xFF6A6A6A},
    {QPalette::Button, 0xFFEFEFEF},        {QPalette::ButtonText, 0xFF000000},
    {QPalette::BrightText, 0xFF000000},    {QPalette::Light, 0xFFFFFFFF},
    {QPalette::Midlight, 0xFFE0E0E0},      {QPalette::Mid, 0xFFB8B8B8},
    {QPalette::Dark, 0xFF9F9F9F},          {QPalette::Shadow, 0xFF767676},
    {QPalette::Highlight, 0xFF2468A8},     {QPalette::HighlightedText, 0xFFFFFFFF},
    {QPalette::Link, 0xFF0050B0},          {QPalette::LinkVisited, 0xFF603090},
    {QPalette::ToolTipBase, 0xFFFFFFDC},   {QPalette::ToolTipText, 0xFF000000},
};

constexpr RoleColor kDisabledColors[] = {
    {QPalette::WindowText, 0xFF686868}, {QPalette::Text, 0xFF686868},
    {QPalette::ButtonText, 0xFF686868}, {QPalette::PlaceholderText, 0xFF686868},
    {QPalette::Base, 0xFFEFEFEF},       {QPalette::Highlight, 0xFF6E6E6E},
};

}  // namespace

QPalette LightPalette() {
  QPalette palette;
  for (const RoleColor& row : kColors) palette.setColor(QPalette::All, row.role, QColor(row.color));
  for (const RoleColor& row : kDisabledColors) {
    palette.setColor(QPalette::Disabled, row.role, QColor(row.color));
  }
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
  palette.setColor(QPalette::All, QPalette::Accent, palette.color(QPalette::Highlight));
#endif
  return palette;
}

}  // namespace platform::qt
