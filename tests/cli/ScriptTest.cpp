#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "cli/Maps.h"
#include "cli/Program.h"
#include "model/MindMapDocument.h"

// What each group of operations does to the editor of a script.
namespace {

using namespace cli;
using Text = std::string;

QJsonObject node(const QJsonValue& map, int index) {
  return at(map, "nodes").toArray()[index].toObject();
}
Text text(const QJsonValue& value) {
  return compact(value).toStdString();
}

TEST(Script, StartsOnABlankMap) {
  Script script;
  script.line(R"({"do":"map"})").line(R"({"do":"state"})");
  EXPECT_EQ(text(at(script.result(0), "title")), "\"Untitled Map\"");
  EXPECT_EQ(text(node(script.result(0), 0)[QLatin1String("title")]), "\"Start Here\"");
  EXPECT_EQ(text(node(script.result(0), 0)[QLatin1String("position")]), "[400,300]");
}

TEST(Script, StateHoldsEveryKey) {
  Script script;
  script.line(loadSmallMap()).line(R"({"do":"state"})");
  QJsonObject state = script.result().toObject();
  EXPECT_EQ(compact(state).toStdString(),
            R"({"activeLens":"None","canvasOffset":[0,0],"canvasZoom":1,"collapsedNodeIDs":[],"copiedEdgeCount":0,)"
            R"("copiedNodeCount":0,"edgeCreationSourceID":null,"generation":0,"isDirty":false,)"
            R"("isEdgeCreationMode":false,"isPresentationMode":false,"isSearching":false,"presentationNodeIndex":0,)"
            R"("presentationOrder":[],"quickLookNodeID":null,"redoCount":0,"searchQuery":"","searchResultIDs":[],)"
            R"("searchResultIndex":0,"selectedEdgeIDs":[],"selectedNodeIDs":[],"selectedRegionID":null,)"
            R"("undoCount":0,"updatedAtMs":1704153600000})");
}

TEST(Script, LoadedMapComesBackInDocumentForm) {
  Script script;
  script.line(loadSmallMap()).line(R"({"do":"map"})");
  const QByteArray& answer = script.run()[1];
  EXPECT_EQ(answer, R"({"ok":true,"result":)" +
                        encodeDocument(quilmora::decodeDocument(smallMap()), quilmora::JsonForm::compact) + '}');
}

TEST(Script, TreeInfoTellsTheTree) {
  Script script;
  script.line(loadSmallMap()).line(R"({"do":"treeInfo"})");
  EXPECT_EQ(text(script.result()),
            R"({"children":{"AAAAAAAA-0000-4000-8000-000000000001":["BBBBBBBB-0000-4000-8000-000000000002",)"
            R"("CCCCCCCC-0000-4000-8000-000000000003"]},"depth":{"AAAAAAAA-0000-4000-8000-000000000001":0,)"
            R"("BBBBBBBB-0000-4000-8000-000000000002":1,"CCCCCCCC-0000-4000-8000-000000000003":1},"maxDepth":1,)"
            R"("parent":{"BBBBBBBB-0000-4000-8000-000000000002":"AAAAAAAA-0000-4000-8000-000000000001",)"
            R"("CCCCCCCC-0000-4000-8000-000000000003":"AAAAAAAA-0000-4000-8000-000000000001"},)"
            R"("roots":["AAAAAAAA-0000-4000-8000-000000000001"]})");
}

TEST(Script, UndoAndRedoStepThroughTheHistory) {
  Script script;
  script.line(loadSmallMap())
      .line(with("setNodeTitle", "id", idA, R"(,"text":"Ä 😀 \"x\"")"))
      .line(R"({"do":"map"})")
      .line(R"({"do":"undo"})")
      .line(R"({"do":"map"})")
      .line(R"({"do":"redo"})")
      .line(R"({"do":"map"})")
      .line(R"({"do":"state"})");
  EXPECT_EQ(text(node(script.result(2), 0)[QLatin1String("title")]), "\"Ä 😀 \\\"x\\\"\"");
  EXPECT_EQ(text(node(script.result(4), 0)[QLatin1String("title")]), "\"A\"");
  EXPECT_EQ(text(node(script.result(6), 0)[QLatin1String("title")]), "\"Ä 😀 \\\"x\\\"\"");
  EXPECT_EQ(text(at(script.result(7), "undoCount")), "1");
  EXPECT_EQ(text(at(script.result(7), "isDirty")), "true");
}

TEST(Script, ThrottledSnapshotsInABurstCountOnce) {
  Script script;
  for (int i = 0; i < 3; ++i) script.line(R"({"do":"captureSnapshot","throttled":true})");
  script.line(R"({"do":"captureSnapshot","throttled":false})").line(R"({"do":"state"})");
  EXPECT_EQ(text(at(script.result(), "undoCount")), "2");
}

TEST(Script, SavingWritesThePlainDocumentAndTheMapCountsAsWritten) {
  QTemporaryDir folder;
  const QByteArray path = folder.filePath(QStringLiteral("map.json")).toUtf8();
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"captureSnapshot","throttled":false})")
      .line(R"({"do":"save","path":")" + path + "\"}")
      .line(R"({"do":"state"})")
      .line(R"({"do":"new"})")
      .line(R"({"do":"open","path":")" + path + "\"}")
      .line(R"({"do":"map"})");
  EXPECT_EQ(script.run()[2].toStdString(), R"({"ok":true})");
  EXPECT_EQ(text(at(script.result(3), "isDirty")), "false");
  EXPECT_EQ(text(at(script.result(), "title")), "\"Small\"");
  QFile file(QString::fromUtf8(path));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll(), encodeDocument(quilmora::decodeDocument(smallMap())));
}

TEST(Script, AFreshEditorForgetsHistoryAndSelectionButKeepsTheSettings) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"setSetting","key":"selected_theme","value":"forest"})")
      .line(R"({"do":"selectAll"})")
      .line(R"({"do":"deleteSelection"})")
      .line(loadSmallMap())
      .line(R"({"do":"state"})")
      .line(R"({"do":"recolorByTheme"})")
      .line(R"({"do":"map"})")
      .line(R"({"do":"setSetting","key":"selected_theme","value":null})")
      .line(R"({"do":"recolorByTheme"})")
      .line(R"({"do":"map"})");
  EXPECT_EQ(text(at(script.result(5), "undoCount")), "0");
  EXPECT_EQ(text(at(script.result(5), "selectedNodeIDs")), "[]");
  EXPECT_EQ(text(at(node(script.result(7), 0)[QLatin1String("style")], "fill")), "\"#1E5631\"");
  EXPECT_EQ(text(at(node(script.result(10), 0)[QLatin1String("style")], "fill")), "\"#4A148C\"");
}

TEST(Script, ChildrenOfALoneRootFindTheirPlaces) {
  Script script;
  script.line(loadSmallMap()).line(R"({"do":"selectAll"})").line(R"({"do":"deleteSelection"})");
  script.line(R"({"do":"createFreeNode","x":0,"y":0})").line(R"({"do":"createNode"})").line(R"({"do":"createNode"})");
  script.line(R"({"do":"map"})");
  EXPECT_EQ(text(node(script.result(), 0)[QLatin1String("position")]), "[0,0]");
  EXPECT_EQ(text(node(script.result(), 1)[QLatin1String("position")]), "[180,0]");
  EXPECT_EQ(text(node(script.result(), 2)[QLatin1String("position")]), "[180,90]");
}

TEST(Script, TopicsAreEdited) {
  Script script;
  script.line(loadSmallMap())
      .line(with("setNodeNotes", "id", idA, R"(,"text":"note")"))
      .line(with("setNodeBadge", "id", idA, R"(,"badge":"in-progress")"))
      .line(with("setNodeBadge", "id", idB, R"(,"badge":null)"))
      .line(with("createChildAt", "id", "cccccccc-0000-4000-8000-000000000003", R"(,"x":7.25,"y":-8)"))
      .line(R"({"do":"map"})");
  EXPECT_EQ(text(node(script.result(), 0)[QLatin1String("notes")]), "\"note\"");
  EXPECT_EQ(text(node(script.result(), 0)[QLatin1String("badge")]), "\"in-progress\"");
  EXPECT_FALSE(node(script.result(), 1).contains(QLatin1String("badge")));
  EXPECT_EQ(text(node(script.result(), 3)[QLatin1String("position")]), "[7.25,-8]");
}

TEST(Script, ImagesComeFromFilesAndGo) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("picture.png"));
  QImage(800, 200, QImage::Format_RGB32).save(path);
  Script script;
  script.line(loadSmallMap())
      .line(with("setNodeImage", "id", idA, R"(,"path":")" + path.toUtf8() + '"'))
      .line(R"({"do":"map"})")
      .line(with("clearNodeImage", "id", idA))
      .line(R"({"do":"map"})");
  const auto data = node(script.result(2), 0)[QLatin1String("imageData")].toString().toLatin1();
  EXPECT_EQ(QImage::fromData(QByteArray::fromBase64(data)).size(), QSize(400, 100));
  EXPECT_FALSE(node(script.result(), 0).contains(QLatin1String("imageData")));
}

TEST(Script, ADrawingIsNoImageBecauseItMayReadOtherFiles) {
  QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("drawing.svg"));
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"/>)");
  file.close();
  Script script;
  script.line(loadSmallMap()).line(with("setNodeImage", "id", idA, R"(,"path":")" + path.toUtf8() + '"'));
  EXPECT_FALSE(script.isOk());
}

TEST(Script, TopicsMoveAndChangeParents) {
  Script script;
  script.line(loadSmallMap())
      .line(with("selectNode", "id", idB, R"(,"extend":false)"))
      .line(R"({"do":"moveSelectedNodes","dx":10,"dy":-5})")
      .line(with("reparentNode", "id", idB, QByteArray(R"(,"parent":")") + idC + '"'))
      .line(R"({"do":"map"})")
      .line(with("isDescendant", "id", idB, QByteArray(R"(,"root":")") + idA + '"'))
      .line(with("isDescendant", "id", idA, QByteArray(R"(,"root":")") + idB + '"'))
      .line(with("toggleCollapsed", "id", idC))
      .line(with("isHidden", "id", idB))
      .line(with("isHidden", "id", idC))
      .line(with("deleteNode", "id", idC))
      .line(R"({"do":"treeInfo"})");
  EXPECT_EQ(text(node(script.result(4), 1)[QLatin1String("position")]), "[210,45]");
  EXPECT_EQ(text(script.result(5)), "true");
  EXPECT_EQ(text(script.result(6)), "false");
  EXPECT_EQ(text(script.result(8)), "true");
  EXPECT_EQ(text(script.result(9)), "false");
  EXPECT_EQ(text(at(script.result(), "roots")),
            R"(["AAAAAAAA-0000-4000-8000-000000000001","BBBBBBBB-0000-4000-8000-000000000002"])");
}

TEST(Script, FreeSpotsAreFound) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"findFreeSpot","x":0,"y":0,"direction":1,"step":60})")
      .line(R"({"do":"findFreeSpot","x":900.5,"y":0,"direction":-1,"step":60})");
  EXPECT_EQ(text(script.result(1)), "[0,120]");
  EXPECT_EQ(text(script.result(2)), "[900.5,0]");
}

TEST(Script, ConnectionsAreEdited) {
  Script script;
  script.line(loadSmallMap())
      .line(with("setEdgeBend", "edge", edgeToB, R"(,"offset":[3,4.5])"))
      .line(with("setRelationshipBend", "id", linkBToC, R"(,"offset":[-1,2])"))
      .line(with("setEdgeStyle", "edge", edgeToC,
                 R"(,"style":{"color":"#123456","dashed":false,"arrowHead":"triangle","taper":)"
                 R"({"startWidth":9,"endWidth":1,"easing":"cubicIn"}})"))
      .line(with("addRelationship", "from", idC, QByteArray(R"(,"to":")") + idB + '"'))
      .line(with("createEdge", "from", idB, QByteArray(R"(,"to":")") + idC + '"'))
      .line(R"({"do":"createRegion","point":[500,600]})")
      .line(R"({"do":"map"})")
      .line(with("setEdgeBend", "edge", edgeToB, R"(,"offset":null)"))
      .line(with("deleteEdge", "edge", edgeToC))
      .line(with("deleteRelationship", "id", linkBToC))
      .line(R"({"do":"map"})");
  const QJsonValue map = script.result(7);
  EXPECT_EQ(text(at(map, "edges").toArray()[0].toObject()[QLatin1String("controlPointOffset")]), "[3,4.5]");
  EXPECT_EQ(text(at(map, "edges").toArray()[1].toObject()[QLatin1String("style")]),
            R"({"arrowHead":"triangle","color":"#123456","dashed":false,"taper":)"
            R"({"easing":"cubicIn","endWidth":1,"startWidth":9}})");
  EXPECT_EQ(at(map, "relationships").toArray().size(), 2);
  EXPECT_EQ(text(at(map, "relationships").toArray()[0].toObject()[QLatin1String("controlPointOffset")]), "[-1,2]");
  EXPECT_EQ(text(at(map, "regions").toArray()[0].toObject()[QLatin1String("rect")]), "[[350,500],[300,200]]");
  const QJsonValue after = script.result();
  EXPECT_EQ(at(after, "edges").toArray().size(), 1);
  EXPECT_FALSE(at(after, "edges").toArray()[0].toObject().contains(QLatin1String("controlPointOffset")));
  EXPECT_EQ(at(after, "relationships").toArray().size(), 1);
}

TEST(Script, EdgesAreReconnected) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"createFreeNode","x":0,"y":400})")
      .line(R"({"do":"state"})")
      .line(with("reconnectEdgeSource", "edge", edgeToB, QByteArray(R"(,"from":")") + idC + '"'))
      .line(R"({"do":"treeInfo"})");
  EXPECT_EQ(text(at(at(script.result(), "parent"), idB)), "\"CCCCCCCC-0000-4000-8000-000000000003\"");
}

TEST(Script, DuplicatesLandFortyFurther) {
  Script script;
  script.line(loadSmallMap())
      .line(with("selectNode", "id", idA, R"(,"extend":false)"))
      .line(with("selectNode", "id", idB, R"(,"extend":true)"))
      .line(R"({"do":"copySelection"})")
      .line(R"({"do":"state"})")
      .line(R"({"do":"duplicateSelection"})")
      .line(R"({"do":"map"})");
  EXPECT_EQ(text(at(script.result(4), "copiedNodeCount")), "2");
  EXPECT_EQ(text(at(script.result(4), "copiedEdgeCount")), "1");
  EXPECT_EQ(text(node(script.result(), 3)[QLatin1String("position")]), "[40,40]");
  EXPECT_EQ(text(node(script.result(), 4)[QLatin1String("position")]), "[240,90]");
  EXPECT_EQ(at(script.result(), "edges").toArray().size(), 3);
}

TEST(Script, SelectionAndViewFollowTheirOperations) {
  Script script;
  script.line(loadSmallMap())
      .line(with("selectNode", "id", idB, R"(,"extend":false)"))
      .line(with("selectNode", "id", idA, R"(,"extend":true)"))
      .line(with("selectEdge", "id", edgeToB, R"(,"extend":true)"))
      .line(R"({"do":"zoomAt","zoom":2,"x":100,"y":50})")
      .line(with("toggleQuickLook", "id", idC))
      .line(R"({"do":"state"})")
      .line(R"({"do":"setCanvasSize","width":1000,"height":500})")
      .line(with("centerOn", "id", idB, R"(,"width":1,"height":1,"useLastKnownSize":true)"))
      .line(R"({"do":"state"})")
      .line(R"({"do":"fitToContent","width":800,"height":600,"padding":80})")
      .line(R"({"do":"clearSelection"})")
      .line(R"({"do":"state"})");
  EXPECT_EQ(text(at(script.result(6), "selectedNodeIDs")),
            R"(["AAAAAAAA-0000-4000-8000-000000000001","BBBBBBBB-0000-4000-8000-000000000002"])");
  EXPECT_EQ(text(at(script.result(6), "selectedEdgeIDs")), R"(["EEEEEEEE-0000-4000-8000-000000000001"])");
  EXPECT_EQ(text(at(script.result(6), "quickLookNodeID")), "\"CCCCCCCC-0000-4000-8000-000000000003\"");
  EXPECT_EQ(text(at(script.result(6), "canvasZoom")), "2");
  EXPECT_EQ(text(at(script.result(6), "canvasOffset")), "[-100,-50]");
  EXPECT_EQ(text(at(script.result(9), "canvasOffset")), "[100,150]");
  EXPECT_EQ(text(at(script.result(12), "canvasZoom")), "1.4666666666666666");
  EXPECT_EQ(text(at(script.result(12), "selectedNodeIDs")), "[]");
}

TEST(Script, TheLensDims) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"setLens","lens":"Progress"})")
      .line(with("nodeOpacity", "id", idA))
      .line(with("nodeOpacity", "id", idB))
      .line(R"({"do":"setLens","lens":"Depth"})")
      .line(with("nodeOpacity", "id", idC))
      .line(R"({"do":"state"})");
  EXPECT_EQ(text(script.result(2)), "0.25");
  EXPECT_EQ(text(script.result(3)), "1");
  EXPECT_EQ(text(script.result(5)), "0.8");
  EXPECT_EQ(text(at(script.result(), "activeLens")), "\"Depth\"");
}

TEST(Script, SearchPresentationAndArrowKeysMoveTheSelection) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"toggleSearch"})")
      .line(R"({"do":"search","query":"c"})")
      .line(R"({"do":"state"})")
      .line(R"({"do":"moveSelection","direction":3})")
      .line(R"({"do":"moveSelection","direction":1})")
      .line(R"({"do":"state"})")
      .line(R"({"do":"togglePresentation"})")
      .line(R"({"do":"previousPresentationStep"})")
      .line(R"({"do":"state"})");
  EXPECT_EQ(text(at(script.result(3), "searchResultIDs")), R"(["CCCCCCCC-0000-4000-8000-000000000003"])");
  EXPECT_EQ(text(at(script.result(3), "selectedNodeIDs")), R"(["CCCCCCCC-0000-4000-8000-000000000003"])");
  EXPECT_EQ(text(script.result(4)), "true");
  EXPECT_EQ(text(script.result(5)), "false");
  EXPECT_EQ(text(at(script.result(), "presentationNodeIndex")), "2");
  EXPECT_EQ(text(at(script.result(), "canvasZoom")), "1.8");
}

TEST(Script, LayoutsAreComputedAndApplied) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"computePositions","layout":"tree","width":800,"height":600})")
      .line(R"({"do":"state"})")
      .line(R"({"do":"applyLayout","layout":"tree","width":800,"height":600})")
      .line(R"({"do":"applyLayout","layout":"manual","width":800,"height":600})")
      .line(R"({"do":"map"})")
      .line(R"({"do":"state"})");
  EXPECT_EQ(text(script.result(1)),
            R"({"AAAAAAAA-0000-4000-8000-000000000001":[275,300],"BBBBBBBB-0000-4000-8000-000000000002":[525,230],)"
            R"("CCCCCCCC-0000-4000-8000-000000000003":[525,370]})");
  EXPECT_EQ(text(at(script.result(2), "undoCount")), "0");
  EXPECT_EQ(text(at(script.result(5), "layout")), "\"tree\"");
  EXPECT_EQ(text(node(script.result(5), 2)[QLatin1String("position")]), "[525,370]");
  EXPECT_EQ(text(at(script.result(6), "undoCount")), "1");
}

TEST(Script, ThemesAreListedAndApplied) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"themes"})")
      .line(R"({"do":"applyTheme","id":"sunset"})")
      .line(R"({"do":"map"})")
      .line(R"({"do":"recolorByBranch"})")
      .line(R"({"do":"map"})")
      .line(R"({"do":"styleForDepth","depth":9})");
  EXPECT_EQ(script.result(1).toArray().size(), 13);
  EXPECT_EQ(text(script.result(1).toArray()[6]),
            R"({"background":"#FFFFFF","category":"classic","edgeColor":"#666666","id":"default","name":"Plain",)"
            R"("nodeColors":[{"fill":"#F0F0F0","stroke":"#333333","textColor":"#000000"}]})");
  EXPECT_EQ(text(at(at(script.result(3), "canvas"), "themeId")), "\"sunset\"");
  EXPECT_EQ(text(at(node(script.result(3), 1)[QLatin1String("style")], "fillGradient")), "\"#FF8F00\"");
  EXPECT_EQ(text(at(node(script.result(5), 0)[QLatin1String("style")], "fill")), "\"#37474F\"");
  EXPECT_EQ(text(script.result(6)), R"({"bold":false,"fill":"#FFE0B2","iconSize":16,"italic":false,)"
                                    R"("shape":"rounded-rect","stroke":"#FFB74D","textColor":"#4E342E"})");
}

TEST(Script, GeometryIsTold) {
  Script script;
  script.line(loadSmallMap())
      .line(with("effectiveTaper", "edge", edgeToB))
      .line(with("connector", "edge", edgeToB, R"(,"effective":true)"))
      .line(with("connector", "edge", edgeToC, R"(,"effective":false)"))
      .line(with("relationshipCurve", "id", linkBToC))
      .line(with("effectiveTaper", "edge", linkBToC))
      .line(with("deleteNode", "id", idC))
      .line(with("connector", "edge", edgeToC, R"(,"effective":false)"));
  EXPECT_EQ(text(script.result(1)), R"({"easing":"linear","endWidth":7.5,"startWidth":15})");
  EXPECT_EQ(text(at(script.result(2), "samples")), "20");
  EXPECT_EQ(at(script.result(2), "outline").toArray().size(), 42);
  EXPECT_EQ(text(at(script.result(2), "outline").toArray()[0]), "[0,7.5]");
  EXPECT_EQ(text(at(script.result(2), "outline").toArray()[21]), "[200,46.25]");
  EXPECT_EQ(text(at(script.result(2), "head")), "[[200,50],[195,51.5],[195,48.5]]");
  EXPECT_EQ(text(at(script.result(3), "outline").toArray()[0]), "[0,3]");
  EXPECT_EQ(text(at(script.result(3), "head")), "[]");
  EXPECT_EQ(text(script.result(4)), R"({"control":[220,0],"midpoint":[210,0]})");
  EXPECT_FALSE(script.isOk(5));
  EXPECT_FALSE(script.isOk(7));
}

TEST(Script, NoTaperWhereEdgesAreNotSizedByDepth) {
  const QByteArray map =
      smallMap().chopped(1) +
      R"(,"hierarchical":{"edgeSizing":false,"rootEdgeWidth":15,"leafEdgeWidth":5,"nodeSizing":false,)"
      R"("rootFontSize":17,"leafFontSize":12,"rootPadding":14,"leafPadding":8,"decayFunction":"linear"}})";
  Script script;
  script.line(R"({"do":"load","map":)" + map + '}').line(with("effectiveTaper", "edge", edgeToB));
  EXPECT_EQ(script.run()[1].toStdString(), R"({"ok":true,"result":null})");
}

TEST(Script, ColoursAreConverted) {
  Script script;
  script.line(R"({"do":"colorFromHex","text":"#12ZZZZ"})")
      .line(R"({"do":"colorFromHex","text":"#FFF"})")
      .line(R"({"do":"hexFromColor","components":[0.5,1,0]})")
      .line(R"({"do":"hexFromColor","components":[0.5]})")
      .line(R"({"do":"hexFromColor","components":[]})");
  EXPECT_EQ(text(script.result(0)), "[0,0,18]");
  EXPECT_EQ(text(script.result(1)), "[128,128,128]");
  EXPECT_EQ(text(script.result(2)), "\"#7FFF00\"");
  EXPECT_EQ(text(script.result(3)), "\"#7F7F7F\"");
  EXPECT_EQ(text(script.result(4)), "\"#808080\"");
}

TEST(Script, NumbersKeepTheirFullPrecision) {
  Script script;
  script.line(R"({"do":"createFreeNode","x":0.1,"y":1e300})").line(R"({"do":"map"})");
  EXPECT_TRUE(script.run()[1].contains("\"position\":[0.1,1e+300]"));
}

TEST(Script, TheUsersSettingsAreNeitherReadNorWritten) {
  const QString home = bareEnvironment().value(QStringLiteral("HOME"));
  Script script;
  script.line(R"({"do":"setSetting","key":"selected_theme","value":"ocean"})").line(R"({"do":"state"})").run();
  EXPECT_EQ(QDir(home).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

}  // namespace
