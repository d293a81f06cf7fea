#include <gtest/gtest.h>

#include "editor/AIRig.h"

namespace {

using namespace quilmora;
using namespace quilmora::test;

MindMap threeTopics() {
  MindMap map;
  map.title = QStringLiteral("Before");
  map.nodes = topics({1, 2, 3});
  map.edges = {edgeBetween(1, 1, 2), edgeBetween(2, 2, 3)};
  map.canvas.themeId = QStringLiteral("ocean");
  return map;
}

class AIWorkflowsTest : public testing::Test {
 protected:
  QStringList titles() const {
    QStringList found;
    for (const Node& node : rig.map().nodes) found.append(node.title);
    return found;
  }
  template <class Request>
  const Request& asked(std::size_t index = 0) const {
    return std::get<Request>(rig.offline->requests.at(index));
  }
  void generate() {
    rig.workflows.generateMap(QStringLiteral("tea"), MindMap::Layout::radial);
    ASSERT_TRUE(rig.isAsked());
  }
  void openAnother() {
    MindMap other;
    other.title = QStringLiteral("Other");
    rig.editor.beginOtherDocument();
    rig.editor.setMindMap(other);
    rig.editor.clearHistory();
    rig.editor.recordSaveLocation(std::nullopt, false);
  }

  const QString otherDocument = QStringLiteral("Another document was opened before the answer came.");
  AIRig rig{threeTopics()};
};

TEST_F(AIWorkflowsTest, GeneratingShowsProgressFromTheStart) {
  EXPECT_EQ(rig.workflows.aiService(), nullptr);
  rig.workflows.generateMap(QStringLiteral("tea"), MindMap::Layout::radial);
  EXPECT_TRUE(rig.workflows.aiIsGenerating());
  EXPECT_EQ(rig.workflows.aiProgress(), QStringLiteral("Generating map..."));
  EXPECT_EQ(rig.editor.undoCount(), 1) << "before any reply";
  ASSERT_TRUE(rig.isAsked());
  EXPECT_TRUE(rig.workflows.aiService()->isGenerating());
  EXPECT_EQ(rig.workflows.aiService()->progress(), QStringLiteral("Generating map..."));
  EXPECT_EQ(asked<GenerateMapRequest>().prompt, QStringLiteral("tea"));
  EXPECT_EQ(rig.map().title, QStringLiteral("Before"));
}

TEST_F(AIWorkflowsTest, AGeneratedMapReplacesTheWholeOneAndIsOneUndoStep) {
  const MindMap before = rig.map();
  generate();
  rig.editor.recordSaveLocation(std::nullopt, false);  // saved meanwhile
  const quint64 generation = rig.editor.treeGeneration();
  rig.offline->answer(0, teaTree());
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.map().title, QStringLiteral("Tea"));
  EXPECT_EQ(titles(), (QStringList{QStringLiteral("Tea"), QStringLiteral("Green"), QStringLiteral("Black")}));
  EXPECT_GT(rig.editor.treeGeneration(), generation);
  EXPECT_TRUE(rig.editor.isDirty());
  EXPECT_EQ(rig.workflows.aiProgress(), QString());
  EXPECT_EQ(rig.workflows.aiError(), std::nullopt);
  EXPECT_FALSE(rig.workflows.aiService()->isGenerating());
  EXPECT_EQ(rig.editor.undoCount(), 1);
  rig.editor.undo();
  EXPECT_TRUE(isVeryMap(rig.map(), before)) << "title and canvas settings included";
}

TEST_F(AIWorkflowsTest, ASmallMapIsShownAtFullSizeAtMost) {
  generate();
  rig.offline->answer(0, AITreeNode(QStringLiteral("Alone")));
  ASSERT_TRUE(rig.isDone());
  // 500 × 300 is the minimum that is fitted into 840 × 440, and nothing is enlarged.
  EXPECT_EQ(rig.editor.canvasZoom(), 1.0);
  const QPointF place = rig.position(0);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(500.0 - place.x(), 300.0 - place.y()));
}

TEST_F(AIWorkflowsTest, ALargeMapIsShownAtAFifthAtLeast) {
  rig.workflows.generateMap(QStringLiteral("tea"), MindMap::Layout::tree);
  ASSERT_TRUE(rig.isAsked());
  AITreeNode wide(QStringLiteral("Wide"));
  wide.children.emplace();
  for (int i = 0; i < 400; ++i) wide.children->emplace_back(QStringLiteral("Child %1").arg(i));
  rig.offline->answer(0, wide);
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.editor.canvasZoom(), 0.2);
}

TEST_F(AIWorkflowsTest, AWrongKeyStillGivesAnOfflineMapWithoutAMessage) {
  rig.settings.setText(settings::aiProvider, QStringLiteral("claude"));
  rig.keys.items[accounts::claudeKey] = "sk-wrong-key";
  rig.transport.answerAll({401, "{}"});
  rig.offline->standingTree = teaTree();
  rig.workflows.generateMap(QStringLiteral("tea"), MindMap::Layout::tree);
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.transport.count(), 1u);
  EXPECT_EQ(rig.map().title, QStringLiteral("Tea"));
  EXPECT_EQ(rig.workflows.aiError(), std::nullopt);
}

TEST_F(AIWorkflowsTest, WithoutAKeyNothingIsSent) {
  rig.offline->standingTree = teaTree();
  for (const char* vendor : {"claude", "openai"}) {
    rig.settings.setText(settings::aiProvider, QString::fromLatin1(vendor));
    rig.workflows.generateMap(QStringLiteral("tea"), MindMap::Layout::tree);
    ASSERT_TRUE(rig.isDone());
  }
  EXPECT_EQ(rig.transport.count(), 0u);
  EXPECT_EQ(rig.offline->requests.size(), 2u);
}

TEST_F(AIWorkflowsTest, OnlyAnOfflineFailureIsTold) {
  generate();
  rig.offline->fail(rig.offline->generations, 0, AIProviderError::rateLimited());
  ASSERT_TRUE(rig.isAsked(2)) << "the same again, offline";
  EXPECT_TRUE(rig.workflows.aiIsGenerating());
  rig.offline->fail(rig.offline->generations, 1, AIProviderError::invalidResponse(QStringLiteral("x")));
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.workflows.aiError(), QStringLiteral("Could not parse AI response: x"));
  EXPECT_EQ(rig.map().title, QStringLiteral("Before"));
  generate();
  EXPECT_EQ(rig.workflows.aiError(), std::nullopt) << "a new flow clears it";
}

TEST_F(AIWorkflowsTest, ExpandingTellsThePathAndAddsTwoLevels) {
  rig.workflows.expandNode(topicId(3));
  EXPECT_EQ(rig.workflows.aiProgress(), QStringLiteral("Expanding Topic 3..."));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  ASSERT_TRUE(rig.isAsked());
  EXPECT_EQ(asked<ExpandNodeRequest>().title, QStringLiteral("Topic 3"));
  EXPECT_EQ(asked<ExpandNodeRequest>().path, QStringLiteral("Topic 1 > Topic 2 > Topic 3"));
  rig.offline->answer(0, teaTree());
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(titles().mid(3), (QStringList{QStringLiteral("Green"), QStringLiteral("Black")}));
  EXPECT_EQ(rig.edge(2).from, topicId(3));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  rig.editor.undo();
  EXPECT_EQ(rig.map().nodes.size(), 3u);
}

TEST_F(AIWorkflowsTest, ExpandingTakesTheFirstSelectedTopic) {
  rig.workflows.expandNode(std::nullopt);
  rig.workflows.expandNode(topicId(99));
  EXPECT_FALSE(rig.workflows.aiIsGenerating());
  EXPECT_EQ(rig.editor.undoCount(), 0);
  rig.editor.selectNode(topicId(2), false);
  rig.workflows.expandNode(std::nullopt);
  ASSERT_TRUE(rig.isAsked());
  EXPECT_EQ(asked<ExpandNodeRequest>().path, QStringLiteral("Topic 1 > Topic 2"));
}

TEST_F(AIWorkflowsTest, AFailedExpansionIsToldAndItsSnapshotStays) {
  rig.workflows.expandNode(topicId(1));
  ASSERT_TRUE(rig.isAsked());
  rig.offline->fail(rig.offline->generations, 0, AIProviderError::authenticationFailed());
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.workflows.aiError(), QStringLiteral("Invalid API key"));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_EQ(rig.offline->requests.size(), 1u) << "no offline map takes its place";
}

TEST_F(AIWorkflowsTest, APathAroundACycleEnds) {
  MindMap map = threeTopics();
  map.edges.append(edgeBetween(3, 3, 1));
  rig.editor.setMindMap(map);
  rig.workflows.expandNode(topicId(2));
  ASSERT_TRUE(rig.isAsked());
  EXPECT_EQ(asked<ExpandNodeRequest>().path, QStringLiteral("Topic 3 > Topic 1 > Topic 2"));
}

TEST_F(AIWorkflowsTest, ASummaryOfABranchTakesEveryTopicOnce) {
  MindMap map = threeTopics();
  map.edges.append(edgeBetween(3, 3, 1));  // a cycle
  map.nodes.update(1, [](Node& node) { node.notes = QStringLiteral("old notes"); });
  rig.editor.setMindMap(map);
  rig.workflows.summarizeBranch(topicId(1));
  EXPECT_EQ(rig.workflows.aiProgress(), QStringLiteral("Summarizing..."));
  EXPECT_EQ(rig.editor.undoCount(), 0) << "only once the answer is there";
  ASSERT_TRUE(rig.isAsked());
  EXPECT_EQ(asked<SummarizeBranchRequest>().titles,
            (QStringList{QStringLiteral("Topic 1"), QStringLiteral("Topic 2"), QStringLiteral("Topic 3")}));
  EXPECT_EQ(asked<SummarizeBranchRequest>().contents, (QStringList{QString(), QStringLiteral("old notes"), QString()}));
  AITreeNode summary(QStringLiteral("Summary"));
  summary.notes = QStringLiteral("short");
  rig.offline->answer(0, summary);
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.node(0).notes, QStringLiteral("short"));
  EXPECT_TRUE(rig.isStamped());
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(AIWorkflowsTest, ASummaryOfALeafSendsOnePairAndMayComeAsATitle) {
  rig.workflows.summarizeBranch(topicId(3));
  ASSERT_TRUE(rig.isAsked());
  EXPECT_EQ(asked<SummarizeBranchRequest>().titles, QStringList{QStringLiteral("Topic 3")});
  EXPECT_EQ(asked<SummarizeBranchRequest>().contents, QStringList{QString()});
  rig.offline->answer(0, AITreeNode(QStringLiteral("in the title")));
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.node(2).notes, QStringLiteral("in the title"));
  rig.workflows.summarizeBranch(topicId(99));
  EXPECT_FALSE(rig.workflows.aiIsGenerating());
}

// --- Answers that come late ---

TEST_F(AIWorkflowsTest, AnAnswerToAnotherDocumentIsDroppedAndThatIsTold) {
  generate();
  openAnother();
  rig.offline->answer(0, teaTree());
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.map().title, QStringLiteral("Other"));
  EXPECT_EQ(rig.workflows.aiError(), otherDocument);
  EXPECT_FALSE(rig.editor.isDirty());
  EXPECT_EQ(rig.editor.undoCount(), 0);
}

TEST_F(AIWorkflowsTest, SoIsOneOfAnExpansionAndOfASummary) {
  rig.workflows.expandNode(topicId(1));
  ASSERT_TRUE(rig.isAsked(1));
  rig.workflows.summarizeBranch(topicId(1));
  ASSERT_TRUE(rig.isAsked(2));
  openAnother();
  rig.offline->answer(0, teaTree());
  rig.offline->answer(1, teaTree());
  AIRig::settle();
  EXPECT_TRUE(rig.map().nodes.empty());
  EXPECT_EQ(rig.workflows.aiError(), otherDocument);
}

TEST_F(AIWorkflowsTest, AnAnswerAppliesToTheMapAsItIsThen) {
  rig.workflows.expandNode(topicId(1));
  ASSERT_TRUE(rig.isAsked());
  rig.editor.setNodeTitle(topicId(2), QStringLiteral("changed meanwhile"));
  rig.offline->answer(0, teaTree());
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.node(1).title, QStringLiteral("changed meanwhile"));
  EXPECT_EQ(rig.map().nodes.size(), 5u);
}

TEST_F(AIWorkflowsTest, ASummaryOfATopicThatIsGoneChangesNothing) {
  rig.workflows.summarizeBranch(topicId(3));
  ASSERT_TRUE(rig.isAsked());
  rig.editor.deleteNode(topicId(3));
  const MindMap before = rig.map();
  rig.offline->answer(0, AITreeNode(QStringLiteral("late")));
  ASSERT_TRUE(rig.isDone());
  EXPECT_TRUE(isVeryMap(rig.map(), before));
  EXPECT_EQ(rig.workflows.aiError(), std::nullopt);
}

TEST_F(AIWorkflowsTest, SubTopicsOfATopicThatIsGoneStandByThemselves) {
  rig.workflows.expandNode(topicId(3));
  ASSERT_TRUE(rig.isAsked());
  rig.editor.deleteNode(topicId(3));
  rig.offline->answer(0, teaTree());
  ASSERT_TRUE(rig.isDone());
  ASSERT_EQ(titles().size(), 4);
  EXPECT_EQ(rig.position(2), QPointF(180.0, -60.0));
  EXPECT_EQ(rig.edge(1).from, topicId(3));
}

TEST_F(AIWorkflowsTest, AnUndoMeanwhileDoesNotHoldTheMapBack) {
  generate();
  rig.editor.undo();
  rig.offline->answer(0, teaTree());
  ASSERT_TRUE(rig.isDone());
  EXPECT_EQ(rig.map().title, QStringLiteral("Tea"));
  rig.editor.redo();
  EXPECT_EQ(rig.map().title, QStringLiteral("Before")) << "nothing is lost";
}

TEST_F(AIWorkflowsTest, WhatWasBeingDraggedOrTypedEndsHarmlesslyInANewMap) {
  rig.editor.selectNode(topicId(2), false);
  rig.editor.setIsEditingInline(true);
  generate();
  rig.offline->answer(0, teaTree());
  ASSERT_TRUE(rig.isDone());
  const SharedArray<Node> nodes = rig.map().nodes;
  rig.editor.moveSelectedNodes(QPointF(50.0, 50.0));
  rig.editor.setNodeTitle(topicId(2), QStringLiteral("typed"));
  EXPECT_EQ(rig.map().nodes, nodes);
  EXPECT_FALSE(rig.editor.isEditingInline());
}

TEST_F(AIWorkflowsTest, WorkflowsThatGoStopTheirRequestsAndChangeNothing) {
  AIRig inner(threeTopics());
  auto workflows = std::make_unique<AIWorkflows>(
      inner.editor, EditorServices{inner.clock, inner.settings, inner.bookmarks, inner.log},
      inner.workflows.providers());
  workflows->generateMap(QStringLiteral("tea"), MindMap::Layout::radial);
  ASSERT_TRUE(inner.isAsked());
  const Cancellation cancellation = inner.offline->cancellations.front();
  workflows.reset();
  EXPECT_TRUE(cancellation.isCancelled());
  inner.offline->answer(0, teaTree());
  AIRig::settle();
  EXPECT_EQ(inner.map().title, QStringLiteral("Before"));
}

}  // namespace
