#pragma once

#include <array>
#include <random>

#include <QBuffer>
#include <QImage>

#include "support/SmallMap.h"

namespace quilmora::test {

inline QString imageFileText(QSize size, int seed) {
  QImage image(size, QImage::Format_ARGB32);
  std::mt19937 random(static_cast<unsigned>(seed));
  for (int y = 0; y < size.height(); ++y)
    for (int x = 0; x < size.width(); ++x)
      image.setPixel(x, y,
                     qRgba(x * 255 / size.width(), y * 255 / size.height(), random() % 256, 128 + random() % 128));
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return QString::fromLatin1(bytes.toBase64());
}

// A map with everything that a picture can show, crowded into a square of this side, at odd positions. Equal calls give
// equal maps.
inline MindMap pictureMap(int count, double side, unsigned seed = 1) {
  static const std::array<QString, 8> titles{QStringLiteral("Plain"),
                                             QStringLiteral("A title that is so long that it takes several lines"),
                                             QStringLiteral("שלום עולם"),
                                             QStringLiteral("مرحبا بالعالم"),
                                             QStringLiteral("研究とまとめ"),
                                             QStringLiteral("Two\nlines"),
                                             QString(),
                                             QStringLiteral("Zoë’s naïve café 🇨🇭")};
  static const std::array<QString, 5> colors{QStringLiteral("#4A148C"), QStringLiteral("#F4D35E"),
                                             QStringLiteral("#0D3B66"), QStringLiteral("#EE964B"),
                                             QStringLiteral("#FAF0CA")};
  std::mt19937 random(seed);
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  const auto place = [&] { return below(1 << 20) * side / (1 << 20); };
  MindMap map;
  map.title = QStringLiteral("Picture");
  map.canvas = CanvasConfig::defaultConfig();
  map.canvas.background = QStringLiteral("#FBF7EF");
  for (int i = 0; i < count; ++i) {
    Node node = topic(i, place(), place());
    node.title = titles[static_cast<std::size_t>(below(8))];
    node.style.fill = colors[static_cast<std::size_t>(below(5))];
    node.style.stroke = colors[static_cast<std::size_t>(below(5))];
    node.style.textColor = below(2) ? QStringLiteral("#FFFFFF") : QStringLiteral("#101010");
    node.style.bold = below(4) == 0;
    node.style.italic = below(4) == 0;
    if (below(3) == 0) node.style.fillGradient = colors[static_cast<std::size_t>(below(5))];
    if (below(3) == 0) node.badge = static_cast<Badge>(below(6));
    if (below(4) == 0) node.emoji = QStringLiteral("🚀");
    if (below(4) == 0) node.icon = IconRef{IconRef::IconType::sfSymbol, QStringLiteral("star.fill")};
    if (below(3) == 0) node.notes = QStringLiteral("A note");
    if (below(3) == 0) node.url = QStringLiteral("https://example.org");
    if (below(3) == 0) node.aiGenerated = true;
    if (below(5) == 0) node.imageData = imageFileText(QSize(37 + below(300), 29 + below(200)), i);
    map.nodes.append(node);
    if (i == 0) continue;
    Edge edge = edgeBetween(i, below(i), i);
    edge.style.color = colors[static_cast<std::size_t>(below(5))];
    edge.style.dashed = below(3) == 0;
    edge.style.arrowHead = below(2) ? EdgeStyle::ArrowHead::triangle : EdgeStyle::ArrowHead::none;
    edge.style.taper = {below(300) / 10.0, below(200) / 10.0, static_cast<EdgeStyle::TaperEasing>(below(3))};
    if (below(3) == 0) edge.controlPointOffset = QPointF(30, -50);
    map.edges.append(edge);
  }
  return map;
}

}  // namespace quilmora::test
