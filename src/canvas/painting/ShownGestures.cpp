#include "canvas/painting/ShownGestures.h"

#include "model/RegionSize.h"

namespace quilmora {

QRectF displayRect(const Region& region, const RegionGesture& state) {
  QRectF rect = region.rect;
  if (state.draggingRegionID == region.id) rect.translate(state.dragOffset.width(), state.dragOffset.height());
  if (state.resizingRegionID == region.id) rect.setSize(regionSize(rect.size() + state.resizeDelta));
  return rect;
}

std::optional<ShownGestures::ConnectionDrag> ShownGestures::connectionDrag() const {
  if (!handleDragSourceID || !handleDragEndPoint) return std::nullopt;
  return ConnectionDrag{*handleDragSourceID, *handleDragEndPoint, handleDragTargetID};
}

std::optional<ShownGestures::DropTarget> ShownGestures::dropTarget() const {
  if (imageDropTargetID) return DropTarget{*imageDropTargetID, false};
  if (reparentTargetID) return DropTarget{*reparentTargetID, true};
  if (handleDragTargetID) return DropTarget{*handleDragTargetID, false};
  return std::nullopt;
}

}  // namespace quilmora
