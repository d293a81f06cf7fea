#include <cmath>

#include <gtest/gtest.h>

#include "cli/FilesTest.h"
#include "cli/Program.h"
#include "model/MindMapDocument.h"

namespace {

using quilmora::decodeDocument;
using quilmora::MindMap;

class Generate : public cli::FilesTest {
 protected:
  static QStringList command(const QStringList& rest) { return QStringList{QStringLiteral("generate")} + rest; }
};

TEST_F(Generate, WritesAMapOfThePrompt) {
  const cli::Outcome outcome = cli::run(command({QStringLiteral("Create a map about coffee"), path("out.mindmap")}));
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error.toStdString(), "");
  EXPECT_EQ(outcome.out.toStdString(), "");
  const MindMap map = decodeDocument(read(path("out.mindmap")));
  EXPECT_EQ(map.title, QStringLiteral("Coffee"));
  ASSERT_EQ(map.nodes.size(), 6u);
  EXPECT_EQ(map.nodes[1].title, QStringLiteral("Espresso"));
  EXPECT_EQ(map.canvas.themeId, QStringLiteral("purple"));
  // Radial, on the usual canvas: the root in the middle, the first branch on the first ring.
  EXPECT_EQ(map.nodes[0].position, QPointF(600, 400));
  const QPointF ray = map.nodes[1].position - map.nodes[0].position;
  EXPECT_NEAR(std::hypot(ray.x(), ray.y()), 200, 1e-9);
}

TEST_F(Generate, TakesLayoutSizeAndTheme) {
  const cli::Outcome outcome = cli::run(
      command({QStringLiteral("--theme"), QStringLiteral("ocean"), QStringLiteral("map of x with 1 topics, depth 1"),
               QStringLiteral("--size"), QStringLiteral("1000x600"), path("out.json"), QStringLiteral("--layout"),
               QStringLiteral("tree")}));
  EXPECT_EQ(outcome.status, 0);
  const MindMap map = decodeDocument(read(path("out.json")));
  EXPECT_EQ(map.canvas.themeId, QStringLiteral("ocean"));
  ASSERT_EQ(map.nodes.size(), 2u);
  EXPECT_EQ(map.nodes[0].position, QPointF(375, 300));
  EXPECT_EQ(map.nodes[1].position, QPointF(625, 300));
}

TEST_F(Generate, WritesEveryFormat) {
  for (const char* name : {"out.opml", "out.md", "out.svg", "out.png", "out.pdf"}) {
    EXPECT_EQ(cli::run(command({QStringLiteral("about tea"), path(name)})).status, 0) << name;
    EXPECT_FALSE(read(path(name)).isEmpty()) << name;
  }
}

TEST_F(Generate, WrongUsageIsToldAndWritesNothing) {
  const QString prompt = QStringLiteral("about tea");
  for (const QStringList& rest : {QStringList{},
                                  {prompt},
                                  {prompt, path("out.json"), prompt},
                                  {prompt, path("out.json"), QStringLiteral("--layout"), QStringLiteral("spiral")},
                                  {prompt, path("out.json"), QStringLiteral("--layout"), QStringLiteral("manual")},
                                  {prompt, path("out.json"), QStringLiteral("--layout")},
                                  {prompt, path("out.json"), QStringLiteral("--theme")},
                                  {prompt, path("out.json"), QStringLiteral("--size"), QStringLiteral("0x10")}}) {
    const cli::Outcome outcome = cli::run(command(rest));
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.error.contains("       quilmora-cli generate PROMPT OUTPUT [--layout LAYOUT]"));
  }
  EXPECT_TRUE(entries().isEmpty());
}

TEST_F(Generate, AnOutputThatCannotBeWrittenIsTold) {
  const cli::Outcome outcome = cli::run(command({QStringLiteral("about tea"), path("nowhere/out.json")}));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.error.startsWith("quilmora-cli: " + path("nowhere/out.json").toUtf8() + ": "));
  EXPECT_EQ(outcome.error.count('\n'), 1);
  EXPECT_EQ(cli::run(command({QStringLiteral("about tea"), path("out.docx")})).status, 1);
  EXPECT_TRUE(entries().isEmpty());
}

}  // namespace
