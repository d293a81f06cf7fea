#include <cmath>

#include <gtest/gtest.h>

#include "canvas/painting/PaintedMap.h"

namespace quilmora {
namespace {

QColor blended(const QColor& above, double opacity, const QColor& below) {
  const auto mix = [opacity](int a, int b) { return static_cast<int>(std::lround(a * opacity + b * (1 - opacity))); };
  return QColor(mix(above.red(), below.red()), mix(above.green(), below.green()), mix(above.blue(), below.blue()));
}

TEST(Lens, DimsATopicAsOnePicture) {
  PaintedMap painted;
  painted.map.canvas.background = QStringLiteral("#F0F0E0");
  painted.addNode(QPointF(0, 0), QStringLiteral("Lisbon and Porto"), "#2060C0", "#102030");
  painted.changeNode(0, [](Node& node) {
    node.badge = Badge::blocked;
    node.notes = QStringLiteral("notes");
  });
  const QImage plain = painted.paint();
  painted.scene.nodeOpacity = [](const Node&) { return 0.2; };
  const QImage dimmed = painted.paint();
  const QColor ground(0xF0F0E0);
  const QRect box = painted.metrics(0).box.translated(200, 150).toRect().adjusted(-4, -4, 4, 4);
  for (int y = box.top(); y <= box.bottom(); ++y)
    for (int x = box.left(); x <= box.right(); ++x) {
      const QColor wanted = blended(plain.pixelColor(x, y), 0.2, ground);
      EXPECT_LE(colorDistance(dimmed.pixelColor(x, y), wanted), 3) << x << ' ' << y;
    }
}

TEST(Lens, LetsNoConnectorShineThroughADimmedBody) {
  PaintedMap painted;
  painted.map.canvas.background = QStringLiteral("#F0F0E0");
  Region region{QUuid::createUuid(), QString(), QStringLiteral("#7C4DFF"), QRectF(-180, -140, 360, 120)};
  painted.map.regions.append(region);
  const QUuid a = painted.addNode(QPointF(-150, 0), QString(40, QLatin1Char(' ')), "#2060C0", "#102030");
  const QUuid b = painted.addNode(QPointF(150, 0), QString(40, QLatin1Char(' ')), "#2060C0", "#102030");
  painted.scene.nodeOpacity = [](const Node&) { return 0.2; };
  const QImage without = painted.paint();
  painted.addEdge(a, b, "#FF0000", 12.0);
  const QImage with = painted.paint();
  const QRectF box = painted.metrics(0).box;
  for (double x = box.left() + 2; x < box.right() - 2; x += 2)
    EXPECT_EQ(painted.at(with, QPointF(-150 + x, 2)), painted.at(without, QPointF(-150 + x, 2)));
  EXPECT_NE(painted.at(with, QPointF(0, 0)), painted.at(without, QPointF(0, 0)));
}

TEST(Lens, LetsATopicBehindShineThrough) {
  PaintedMap painted;
  painted.addNode(QPointF(0, 0), QString(40, QLatin1Char(' ')), "#FF0000", "#FF0000");
  painted.addNode(QPointF(0, 0), QString(40, QLatin1Char(' ')), "#0000FF", "#0000FF");
  painted.scene.nodeOpacity = [&](const Node& node) { return node.style.fill == u"#0000FF" ? 0.25 : 1.0; };
  EXPECT_LE(colorDistance(painted.at(painted.paint(), QPointF(0, 5)), QColor(191, 0, 64)), 3);
}

TEST(SelectionRing, IsSeenOnAFillOfItsOwnColour) {
  for (const double zoom : {0.2, 0.5, 1.0, 2.25}) {
    PaintedMap painted;
    const QUuid id = painted.addNode(QPointF(0, 0), QStringLiteral("Blue"), "#0A6CFF", "#0A6CFF");
    const QImage resting = painted.paint(QSize(400, 300), 1.0, zoom);
    painted.selectedNodes.insert(id);
    const QImage selected = painted.paint(QSize(400, 300), 1.0, zoom);
    // Upwards from the middle of the top edge: fill, a gap of background, the ring, the background.
    const double top = painted.metrics(0).box.top() * zoom + 150;
    int column = 200;
    int changes = 0;
    bool wasBlue = true;
    for (int y = static_cast<int>(top) + 3; y > top - 14; --y) {
      const QColor color = selected.pixelColor(column, y);
      const bool isBlue = color.red() < 130;
      changes += isBlue != wasBlue;
      wasBlue = isBlue;
    }
    EXPECT_EQ(changes, 3) << zoom;
    EXPECT_NE(resting, selected);
  }
}

}  // namespace
}  // namespace quilmora
