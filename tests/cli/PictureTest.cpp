#include <QImage>
#include <QProcess>
#include <gtest/gtest.h>

#include "cli/FilesTest.h"
#include "cli/Maps.h"
#include "cli/Program.h"

namespace {

class CommandLinePicture : public cli::FilesTest {};

TEST_F(CommandLinePicture, ConvertDrawsWithoutADisplay) {
  const QString input = write("in.json", cli::smallMap());
  const cli::Outcome outcome = cli::run({QStringLiteral("convert"), input, path("out.png")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out.toStdString(), "");
  EXPECT_EQ(outcome.error.toStdString(), "");
  const QImage image(path("out.png"));
  ASSERT_EQ(image.size(), QSize(720, 520));
  EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::white));
  // The titles are drawn: there is something light on the dark topics.
  int light = 0;
  for (int y = 240; y < 280; ++y)
    for (int x = 145; x < 175; ++x)
      if (image.pixelColor(x, y).lightness() > 200) ++light;
  EXPECT_GT(light, 20);
  EXPECT_EQ(entries(), (QStringList{QStringLiteral("in.json"), QStringLiteral("out.png")}));
}

TEST_F(CommandLinePicture, LayoutAndConvertWritePdfPages) {
  const QString input = write("in.json", cli::smallMap());
  EXPECT_EQ(cli::run({QStringLiteral("convert"), input, path("out.pdf")}).status, 0);
  EXPECT_TRUE(read(path("out.pdf")).contains("/MediaBox [0 0 360 260]"));
  EXPECT_EQ(cli::run({QStringLiteral("layout"), QStringLiteral("tree"), input, path("tree.pdf")}).status, 0);
  EXPECT_TRUE(read(path("tree.pdf")).startsWith("%PDF-"));
}

TEST_F(CommandLinePicture, AScriptWritesPicturesOfItsMap) {
  cli::Script script;
  script.line(cli::loadSmallMap());
  script.line(R"({"do":"exportFile","format":"png","path":")" + path("a.png").toUtf8() + R"("})");
  script.line(R"({"do":"exportFile","format":"pdf","path":")" + path("a.pdf").toUtf8() + R"("})");
  script.line(R"({"do":"exportFile","format":"png","path":")" + path("none/a.png").toUtf8() + R"("})");
  script.run();
  EXPECT_TRUE(script.isOk(1));
  EXPECT_TRUE(script.isOk(2));
  EXPECT_FALSE(script.isOk(3));
  EXPECT_EQ(QImage(path("a.png")).size(), QSize(720, 520));
  EXPECT_TRUE(read(path("a.pdf")).startsWith("%PDF-"));
}

TEST_F(CommandLinePicture, WhatNoPictureCanHoldIsTold) {
  const QString input = write("in.json", cli::smallMap().replace("[200,50]", "[1e9,1e9]"));
  write("out.png", "old");
  const cli::Outcome outcome = cli::run({QStringLiteral("convert"), input, path("out.png")});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.error.toStdString(),
            "quilmora-cli: " + path("out.png").toStdString() + ": no picture of this map can be made\n");
  EXPECT_EQ(read(path("out.png")), QByteArray("old"));
}

TEST_F(CommandLinePicture, AKilledExportLeavesTheOldFileAlone) {
  const QString input = write("in.json", cli::smallMap().replace("[200,50]", "[300000,200000]"));
  write("out.png", "old");
  QProcess process;
  process.setProcessEnvironment(cli::bareEnvironment());
  process.start(cli::programPath(), {QStringLiteral("convert"), input, path("out.png")});
  ASSERT_TRUE(process.waitForStarted());
  ASSERT_FALSE(process.waitForFinished(500)) << "the picture was made too fast to be interrupted";
  process.kill();
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(read(path("out.png")), QByteArray("old"));
  EXPECT_EQ(entries(), (QStringList{QStringLiteral("in.json"), QStringLiteral("out.png")}));
}

}  // namespace
