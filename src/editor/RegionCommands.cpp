#include "editor/MindMapViewModel.h"
#include "editor/edits/RegionEdits.h"
#include "model/FindById.h"

namespace quilmora {

void MindMapViewModel::createRegion(std::optional<QPointF> point) {
  captureSnapshot(false);
  const QRectF rect = edits::newRegionRect(mapIndex(), selectedNodeIDs(), point);
  const Region region = edits::newRegion(mindMap().regions.size(), rect);
  // updatedAt stays as it is.
  edit([&](MindMap& map) { map.regions.append(region); });
  setSelectedRegionID(region.id);
  setSelectedNodeIDs({});
  setSelectedEdgeIDs({});
}

void MindMapViewModel::deleteRegion(const QUuid& id) {
  captureSnapshot(false);
  edit([&](MindMap& map) { eraseByID(map.regions, id); });
  if (selectedRegionID() == id) setSelectedRegionID(std::nullopt);
}

// Unlike a deletion, editing a region that no longer exists changes nothing at all.
void MindMapViewModel::editRegion(const QUuid& id, bool stamps, const std::function<void(Region&)>& change) {
  const std::optional<std::size_t> ordinal = ordinalOf(mindMap().regions, id);
  if (!ordinal) return;
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.regions.update(*ordinal, change);
    if (stamps) stamp(map);
  });
}

void MindMapViewModel::moveRegion(const QUuid& id, QPointF translation) {
  editRegion(id, true, [&](Region& region) { region.rect.translate(translation); });
}

void MindMapViewModel::resizeRegion(const QUuid& id, QSizeF delta) {
  editRegion(id, false, [&](Region& region) { region.rect.setSize(regionSize(region.rect.size() + delta)); });
}

void MindMapViewModel::setRegionLabel(const QUuid& id, const QString& label) {
  editRegion(id, false, [&](Region& region) { region.label = label; });
}

void MindMapViewModel::setRegionColor(const QUuid& id, const QString& color) {
  editRegion(id, true, [&](Region& region) { region.color = color; });
}

}  // namespace quilmora
