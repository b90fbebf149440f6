// The position commands, and what a position does to the Action.
#include "edit/edit_action.h"
#include "edit/position_text.h"

namespace edit {

void CEditAction::AskPosition() {
  positionFields_.Request(window);
}

void CEditAction::OnPositionArrived() {
  if (const auto position = positionFields_.OnArrived()) {
    PutAt(*position);
    dirty = true;
  }
}

void CEditAction::ShowPosition() {
  if (const auto position = positionFields_.OfferLast()) {
    PutAt(*position);
    dirty = true;
  }
}

// Kept on purpose: cleared fields alone are no change that is asked about.
void CEditAction::ClearPosition() {
  positionFields_.Clear();
}

void CEditAction::OpenMapLink() {
  positionFields_.OpenMap();
}

// What is stored keeps the digits, and the sign, that the fields don't show.
void CEditAction::PutAt(const position::Position& position) {
  loaded_[store::kLatitude] = position::DecimalDegrees(position.latitude);
  loaded_[store::kLongitude] = position::DecimalDegrees(position.longitude);
  fields.latitude = ShownPosition(loaded_[store::kLatitude]);
  fields.longitude = ShownPosition(loaded_[store::kLongitude]);
}

}  // namespace edit
