// A painted surface as those know it who cannot see it: the things on it have names and places, and
// can be pressed. A screen reader gets them as the children of the surface.
#pragma once

#include <QAccessible>
#include <QRect>
#include <QString>
#include <functional>
#include <vector>

namespace touch {

struct Spot {
  QRect place;  // on the surface
  QString name;
  std::function<void()> press;
  bool isCurrent = false;  // the one that the keys have reached
};

// Mixed into a widget. Its spots are asked for whenever somebody looks: nothing is kept of them.
class Surface {
 public:
  Surface();
  virtual ~Surface() = default;

  virtual std::vector<Spot> Spots() const = 0;
  // Of the surface, and of each spot.
  virtual QAccessible::Role Role() const { return QAccessible::List; }
  virtual QAccessible::Role SpotRole() const { return QAccessible::ListItem; }
};

// Says that the current spot is another one, if anybody listens.
void TellCurrentSpot(QWidget& surface);

}  // namespace touch
