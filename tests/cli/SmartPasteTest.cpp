#include <gtest/gtest.h>

#include "cli/Maps.h"
#include "cli/Program.h"

// Pasting lines of text by a script.
namespace {

using namespace cli;

QStringList titles(const QJsonValue& map) {
  QStringList titles;
  for (const QJsonValue& node : map.toObject()[QLatin1String("nodes")].toArray())
    titles.append(node.toObject()[QLatin1String("title")].toString());
  return titles;
}

QByteArray pasting(const char* mode, const char* parent) {
  return QByteArray(R"({"do":"smartPaste","text":" x\n  - y","mode":)") + mode + R"(,"parent":)" + parent + '}';
}

TEST(SmartPasteScript, EachModeMakesItsTopics) {
  const QByteArray parent = '"' + QByteArray(idC) + '"';
  Script script;
  for (const char* mode : {"0", "1", "2"})
    script.line(loadSmallMap())
        .line(pasting(mode, parent.constData()))
        .line(R"({"do":"map"})")
        .line(R"({"do":"state"})");
  script.run();
  EXPECT_EQ(titles(script.result(2)).mid(3), QStringList({QStringLiteral("x\n  - y")}));
  EXPECT_EQ(titles(script.result(6)).mid(3), QStringList({QStringLiteral("x"), QStringLiteral("- y")}));
  EXPECT_EQ(titles(script.result(10)).mid(3), QStringList({QStringLiteral("x"), QStringLiteral("y")}));
  for (const int state : {3, 7, 11}) {
    const QJsonObject after = script.result(state).toObject();
    EXPECT_EQ(after[QLatin1String("undoCount")].toInt(), 1);
    EXPECT_TRUE(after[QLatin1String("isDirty")].toBool());
    EXPECT_EQ(after[QLatin1String("selectedNodeIDs")].toArray().size(), state == 3 ? 1 : 2);
    EXPECT_EQ(after[QLatin1String("updatedAtMs")].toDouble() == 1704153600000.0, state != 3);
  }
  const QJsonArray edges = script.result(10).toObject()[QLatin1String("edges")].toArray();
  EXPECT_EQ(edges.size(), 4);
  EXPECT_EQ(edges[2].toObject()[QLatin1String("from")].toString(), QLatin1String(idC));
}

TEST(SmartPasteScript, WithoutAParentTheSelectionIsTheAnchor) {
  Script script;
  script.line(loadSmallMap())
      .line(pasting("1", "null"))
      .line(R"({"do":"map"})")
      .line(loadSmallMap())
      .line(with("selectNode", "id", idB, R"(,"extend":false)"))
      .line(R"({"do":"smartPaste","text":"x\ny","mode":1})")
      .line(R"({"do":"map"})");
  EXPECT_EQ(script.result(2).toObject()[QLatin1String("edges")].toArray().size(), 2);
  const QJsonArray edges = script.result(6).toObject()[QLatin1String("edges")].toArray();
  ASSERT_EQ(edges.size(), 4);
  EXPECT_EQ(edges[2].toObject()[QLatin1String("from")].toString(), QLatin1String(idB));
}

TEST(SmartPasteScript, OtherModesAndMistypedArgumentsAreRefused) {
  Script script;
  script.line(pasting("3", "null"))
      .line(pasting("-1", "null"))
      .line(pasting("\"1\"", "null"))
      .line(pasting("1", "\"no id\""))
      .line(R"({"do":"smartPaste","mode":1})")
      .line(R"({"do":"smartPaste","text":" \n\t","mode":1})")
      .line(R"({"do":"state"})");
  const QList<QByteArray> answers = script.run();
  EXPECT_EQ(answers[0], R"({"ok":false,"error":"mode: not one of 0, 1, 2"})");
  for (int i = 0; i < 5; ++i) EXPECT_FALSE(script.isOk(i)) << i;
  EXPECT_TRUE(script.isOk(5));
  EXPECT_EQ(script.result(6).toObject()[QLatin1String("undoCount")].toInt(), 0);
}

}  // namespace
