#include <algorithm>
#include <array>

#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

constexpr double regionMargin = 80.0;
constexpr double regionLabelRoom = 20.0;
constexpr QSizeF newRegionSize(300.0, 200.0);
constexpr QPointF newRegionOrigin(250.0, 200.0);

const QString& newRegionColor(std::size_t regionCount) {
  static const std::array colors{QStringLiteral("#7C4DFF"), QStringLiteral("#FF7043"), QStringLiteral("#26A69A"),
                                 QStringLiteral("#FFCA28"), QStringLiteral("#EC407A"), QStringLiteral("#42A5F5"),
                                 QStringLiteral("#9CCC65")};
  return colors[regionCount % colors.size()];
}

}  // namespace

QRectF MindMapViewModel::newRegionRect(std::optional<QPointF> point) {
  std::optional<QPointF> low;
  QPointF high;
  for (const QUuid& id : m_selectedNodeIDs) {
    const std::uint32_t position = mapIndex().find(id);
    if (position == MapIndex::npos) continue;
    const QPointF center = m_index.positions()[position];
    if (!low) low = high = center;
    *low = QPointF(std::min(low->x(), center.x()), std::min(low->y(), center.y()));
    high = QPointF(std::max(high.x(), center.x()), std::max(high.y(), center.y()));
  }
  if (low)
    return QRectF(low->x() - regionMargin, low->y() - regionMargin - regionLabelRoom,
                  high.x() - low->x() + 2 * regionMargin, high.y() - low->y() + 2 * regionMargin + regionLabelRoom);
  if (point)
    return QRectF(QPointF(point->x() - newRegionSize.width() * 0.5, point->y() - newRegionSize.height() * 0.5),
                  newRegionSize);
  return QRectF(newRegionOrigin, newRegionSize);
}

void MindMapViewModel::createRegion(std::optional<QPointF> point) {
  captureSnapshot(false);
  const Region region{QUuid::createUuid(), QStringLiteral("Region"), newRegionColor(m_mindMap.regions.size()),
                      newRegionRect(point)};
  // updatedAt stays as it is.
  edit([&](MindMap& map) { map.regions.append(region); });
  setSelectedRegionID(region.id);
  setSelectedNodeIDs({});
  setSelectedEdgeIDs({});
}

void MindMapViewModel::deleteRegion(const QUuid& id) {
  captureSnapshot(false);
  edit([&](MindMap& map) { map.regions.eraseIf([&](const Region& region) { return region.id == id; }); });
  if (m_selectedRegionID == id) setSelectedRegionID(std::nullopt);
}

std::optional<Region> MindMapViewModel::regionByID(const QUuid& id) const {
  const auto& regions = m_mindMap.regions;
  const auto found =
      std::find_if(regions.begin(), regions.end(), [&](const Region& region) { return region.id == id; });
  return found == regions.end() ? std::nullopt : std::optional<Region>(*found);
}

QSizeF MindMapViewModel::regionSize(QSizeF wanted) {
  return wanted.expandedTo(minRegionSize);
}

// What a hand or a menu does to a region that has gone meanwhile leaves no trace, unlike a deletion.
void MindMapViewModel::editRegion(const QUuid& id, bool stamps, const std::function<void(Region&)>& change) {
  std::size_t index = 0;
  for (const Region& region : m_mindMap.regions) {
    if (region.id == id) break;
    ++index;
  }
  if (index == m_mindMap.regions.size()) return;
  captureSnapshot(false);
  edit([&](MindMap& map) {
    map.regions.update(index, change);
    if (stamps) map.updatedAt = m_services.clock.now();
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
