#include "app/inspectors/InspectorsFixture.h"

namespace quilmora::test {
namespace {

class EdgeInspectorTest : public InspectorsTest {
 protected:
  void startOn(std::initializer_list<int> edges, bool isSizedByDepth = false) {
    MindMap map = threeTopics();
    map.hierarchical.edgeSizing = isSizedByDepth;
    start(std::move(map));
    selectEdges(edges);
    rest();
  }
};

const QString sizingNote = QStringLiteral("Controlled by Branch Edge Sizing (see Canvas inspector)");

TEST_F(EdgeInspectorTest, SectionsStandInTheirOrder) {
  startOn({0});
  EXPECT_EQ(texts(),
            lines({"Color", "Branch", "Arrow Head", "Taper Settings", "Start Width: 6.0", "End Width: 2.0", "Easing"}));
  selectEdges({0, 1});
  EXPECT_EQ(texts(), lines({"Multiple Edges (2)", "Batch edit properties for selected edges", "Color", "Branches",
                            "Taper Settings", "Start Width: 6.0", "End Width: 2.0",
                            "Hold Shift and click edges to add them to selection"}));
}

TEST_F(EdgeInspectorTest, OneConnectorIsStyled) {
  startOn({0});
  chooseColor("Color", "#FF0000");
  press("Dashed");
  choose("Arrow Head", "None");
  choose("Easing", "Cubic");
  EdgeStyle expected = EdgeStyle::defaultStyle();
  expected.color = QStringLiteral("#FF0000");
  expected.dashed = true;
  expected.arrowHead = EdgeStyle::ArrowHead::none;
  expected.taper.easing = EdgeStyle::TaperEasing::cubicIn;
  EXPECT_EQ(edge(0).style, expected);
  EXPECT_EQ(edge(1).style, EdgeStyle::defaultStyle());
  EXPECT_EQ(steps(), 4);
}

TEST_F(EdgeInspectorTest, EveryHeadAndEasingIsOffered) {
  startOn({0});
  EXPECT_EQ(control<PanelPicker>("Arrow Head").count(), 2);
  EXPECT_EQ(control<PanelPicker>("Easing").count(), 3);
  choose("Arrow Head", "None");
  EXPECT_EQ(edge(0).style.arrowHead, EdgeStyle::ArrowHead::none);
  choose("Arrow Head", "Triangle");
  EXPECT_EQ(edge(0).style.arrowHead, EdgeStyle::ArrowHead::triangle);
  const std::pair<const char*, EdgeStyle::TaperEasing> easings[] = {{"Linear", EdgeStyle::TaperEasing::linear},
                                                                    {"Cubic", EdgeStyle::TaperEasing::cubicIn},
                                                                    {"Quadratic", EdgeStyle::TaperEasing::quadraticIn}};
  for (const auto& [entry, easing] : easings) {
    choose("Easing", entry);
    EXPECT_EQ(edge(0).style.taper.easing, easing) << entry;
  }
  EXPECT_EQ(steps(), 5);
}

TEST_F(EdgeInspectorTest, ASliderAppliesWhileItMovesAndEachStepIsOneOfUndo) {
  startOn({0});
  StepSlider& width = slider("Start Width");
  EXPECT_EQ(width.range().least, 1);
  EXPECT_EQ(width.range().most, 20);
  EXPECT_EQ(width.stepValue(), 6);
  EXPECT_TRUE(texts().contains(QStringLiteral("Start Width: 6.0")));
  width.setSliderDown(true);
  for (const int step : {11, 12, 13}) width.setSliderPosition(step);
  EXPECT_EQ(edge(0).style.taper.startWidth, 7.5);
  settle();
  width.setSliderDown(false);
  EXPECT_TRUE(texts().contains(QStringLiteral("Start Width: 7.5")));
  EXPECT_EQ(steps(), 3);
  slider("End Width").setValue(0);
  EXPECT_EQ(edge(0).style.taper.endWidth, 1);
  slider("End Width").setValue(38);
  EXPECT_EQ(edge(0).style.taper.endWidth, 20);
}

TEST_F(EdgeInspectorTest, AWidthOutsideTheRangeIsShownAndKept) {
  MindMap map = threeTopics();
  map.hierarchical.edgeSizing = false;
  map.edges.update(0, [](Edge& edge) { edge.style.taper.startWidth = 77.25; });
  start(std::move(map));
  selectEdges({0});
  rest();
  EXPECT_TRUE(texts().contains(QStringLiteral("Start Width: 77.2")));
  press("Dashed");
  EXPECT_EQ(edge(0).style.taper.startWidth, 77.25);
}

TEST_F(EdgeInspectorTest, SizingByDepthTakesTheSlidersAway) {
  startOn({0}, true);
  EXPECT_FALSE(has<StepSlider>("Start Width"));
  EXPECT_TRUE(texts().contains(sizingNote));
  HierarchicalConfig config = editor().mindMap().hierarchical;
  config.edgeSizing = false;
  editor().setHierarchical(config, false);
  settle();
  EXPECT_TRUE(has<StepSlider>("Start Width"));
  EXPECT_FALSE(texts().contains(sizingNote));
}

TEST_F(EdgeInspectorTest, TheConnectorIsDeleted) {
  startOn({1});
  press("Delete Branch");
  EXPECT_EQ(editor().mindMap().edges.size(), 1u);
  EXPECT_EQ(steps(), 1);
  EXPECT_EQ(kind(), QStringLiteral("CanvasInspector"));
}

TEST_F(EdgeInspectorTest, AnotherConnectorShowsItsOwnValues) {
  startOn({0});
  press("Dashed");
  selectEdges({1});
  EXPECT_FALSE(control<QCheckBox>("Dashed").isChecked());
  EXPECT_EQ(edge(1).style, EdgeStyle::defaultStyle());
  // Deleting another edge changes its ordinal.
  editor().deleteEdge(edgeId(0));
  settle();
  press("Dashed");
  EXPECT_TRUE(edge(0).style.dashed);
  EXPECT_EQ(edge(0).id, edgeId(1));
}

TEST_F(EdgeInspectorTest, SeveralConnectorsChangeWhenTheirValuesAreApplied) {
  startOn({0, 1});
  EXPECT_TRUE(texts().contains(QStringLiteral("Multiple Edges (2)")));
  EXPECT_TRUE(texts().contains(QStringLiteral("Batch edit properties for selected edges")));
  EXPECT_TRUE(texts().contains(QStringLiteral("Hold Shift and click edges to add them to selection")));
  slider("Start Width").setValue(22);
  slider("End Width").setValue(4);
  chooseColor("Color", "#00FF00");
  EXPECT_EQ(steps(), 0);
  press("Apply Color");
  EXPECT_EQ(edge(1).style.color, QStringLiteral("#00FF00"));
  EXPECT_EQ(edge(1).style.taper, EdgeStyle::defaultStyle().taper);
  EXPECT_EQ(steps(), 1);
  press("Apply Taper Settings");
  EXPECT_EQ(edge(0).style.taper, (EdgeStyle::TaperConfig{12, 3, EdgeStyle::TaperEasing::quadraticIn}));
  EXPECT_EQ(edge(1).style.taper, edge(0).style.taper);
  EXPECT_EQ(steps(), 2);
  press("Delete All Selected");
  EXPECT_TRUE(editor().mindMap().edges.empty());
  EXPECT_EQ(steps(), 3);
}

}  // namespace
}  // namespace quilmora::test
