#include <QPainter>
#include <gtest/gtest.h>

#include "canvas/painting/MapPainter.h"
#include "support/PictureMap.h"

namespace quilmora {
namespace {

// A picture of a map at twice its size, or parts of it.
class Picture {
 public:
  explicit Picture(const MindMap& map, double side)
      : m_map(map), m_index(map.nodes, map.edges), m_tree(m_index), m_side(side) {}

  QRect rect() const { return QRect(0, 0, static_cast<int>(2 * m_side) + 320, static_cast<int>(2 * m_side) + 320); }

  QImage paint(const QRect& part) {
    MapScene scene;
    scene.map = m_map;
    scene.index = m_index;
    scene.tree = m_tree;
    scene.view = {QPointF(160, 160), 2.0};
    scene.exposed = part;
    scene.pixelOrigin = part.topLeft();
    QImage image(part.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    m_painter.paint(painter, scene, PaintOptions::forExport());
    return image;
  }

  // How many pixels differ from the whole picture when it is cut into parts of this size.
  int differingPixels(QSize size) {
    const QImage whole = paint(rect());
    int count = 0;
    for (int top = 0; top < whole.height(); top += size.height())
      for (int left = 0; left < whole.width(); left += size.width()) {
        const QRect place = QRect(QPoint(left, top), size) & whole.rect();
        const QImage part = paint(place);
        for (int y = 0; y < place.height(); ++y)
          for (int x = 0; x < place.width(); ++x)
            if (part.pixel(x, y) != whole.pixel(left + x, top + y)) ++count;
      }
    return count;
  }

 private:
  MindMap m_map;
  MapIndex m_index;
  TreeInfo m_tree;
  MapPainter m_painter;
  double m_side;
};

TEST(ExactPixels, PartsOfAPictureFitTogether) {
  for (unsigned seed = 1; seed <= 4; ++seed) {
    Picture picture(test::pictureMap(60, 700.0, seed), 700.0);
    for (const QSize size : {QSize(1720, 64), QSize(1720, 131), QSize(97, 1720), QSize(211, 173)})
      EXPECT_EQ(picture.differingPixels(size), 0)
          << "seed " << seed << ", parts of " << size.width() << " x " << size.height();
  }
}

TEST(ExactPixels, LongEdgesFitTogether) {
  MindMap map = test::pictureMap(12, 300.0, 5);
  map.nodes.update(0, [](Node& node) { node.position = QPointF(150, 250'000.3); });
  map.nodes.update(1, [](Node& node) { node.position = QPointF(-400, -170'000.7); });
  for (int i = 2; i < 12; ++i) {
    map.edges.append(test::edgeBetween(100 + i, i, 0));
    map.edges.append(test::edgeBetween(200 + i, i, 1));
  }
  Picture picture(map, 300.0);
  for (const QSize size : {QSize(920, 64), QSize(133, 133)}) EXPECT_EQ(picture.differingPixels(size), 0);
}

TEST(ExactPixels, PartsOfOneRowFitTogether) {
  Picture picture(test::pictureMap(12, 60.0, 7), 60.0);
  EXPECT_EQ(picture.differingPixels(QSize(440, 1)), 0);
}

}  // namespace
}  // namespace quilmora
