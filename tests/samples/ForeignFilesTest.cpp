#include <map>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include "exchange/ImportError.h"
#include "exchange/MapImport.h"
#include "model/TreeInfo.h"
#include "support/QtPrinters.h"

// Files of other programs, as people have them. They are not part of the project: the variable QUILMORA_FOREIGN_FILES
// names a folder with the folders opml and freemind.
namespace {

using quilmora::MindMap;

// A topic as its depth and title.
using Lines = std::vector<std::pair<int, QString>>;

// The files that a strict reader must refuse, and why.
const std::map<std::string, std::string>& refused() {
  static const std::map<std::string, std::string> reasons = {
      {"outliner-blog-1999-cp1252-bytes.opml", "the file is not UTF-8 text; save it as UTF-8 and import it again"},
      {"feeds-india-unescaped-ampersands.opml",
       "line 22: Expected '#' or '[a-zA-Z]', but got ' '. A bare “&” must be written as “&amp;”."},
      {"freemind-1-0-surrogate-references.mm", "line 222: Invalid character reference."},
      {"freeplane-1-11-markdown-notes-nbsp.mm", "line 1081: Entity 'nbsp' not declared."},
  };
  return reasons;
}

QString resolved(QString value) {
  static const QRegularExpression reference(QStringLiteral("&#(x?)([0-9a-fA-F]+);"));
  value.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\t', u' ');
  for (auto match = reference.match(value); match.hasMatch();
       match = reference.match(value, match.capturedStart() + 1)) {
    const char32_t character = match.captured(2).toUInt(nullptr, match.captured(1).isEmpty() ? 10 : 16);
    value.replace(match.capturedStart(), match.capturedLength(), QString::fromUcs4(&character, 1));
  }
  value.replace(QLatin1String("&lt;"), QLatin1String("<")).replace(QLatin1String("&gt;"), QLatin1String(">"));
  value.replace(QLatin1String("&quot;"), QLatin1String("\"")).replace(QLatin1String("&apos;"), QLatin1String("'"));
  return value.replace(QLatin1String("&amp;"), QLatin1String("&"));
}

// Reads the elements of a well-formed text by looking only at their tags.
Lines elementsOf(const QString& xml, const QString& element, const QString& attribute) {
  static const QString value = QStringLiteral("(?:\"[^\"]*+\"|'[^']*+')");
  const QRegularExpression mark(
      QStringLiteral("<!--.*?-->|<!\\[CDATA\\[.*?\\]\\]>|</%1\\s*>|<%1((?:\\s+[^\\s=>]+\\s*=\\s*%2)*+)\\s*(/?)>")
          .arg(element, value),
      QRegularExpression::DotMatchesEverythingOption);
  const QRegularExpression pair(QStringLiteral("([^\\s=]+)\\s*=\\s*(%1)").arg(value));
  Lines lines;
  int depth = 0;
  for (auto marks = mark.globalMatch(xml); marks.hasNext();) {
    const auto found = marks.next();
    if (found.captured().startsWith(QLatin1String("<!"))) continue;
    if (found.captured().startsWith(QLatin1String("</"))) {
      --depth;
      continue;
    }
    QString title = QStringLiteral("Untitled");
    for (auto pairs = pair.globalMatch(found.captured(1)); pairs.hasNext();) {
      const auto one = pairs.next();
      if (one.captured(1) == attribute) title = resolved(one.captured(2).mid(1, one.capturedLength(2) - 2));
    }
    lines.emplace_back(depth, title);
    if (found.captured(2).isEmpty()) ++depth;
  }
  return lines;
}

Lines linesOf(const MindMap& map) {
  const quilmora::TreeInfo tree{quilmora::MapIndex(map.nodes, map.edges)};
  Lines lines;
  for (const auto& node : map.nodes) lines.emplace_back(tree.depth(node.id).value_or(-1), node.title);
  return lines;
}

void expectElementsInOrder(const char* folder, const QString& element, const QString& attribute) {
  const QString base = qEnvironmentVariable("QUILMORA_FOREIGN_FILES");
  if (base.isEmpty()) GTEST_SKIP() << "QUILMORA_FOREIGN_FILES names no folder of foreign files";
  const QDir files(base + u'/' + QLatin1String(folder));
  const QStringList names = files.entryList(QDir::Files, QDir::Name);
  ASSERT_FALSE(names.isEmpty()) << files.path().toStdString();
  for (const QString& name : names) {
    SCOPED_TRACE(name.toStdString());
    const auto expectedRefusal = refused().find(name.toStdString());
    try {
      const auto map = quilmora::importMapAt(files.filePath(name), quilmora::SystemClock());
      ASSERT_TRUE(map.has_value());
      EXPECT_EQ(expectedRefusal, refused().end()) << "was read";
      QFile file(files.filePath(name));
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      const Lines expected = elementsOf(QString::fromUtf8(file.readAll()), element, attribute);
      EXPECT_FALSE(expected.empty());
      EXPECT_EQ(linesOf(*map), expected);
    } catch (const quilmora::ImportError& error) {
      EXPECT_EQ(expectedRefusal == refused().end() ? "" : expectedRefusal->second, error.what());
    }
  }
}

TEST(ForeignFiles, EveryOutlineOfOpmlComesInOrder) {
  expectElementsInOrder("opml", QStringLiteral("outline"), QStringLiteral("text"));
}

TEST(ForeignFiles, EveryNodeOfFreeMindComesInOrder) {
  expectElementsInOrder("freemind", QStringLiteral("node"), QStringLiteral("TEXT"));
}

}  // namespace
