#include "app/versions/VersionPicture.h"

#include <QPainter>

#include "app/companions/MiniMapPicture.h"
#include "model/MapIndex.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr std::size_t atOnce = 100'000;

}  // namespace

QImage versionPicture(const MindMap& map, QSize size, qreal devicePixelRatio) {
  const QColor ground = colorFromHex(map.canvas.background);
  const bool isLight = ground.lightnessF() > 0.5;
  QImage image((QSizeF(size) * devicePixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(devicePixelRatio);
  image.fill(ground);
  const MapIndex index(map.nodes, map.edges);
  const auto geometry = MiniMapGeometry::of(index.positions(), size);
  if (!geometry) return image;
  QColor ink = isLight ? QColor(Qt::black) : QColor(Qt::white);
  ink.setAlphaF(0.75F);
  QColor line = ink;
  line.setAlphaF(0.35F);
  MiniMapPicture picture(*geometry, size, devicePixelRatio, line, ink);
  while (!picture.advance(index, atOnce)) continue;
  QPainter painter(&image);
  painter.drawImage(QPointF(), picture.image());
  return image;
}

}  // namespace quilmora
