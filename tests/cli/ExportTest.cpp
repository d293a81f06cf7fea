#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

#include "cli/FilesTest.h"
#include "cli/Maps.h"
#include "cli/Program.h"
#include "exchange/TextExports.h"
#include "model/MindMapDocument.h"

// Exports of the batch tool, by commands and by scripts.
namespace {

using quilmora::decodeDocument;
using quilmora::MindMap;
using Text = std::string;

class CommandLineExport : public cli::FilesTest {
 protected:
  QByteArray exportLine(const char* format, const QString& file) const {
    return QByteArray(R"({"do":"exportFile","format":")") + format + R"(","path":")" + file.toUtf8() + "\"}";
  }
};

constexpr char smallOutline[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n  <head>\n    <title>Small</title>\n"
    "    <dateCreated>2024-01-01T00:00:00Z</dateCreated>\n  </head>\n  <body>    <outline text=\"A\">\n"
    "      <outline text=\"B\" />\n      <outline text=\"C\" />\n    </outline>\n  </body>\n</opml>";
constexpr char smallMarkdown[] = "# Small\n\n- **A**\n  - **B**\n  - **C**\n";

TEST_F(CommandLineExport, ConvertWritesTheFormatOfTheExtension) {
  const QString input = write("in.mindmap", cli::smallMap());
  const QString convert = QStringLiteral("convert");
  for (const char* name : {"out.opml", "out.md", "out.svg", "upper.OPML"}) {
    const cli::Outcome outcome = cli::run({convert, input, path(name)});
    EXPECT_EQ(outcome.status, 0) << name;
    EXPECT_EQ(outcome.error.toStdString(), "");
  }
  EXPECT_EQ(read(path("out.opml")).toStdString(), smallOutline);
  EXPECT_EQ(read(path("upper.OPML")).toStdString(), smallOutline);
  EXPECT_EQ(read(path("out.md")).toStdString(), smallMarkdown);
  EXPECT_EQ(read(path("out.svg")).toStdString(), quilmora::exportSVG(decodeDocument(cli::smallMap())).toStdString());
}

TEST_F(CommandLineExport, LayoutWritesTheArrangedMap) {
  const QString input = write("in.mindmap", cli::smallMap());
  const cli::Outcome outcome = cli::run({QStringLiteral("layout"), QStringLiteral("tree"), input, path("out.svg")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(read(path("out.svg")).contains("<text x=\"475.0\" y=\"400.0\"")) << read(path("out.svg")).toStdString();
}

TEST_F(CommandLineExport, AFailureLeavesTheOutputAsItWasAndNothingBeside) {
  const QString convert = QStringLiteral("convert");
  write("out.opml", "precious");
  EXPECT_EQ(cli::run({convert, write("bad.mindmap", "{"), path("out.opml")}).status, 1);
  EXPECT_EQ(read(path("out.opml")), "precious");
  const QString input = write("in.mindmap", cli::smallMap());
  const cli::Outcome outcome = cli::run({convert, input, path("none/out.md")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error.toStdString(), "quilmora-cli: " + path("none/out.md").toStdString() +
                                             ": “out.md” could not be written. The folder “" +
                                             path("none").toStdString() + "” does not exist.\n");
  EXPECT_EQ(entries(),
            (QStringList{QStringLiteral("bad.mindmap"), QStringLiteral("in.mindmap"), QStringLiteral("out.opml")}));
}

TEST_F(CommandLineExport, AnExportIsNoFolder) {
  const QString input = write("in.mindmap", cli::smallMap());
  QDir().mkpath(path("there.svg"));
  for (const QString& output : {path("there.svg"), path("new.svg/")}) {
    const cli::Outcome outcome = cli::run({QStringLiteral("convert"), input, output});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.error.toStdString(),
              "quilmora-cli: " + output.toStdString() + ": a .svg file cannot be a folder\n");
  }
  EXPECT_FALSE(QFileInfo::exists(path("new.svg")));
}

TEST_F(CommandLineExport, AnEndlessIndentationIsRefusedInWords) {
  MindMap map;
  map.canvas = quilmora::CanvasConfig::defaultConfig();
  const auto idOf = [](int i) { return QUuid(static_cast<uint>(i + 1), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0); };
  for (int i = 0; i < 30'000; ++i) {
    quilmora::Node node;
    node.id = idOf(i);
    node.style = quilmora::NodeStyle::defaultStyle();
    map.nodes.append(node);
    if (i > 0) map.edges.append({idOf(-i - 1), idOf(i - 1), idOf(i), {}, quilmora::EdgeStyle::defaultStyle(), {}});
  }
  const QString input = write("chain.mindmap", encodeDocument(map));
  const cli::Outcome outcome = cli::run({QStringLiteral("convert"), input, path("out.md")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error.toStdString(),
            "quilmora-cli: " + path("out.md").toStdString() +
                ": the topics are nested too deeply for Markdown: its indentation alone would take 899 MB\n");
  EXPECT_FALSE(QFileInfo::exists(path("out.md")));
  EXPECT_EQ(cli::run({QStringLiteral("convert"), input, path("out.opml")}).status, 0);
}

TEST_F(CommandLineExport, AScriptGetsTheTextOfEachFormat) {
  cli::Script script;
  script.line(cli::loadSmallMap());
  for (const char* format : {"opml", "md", "svg", "json"})
    script.line(QByteArray(R"({"do":"export","format":")") + format + "\"}");
  const MindMap map = decodeDocument(cli::smallMap());
  EXPECT_EQ(script.result(1).toString().toStdString(), smallOutline);
  EXPECT_EQ(script.result(2).toString().toStdString(), smallMarkdown);
  EXPECT_EQ(script.result(3).toString().toUtf8().toStdString(), quilmora::exportSVG(map).toStdString());
  EXPECT_EQ(script.result(4).toString().toUtf8().toStdString(), encodeDocument(map).toStdString());
}

TEST_F(CommandLineExport, AScriptWritesFilesAndKeepsItsMapAndPlace) {
  cli::Script script;
  script.line(cli::loadSmallMap())
      .line(R"({"do":"state"})")
      .line(exportLine("md", path("any.name")))
      .line(exportLine("json", path("out")))
      .line(R"({"do":"state"})");
  EXPECT_TRUE(script.isOk(2));
  EXPECT_TRUE(script.isOk(3));
  EXPECT_EQ(script.result(1), script.result(4));
  EXPECT_EQ(read(path("any.name")).toStdString(), smallMarkdown);
  EXPECT_EQ(decodeDocument(read(path("out"))), decodeDocument(cli::smallMap()));
}

TEST_F(CommandLineExport, WhatAScriptCannotExportIsRefused) {
  const QList<QByteArray> answers =
      cli::answers(QByteArrayLiteral("{\"do\":\"export\",\"format\":\"docx\"}\n"
                                     "{\"do\":\"export\",\"format\":\"png\"}\n"
                                     "{\"do\":\"export\"}\n"
                                     "{\"do\":\"exportFile\",\"format\":\"md\"}\n") +
                   exportLine("markdown", path("a.md")) + '\n' + exportLine("md", path("none/a.md")) + '\n');
  ASSERT_EQ(answers.size(), 6);
  EXPECT_EQ(answers[0].toStdString(), R"({"ok":false,"error":"format: unknown"})");
  EXPECT_EQ(answers[1].toStdString(), R"({"ok":false,"error":"format: a picture is no text"})");
  EXPECT_EQ(answers[2].toStdString(), R"({"ok":false,"error":"format: missing"})");
  EXPECT_EQ(answers[3].toStdString(), R"({"ok":false,"error":"path: missing"})");
  EXPECT_EQ(answers[4].toStdString(), R"({"ok":false,"error":"format: unknown"})");
  EXPECT_TRUE(answers[5].startsWith(R"({"ok":false,"error":"“a.md” could not be written.)"))
      << answers[5].toStdString();
  EXPECT_EQ(entries(), QStringList());
}

}  // namespace
