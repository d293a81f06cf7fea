#include "canvas/view/RegionLayer.h"

#include "editor/edits/RegionEdits.h"

namespace quilmora {

QRectF displayRect(const Region& region, const RegionLayerState& state) {
  QRectF rect = region.rect;
  if (state.draggingRegionID == region.id) rect.translate(state.dragOffset.width(), state.dragOffset.height());
  if (state.resizingRegionID == region.id) rect.setSize(edits::regionSize(rect.size() + state.resizeDelta));
  return rect;
}

}  // namespace quilmora
