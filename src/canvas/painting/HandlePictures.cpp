#include "canvas/painting/HandlePictures.h"

#include <cmath>

#include <QPainter>

namespace quilmora {

namespace {

constexpr std::size_t keptCount = 8;

}  // namespace

HandlePictures::Pictures& HandlePictures::picturesOf(const HandleLook& look, double scale) {
  for (auto known = m_kept.begin(); known != m_kept.end(); ++known) {
    // Transforms of the same zoom can differ by rounding.
    if (known->look != look || std::abs(known->scale - scale) > 1e-9 * scale) continue;
    m_kept.splice(m_kept.begin(), m_kept, known);
    return m_kept.front();
  }
  if (m_kept.size() >= keptCount) m_kept.pop_back();
  m_kept.push_front({look, scale, static_cast<int>(std::ceil(look.reach() * scale)) + 1, {}});
  return m_kept.front();
}

void HandlePictures::paint(QPainter& painter, QPointF center, const HandleLook& look, double scale) {
  Pictures& pictures = picturesOf(look, scale);
  const auto phasesOf = [](double place) { return static_cast<qint64>(std::floor(place * phases + 0.5)); };
  const auto pixelOf = [](qint64 steps) { return (steps < 0 ? steps - phases + 1 : steps) / phases; };
  const qint64 x = phasesOf(center.x());
  const qint64 y = phasesOf(center.y());
  const qint64 column = pixelOf(x);
  const qint64 row = pixelOf(y);
  const QPoint phase(static_cast<int>(x - column * phases), static_cast<int>(y - row * phases));
  QImage& image = pictures.images[static_cast<std::size_t>(phase.y() * phases + phase.x())];
  if (image.isNull()) {
    const int side = 2 * pictures.half + 2;
    image = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter onImage(&image);
    onImage.setRenderHint(QPainter::Antialiasing);
    paintHandle(onImage, QPointF(pictures.half, pictures.half) + QPointF(phase) / phases, look, scale);
  }
  painter.drawImage(QPoint(static_cast<int>(column), static_cast<int>(row)) - QPoint(pictures.half, pictures.half),
                    image);
}

}  // namespace quilmora
