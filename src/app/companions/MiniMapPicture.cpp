#include "app/companions/MiniMapPicture.h"

#include <cmath>

#include <QPainter>

namespace quilmora {

namespace {

constexpr double edgeWidth = 0.5;
constexpr double topicRadius = 2.0;
// Dots shrink if they would cover more than this share of the overview, but not below this radius.
constexpr double maxDotShare = 0.3;
constexpr double minTopicRadius = 0.6;
// Examining an edge or topic and leaving it out costs about a twentieth of drawing it.
constexpr std::size_t seenPerDrawn = 20;

}  // namespace

MiniMapPicture::MiniMapPicture(const MiniMapGeometry& geometry, QSizeF miniMapSize, qreal devicePixelRatio,
                               QColor edgeColor, QColor topicColor)
    : m_geometry(geometry),
      m_edgeColor(edgeColor),
      m_topicColor(topicColor),
      m_image((miniMapSize * devicePixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied),
      m_drawnTopics(static_cast<std::size_t>(m_image.width()) * static_cast<std::size_t>(m_image.height()), 0) {
  m_image.setDevicePixelRatio(devicePixelRatio);
  m_image.fill(Qt::transparent);
}

std::uint32_t MiniMapPicture::pixelOf(QPointF miniMapPoint) const {
  const QPointF device = (miniMapPoint + m_geometry.inset()) * m_image.devicePixelRatio();
  const int x = std::clamp(static_cast<int>(device.x()), 0, m_image.width() - 1);
  const int y = std::clamp(static_cast<int>(device.y()), 0, m_image.height() - 1);
  return static_cast<std::uint32_t>(y * m_image.width() + x);
}

double MiniMapPicture::dotRadius(std::size_t topicCount, QSizeF miniMapSize) {
  const double area = std::max(1.0, miniMapSize.width() * miniMapSize.height());
  const double share = static_cast<double>(topicCount) * M_PI * topicRadius * topicRadius / area;
  return share <= maxDotShare ? topicRadius : std::max(minTopicRadius, topicRadius * std::sqrt(maxDotShare / share));
}

bool MiniMapPicture::advance(const MapIndex& index, std::size_t count) {
  QPainter painter(&m_image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(m_geometry.inset());
  std::size_t drawn = 0;
  std::size_t seen = 0;
  return advanceEdges(painter, index, drawn, seen, count) && advanceTopics(painter, index, drawn, seen, count);
}

bool MiniMapPicture::advanceEdges(QPainter& painter, const MapIndex& index, std::size_t& drawn, std::size_t& seen,
                                  std::size_t count) {
  const std::size_t edgeCount = index.edgeFrom().size();
  painter.setPen(QPen(m_edgeColor, edgeWidth));
  for (; m_nextEdge < edgeCount; ++m_nextEdge) {
    if (drawn >= count || seen >= count * seenPerDrawn) return false;
    ++seen;
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[m_nextEdge]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[m_nextEdge]];
    if (from == MapIndex::npos || to == MapIndex::npos) continue;
    const QPointF start = m_geometry.toMiniMap(index.positions()[from]);
    const QPointF end = m_geometry.toMiniMap(index.positions()[to]);
    const std::uint32_t startPixel = pixelOf(start);
    const std::uint32_t endPixel = pixelOf(end);
    if (startPixel == endPixel) continue;
    if (!m_drawnEdges.insert(quint64(startPixel) << 32 | endPixel).second) continue;
    painter.drawLine(start, end);
    ++drawn;
  }
  return true;
}

bool MiniMapPicture::advanceTopics(QPainter& painter, const MapIndex& index, std::size_t& drawn, std::size_t& seen,
                                   std::size_t count) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(m_topicColor);
  const double radius = dotRadius(index.positions().size(), QSizeF(m_image.size()) / m_image.devicePixelRatio());
  for (; m_nextTopic < index.positions().size(); ++m_nextTopic) {
    if (drawn >= count || seen >= count * seenPerDrawn) return false;
    ++seen;
    const QPointF point = m_geometry.toMiniMap(index.positions()[m_nextTopic]);
    if (std::exchange(m_drawnTopics[pixelOf(point)], 1)) continue;
    painter.drawEllipse(point, radius, radius);
    ++drawn;
  }
  return true;
}

}  // namespace quilmora
