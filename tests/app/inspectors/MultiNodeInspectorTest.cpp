#include "app/inspectors/InspectorsFixture.h"
#include "app/inspectors/StyleSamplerRow.h"

namespace quilmora::test {
namespace {

class MultiNodeInspectorTest : public InspectorsTest {
 protected:
  void startOn(const std::vector<QPointF>& places) {
    MindMap map = mapOf({});
    int number = 0;
    for (const QPointF& place : places) map.nodes.append(topic(++number, place.x(), place.y()));
    map.nodes.update(1, [](Node& node) { node.style.fill = QStringLiteral("#102030"); });
    start(std::move(map));
    IdSet ids;
    for (; number > 0; --number) ids.insert(topicId(number));
    editor().setSelectedNodeIDs(std::move(ids));
    settle();
    rest();
  }
  std::vector<double> xs() {
    std::vector<double> values;
    for (const Node& node : editor().mindMap().nodes) values.push_back(node.position.x());
    return values;
  }
  std::vector<double> ys() {
    std::vector<double> values;
    for (const Node& node : editor().mindMap().nodes) values.push_back(node.position.y());
    return values;
  }
  using Numbers = std::vector<double>;
};

TEST_F(MultiNodeInspectorTest, SectionsStandInTheirOrder) {
  startOn({{0, 0}, {1, 1}, {2, 2}});
  EXPECT_EQ(texts(), lines({"Multiple Nodes (3)", "Batch edit colors for selected nodes", "Apply Colors", "Fill",
                            "Border", "Text", "Quick Style", "Align", "Distribute",
                            "Shift+click to multi-select. Ctrl+drag to reparent."}));
  QStringList buttons;
  for (const QAbstractButton* button : shown().findChildren<QAbstractButton*>())
    if (qobject_cast<const StyleSamples*>(button->parentWidget()) == nullptr) buttons.append(button->accessibleName());
  EXPECT_EQ(buttons, lines({"Fill", "Border", "Text", "Apply to All Selected", "Left", "Center H", "Right", "Top",
                            "Center V", "Bottom", "Horiz", "Vert", "Delete All Selected"}));
}

TEST_F(MultiNodeInspectorTest, TopicsOnOneSpotAreSpreadOut) {
  startOn({{0, 0}, {0, 0}, {0, 0}});
  press("Horiz");
  EXPECT_EQ(xs(), (Numbers{0, 80, 160}));
  EXPECT_EQ(steps(), 1);
}

TEST_F(MultiNodeInspectorTest, TopicsAreDistributedEvenly) {
  startOn({{0, 5}, {10, 5}, {100, 5}});
  press("Horiz");
  EXPECT_EQ(xs(), (Numbers{0, 50, 100}));
  press("Vert");
  EXPECT_EQ(ys(), (Numbers{5, 85, 165}));
  EXPECT_EQ(steps(), 2);
}

TEST_F(MultiNodeInspectorTest, SixButtonsAlign) {
  startOn({{0, 5}, {10, 50}, {100, 20}});
  const MindMap before = editor().mindMap();
  const auto after = [&](const char* button) {
    editor().setMindMap(before);
    press(button);
    return std::pair(xs(), ys());
  };
  const Numbers x{0, 10, 100};
  const Numbers y{5, 50, 20};
  EXPECT_EQ(after("Left"), std::pair(Numbers(3, 0.0), y));
  EXPECT_EQ(after("Center H"), std::pair(Numbers(3, 50.0), y));
  EXPECT_EQ(after("Right"), std::pair(Numbers(3, 100.0), y));
  EXPECT_EQ(after("Top"), std::pair(x, Numbers(3, 5.0)));
  EXPECT_EQ(after("Center V"), std::pair(x, Numbers(3, 27.5)));
  EXPECT_EQ(after("Bottom"), std::pair(x, Numbers(3, 50.0)));
  EXPECT_EQ(steps(), 6);
}

TEST_F(MultiNodeInspectorTest, ItStartsWithTheColoursOfTheFirstInTheMap) {
  startOn({{0, 0}, {1, 1}, {2, 2}});
  EXPECT_EQ(control<ColorWell>("Fill").color(), QColor(0x4A, 0x14, 0x8C));
  select({3, 2});
  EXPECT_EQ(control<ColorWell>("Fill").color(), QColor(0x10, 0x20, 0x30));
}

TEST_F(MultiNodeInspectorTest, ColoursAreAppliedToAllInOneStep) {
  startOn({{0, 0}, {1, 1}, {2, 2}});
  chooseColor("Fill", "#FF0000");
  chooseColor("Border", "#00FF00");
  chooseColor("Text", "#0000FF");
  EXPECT_EQ(steps(), 0);
  press("Apply to All Selected");
  EXPECT_EQ(steps(), 1);
  for (const int number : {1, 2, 3}) {
    EXPECT_EQ(node(number).style.fill, QStringLiteral("#FF0000"));
    EXPECT_EQ(node(number).style.stroke, QStringLiteral("#00FF00"));
    EXPECT_EQ(node(number).style.textColor, QStringLiteral("#0000FF"));
  }
}

TEST_F(MultiNodeInspectorTest, ChosenColoursWaitUntilAnotherSelection) {
  startOn({{0, 0}, {1, 1}, {2, 2}});
  chooseColor("Fill", "#FF0000");
  editor().setNodeTitle(topicId(1), QStringLiteral("Other"));
  settle();
  EXPECT_EQ(control<ColorWell>("Fill").color(), QColor(Qt::red));
  select({1, 2});
  EXPECT_EQ(control<ColorWell>("Fill").color(), QColor(0x4A, 0x14, 0x8C));
}

TEST_F(MultiNodeInspectorTest, ASampleIsAppliedToAllInOneStep) {
  startOn({{0, 0}, {1, 1}, {2, 2}});
  EXPECT_EQ(shown().findChild<MultiStyleSamplerRow*>()->buttons().size(), 14u);
  press("Sand");
  EXPECT_EQ(node(1).style.fill, QStringLiteral("#D7CCC8"));
  EXPECT_EQ(node(3).style.textColor, QStringLiteral("#3E2723"));
  EXPECT_EQ(steps(), 1);
}

TEST_F(MultiNodeInspectorTest, AllSelectedAreDeleted) {
  startOn({{0, 0}, {1, 1}, {2, 2}});
  select({1, 2});
  press("Delete All Selected");
  EXPECT_EQ(editor().mindMap().nodes.size(), 1u);
  EXPECT_EQ(steps(), 1);
  EXPECT_EQ(kind(), QStringLiteral("CanvasInspector"));
}

}  // namespace
}  // namespace quilmora::test
