#include "PreferencesFixture.h"
#include "app/look/ColorDialog.h"
#include "app/look/ColorWell.h"
#include "app/look/ThemeSwatch.h"
#include "app/settings/SettingsForm.h"
#include "app/settings/ThemePreview.h"

namespace quilmora {
namespace {

class ThemeBuilderTest : public PreferencesTest {
 protected:
  void openBuilder() {
    openPreferences(Tab::appearance);
    button("New Custom Theme")->setFocus(Qt::TabFocusReason);
    QTest::keyClick(button("New Custom Theme"), Qt::Key_Space);
    ASSERT_NE(builder(), nullptr);
  }
  ThemeBuilderView* builder() { return preferences()->themeBuilder(); }
  ColorWell* well(const char* name) { return control<ColorWell>(QLatin1String(name)); }
  // Opens the dialog with the space bar, chooses and accepts.
  void pick(const char* name, const QColor& color) {
    ColorWell* shown = well(name);
    QTest::keyClick(shown, Qt::Key_Space);
    ASSERT_NE(shown->dialog(), nullptr);
    shown->dialog()->setColor(color);
    QTest::keyClick(shown->dialog(), Qt::Key_Return);
    EXPECT_EQ(shown->color(), color);
  }
  QStringList wellNames() {
    QStringList names;
    for (const ColorWell* found : preferences()->findChildren<ColorWell*>())
      if (found->isVisible()) names.append(found->accessibleName());
    return names;
  }
  std::vector<CustomTheme> stored() { return loadCustomThemes(m_settings); }
};

TEST_F(ThemeBuilderTest, OpensInTheSettingsWithTheColorsOfOcean) {
  openBuilder();
  EXPECT_EQ(field("Theme Name")->text(), QStringLiteral("My Theme"));
  EXPECT_TRUE(field("Theme Name")->hasFocus());
  EXPECT_EQ(well("Background")->value(), QStringLiteral("#FFFFFF"));
  EXPECT_EQ(well("Edge Color")->value(), QStringLiteral("#808080"));
  EXPECT_EQ(well("Root Topic: Fill")->value(), QStringLiteral("#1A5276"));
  EXPECT_EQ(well("Root Topic: Border")->value(), QStringLiteral("#0E3652"));
  EXPECT_EQ(well("Root Topic: Text")->value(), QStringLiteral("#FFFFFF"));
  EXPECT_EQ(well("Level 4: Text")->value(), QStringLiteral("#2C3E50"));
  EXPECT_EQ(wellNames().size(), 17);
  for (const char* text : {"Theme Builder", "Name", "Canvas", "Node Colors by Depth", "Preview", "Start from",
                           "Root Topic", "Level 1", "Level 4", "Fill", "Border", "Text"})
    EXPECT_TRUE(reads(QLatin1String(text))) << text;
  EXPECT_FALSE(reads(QStringLiteral("Level 5")));
}

TEST_F(ThemeBuilderTest, OpensAsTallAsItStays) {
  openBuilder();
  const QWidget& panel = *builder()->findChild<FormPage*>()->parentWidget();
  const int opened = panel.height();
  EXPECT_EQ(opened, builder()->height() - 2 * metrics::gapHuge) << "the form is taller than its window";
  pick("Background", QColor(0x10, 0x20, 0x30));
  button("Add Level")->click();
  QCoreApplication::processEvents();
  EXPECT_EQ(panel.height(), opened);
}

TEST_F(ThemeBuilderTest, SavingKeepsTheThemeAndListsItEverywhere) {
  openBuilder();
  QTest::keyClick(field("Theme Name"), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(field("Theme Name"), QStringLiteral("Dusk"));
  pick("Background", QColor(0x10, 0x20, 0x30));
  pick("Root Topic: Fill", QColor(0xAB, 0x00, 0xCD));
  pick("Root Topic: Border", QColor(0x01, 0x02, 0x03));
  pick("Level 1: Text", QColor(0xFE, 0xDC, 0xBA));
  QTest::mouseClick(button("Save"), Qt::LeftButton);
  EXPECT_EQ(builder(), nullptr);
  ASSERT_EQ(stored().size(), 1u);
  const CustomTheme theme = stored()[0];
  EXPECT_EQ(theme.name, QStringLiteral("Dusk"));
  EXPECT_EQ(theme.background, QStringLiteral("#102030"));
  EXPECT_EQ(theme.edgeColor, QStringLiteral("#808080"));
  ASSERT_EQ(theme.nodeColors.size(), 5u);
  EXPECT_EQ(theme.nodeColors[0],
            (CustomTheme::NodeColor{QStringLiteral("#AB00CD"), QStringLiteral("#010203"), QStringLiteral("#FFFFFF")}));
  EXPECT_EQ(theme.nodeColors[1].textColor, QStringLiteral("#FEDCBA"));
  EXPECT_TRUE(reads(QStringLiteral("1 custom")));
  EXPECT_TRUE(reads(QStringLiteral("Dusk")));
  EXPECT_GE(picker("Default Theme")->findText(QStringLiteral("Dusk")), 0);
  preferences()->setTab(Tab::general);
  EXPECT_GE(picker("Default Theme")->findText(QStringLiteral("Dusk")), 0);
}

TEST_F(ThemeBuilderTest, EscapeAndCancelKeepNothingAndGiveTheKeyboardBack) {
  openBuilder();
  QTest::keyClick(field("Theme Name"), Qt::Key_Escape);
  EXPECT_EQ(builder(), nullptr);
  EXPECT_TRUE(preferences()->isVisible());
  EXPECT_TRUE(button("New Custom Theme")->hasFocus());
  goThroughDeletions();
  QTest::keyClick(button("New Custom Theme"), Qt::Key_Space);
  ASSERT_NE(builder(), nullptr);
  QTest::mouseClick(button("Cancel"), Qt::LeftButton);
  EXPECT_EQ(builder(), nullptr);
  EXPECT_TRUE(stored().empty());
}

TEST_F(ThemeBuilderTest, ReturnInTheNameSavesAndTwoThemesMayBearOneName) {
  openBuilder();
  QTest::keyClick(field("Theme Name"), Qt::Key_Return);
  goThroughDeletions();
  QTest::keyClick(button("New Custom Theme"), Qt::Key_Space);
  QTest::keyClick(field("Theme Name"), Qt::Key_Return);
  ASSERT_EQ(stored().size(), 2u);
  EXPECT_EQ(stored()[0].name, QStringLiteral("My Theme"));
  EXPECT_EQ(stored()[1].name, QStringLiteral("My Theme"));
  EXPECT_NE(stored()[0].id, stored()[1].id);
}

TEST_F(ThemeBuilderTest, MnemonicsWorkWhileTheNameIsTyped) {
  openBuilder();
  QTest::keyClick(field("Theme Name"), 's', Qt::AltModifier);
  EXPECT_EQ(builder(), nullptr);
  ASSERT_EQ(stored().size(), 1u);
  EXPECT_EQ(stored()[0].name, QStringLiteral("My Theme"));
}

TEST_F(ThemeBuilderTest, AnEmptyNameIsNotChecked) {
  openBuilder();
  QTest::keyClick(field("Theme Name"), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(field("Theme Name"), Qt::Key_Delete);
  QTest::mouseClick(button("Save"), Qt::LeftButton);
  ASSERT_EQ(stored().size(), 1u);
  EXPECT_EQ(stored()[0].name, QStringLiteral(""));
}

TEST_F(ThemeBuilderTest, AddedLevelsAreFainterCopies) {
  openBuilder();
  QTest::keyClick(button("Add Level"), Qt::Key_Space);
  EXPECT_EQ(well("Level 5: Fill")->value(), QStringLiteral("#D6EAF8, 70%"));
  EXPECT_EQ(well("Level 5: Border")->value(), QStringLiteral("#AED6F1"));
  for (int more = 0; more < 6; ++more) QTest::keyClick(button("Add Level"), Qt::Key_Space);
  QTest::keyClick(field("Theme Name"), Qt::Key_Return);
  ASSERT_EQ(stored()[0].nodeColors.size(), 12u);
  EXPECT_EQ(stored()[0].nodeColors[11], stored()[0].nodeColors[4]);
}

TEST_F(ThemeBuilderTest, LevelsAreRemovedButForTheLast) {
  openBuilder();
  auto* remove = control<IconButton>(QStringLiteral("Remove Root Topic"));
  QTest::mouseClick(remove, Qt::LeftButton);
  EXPECT_EQ(well("Root Topic: Fill")->value(), QStringLiteral("#2980B9"));
  for (int more = 0; more < 3; ++more) {
    goThroughDeletions();
    QTest::mouseClick(control<IconButton>(QStringLiteral("Remove Level 1")), Qt::LeftButton);
  }
  goThroughDeletions();
  ASSERT_EQ(builder()->draft().levels.size(), 1u);
  EXPECT_TRUE(builder()->findChildren<IconButton*>().empty());
  EXPECT_EQ(wellNames().size(), 5);
  QTest::keyClick(field("Theme Name"), Qt::Key_Return);
  EXPECT_EQ(stored()[0].nodeColors.size(), 1u);
  EXPECT_EQ(stored()[0].nodeColors[0].fill, QStringLiteral("#2980B9"));
}

TEST_F(ThemeBuilderTest, ASwatchReplacesTheWholeForm) {
  openBuilder();
  QTest::keyClicks(field("Theme Name"), QStringLiteral("x"));
  ASSERT_EQ(builder()->findChildren<ThemeSwatch*>().size(), 13);
  QTest::mouseClick(control<ThemeSwatch>(QStringLiteral("Plain")), Qt::LeftButton);
  EXPECT_EQ(field("Theme Name")->text(), QStringLiteral("Plain Custom"));
  EXPECT_EQ(well("Edge Color")->value(), QStringLiteral("#666666"));
  EXPECT_EQ(wellNames().size(), 5);
  QTest::keyClick(control<ThemeSwatch>(QStringLiteral("Aurora")), Qt::Key_Space);
  EXPECT_EQ(field("Theme Name")->text(), QStringLiteral("Aurora Custom"));
  EXPECT_EQ(well("Background")->value(), QStringLiteral("#0F0B2E"));
  EXPECT_EQ(well("Root Topic: Fill")->value(), QStringLiteral("#4A148C"));
}

TEST_F(ThemeBuilderTest, ThePreviewFollowsWhileAColorIsTried) {
  openBuilder();
  auto* preview = builder()->findChild<ThemePreview*>();
  const auto corner = [&] { return preview->grab().toImage().pixelColor(20, 20); };
  EXPECT_EQ(corner(), QColor(Qt::white));
  ColorWell* background = well("Background");
  background->startChoosing();
  background->dialog()->setColor(QColor(0x20, 0x40, 0x60));
  EXPECT_EQ(corner(), QColor(0x20, 0x40, 0x60));
  background->cancelChoosing();
  EXPECT_EQ(corner(), QColor(Qt::white));
}

TEST_F(ThemeBuilderTest, ThePreviewHasATopicOfEveryLevel) {
  for (const int depths : {2, 5, 12}) {
    const MindMap map = previewMap(depths);
    const MapIndex index(map.nodes, map.edges);
    const TreeInfo tree(index);
    int deepest = 0;
    for (const Node& node : map.nodes) deepest = std::max(deepest, tree.depth(node.id).value_or(0));
    EXPECT_EQ(deepest, depths - 1);
  }
}

TEST_F(ThemeBuilderTest, DeletingATheme) {
  saveCustomThemes(m_settings, {customTheme(QStringLiteral("A"), QStringLiteral("First")),
                                customTheme(QStringLiteral("B"), QStringLiteral("Second")),
                                customTheme(QStringLiteral("C"), QStringLiteral("Third"))});
  m_settings.setText(settings::defaultTheme, QStringLiteral("custom_B"));
  openPreferences(Tab::appearance);
  EXPECT_TRUE(reads(QStringLiteral("3 custom")));
  QTest::keyClick(control<IconButton>(QStringLiteral("Delete Second")), Qt::Key_Space);
  QCoreApplication::processEvents();
  ASSERT_EQ(stored().size(), 2u);
  EXPECT_EQ(stored()[0].name, QStringLiteral("First"));
  EXPECT_EQ(stored()[1].name, QStringLiteral("Third"));
  EXPECT_TRUE(reads(QStringLiteral("2 custom")));
  EXPECT_EQ(m_settings.text(settings::defaultTheme), QStringLiteral("custom_B"));
  EXPECT_EQ(picker("Default Theme")->currentIndex(), -1);
  EXPECT_TRUE(control<IconButton>(QStringLiteral("Delete Third"))->hasFocus());
}

TEST_F(ThemeBuilderTest, DeletingTakesEveryThemeOfThatId) {
  saveCustomThemes(m_settings, {customTheme(QStringLiteral("A"), QStringLiteral("One")),
                                customTheme(QStringLiteral("A"), QStringLiteral("Two")),
                                customTheme(QStringLiteral("B"), QStringLiteral("Three"))});
  openPreferences(Tab::appearance);
  QTest::mouseClick(control<IconButton>(QStringLiteral("Delete One")), Qt::LeftButton);
  QCoreApplication::processEvents();
  ASSERT_EQ(stored().size(), 1u);
  EXPECT_EQ(stored()[0].name, QStringLiteral("Three"));
}

TEST_F(ThemeBuilderTest, ADeletedThemeChangesNoMap) {
  saveCustomThemes(m_settings, {customTheme(QStringLiteral("A"), QStringLiteral("Moss"))});
  startActive();
  editor().applyTheme(allThemesIncludingCustom(m_settings).back());
  const MindMap before = editor().mindMap();
  EXPECT_EQ(before.canvas.themeId, QStringLiteral("custom_A"));
  EXPECT_EQ(before.nodes[0].style.fill, QStringLiteral("#AA0000"));
  openPreferences(Tab::appearance);
  QTest::mouseClick(control<IconButton>(QStringLiteral("Delete Moss")), Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_TRUE(stored().empty());
  EXPECT_EQ(editor().mindMap(), before);
  EXPECT_EQ(editor().currentTheme().id, QStringLiteral("purple"));
}

TEST_F(ThemeBuilderTest, NamesAreShownAsPlainText) {
  saveCustomThemes(m_settings, {customTheme(QStringLiteral("A"), QStringLiteral("<b>&Bold</b>\nnext"))});
  openPreferences(Tab::appearance);
  EXPECT_TRUE(reads(QStringLiteral("<b>&Bold</b> next")));
}

TEST_F(ThemeBuilderTest, TenMegabytesOfThemesOpenAndShowTheFirst) {
  std::vector<CustomTheme> themes;
  for (int index = 0; index < 60'000; ++index)
    themes.push_back(customTheme(QString::number(index), QStringLiteral("Theme %1 ").arg(index).repeated(4)));
  saveCustomThemes(m_settings, themes);
  ASSERT_GT(m_settings.bytes(settings::customThemes)->size(), 10'000'000);
  openPreferences(Tab::appearance);
  EXPECT_TRUE(reads(QStringLiteral("60000 custom")));
  const auto trashes = [&] { return preferences()->findChildren<IconButton*>().size(); };
  EXPECT_EQ(trashes(), 100);
  QTest::mouseClick(button("Show More"), Qt::LeftButton);
  goThroughDeletions();
  EXPECT_EQ(trashes(), 200);
}

TEST_F(ThemeBuilderTest, DamagedThemesAreNoneAndTheNextSaveWritesOverThem) {
  m_settings.setBytes(settings::customThemes, QByteArray("[{\"id\":1}]"));
  openBuilder();
  EXPECT_TRUE(reads(QStringLiteral("0 custom")));
  QTest::keyClick(field("Theme Name"), Qt::Key_Return);
  EXPECT_EQ(stored().size(), 1u);
}

}  // namespace
}  // namespace quilmora
