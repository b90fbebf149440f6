// The dialogue with the user about a position.
#include "position/position_fields.h"

#include <utility>

#include "position/map_link.h"
#include "position/position_request.h"

namespace position {
namespace {

using platform::Icon;

// A field may show kAcquiring already: asked again, or left so by a screen that was closed over it.
void SetAside(std::u16string& field, std::u16string& kept) {
  if (field != kAcquiring) kept = std::exchange(field, kAcquiring);
}

// A field that something else was put into meanwhile, another Action's position perhaps, stays.
void PutBackOne(std::u16string& field, std::u16string& kept) {
  const std::u16string text = std::exchange(kept, {});
  if (field == kAcquiring) field = text;
}

}  // namespace

void PositionFields::Request(platform::WindowId window) {
  SetAside(latitude_, keptLatitude_);
  SetAside(longitude_, keptLongitude_);
  if (StartPositionRequest(window, kPositionArrived) >= 0) return;
  PutBack();
  platform::ShowNotice(u"位置情報を取得できません。\ngpsdが動作しているか確認してください。",
                       u"位置情報取得", Icon::kWarning);
}

// Without a reading, somebody has asked again since it arrived, and gets the next one.
std::optional<Position> PositionFields::OnArrived() {
  const std::optional<platform::GPS_POSITION> reading = LastReading();
  if (reading) last_ = {reading->dblLatitude, reading->dblLongitude};
  if (reading && Offer(u"位置情報を取得しました。値を取り込みますか？", u"位置情報取得"))
    return last_;
  PutBack();
  return {};
}

std::optional<Position> PositionFields::OfferLast() {
  if (!last_) {
    platform::ShowNotice(u"位置情報は未取得です。", u"位置情報未取得", Icon::kInformation);
    return {};
  }
  if (!Offer(u"現在の位置情報は以下の値です。値を取り込みますか？", u"位置情報")) return {};
  return last_;
}

bool PositionFields::Offer(std::u16string_view question, std::u16string_view title) {
  const std::u16string latitude = FormatCoordinate(last_->latitude);
  const std::u16string longitude = FormatCoordinate(last_->longitude);
  if (!platform::AskYesNo(std::u16string(question) + u"\nLat:" + latitude + u"\nLon:" + longitude,
                          std::u16string(title))) {
    return false;
  }
  latitude_ = latitude;
  longitude_ = longitude;
  return true;
}

void PositionFields::PutBack() {
  PutBackOne(latitude_, keptLatitude_);
  PutBackOne(longitude_, keptLongitude_);
}

void PositionFields::Clear() {
  latitude_.clear();
  longitude_.clear();
}

void PositionFields::OpenMap() const {
  double latitude = 0.0, longitude = 0.0;
  if (ParseCoordinate(latitude_, latitude) != 0 || ParseCoordinate(longitude_, longitude) != 0) {
    platform::ShowNotice(u"位置情報が未取得です。", u"位置情報未取得", Icon::kStop);
  } else {
    platform::host().OpenLink(MapLink(latitude, longitude));
  }
}

}  // namespace position
