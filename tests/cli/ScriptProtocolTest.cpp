#include <gtest/gtest.h>

#include "cli/Maps.h"
#include "cli/Program.h"

// The protocol itself: one answer per line, whatever the line contains.
namespace {

using cli::answers;

constexpr char newMap[] = R"({"do":"new"})";
constexpr char okAnswer[] = R"({"ok":true})";

bool isRefusal(const QByteArray& answer) {
  const QJsonObject object = QJsonDocument::fromJson(answer).object();
  return object[QLatin1String("ok")] == QJsonValue(false) && !object[QLatin1String("error")].toString().isEmpty() &&
         object.size() == 2;
}

// The answer to one bad line, between two good ones that show that the script continues.
QByteArray answerTo(const QByteArray& line) {
  const auto all = answers(QByteArray(newMap) + '\n' + line + '\n' + newMap + '\n');
  EXPECT_EQ(all.size(), 3);
  if (all.size() != 3) return {};
  EXPECT_EQ(all[0], okAnswer);
  EXPECT_EQ(all[2], okAnswer);
  return all[1];
}

TEST(ScriptProtocol, NoInputIsAnsweredByNothing) {
  EXPECT_EQ(answers(""), QList<QByteArray>());
}

TEST(ScriptProtocol, EveryLineHasOneAnswerInOrder) {
  EXPECT_EQ(answers("{\"do\":\"new\"}\n{\"do\":\"colorFromHex\",\"text\":\"#FF0080\"}\n{\"do\":\"undo\"}\n"),
            (QList<QByteArray>{okAnswer, R"({"ok":true,"result":[255,0,128]})", okAnswer}));
}

TEST(ScriptProtocol, TheLastLineNeedsNoEnd) {
  EXPECT_EQ(answers(newMap), QList<QByteArray>{okAnswer});
}

TEST(ScriptProtocol, ACarriageReturnBeforeTheLineEndIsBlank) {
  EXPECT_EQ(answers("{\"do\":\"new\"}\r\n"), QList<QByteArray>{okAnswer});
}

TEST(ScriptProtocol, LinesThatAreNoJsonObjectAreRefused) {
  const QList<QByteArray> lines = {"",
                                   "   ",
                                   "hello",
                                   "{",
                                   "{\"do\":\"new\"} {\"do\":\"new\"}",
                                   "{\"do\":\"new\",}",
                                   "{'do':'new'}",
                                   "[]",
                                   "[{\"do\":\"new\"}]",
                                   "null",
                                   "17",
                                   "\"new\"",
                                   "{\"do\":\"colorFromHex\",\"text\":\"\xFF\xFE\"}",
                                   "\xEF\xBB",
                                   QByteArray("{\"do\":\"new\"\0}", 13),
                                   QByteArray("\0\0\0", 3),
                                   "{\"do\":\"styleForDepth\",\"depth\":1e999}",
                                   "{\"do\":\"new\",\"do\":\"map\"}"};
  for (const QByteArray& line : lines) EXPECT_TRUE(isRefusal(answerTo(line))) << line.toStdString();
}

TEST(ScriptProtocol, OperationsThatAreNotThereAreRefused) {
  for (const QByteArray line :
       {"{}", "{\"do\":7}", "{\"do\":null}", "{\"do\":\"\"}", "{\"do\":\"New\"}", "{\"do\":\"launch\"}", "{\"id\":1}"})
    EXPECT_TRUE(isRefusal(answerTo(line))) << line.toStdString();
}

TEST(ScriptProtocol, DeepNestingIsRefused) {
  EXPECT_TRUE(isRefusal(answerTo(QByteArray(100'000, '['))));
  EXPECT_TRUE(isRefusal(
      answerTo(QByteArray("{\"do\":\"load\",\"map\":") + QByteArray(100'000, '[') + QByteArray(100'000, ']') + '}')));
  QByteArray objects;
  for (int i = 0; i < 100'000; ++i) objects += "{\"a\":";
  EXPECT_TRUE(isRefusal(answerTo(objects + "1" + QByteArray(100'000, '}'))));
}

TEST(ScriptProtocol, ALineOfAHundredMegabytesIsAnswered) {
  EXPECT_TRUE(isRefusal(answerTo(QByteArray(100'000'000, 'x'))));
}

TEST(ScriptProtocol, ALineBeyondTheLimitIsReadToItsEndAndRefused) {
  EXPECT_EQ(answerTo(QByteArray(256 * 1024 * 1024 + 1, ' ')),
            R"({"ok":false,"error":"the line is longer than 256 MB"})");
}

TEST(ScriptProtocol, AnUnknownKeyIsNoArgumentAndNoFault) {
  EXPECT_EQ(answers("{\"do\":\"new\",\"comment\":[1,2]}\n"), QList<QByteArray>{okAnswer});
}

TEST(ScriptProtocol, AnswersComeBeforeTheNextLineIsAsked) {
  QProcess process;
  process.setProcessEnvironment(cli::bareEnvironment());
  process.start(cli::programPath(), {QStringLiteral("script")});
  for (int i = 0; i < 3; ++i) {
    process.write("{\"do\":\"new\"}\n");
    ASSERT_TRUE(process.waitForReadyRead(30'000));
    EXPECT_EQ(process.readAllStandardOutput(), "{\"ok\":true}\n");
  }
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished(30'000));
  EXPECT_EQ(process.exitCode(), 0);
}

TEST(ScriptProtocol, RefusedLinesChangeNothing) {
  const QList<QByteArray> bad = {
      R"({"do":"createFreeNode","x":1})",
      R"({"do":"createFreeNode","x":"1","y":2})",
      R"({"do":"createFreeNode","x":null,"y":2})",
      R"({"do":"createChild"})",
      R"({"do":"createChild","id":"AAAAAAAA"})",
      R"({"do":"createChild","id":"{AAAAAAAA-0000-4000-8000-000000000001}"})",
      R"({"do":"setNodeTitle","id":"AAAAAAAA-0000-4000-8000-000000000001","text":5})",
      R"({"do":"setNodeBadge","id":"AAAAAAAA-0000-4000-8000-000000000001","badge":"p9"})",
      R"({"do":"setNodeBadge","id":"AAAAAAAA-0000-4000-8000-000000000001","badge":1})",
      R"({"do":"setNodeImage","id":"AAAAAAAA-0000-4000-8000-000000000001","path":"/nowhere/picture.png"})",
      R"({"do":"setNodeImage","id":"AAAAAAAA-0000-4000-8000-000000000001","path":"/"})",
      R"({"do":"moveSelectedNodes","dx":true,"dy":0})",
      R"({"do":"setEdgeBend","edge":"EEEEEEEE-0000-4000-8000-000000000001","offset":[1]})",
      R"({"do":"setEdgeBend","edge":"EEEEEEEE-0000-4000-8000-000000000001","offset":[1,"2"]})",
      R"({"do":"setEdgeStyle","edge":"EEEEEEEE-0000-4000-8000-000000000001","style":{"color":"#000000"}})",
      R"({"do":"createRegion","point":{"x":1}})",
      R"({"do":"selectNode","id":"AAAAAAAA-0000-4000-8000-000000000001"})",
      R"({"do":"selectNode","id":"AAAAAAAA-0000-4000-8000-000000000001","extend":1})",
      R"({"do":"setLens","lens":"priority"})",
      R"({"do":"moveSelection","direction":4})",
      R"({"do":"moveSelection","direction":0.5})",
      R"({"do":"applyLayout","layout":"spiral","width":800,"height":600})",
      R"({"do":"applyLayout","layout":"tree","width":800})",
      R"({"do":"applyTheme","id":"no-such-theme"})",
      R"({"do":"captureSnapshot","throttled":"yes"})",
      R"({"do":"load","map":{"version":1}})",
      R"({"do":"load","map":"text"})",
      R"({"do":"open","path":"/nowhere/map.mindmap"})",
      R"({"do":"save","path":"/nowhere/map.mindmap"})",
      R"({"do":"setSetting","value":"x"})",
      R"({"do":"setSetting","key":"a","value":[1]})",
      R"({"do":"hexFromColor","components":[0,0,0,0]})",
      R"({"do":"hexFromColor","components":["0"]})",
  };
  cli::Script script;
  script.line(cli::loadSmallMap());
  for (const QByteArray& line : bad)
    script.line(R"({"do":"map"})")
        .line(R"({"do":"state"})")
        .line(line)
        .line(R"({"do":"map"})")
        .line(R"({"do":"state"})");
  const auto& all = script.run();
  for (int i = 0; i < bad.size(); ++i) {
    const int first = 1 + 5 * i;
    EXPECT_TRUE(isRefusal(all[first + 2])) << bad[i].toStdString() << all[first + 2].toStdString();
    EXPECT_EQ(all[first], all[first + 3]) << bad[i].toStdString();
    EXPECT_EQ(all[first + 1], all[first + 4]) << bad[i].toStdString();
  }
}

}  // namespace
