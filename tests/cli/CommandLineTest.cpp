#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include "cli/FilesTest.h"
#include "cli/Maps.h"
#include "cli/Program.h"
#include "model/MindMapDocument.h"

namespace {

using quilmora::decodeDocument;
using quilmora::decodeDocumentAt;
using quilmora::MindMap;

constexpr char usageStart[] = "usage: quilmora-cli convert INPUT OUTPUT\n";

class CommandLine : public cli::FilesTest {};

TEST_F(CommandLine, ConvertWritesTheSameMapAsAPlainDocument) {
  const QString input = write("in.json", cli::smallMap());
  const cli::Outcome outcome = cli::run({QStringLiteral("convert"), input, path("out.mindmap")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out.toStdString(), "");
  EXPECT_EQ(outcome.error.toStdString(), "");
  EXPECT_EQ(read(path("out.mindmap")), encodeDocument(decodeDocument(cli::smallMap())));
  EXPECT_EQ(entries(), (QStringList{QStringLiteral("in.json"), QStringLiteral("out.mindmap")}));
}

TEST_F(CommandLine, ConvertReadsAPackage) {
  QDir().mkpath(path("in.mindmap"));
  write("in.mindmap/document.json", cli::smallMap());
  EXPECT_EQ(cli::run({QStringLiteral("convert"), path("in.mindmap"), path("out.json")}).status, 0);
  EXPECT_EQ(decodeDocument(read(path("out.json"))), decodeDocument(cli::smallMap()));
}

TEST_F(CommandLine, AnOutputThatEndsInASlashBecomesAPackage) {
  const QString input = write("in.mindmap", cli::smallMap());
  EXPECT_EQ(cli::run({QStringLiteral("convert"), input, path("out.mindmap/")}).status, 0);
  EXPECT_TRUE(QFileInfo(path("out.mindmap/Assets")).isDir());
  EXPECT_TRUE(QFileInfo(path("out.mindmap/Thumbnails")).isDir());
  EXPECT_EQ(decodeDocument(read(path("out.mindmap/document.json"))), decodeDocument(cli::smallMap()));
}

TEST_F(CommandLine, AnOutputThatIsAPackageStaysOne) {
  const QString input = write("in.mindmap", cli::smallMap());
  QDir().mkpath(path("out.mindmap/Assets"));
  write("out.mindmap/document.json", "old");
  write("out.mindmap/Assets/kept", "kept");
  EXPECT_EQ(cli::run({QStringLiteral("convert"), input, path("out.mindmap")}).status, 0);
  EXPECT_EQ(decodeDocument(read(path("out.mindmap/document.json"))), decodeDocument(cli::smallMap()));
  EXPECT_EQ(read(path("out.mindmap/Assets/kept")), "kept");
}

TEST_F(CommandLine, AFolderThatIsNoPackageIsNotTouched) {
  const QString input = write("in.mindmap", cli::smallMap());
  QDir().mkpath(path("folder.mindmap/inner"));
  const cli::Outcome outcome = cli::run({QStringLiteral("convert"), input, path("folder.mindmap")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(QDir(path("folder.mindmap")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
            QStringList{QStringLiteral("inner")});
}

TEST_F(CommandLine, LayoutPlacesTheTopicsOnTheDefaultSize) {
  const QString input = write("in.mindmap", cli::smallMap());
  const auto outcome = cli::run({QStringLiteral("layout"), QStringLiteral("tree"), input, path("out.mindmap")});
  EXPECT_EQ(outcome.status, 0);
  const MindMap map = decodeDocumentAt(path("out.mindmap"));
  EXPECT_EQ(map.layout, MindMap::Layout::tree);
  EXPECT_EQ(map.nodes[0].position, QPointF(475, 400));
  EXPECT_EQ(map.nodes[1].position, QPointF(725, 330));
  EXPECT_EQ(map.nodes[2].position, QPointF(725, 470));
  EXPECT_EQ(map.createdAt, decodeDocument(cli::smallMap()).createdAt);
  EXPECT_GT(map.updatedAt, decodeDocument(cli::smallMap()).updatedAt);
}

TEST_F(CommandLine, LayoutTakesTheSizeAtAnyPlace) {
  const QString input = write("in.mindmap", cli::smallMap());
  const auto outcome = cli::run({QStringLiteral("layout"), QStringLiteral("--size"), QStringLiteral("400x300"),
                                 QStringLiteral("verticalTree"), input, path("out.json")});
  EXPECT_EQ(outcome.status, 0);
  const MindMap map = decodeDocumentAt(path("out.json"));
  EXPECT_EQ(map.layout, MindMap::Layout::verticalTree);
  EXPECT_EQ(map.nodes[0].position, QPointF(200, 25));
  EXPECT_EQ(map.nodes[1].position, QPointF(130, 275));
  EXPECT_EQ(map.nodes[2].position, QPointF(270, 275));
}

TEST_F(CommandLine, AMissingInputIsOneLineWithItsName) {
  const QString input = path("none.mindmap");
  const auto outcome = cli::run({QStringLiteral("convert"), input, path("out.mindmap")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error.toStdString(), "quilmora-cli: " + input.toStdString() + ": there is no such file\n");
  EXPECT_EQ(entries(), QStringList());
}

TEST_F(CommandLine, ADamagedInputLeavesTheOutputAsItWas) {
  const QString input = write("in.mindmap", R"({"version":1})");
  write("out.mindmap", "precious");
  const auto outcome = cli::run({QStringLiteral("convert"), input, path("out.mindmap")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error.toStdString(), "quilmora-cli: " + input.toStdString() + ": title: missing\n");
  EXPECT_EQ(read(path("out.mindmap")), "precious");
}

TEST_F(CommandLine, AnOutputInAMissingFolderIsARefusalThatNamesIt) {
  const QString input = write("in.mindmap", cli::smallMap());
  const QString output = path("none/out.mindmap");
  const auto outcome = cli::run({QStringLiteral("convert"), input, output});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(outcome.error.startsWith("quilmora-cli: " + output.toUtf8() + ": ")) << outcome.error.toStdString();
  EXPECT_EQ(outcome.error.count('\n'), 1);
}

TEST_F(CommandLine, AnExtensionThatIsNotKnownIsRefused) {
  const QString input = write("in.mindmap", cli::smallMap());
  const QString output = path("out.docx");
  const auto outcome = cli::run({QStringLiteral("convert"), input, output});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error.toStdString(), "quilmora-cli: " + output.toStdString() + ": cannot write .docx files\n");
}

TEST_F(CommandLine, OutlinesOfOtherProgramsAreReadByTheirExtension) {
  const std::vector<std::pair<const char*, QByteArray>> files = {
      {"in.opml", "<opml><body><outline text=\"A\"><outline text=\"B\"/></outline></body></opml>"},
      {"in.OPML", "<opml><body><outline text=\"A\"><outline text=\"B\"/></outline></body></opml>"},
      {"in.mm", "<map><node TEXT=\"A\"><node TEXT=\"B\"/></node></map>"},
      {"in.md", "- A\n  - B\n"},
  };
  for (const auto& [name, bytes] : files) {
    const QString output = path("out.mindmap");
    QFile::remove(output);
    EXPECT_EQ(cli::run({QStringLiteral("convert"), write(name, bytes), output}).status, 0) << name;
    const MindMap map = decodeDocumentAt(output);
    ASSERT_EQ(map.nodes.size(), 2u) << name;
    EXPECT_EQ(map.nodes[0].title, QStringLiteral("A")) << name;
    EXPECT_EQ(map.nodes[1].title, QStringLiteral("B")) << name;
    ASSERT_EQ(map.edges.size(), 1u) << name;
    EXPECT_EQ(map.edges[0].from, map.nodes[0].id) << name;
  }
}

TEST_F(CommandLine, ADamagedOutlineLeavesTheOutputAsItWas) {
  write("out.mindmap", "precious");
  const auto refusal = [&](const QString& input) {
    const auto outcome = cli::run({QStringLiteral("convert"), input, path("out.mindmap")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(read(path("out.mindmap")), "precious");
    return outcome.error.toStdString();
  };
  const QString opml = write("in.opml", "<opml>\n<outline text=\"A\">\n");
  EXPECT_EQ(refusal(opml), "quilmora-cli: " + opml.toStdString() + ": line 3: Premature end of document.\n");
  const QString freeMind = write("in.mm", "<map><node TEXT=\"\xF6\"/></map>");
  EXPECT_EQ(refusal(freeMind), "quilmora-cli: " + freeMind.toStdString() +
                                   ": the file is not UTF-8 text; save it as UTF-8 and import it again\n");
  const QString none = path("none.opml");
  EXPECT_EQ(refusal(none), "quilmora-cli: " + none.toStdString() + ": there is no such file\n");
}

TEST_F(CommandLine, ALayoutArrangesAnImportedOutline) {
  const QString input = write("in.opml", "<opml><outline text=\"A\"><outline text=\"B\"/></outline></opml>");
  const QString output = path("out.mindmap");
  EXPECT_EQ(cli::run({QStringLiteral("layout"), QStringLiteral("tree"), input, output}).status, 0);
  EXPECT_EQ(decodeDocumentAt(output).layout, MindMap::Layout::tree);
}

TEST_F(CommandLine, ADocumentOpensWhateverItsName) {
  for (const char* name : {"in", "in.txt", "in.MINDMAP"}) {
    const QString output = path("out.mindmap");
    QFile::remove(output);
    EXPECT_EQ(cli::run({QStringLiteral("convert"), write(name, cli::smallMap()), output}).status, 0) << name;
    EXPECT_EQ(decodeDocumentAt(output), decodeDocument(cli::smallMap())) << name;
  }
}

TEST_F(CommandLine, AReasonStaysOnOneLineWhateverTheNameHolds) {
  const QString input = path("two\nlines.mindmap");
  const auto outcome = cli::run({QStringLiteral("convert"), input, path("out.mindmap")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error.count('\n'), 1);
  EXPECT_TRUE(outcome.error.endsWith("two lines.mindmap: there is no such file\n"));
}

TEST_F(CommandLine, WrongUsageIsAnsweredWithTheUsage) {
  const QString input = write("in.mindmap", cli::smallMap());
  const QString output = path("out.mindmap");
  const QString layout = QStringLiteral("layout");
  const QList<QStringList> wrong = {
      {},
      {QStringLiteral("render")},
      {QStringLiteral("convert")},
      {QStringLiteral("convert"), input},
      {QStringLiteral("convert"), input, output, output},
      {layout, QStringLiteral("spiral"), input, output},
      {layout, QStringLiteral("manual"), input, output},
      {layout, QStringLiteral("tree"), input},
      {layout, QStringLiteral("tree"), input, output, QStringLiteral("--size")},
      {layout, QStringLiteral("tree"), input, output, QStringLiteral("--size"), QStringLiteral("400")},
      {layout, QStringLiteral("tree"), input, output, QStringLiteral("--size"), QStringLiteral("0x300")},
      {layout, QStringLiteral("tree"), input, output, QStringLiteral("--size"), QStringLiteral("-4x300")},
      {layout, QStringLiteral("tree"), input, output, QStringLiteral("--size"), QStringLiteral("4x3\n")},
      {QStringLiteral("script"), input},
  };
  for (const QStringList& arguments : wrong) {
    const auto outcome = cli::run(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments.join(u' ').toStdString();
    EXPECT_TRUE(outcome.error.startsWith(usageStart)) << outcome.error.toStdString();
    EXPECT_EQ(outcome.out.toStdString(), "");
  }
  EXPECT_FALSE(QFileInfo::exists(output));
}

TEST_F(CommandLine, HelpIsTheUsageOnStandardOutput) {
  const auto outcome = cli::run({QStringLiteral("--help")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.startsWith(usageStart));
  EXPECT_EQ(outcome.error.toStdString(), "");
}

TEST_F(CommandLine, VersionIsOneLine) {
  const cli::Outcome outcome = cli::run({QStringLiteral("--version")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out.toStdString(), "quilmora-cli " QUILMORA_VERSION "\n");
  EXPECT_EQ(cli::run({QStringLiteral("--version"), QStringLiteral("now")}).status, 2);
}

TEST_F(CommandLine, ADashIsStandardInputAndStandardOutput) {
  const QStringList dashes{QStringLiteral("convert"), QStringLiteral("-"), QStringLiteral("-")};
  const cli::Outcome outcome = cli::run(dashes, cli::smallMap());
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error.toStdString(), "");
  EXPECT_EQ(outcome.out, encodeDocument(decodeDocument(cli::smallMap())));
  EXPECT_EQ(entries(), QStringList());
  const cli::Outcome arranged = cli::run(
      {QStringLiteral("layout"), QStringLiteral("tree"), QStringLiteral("-"), QStringLiteral("-")}, cli::smallMap());
  EXPECT_EQ(arranged.status, 0);
  EXPECT_EQ(decodeDocument(arranged.out).nodes[0].position, QPointF(475, 400));
}

TEST_F(CommandLine, StandardInputIsKnownByHowItBegins) {
  const QStringList dashes{QStringLiteral("convert"), QStringLiteral("-"), QStringLiteral("-")};
  const auto topics = [&](const QByteArray& input) {
    const cli::Outcome outcome = cli::run(dashes, input);
    EXPECT_EQ(outcome.status, 0) << outcome.error.toStdString();
    QStringList titles;
    for (const auto& node : decodeDocument(outcome.out).nodes) titles.append(node.title);
    return titles.join(u',');
  };
  EXPECT_EQ(topics("<?xml version=\"1.0\"?>\n<!-- outline -->\n<opml version=\"2.0\"><head/><body>"
                   "<outline text=\"A\"><outline text=\"B\"/></outline></body></opml>"),
            QStringLiteral("A,B"));
  EXPECT_EQ(topics("<map version=\"1.0.1\"><node TEXT=\"A\"><node TEXT=\"B\"/></node></map>"), QStringLiteral("A,B"));
  EXPECT_TRUE(topics("# A\n\n- B\n").endsWith(QStringLiteral("B")));
}

TEST_F(CommandLine, StandardInputThatIsNoMapIsOneLineAndStatusOne) {
  for (const QByteArray& input : {QByteArray(), QByteArray("hello"), QByteArray("{"), QByteArray("<html></html>")}) {
    const cli::Outcome outcome = cli::run({QStringLiteral("convert"), QStringLiteral("-"), QStringLiteral("-")}, input);
    EXPECT_EQ(outcome.status, 1) << input.toStdString();
    EXPECT_EQ(outcome.out.toStdString(), "") << input.toStdString();
    EXPECT_TRUE(outcome.error.startsWith("quilmora-cli: -: ")) << outcome.error.toStdString();
    EXPECT_EQ(outcome.error.count('\n'), 1) << outcome.error.toStdString();
  }
}

// Bytes that are not UTF-8 must not be mistaken for the file named like their replacement.
TEST_F(CommandLine, ANameThatIsNoTextIsRefusedAndNoOtherFileTouched) {
  const QString input = write("in.mindmap", cli::smallMap());
  const QString neighbour = m_folder.filePath(QStringLiteral("caf\uFFFD.mindmap"));
  ASSERT_TRUE(QFile::copy(input, neighbour));
  const QByteArray before = read(neighbour);
  const QByteArray program = QFile::encodeName(cli::programPath());
  const auto shell = [&](const QByteArray& from, const QByteArray& to) {
    QProcess process;
    process.setProcessEnvironment(cli::bareEnvironment());
    process.setWorkingDirectory(m_folder.path());
    process.start(QStringLiteral("/bin/bash"),
                  {QStringLiteral("-c"), QString::fromLatin1(program + " convert " + from + ' ' + to)});
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 1);
    return process.readAllStandardError();
  };
  EXPECT_TRUE(shell("in.mindmap", "$'caf\\xe9.mindmap'").contains("the name is not UTF-8 text"));
  EXPECT_TRUE(shell("$'caf\\xe9.mindmap'", "out.mindmap").contains("the name is not UTF-8 text"));
  EXPECT_EQ(read(neighbour), before);
  EXPECT_EQ(entries().size(), 2);
}

}  // namespace
