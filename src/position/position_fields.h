// The two position fields of a screen and what the position commands do with them, alike on every
// screen that has them. Interface thread only.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"
#include "position/coordinate.h"

namespace position {

// The command by which a screen learns of the reading that it asked for.
inline constexpr uint16_t kPositionArrived = 33103;
// What both fields show while it is awaited.
inline constexpr std::u16string_view kAcquiring = u"取得中";

class PositionFields {
 public:
  // The texts are the screen's own, in the screen form of coordinates or empty; they outlive this.
  PositionFields(std::u16string& latitude, std::u16string& longitude)
      : latitude_(latitude), longitude_(longitude) {}

  // Asks for a reading; kPositionArrived is then posted to `window`. The fields show kAcquiring and
  // their texts are kept aside; where the receiver cannot be opened they come back, with a message.
  void Request(platform::WindowId window);
  // The reading has arrived: the position if the user wants it, which the fields then show.
  // Otherwise the kept texts are back, in the fields that still show kAcquiring.
  std::optional<Position> OnArrived();
  // Offers the last position that has arrived here, in the same way.
  std::optional<Position> OfferLast();
  void ForgetLast() { last_.reset(); }
  void Clear();
  // Opens the map page; a message where a field holds no coordinate.
  void OpenMap() const;

 private:
  bool Offer(std::u16string_view question, std::u16string_view title);
  void PutBack();

  std::u16string& latitude_;
  std::u16string& longitude_;
  std::u16string keptLatitude_, keptLongitude_;
  std::optional<Position> last_;
};

}  // namespace position
