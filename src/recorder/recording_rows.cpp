// Dates and times are compared as texts: their stored forms sort as time does.
#include "recorder/recording_rows.h"

#include <algorithm>

#include "core/date_time.h"
#include "position/coordinate.h"
#include "store/read_action.h"
#include "store/session.h"

namespace recorder {
namespace {

using store::Action;
using store::TextOf;

Moment Split(std::u16string_view dateTime) {
  const core::MomentText moment = core::SplitMoment(dateTime);
  return {std::u16string(moment.date), std::u16string(moment.time)};
}

std::u16string Join(const Moment& moment) {
  return moment.date + u' ' + moment.time;
}

bool IsAllDay(const Moment& start, const Moment& end) {
  return start.time == core::kStartOfDay && end.time == core::kEndOfDay;
}

Moment EndOf(const Action& action) {
  return Split(TextOf(action, store::kEndDateTime));
}

}  // namespace

Moment StartOf(const Action& action) {
  return Split(TextOf(action, store::kStaDateTime));
}

Action NewAction(const Moment& start, const RecorderFields& fields) {
  Action action;
  action[store::kStaDateTime] = action[store::kEndDateTime] = Join(start);
  action[store::kLatitude] = position::DecimalDegrees(fields.latitude);
  action[store::kLongitude] = position::DecimalDegrees(fields.longitude);
  action[store::kSubject] = u"";
  action[store::kPlace] = fields.place;
  action[store::kCategory1] = fields.category1;
  action[store::kCategory2] = fields.category2;
  action[store::kMemo] = u"";
  return action;
}

void CloseAction(Action& action, const Moment& tap, std::u16string_view place,
                 std::u16string_view separator) {
  const Moment start = StartOf(action);
  Moment end;
  if (IsAllDay(start, EndOf(action))) {
    end = {std::max(start.date, tap.date), std::u16string(core::kEndOfDay)};
  } else {
    core::LaterDateTime(start.date, start.time, tap.date, tap.time, end.date, end.time);
  }
  action[store::kStaDateTime] = Join(start);
  action[store::kEndDateTime] = Join(end);
  action[store::kLastUpdate].reset();  // the update stamps it
  const std::u16string_view formerPlace = TextOf(action, store::kPlace);
  if (formerPlace == place) return;
  action[store::kPlace] =
      std::u16string(formerPlace) + std::u16string(separator) + std::u16string(place);
}

void TakeEndBack(Action& action) {
  const Moment start = StartOf(action);
  Moment end = start;
  if (IsAllDay(start, EndOf(action))) end.time = core::kEndOfDay;
  action[store::kStaDateTime] = Join(start);
  action[store::kEndDateTime] = Join(end);
}

bool TakeMovementBack(Action& action, std::u16string_view separator) {
  const std::u16string_view place = TextOf(action, store::kPlace);
  const size_t position = separator.empty() ? place.npos : place.rfind(separator);
  if (position == place.npos || position == 0) return false;
  action[store::kPlace]->resize(position);
  return true;
}

std::u16string ListLine(const Action& action, bool isRunning) {
  const Moment start = StartOf(action);
  std::u16string line = start.date + u' ';
  line += IsAllDay(start, EndOf(action)) ? u"終日" : start.time.substr(0, 5);
  line += u"::";
  line += TextOf(action, store::kPlace);
  line += isRunning ? u"...::" : u"::";
  line += TextOf(action, store::kCategory1);
  line += u"::";
  line += TextOf(action, store::kCategory2);
  return line;
}

Found ReadRow(std::u16string_view id, const ReadSite& site, Action& action) {
  const store::ActionRead read = store::ReadAction(id, action);
  if (!store::Failed(read.result)) {
    return read.result == store::DB_S_ENDOFROWSET ? Found::kNo : Found::kYes;
  }
  const std::u16string reader(read.selected ? site.readName : site.selectName);
  Tell(store::FaultText(reader + u' ' + std::u16string(read.Step()),
                        read.selected ? site.readLine : site.selectLine, read.result),
       kFaultTitle, platform::Icon::kStop);
  return Found::kFailed;
}

void Tell(std::u16string_view text, std::u16string_view title, platform::Icon icon) {
  if (store::dbSession().Session) store::dbSession().Session->EndBurst();
  platform::ShowNotice(std::u16string(text), std::u16string(title), icon);
}

}  // namespace recorder
