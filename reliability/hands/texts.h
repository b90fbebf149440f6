// What hands type, paste and commit.
#pragma once

#include <QMimeData>
#include <QString>
#include <random>

namespace hands {

using Chance = std::minstd_rand;

// 0 to `limit` - 1.
inline int Below(Chance& chance, int limit) {
  return static_cast<int>(chance() % static_cast<unsigned>(limit));
}
inline bool OneIn(Chance& chance, int n) {
  return Below(chance, n) == 0;
}

// A text of any kind: times, numbers, paths below the home folder, templates, Japanese, nonsense.
QString AnyText(Chance& chance);
// A few letters that may be typed key by key.
QString Keys(Chance& chance);
// What another program may have left in the clipboard; now and then nothing. The caller's.
QMimeData* AnyClipboard(Chance& chance);

}  // namespace hands
