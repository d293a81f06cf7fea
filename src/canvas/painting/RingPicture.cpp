#include "canvas/painting/RingPicture.h"

#include <cmath>

#include <QPainter>

namespace quilmora {

void RingPicture::prepare(const Look& look) {
  if (!m_picture.isNull() && look == m_look) return;
  m_look = look;
  m_reach = static_cast<int>(std::ceil(look.gap + look.width));
  m_side = static_cast<int>(std::ceil(look.radius + look.width / 2)) + 2;
  m_picture = QImage(2 * m_side, 2 * m_side, QImage::Format_ARGB32_Premultiplied);
  m_picture.fill(Qt::transparent);
  QPainter painter(&m_picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(look.color), look.width));
  const double inset = m_reach - look.gap - look.width / 2;
  painter.drawRoundedRect(QRectF(m_picture.rect()).adjusted(inset, inset, -inset, -inset), look.radius, look.radius);
}

bool RingPicture::paint(QPainter& painter, const QRect& box, const Look& look) {
  prepare(look);
  const QRect ring = box.adjusted(-m_reach, -m_reach, m_reach, m_reach);
  if (ring.width() < 2 * m_side || ring.height() < 2 * m_side) return false;
  const int right = ring.x() + ring.width();
  const int bottom = ring.y() + ring.height();
  painter.drawImage(ring.x(), ring.y(), m_picture, 0, 0, m_side, m_side);
  painter.drawImage(right - m_side, ring.y(), m_picture, m_side, 0, m_side, m_side);
  painter.drawImage(ring.x(), bottom - m_side, m_picture, 0, m_side, m_side, m_side);
  painter.drawImage(right - m_side, bottom - m_side, m_picture, m_side, m_side, m_side, m_side);
  const int across = ring.width() - 2 * m_side;
  const int down = ring.height() - 2 * m_side;
  // Between its corners each row and column of the ring has one colour.
  for (int k = 0; k < m_side; ++k) {
    const QColor color = m_picture.pixelColor(k, m_side);
    if (color.alpha() == 0) continue;
    painter.fillRect(ring.x() + k, ring.y() + m_side, 1, down, color);
    painter.fillRect(right - 1 - k, ring.y() + m_side, 1, down, color);
    painter.fillRect(ring.x() + m_side, ring.y() + k, across, 1, color);
    painter.fillRect(ring.x() + m_side, bottom - 1 - k, across, 1, color);
  }
  return true;
}

}  // namespace quilmora
