#include <gtest/gtest.h>

#include "cli/Maps.h"
#include "cli/Program.h"

// Starter maps and the rows of the palette, used from a script.
namespace {

using namespace cli;

TEST(StarterMapScript, ATemplateStartsAFreshHistory) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"createFreeNode","x":10,"y":10})")
      .line(R"({"do":"templateMap","name":"Meeting Notes"})")
      .line(R"({"do":"undo"})")
      .line(R"({"do":"redo"})")
      .line(R"({"do":"state"})")
      .line(R"({"do":"map"})");
  const QJsonValue state = script.result(5);
  EXPECT_EQ(at(state, "undoCount").toInt(-1), 0);
  EXPECT_EQ(at(state, "redoCount").toInt(-1), 0);
  EXPECT_FALSE(at(state, "isDirty").toBool(true));
  const QJsonValue map = script.result(6);
  EXPECT_EQ(at(map, "title").toString(), QStringLiteral("Meeting Notes"));
  QStringList titles;
  for (const QJsonValue& node : at(map, "nodes").toArray()) titles.append(at(node, "title").toString());
  EXPECT_EQ(titles.join(u'|'), QStringLiteral("Meeting Notes|Agenda|Decisions|Action Items|Follow-ups"));
  EXPECT_EQ(compact(at(map, "canvas")), R"({"background":"#F8F0FF","grid":true,"snap":true,"themeId":"purple"})");
  EXPECT_FALSE(at(map, "nodes").toArray().first().toObject().contains(QLatin1String("aiGenerated")));
}

TEST(StarterMapScript, TheDefaultThemeOfTheSettingsMakesNoDifference) {
  Script script;
  script.line(R"({"do":"setSetting","key":"defaultTheme","value":"ocean"})")
      .line(R"({"do":"templateMap","name":"Research"})")
      .line(R"({"do":"map"})");
  EXPECT_EQ(at(at(script.result(2), "canvas"), "themeId").toString(), QStringLiteral("purple"));
}

TEST(StarterMapScript, AnUnknownNameIsRefusedAndChangesNothing) {
  Script script;
  script.line(loadSmallMap())
      .line(R"({"do":"map"})")
      .line(R"({"do":"templateMap","name":"meeting notes"})")
      .line(R"({"do":"map"})");
  script.run();
  EXPECT_FALSE(script.isOk(2));
  EXPECT_EQ(compact(script.result(1)), compact(script.result(3)));
}

TEST(StarterMapScript, CommandsAreFilteredAndNotCut) {
  Script script;
  script.line(R"({"do":"filteredCommands","query":""})").line(R"({"do":"filteredCommands","query":"LAVENDER"})");
  EXPECT_EQ(script.result(0).toArray().size(), 37);
  EXPECT_EQ(compact(script.result(0).toArray()[3]),
            QByteArray(R"({"actionKey":"newNode","icon":"plus.circle","shortcut":"⌘N","subtitle":"Create a new node",)"
                       R"("title":"New Topic"})"));
  EXPECT_EQ(compact(script.result(1)), QByteArray(R"([{"actionKey":"theme_purple","icon":"paintpalette","shortcut":"",)"
                                                  R"("subtitle":"Classic theme","title":"Theme: Lavender"}])"));
}

}  // namespace
