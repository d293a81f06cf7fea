#include <QProcess>

#include "editor/SavingFixture.h"
#include "support/Folders.h"

namespace quilmora {
namespace {

// A process of its own, to which the system gives no more than a limit allows.
class SystemLimits : public SavingFixture {
 protected:
  struct Result {
    QProcess::ExitStatus status = QProcess::CrashExit;
    QString error, title, count, state;
  };

  Result run(const QStringList& arguments) const {
    QProcess program;
    program.start(supportProgramFolder() + QStringLiteral("/support_within_limits"), arguments);
    EXPECT_TRUE(program.waitForFinished(60'000));
    const QStringList lines = QString::fromUtf8(program.readAllStandardOutput()).split(u'\n');
    return {program.exitStatus(), lines.value(0), lines.value(1), lines.value(2), lines.value(3)};
  }
  QString written(const char* title, int topicCount) const {
    MindMap map = mapWithTitle(QLatin1String(title));
    Node node = map.nodes[0];
    node.notes = QString(200, u'x');
    for (int number = 1; number < topicCount; ++number) {
      node.id = QUuid::createUuid();
      map.nodes.append(node);
    }
    const QString file = path(QLatin1String(title) + QStringLiteral(".mindmap"));
    put(file, encodeDocument(map));
    return file;
  }
};

TEST_F(SystemLimits, ADocumentThatDoesNotFitIntoMemorySaysSoAndTheOpenMapStays) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "the sanitizer itself takes more than any limit";
#endif
  const QString small = written("Small", 3);
  const QString large = written("Large", 50'000);
  const auto size = static_cast<std::size_t>(QFileInfo(large).size());
  int refused = 0;
  int opened = 0;
  // From less than the text alone to more than everything, wherever the memory ends in between.
  for (std::size_t bytes = size / 4; opened == 0; bytes += size) {
    const Result result = run({QStringLiteral("open"), small, large, QString::number(bytes)});
    ASSERT_EQ(result.status, QProcess::NormalExit) << bytes << " of " << size;
    EXPECT_EQ(result.state, QStringLiteral("kept"));
    if (result.title == QStringLiteral("Large")) {
      EXPECT_EQ(result.error, QString());
      EXPECT_EQ(result.count, QStringLiteral("50000"));
      ++opened;
      continue;
    }
    ++refused;
    EXPECT_EQ(result.title, QStringLiteral("Small"));
    EXPECT_EQ(result.count, QStringLiteral("3"));
    EXPECT_TRUE(result.error.startsWith(QStringLiteral("Failed to open document: Large.mindmap: ")))
        << qPrintable(result.error);
    EXPECT_TRUE(result.error.contains(QStringLiteral("memory"))) << qPrintable(result.error);
  }
  EXPECT_GE(refused, 3);
}

TEST_F(SystemLimits, ASaveBeyondTheSizeOfFilesIsToldAndTheMapStaysChanged) {
  const QString file = written("Plan", 3);
  const QByteArray before = content(file);
  const Result result = run({QStringLiteral("save"), file, QStringLiteral("3000000")});
  ASSERT_EQ(result.status, QProcess::NormalExit);
  EXPECT_EQ(result.error, QStringLiteral("“Plan.mindmap” could not be written. The file is too large for this disk."));
  EXPECT_EQ(result.count, QStringLiteral("4"));
  EXPECT_EQ(result.state, QStringLiteral("changed"));
  EXPECT_EQ(content(file), before);
  EXPECT_EQ(namesIn(home()), QStringList(QStringLiteral("Plan.mindmap")));
}

}  // namespace
}  // namespace quilmora
