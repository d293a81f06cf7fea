#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include "exchange/MarkdownImport.h"
#include "support/QtPrinters.h"

// Files that people wrote. They are not part of the project: the variable QUILMORA_FOREIGN_FILES names a folder with
// the folder markdown.
namespace {

using quilmora::MindMap;

struct Expected {
  QString mapTitle = QStringLiteral("Imported from Markdown");
  QStringList titles;
  QList<qsizetype> levels;

  // Of the nearest earlier topic with a smaller depth, or -1.
  qsizetype parentOf(qsizetype index) const {
    for (qsizetype before = index - 1; before >= 0; --before)
      if (levels[before] < levels[index]) return before;
    return -1;
  }
};

// The same rules, written as patterns.
Expected expectedFrom(QString text) {
  static const QRegularExpression lineEnd(QStringLiteral("[\n\v\f\r\u0085\u2028\u2029]"));
  static const QRegularExpression heading(QStringLiteral("\\A[ \t]*(#+)[ \t]*(.*?)[ \t]*\\z"));
  static const QRegularExpression bullet(QStringLiteral("\\A( *)[ \t]*[-*] [ \t]*([^ \t].*?)[ \t]*\\z"));
  static const QRegularExpression bold(QStringLiteral("\\*\\*"));
  if (text.startsWith(QChar(0xFEFF))) text.remove(0, 1);
  Expected expected;
  for (const QString& line : text.split(lineEnd)) {
    if (const auto match = heading.match(line); match.hasMatch()) {
      if (match.captured(1).size() == 1) {
        expected.mapTitle = match.captured(2);
      } else {
        expected.titles.append(match.captured(2));
        expected.levels.append(match.captured(1).size());
      }
    } else if (const auto item = bullet.match(line); item.hasMatch()) {
      expected.titles.append(item.captured(2).remove(bold));
      expected.levels.append(item.captured(1).size() / 2 + 1);
    }
  }
  return expected;
}

TEST(ForeignMarkdown, EveryHeadingAndBulletComesInOrderBelowItsParent) {
  const QString root = qEnvironmentVariable("QUILMORA_FOREIGN_FILES");
  const QDir folder(root + QStringLiteral("/markdown"));
  const QStringList names = root.isEmpty() ? QStringList() : folder.entryList(QDir::Files, QDir::Name);
  if (names.isEmpty()) GTEST_SKIP() << "QUILMORA_FOREIGN_FILES names no folder with such files";
  for (const QString& name : names) {
    SCOPED_TRACE(name.toStdString());
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const MindMap map = quilmora::importMarkdown(bytes, quilmora::ManualClock());
    const Expected expected = expectedFrom(QString::fromUtf8(bytes));

    EXPECT_EQ(map.title, expected.mapTitle);
    QStringList titles;
    for (const auto& node : map.nodes) titles.append(node.title);
    ASSERT_EQ(titles, expected.titles);
    EXPECT_FALSE(titles.isEmpty());
    std::size_t edge = 0;
    for (qsizetype i = 0; i < titles.size(); ++i) {
      const qsizetype parent = expected.parentOf(i);
      if (parent < 0) continue;
      ASSERT_LT(edge, map.edges.size());
      EXPECT_EQ(map.edges[edge].from, map.nodes[static_cast<std::size_t>(parent)].id);
      EXPECT_EQ(map.edges[edge].to, map.nodes[static_cast<std::size_t>(i)].id);
      ++edge;
    }
    EXPECT_EQ(edge, map.edges.size());
  }
}

}  // namespace
