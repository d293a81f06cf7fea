#include <gtest/gtest.h>

#include "canvas/painting/PaintedMap.h"
#include "support/ReferencePicture.h"

// Small pictures of everything drawn without letters: the topics are outside them.

using namespace quilmora;
using namespace quilmora::test;

namespace {

constexpr QSize size(240, 160);

struct ReferencePictures : testing::Test {
  PaintedMap painted;

  // A connector across the picture, between two heights.
  void connect(double from, double to, const EdgeStyle::TaperConfig& taper, const char* color,
               QPointF bend = QPointF()) {
    const QUuid a = painted.addNode(QPointF(-400, from));
    painted.addEdge(a, painted.addNode(QPointF(400, to)), color);
    painted.changeEdge(painted.map.edges.size() - 1, [&](Edge& edge) {
      edge.style.taper = taper;
      if (!bend.isNull()) edge.controlPointOffset = bend;
    });
  }
  template <class Change>
  void changeLastEdge(Change&& change) {
    painted.changeEdge(painted.map.edges.size() - 1, change);
  }
};

}  // namespace

TEST_F(ReferencePictures, Ribbons) {
  using Easing = EdgeStyle::TaperEasing;
  connect(-260, 180, {24, 4, Easing::linear}, "#1565C0");
  connect(-40, -90, {3, 18, Easing::quadraticIn}, "#2E7D32");
  connect(40, 60, {14, 1, Easing::cubicIn}, "#AD1457", QPointF(0, 30));
  connect(120, -200, {9, 9, Easing::linear}, "#F9A825");
  changeLastEdge([](Edge& edge) { edge.style.dashed = true; });
  EXPECT_TRUE(isReference(painted.paint(size), QStringLiteral("ribbons")));
}

TEST_F(ReferencePictures, BendHandles) {
  connect(-120, 90, {12, 6, EdgeStyle::TaperEasing::linear}, "#1565C0");
  painted.selectedEdges.insert(painted.map.edges[0].id);
  connect(60, -20, {6, 6, EdgeStyle::TaperEasing::linear}, "#2E7D32", QPointF(60, 40));
  painted.selectedEdges.insert(painted.map.edges[1].id);
  painted.scene.shown.draggedHandle =
      ShownGestures::DraggedHandle{ShownGestures::HandleKind::edgeBend, painted.map.edges[1].id, QPointF(-20, -50)};
  EXPECT_TRUE(isReference(painted.paint(size), QStringLiteral("bend-handles")));
}

TEST_F(ReferencePictures, RelationshipWithItsButton) {
  const QUuid a = painted.addNode(QPointF(-400, -40));
  const QUuid b = painted.addNode(QPointF(400, 0));
  const Relationship link{QUuid::createUuid(), a, b, QString(), QStringLiteral("#6A1B9A"), QPointF(0, -150)};
  painted.map.relationships.append(link);
  painted.scene.shown.selectedRelationshipID = link.id;
  EXPECT_TRUE(isReference(painted.paint(size), QStringLiteral("relationship")));
}

TEST_F(ReferencePictures, PreviewsOfDraggedTopics) {
  connect(-100, 60, {16, 4, EdgeStyle::TaperEasing::linear}, "#1565C0");
  painted.selectedNodes.insert(painted.map.nodes[1].id);
  connect(20, -40, {10, 10, EdgeStyle::TaperEasing::linear}, "#2E7D32");
  painted.scene.shown.nodeDragTranslation = QPointF(10, 30);
  EXPECT_TRUE(isReference(painted.paint(size), QStringLiteral("previews")));
}
