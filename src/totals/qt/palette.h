// The colours of groups, which differ for colour-blind eyes too (Okabe and Ito's set without its
// black). Texts stand beside them and not on them.
#pragma once

#include <QColor>
#include <array>

#include "totals/columns.h"

namespace totals {

inline constexpr std::array<QRgb, kMostSlots> kSlotColors = {
    0xFF0072B2, 0xFFE69F00, 0xFF009E73, 0xFFCC79A7, 0xFF56B4E9, 0xFFD55E00, 0xFFF0E442};
inline constexpr QRgb kOthersColor = 0xFF999999;

inline QColor ColorOf(size_t slot) {
  return slot < kSlotColors.size() ? kSlotColors[slot] : kOthersColor;
}

inline constexpr QRgb kCurrentColor = 0xFFD55E00;  // the frame of what the keys have reached
inline constexpr QRgb kOpenColor = 0xFFD6E6F5;     // behind the opened bar
inline constexpr QRgb kGridColor = 0xFFC8C8C8;

}  // namespace totals
