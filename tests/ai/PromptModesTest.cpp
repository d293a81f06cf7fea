#include <gtest/gtest.h>

#include "ai/PromptModes.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

using Layout = MindMap::Layout;

Layout layoutOf(const char16_t* prompt, Layout usual = Layout::radial) {
  return layoutForPrompt(QString::fromUtf16(prompt), usual);
}

}  // namespace

TEST(PromptModes, AreFiveWithTheirLayouts) {
  QStringList told;
  for (const PromptMode& mode : promptModes()) {
    told << mode.id + u'|' + mode.label + u'|' + mode.symbol + u'|' + mode.prefix + u'|' + rawValue(mode.layout);
    EXPECT_EQ(mode.examples.size(), 4) << mode.id.toStdString();
    EXPECT_TRUE(mode.placeholder.startsWith(QStringLiteral("e.g. ")));
  }
  EXPECT_EQ(told.join(u'\n'), QStringLiteral("brainstorm|Brainstorm|lightbulb||radial\n"
                                             "plan|Project Plan|checklist|Create a project plan for: |tree\n"
                                             "compare|Compare|arrow.left.arrow.right|Create a comparison map: |"
                                             "leftRightTree\n"
                                             "study|Study Guide|book|Create a study guide about: |verticalTree\n"
                                             "swot|SWOT Analysis|chart.bar|Create a SWOT analysis for: |orgChart"));
}

TEST(PromptModes, TheWordsOfThePromptChooseTheLayout) {
  EXPECT_EQ(layoutOf(u"tea, Tree Layout"), Layout::tree);
  EXPECT_EQ(layoutOf(u"HORIZONTAL"), Layout::tree);
  EXPECT_EQ(layoutOf(u"Create a project plan for: a vertical garden", Layout::tree), Layout::verticalTree);
  EXPECT_EQ(layoutOf(u"a circular economy", Layout::tree), Layout::radial);
  EXPECT_EQ(layoutOf(u"tea left right"), Layout::leftRightTree);
  EXPECT_EQ(layoutOf(u"tea l-r"), Layout::leftRightTree);
  EXPECT_EQ(layoutOf(u"an org chart"), Layout::orgChart);
}

TEST(PromptModes, TheFirstHitWins) {
  EXPECT_EQ(layoutOf(u"compare the radial layouts", Layout::tree), Layout::radial);
  EXPECT_EQ(layoutOf(u"vertical or horizontal"), Layout::tree);
}

TEST(PromptModes, WithoutAWordTheModeChooses) {
  EXPECT_EQ(layoutOf(u"tea", Layout::orgChart), Layout::orgChart);
  EXPECT_EQ(layoutOf(u"Create a comparison map: a vs b", Layout::leftRightTree), Layout::leftRightTree);
  EXPECT_EQ(layoutOf(u"a tree", Layout::radial), Layout::radial);
}

}  // namespace quilmora
