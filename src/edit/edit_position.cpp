// The position commands, and what a position does to the Action.
#include "edit/edit_action.h"

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

void CEditAction::PutAt(const position::Position& position) {
  PutPosition(OfDegrees(position.latitude), OfDegrees(position.longitude));
}

void CEditAction::PutPosition(const PositionText& latitude, const PositionText& longitude) {
  latitude_ = latitude;
  longitude_ = longitude;
  fields.latitude = latitude.shown;
  fields.longitude = longitude.shown;
}

}  // namespace edit
