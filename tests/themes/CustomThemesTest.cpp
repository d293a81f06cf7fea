#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"
#include "support/QtPrinters.h"
#include "themes/CustomThemes.h"
#include "themes/ThemeDraft.h"

namespace quilmora {
namespace {

CustomTheme themeOfRows(int count) {
  CustomTheme theme{QStringLiteral("6F9619FF-8B86-D011-B42D-00C04FC964FF"),
                    QStringLiteral("Moss"),
                    QStringLiteral("#F0F0E0"),
                    QStringLiteral("#446644"),
                    {}};
  for (int row = 0; row < count; ++row)
    theme.nodeColors.push_back({QStringLiteral("#0000%1").arg(row, 2, 16, QLatin1Char('0')), QStringLiteral("#111111"),
                                QStringLiteral("#FFFFFF")});
  return theme;
}

std::vector<CustomTheme> decoded(const char* json) {
  return decodeCustomThemes(QByteArray(json));
}

constexpr const char* oneTheme = R"([{"id":"A","name":"N","background":"#FFFFFF","edgeColor":"#000000","nodeColors":[)"
                                 R"({"fill":"#111111","stroke":"#222222","textColor":"#333333"}]}])";

TEST(CustomThemes, AbsentDataAreNoThemes) {
  const MemorySettingsStore settings;
  EXPECT_TRUE(loadCustomThemes(settings).empty());
  EXPECT_EQ(allThemesIncludingCustom(settings), allThemes());
  EXPECT_TRUE(settings.isEmpty());
}

TEST(CustomThemes, AreStoredAsCompactJsonWithFiveKeysAndRowsOfThree) {
  MemorySettingsStore settings;
  saveCustomThemes(settings, {themeOfRows(1)});
  const QByteArray stored = settings.bytes(settings::customThemes).value();
  EXPECT_EQ(stored, QByteArray(R"([{"id":"6F9619FF-8B86-D011-B42D-00C04FC964FF","name":"Moss","background":"#F0F0E0",)"
                               R"("edgeColor":"#446644","nodeColors":[)"
                               R"({"fill":"#000000","stroke":"#111111","textColor":"#FFFFFF"}]}])"));
  const QJsonObject object = QJsonDocument::fromJson(stored).array()[0].toObject();
  EXPECT_EQ(object.keys(), QStringList({QStringLiteral("background"), QStringLiteral("edgeColor"), QStringLiteral("id"),
                                        QStringLiteral("name"), QStringLiteral("nodeColors")}));
  EXPECT_EQ(object[u"nodeColors"][0].toObject().keys(),
            QStringList({QStringLiteral("fill"), QStringLiteral("stroke"), QStringLiteral("textColor")}));
}

TEST(CustomThemes, ComeBackAsTheyWereSaved) {
  MemorySettingsStore settings;
  CustomTheme odd = themeOfRows(3);
  odd.name = QStringLiteral("Ümläut \"quoted\" \\ 🌿 <b>");
  const std::vector<CustomTheme> themes = {odd, themeOfRows(12), themeOfRows(0)};
  saveCustomThemes(settings, themes);
  EXPECT_EQ(loadCustomThemes(settings), themes);
}

TEST(CustomThemes, StandBehindTheBuiltInOnesInStoredOrder) {
  MemorySettingsStore settings;
  CustomTheme second = themeOfRows(1);
  second.id = QStringLiteral("B");
  second.name = QStringLiteral("Aaa");
  saveCustomThemes(settings, {themeOfRows(1), second});
  const std::vector<Theme> all = allThemesIncludingCustom(settings);
  ASSERT_EQ(all.size(), 15u);
  EXPECT_EQ(all[12].id, QStringLiteral("candy"));
  EXPECT_EQ(all[13].id, QStringLiteral("custom_6F9619FF-8B86-D011-B42D-00C04FC964FF"));
  EXPECT_EQ(all[14].id, QStringLiteral("custom_B"));
  EXPECT_EQ(builtInTheme(all[14].id), nullptr);
}

TEST(CustomThemes, AreListedAfreshAtEachCall) {
  MemorySettingsStore settings;
  EXPECT_EQ(allThemesIncludingCustom(settings).size(), 13u);
  saveCustomThemes(settings, {themeOfRows(1)});
  EXPECT_EQ(allThemesIncludingCustom(settings).size(), 14u);
  saveCustomThemes(settings, {});
  EXPECT_EQ(allThemesIncludingCustom(settings).size(), 13u);
}

TEST(CustomThemes, BecomeThemesWithoutGradients) {
  const Theme theme = toTheme(themeOfRows(2));
  EXPECT_EQ(theme.id, QStringLiteral("custom_6F9619FF-8B86-D011-B42D-00C04FC964FF"));
  EXPECT_EQ(theme.name, QStringLiteral("Moss"));
  EXPECT_EQ(theme.background, QStringLiteral("#F0F0E0"));
  EXPECT_EQ(theme.edgeColor, QStringLiteral("#446644"));
  EXPECT_EQ(theme.category, ThemeCategory::custom);
  ASSERT_EQ(theme.nodeColors.size(), 2u);
  EXPECT_EQ(theme.nodeColors[1], (Theme::NodeColorSet{QStringLiteral("#000001"), QStringLiteral("#111111"),
                                                      QStringLiteral("#FFFFFF"), std::nullopt}));
}

TEST(CustomThemes, OneLevelServesEveryDepth) {
  const Theme theme = toTheme(themeOfRows(1));
  for (const int depth : {0, 1, 7, 1000}) EXPECT_EQ(theme.rowForDepth(depth).fill, QStringLiteral("#000000"));
}

TEST(CustomThemes, TwelveLevelsServeTwelveDepths) {
  const Theme theme = toTheme(themeOfRows(12));
  EXPECT_EQ(theme.rowForDepth(11).fill, QStringLiteral("#00000b"));
  EXPECT_EQ(theme.rowForDepth(12).fill, QStringLiteral("#00000b"));
}

TEST(CustomThemes, StoredWithoutLevelsAreGrey) {
  const Theme theme = toTheme(themeOfRows(0));
  EXPECT_EQ(theme.rowForDepth(3).fill, QStringLiteral("#808080"));
}

TEST(CustomThemes, OtherKeysInStoredDataAreIgnored) {
  EXPECT_EQ(decoded(oneTheme).size(), 1u);
  EXPECT_EQ(decoded(R"([{"id":"A","name":"N","background":"","edgeColor":"","nodeColors":[],"more":[1]}])").size(), 1u);
}

TEST(CustomThemes, DamagedDataAreNoThemes) {
  for (const char* json :
       {"", "x", "{}", "null", "[", "[1]", "[null]", R"(["a"])", R"([{}])",
        R"([{"id":"A","name":"N","background":"#FFFFFF","edgeColor":"#000000"}])",
        R"([{"id":1,"name":"N","background":"","edgeColor":"","nodeColors":[]}])",
        R"([{"id":"A","name":null,"background":"","edgeColor":"","nodeColors":[]}])",
        R"([{"id":"A","name":"N","background":"","edgeColor":"","nodeColors":{}}])",
        R"([{"id":"A","name":"N","background":"","edgeColor":"","nodeColors":[{"fill":"#111111"}]}])",
        R"([{"id":"A","name":"N","background":"","edgeColor":"","nodeColors":["#111111"]}])"})
    EXPECT_TRUE(decoded(json).empty()) << json;
  QByteArray half(oneTheme);
  half.chop(1);
  EXPECT_TRUE(decodeCustomThemes(half).empty());
  // One damaged theme among others.
  QByteArray mixed(oneTheme);
  mixed.chop(1);
  EXPECT_TRUE(decodeCustomThemes(mixed + ",7]").empty());
  EXPECT_TRUE(decodeCustomThemes(QByteArray(100'000, '[')).empty());
}

TEST(CustomThemes, ValuesOfAnotherKindReadAsNoneAndAreWrittenOver) {
  MemorySettingsStore settings;
  settings.setText(settings::customThemes, QString::fromLatin1(oneTheme));
  EXPECT_TRUE(loadCustomThemes(settings).empty());
  saveCustomThemes(settings, {themeOfRows(1)});
  EXPECT_EQ(loadCustomThemes(settings).size(), 1u);
}

TEST(CustomThemes, TenMegabytesAreReadAsAWhole) {
  MemorySettingsStore settings;
  std::vector<CustomTheme> themes(30'000, themeOfRows(5));
  saveCustomThemes(settings, themes);
  EXPECT_GT(settings.bytes(settings::customThemes)->size(), 10'000'000);
  EXPECT_EQ(loadCustomThemes(settings).size(), 30'000u);
}

TEST(ThemeDraft, StartsInTheColorsOfOcean) {
  const ThemeDraft draft = ThemeDraft::initial();
  const CustomTheme theme = draft.toCustomTheme();
  EXPECT_EQ(theme.name, QStringLiteral("My Theme"));
  EXPECT_EQ(theme.background, QStringLiteral("#FFFFFF"));
  EXPECT_EQ(theme.edgeColor, QStringLiteral("#808080"));
  const std::vector<CustomTheme::NodeColor> rows = {
      {QStringLiteral("#1A5276"), QStringLiteral("#0E3652"), QStringLiteral("#FFFFFF")},
      {QStringLiteral("#2980B9"), QStringLiteral("#1A5276"), QStringLiteral("#FFFFFF")},
      {QStringLiteral("#5DADE2"), QStringLiteral("#2980B9"), QStringLiteral("#1A3A4A")},
      {QStringLiteral("#AED6F1"), QStringLiteral("#5DADE2"), QStringLiteral("#1A3A4A")},
      {QStringLiteral("#D6EAF8"), QStringLiteral("#AED6F1"), QStringLiteral("#2C3E50")}};
  EXPECT_EQ(theme.nodeColors, rows);
}

TEST(ThemeDraft, EachSavedThemeHasANewUpperCaseId) {
  const ThemeDraft draft = ThemeDraft::initial();
  const QString id = draft.toCustomTheme().id;
  static const QRegularExpression upperCaseUuid(
      QStringLiteral("^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$"));
  EXPECT_TRUE(upperCaseUuid.match(id).hasMatch()) << id.toStdString();
  EXPECT_NE(draft.toCustomTheme().id, id);
}

TEST(ThemeDraft, AnAddedLevelIsAFainterCopyAndSavedLikeTheOneBefore) {
  ThemeDraft draft = ThemeDraft::initial();
  draft.addLevel();
  ASSERT_EQ(draft.levels.size(), 6u);
  EXPECT_NEAR(draft.levels[5].fill.alphaF(), 0.7, 0.01);
  EXPECT_EQ(draft.levels[5].stroke, draft.levels[4].stroke);
  EXPECT_NE(draft.levels[5].id, draft.levels[4].id);
  const CustomTheme theme = draft.toCustomTheme();
  EXPECT_EQ(theme.nodeColors[5], theme.nodeColors[4]);
  EXPECT_EQ(theme.nodeColors[5].fill, QStringLiteral("#D6EAF8"));
}

TEST(ThemeDraft, TheLastLevelStays) {
  ThemeDraft draft = ThemeDraft::from(*builtInTheme(QStringLiteral("default")));
  ASSERT_EQ(draft.levels.size(), 1u);
  draft.removeLevel(draft.levels[0].id);
  EXPECT_EQ(draft.levels.size(), 1u);
  draft.addLevel();
  draft.removeLevel(draft.levels[0].id);
  ASSERT_EQ(draft.levels.size(), 1u);
  EXPECT_NEAR(draft.levels[0].fill.alphaF(), 0.7, 0.01);
}

TEST(ThemeDraft, ABuiltInThemeIsTakenWholeButForItsGradients) {
  const ThemeDraft draft = ThemeDraft::from(*builtInTheme(QStringLiteral("sunset")));
  const CustomTheme theme = draft.toCustomTheme();
  EXPECT_EQ(theme.name, QStringLiteral("Sunset Custom"));
  EXPECT_EQ(theme.background, QStringLiteral("#FFF8F0"));
  EXPECT_EQ(theme.edgeColor, QStringLiteral("#C0634A"));
  ASSERT_EQ(theme.nodeColors.size(), 5u);
  EXPECT_EQ(theme.nodeColors[0],
            (CustomTheme::NodeColor{QStringLiteral("#B71C1C"), QStringLiteral("#7F0000"), QStringLiteral("#FFFFFF")}));
  EXPECT_FALSE(toTheme(theme).nodeColors[0].fillGradient.has_value());
}

}  // namespace
}  // namespace quilmora
