// The accessible interfaces of a surface and its spots.
#include "touch/qt/surface.h"

#include <QAccessibleWidget>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <algorithm>
#include <optional>

namespace touch {
namespace {

const Surface& SurfaceOf(const QWidget& widget) {
  return dynamic_cast<const Surface&>(widget);
}

// The n-th spot of a surface, whichever that is at the time.
class SpotInterface : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  SpotInterface(QWidget* surface, int index) : surface_(surface), index_(index) {}

  bool isValid() const override { return Get().has_value(); }
  QObject* object() const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(surface_);
  }
  QWindow* window() const override {
    return surface_ ? surface_->window()->windowHandle() : nullptr;
  }
  QAccessibleInterface* child(int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  QString text(QAccessible::Text which) const override {
    const auto spot = Get();
    return spot && which == QAccessible::Name ? spot->name : QString();
  }
  void setText(QAccessible::Text, const QString&) override {}
  QRect rect() const override {
    const auto spot = Get();
    if (!spot) return {};
    const QRect inSight = spot->place & surface_->rect();
    return {surface_->mapToGlobal(inSight.topLeft()), inSight.size()};
  }
  QAccessible::Role role() const override {
    return surface_ ? SurfaceOf(*surface_).SpotRole() : QAccessible::NoRole;
  }
  QAccessible::State state() const override {
    QAccessible::State state;
    const auto spot = Get();
    state.invalid = !spot;
    if (!spot) return state;
    state.disabled = !surface_->isEnabled();
    state.invisible = !surface_->isVisible();
    state.offscreen = !spot->place.intersects(surface_->rect());
    state.selectable = true;
    state.selected = spot->isCurrent;
    state.focusable = surface_->focusPolicy() != Qt::NoFocus;
    state.focused = spot->isCurrent && surface_->hasFocus();
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
  }
  QStringList actionNames() const override { return {pressAction()}; }
  // From the event loop: a press may open a screen, and whoever asked for it waits.
  void doAction(const QString& name) override {
    const auto spot = Get();
    if (spot && name == pressAction()) QTimer::singleShot(0, surface_, spot->press);
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  std::optional<Spot> Get() const {
    if (surface_ == nullptr) return {};
    std::vector<Spot> spots = SurfaceOf(*surface_).Spots();
    if (index_ >= std::ssize(spots)) return {};
    return std::move(spots[static_cast<size_t>(index_)]);
  }

  QPointer<QWidget> surface_;
  int index_;
};

class SurfaceInterface : public QAccessibleWidget {
 public:
  explicit SurfaceInterface(QWidget* surface)
      : QAccessibleWidget(surface, SurfaceOf(*surface).Role()) {}
  ~SurfaceInterface() override {
    for (const QAccessible::Id id : spots_) QAccessible::deleteAccessibleInterface(id);
  }

  // The value of a surface is that of its current spot.
  QString text(QAccessible::Text which) const override {
    if (which != QAccessible::Value && which != QAccessible::Description) {
      return QAccessibleWidget::text(which);
    }
    const std::vector<Spot> spots = SurfaceOf(*widget()).Spots();
    const auto current = std::ranges::find_if(spots, &Spot::isCurrent);
    return current == spots.end() ? QString() : current->name;
  }
  int childCount() const override { return static_cast<int>(SurfaceOf(*widget()).Spots().size()); }
  QAccessibleInterface* child(int index) const override {
    if (index < 0 || index >= childCount()) return nullptr;
    while (index >= std::ssize(spots_)) {
      auto* spot = new SpotInterface(widget(), static_cast<int>(spots_.size()));
      spots_.push_back(QAccessible::registerAccessibleInterface(spot));
    }
    return QAccessible::accessibleInterface(spots_[static_cast<size_t>(index)]);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    const auto isChild = [child](QAccessible::Id id) {
      return QAccessible::accessibleInterface(id) == child;
    };
    const auto found = std::ranges::find_if(spots_, isChild);
    return found == spots_.end() ? -1 : static_cast<int>(found - spots_.begin());
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    const std::vector<Spot> spots = SurfaceOf(*widget()).Spots();
    const QPoint at = widget()->mapFromGlobal(QPoint(x, y));
    for (int i = static_cast<int>(spots.size()) - 1; i >= 0; --i) {
      if (spots[static_cast<size_t>(i)].place.contains(at)) return child(i);
    }
    return nullptr;
  }
  QAccessibleInterface* focusChild() const override {
    if (!widget()->hasFocus()) return nullptr;
    const std::vector<Spot> spots = SurfaceOf(*widget()).Spots();
    const auto current = std::ranges::find_if(spots, &Spot::isCurrent);
    return current == spots.end() ? nullptr : child(static_cast<int>(current - spots.begin()));
  }

 private:
  mutable std::vector<QAccessible::Id> spots_;
};

QAccessibleInterface* MakeInterface(const QString&, QObject* object) {
  return dynamic_cast<Surface*>(object) == nullptr
             ? nullptr
             : new SurfaceInterface(static_cast<QWidget*>(object));
}

}  // namespace

Surface::Surface() {
  [[maybe_unused]] static const bool isInstalled =
      (QAccessible::installFactory(MakeInterface), true);
}

void TellCurrentSpot(QWidget& surface) {
  if (!QAccessible::isActive() || !surface.hasFocus()) return;
  const std::vector<Spot> spots = SurfaceOf(surface).Spots();
  const auto current = std::ranges::find_if(spots, &Spot::isCurrent);
  if (current == spots.end()) return;
  QAccessibleEvent focus(&surface, QAccessible::Focus);
  focus.setChild(static_cast<int>(current - spots.begin()));
  QAccessible::updateAccessibility(&focus);
}

}  // namespace touch
