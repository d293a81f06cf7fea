#include <gtest/gtest.h>

#include "cli/Maps.h"
#include "cli/Program.h"

namespace {

using namespace cli;

// The x and y of A, B and C after the operation on all of them, and the undo count.
std::string arranged(const QByteArray& operation) {
  Script script;
  script.line(loadSmallMap()).line(R"({"do":"selectAll"})").line(operation);
  script.line(R"({"do":"state"})").line(R"({"do":"map"})");
  QJsonArray places;
  for (const QJsonValue node : script.result()[QLatin1String("nodes")].toArray())
    places.append(node[QLatin1String("position")]);
  places.append(script.result(3)[QLatin1String("undoCount")]);
  return compact(QJsonValue(places)).toStdString();
}

TEST(Arrangement, AlignsTheSelectedTopicsInOneStep) {
  EXPECT_EQ(arranged(R"({"do":"align","edge":"left"})"), "[[0,0],[0,50],[0,-50],1]");
  EXPECT_EQ(arranged(R"({"do":"align","edge":"centerH"})"), "[[100,0],[100,50],[100,-50],1]");
  EXPECT_EQ(arranged(R"({"do":"align","edge":"right"})"), "[[200,0],[200,50],[200,-50],1]");
  EXPECT_EQ(arranged(R"({"do":"align","edge":"top"})"), "[[0,-50],[200,-50],[200,-50],1]");
  EXPECT_EQ(arranged(R"({"do":"align","edge":"centerV"})"), "[[0,0],[200,0],[200,0],1]");
  EXPECT_EQ(arranged(R"({"do":"align","edge":"bottom"})"), "[[0,50],[200,50],[200,50],1]");
}

TEST(Arrangement, DistributesTheSelectedTopicsInOneStep) {
  EXPECT_EQ(arranged(R"({"do":"distribute","axis":"horiz"})"), "[[0,0],[100,50],[200,-50],1]");
  EXPECT_EQ(arranged(R"({"do":"distribute","axis":"vert"})"), "[[0,0],[200,50],[200,-50],1]");
}

TEST(Arrangement, AnotherWordIsRefusedAndChangesNothing) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"selectAll"})")
      .line(R"({"do":"align","edge":"middle"})")
      .line(R"({"do":"distribute","axis":"x"})")
      .line(R"({"do":"distribute"})")
      .line(R"({"do":"state"})");
  const auto answers = script.run();
  EXPECT_EQ(answers[2].toStdString(),
            R"({"ok":false,"error":"edge: not one of left, centerH, right, top, centerV, bottom"})");
  EXPECT_EQ(answers[3].toStdString(), R"({"ok":false,"error":"axis: not one of horiz, vert"})");
  EXPECT_TRUE(answers[4].startsWith(R"({"ok":false)"));
  EXPECT_EQ(script.result()[QLatin1String("undoCount")].toInt(), 0);
}

TEST(Arrangement, OneTopicIsLeftAlone) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"selectNode","id":"AAAAAAAA-0000-4000-8000-000000000001","extend":false})")
      .line(R"({"do":"align","edge":"right"})")
      .line(R"({"do":"state"})");
  EXPECT_EQ(script.result()[QLatin1String("undoCount")].toInt(), 0);
}

}  // namespace
