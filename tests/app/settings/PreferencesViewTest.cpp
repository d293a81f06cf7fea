#include "PreferencesFixture.h"
#include "support/Lines.h"

namespace quilmora {
namespace {

QString text(const MemorySettingsStore& settings, const QString& key) {
  return settings.text(key).value_or(QStringLiteral("absent"));
}

TEST_F(PreferencesTest, TheKeyOpensAWindowOf480By500BesideTheMap) {
  openPreferences();
  EXPECT_TRUE(preferences()->isWindow());
  EXPECT_EQ(preferences()->size(), QSize(480, 500));
  EXPECT_EQ(preferences()->windowModality(), Qt::NonModal);
  auto* tabs = preferences()->findChild<QTabBar*>();
  EXPECT_EQ(tabs->tabText(0), QStringLiteral("General"));
  EXPECT_EQ(tabs->tabText(1), QStringLiteral("Appearance"));
  EXPECT_EQ(tabs->tabText(2), QStringLiteral("Interaction"));
  EXPECT_EQ(tabs->tabText(3), QStringLiteral("AI"));
  EXPECT_TRUE(tabs->hasFocus());
}

TEST_F(PreferencesTest, TheSameWindowComesBackToTheFront) {
  openPreferences();
  const PreferencesView* first = preferences();
  action("settings")->trigger();
  EXPECT_EQ(preferences(), first);
}

TEST_F(PreferencesTest, EscapeClosesItAndTheCanvasHasTheKeyboardAgain) {
  openPreferences();
  QTest::keyClick(preferences()->focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(preferences() != nullptr && preferences()->isVisible());
  goThroughDeletions();
  EXPECT_EQ(preferences(), nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  EXPECT_TRUE(window().canvas().hasFocus());
}

TEST_F(PreferencesTest, APageIsMadeWhenItIsFirstSeen) {
  openPreferences();
  EXPECT_EQ(preferences()->findChildren<SettingToggle*>().size(), 1);
  EXPECT_TRUE(preferences()->findChildren<QSlider*>().empty());
  auto* tabs = preferences()->findChild<QTabBar*>();
  QTest::keyClick(tabs, Qt::Key_Right);
  EXPECT_EQ(preferences()->tab(), Tab::appearance);
  EXPECT_EQ(preferences()->findChildren<QSlider*>().size(), 2);
  QTest::keyClick(tabs, Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(preferences()->tab(), Tab::interaction);
  QTest::keyClick(tabs, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(preferences()->tab(), Tab::appearance);
}

TEST_F(PreferencesTest, AnEmptyStoreShowsEveryDefaultAndStaysEmpty) {
  startActive();
  openPreferences();
  EXPECT_EQ(picker("Default Layout")->currentText(), QStringLiteral("Tree (Horizontal)"));
  EXPECT_EQ(picker("Default Theme")->currentText(), QStringLiteral("Lavender"));
  EXPECT_TRUE(toggle("Open sidebar on launch")->isChecked());
  EXPECT_EQ(picker("Default tab")->currentText(), QStringLiteral("AI Chat"));
  EXPECT_EQ(picker("Default Export Format")->currentText(), QStringLiteral("JSON"));
  preferences()->setTab(Tab::appearance);
  EXPECT_EQ(picker("Theme")->currentText(), QStringLiteral("System"));
  EXPECT_TRUE(toggle("Show Mini-Map")->isChecked());
  EXPECT_TRUE(toggle("Show Breadcrumbs")->isChecked());
  EXPECT_TRUE(toggle("Animations")->isChecked());
  EXPECT_EQ(slider("Corner Radius")->value(), 6);
  EXPECT_EQ(control<SettingSlider>(QStringLiteral("Corner Radius"))->shownText(), QStringLiteral("6"));
  EXPECT_EQ(slider("Thickness Scale")->value(), 10);
  EXPECT_EQ(control<SettingSlider>(QStringLiteral("Thickness Scale"))->shownText(), QStringLiteral("1.0"));
  EXPECT_EQ(picker("Default Theme")->currentText(), QStringLiteral("Lavender"));
  preferences()->setTab(Tab::interaction);
  EXPECT_TRUE(toggle("Double-click to edit node titles")->isChecked());
  EXPECT_TRUE(toggle("Tab key creates child node")->isChecked());
  preferences()->setTab(Tab::ai);
  EXPECT_EQ(picker("AI Provider")->currentText(), QStringLiteral("On-Device"));
  for (const QString& key :
       {settings::defaultLayout, settings::defaultTheme, settings::appearance, settings::editOnDoubleClick,
        settings::createChildOnTab, settings::showMiniMap, settings::showBreadcrumbs, settings::animationsEnabled,
        settings::defaultExportFormat, settings::nodeCornerRadius, settings::edgeThicknessScale,
        settings::sidebarDefaultOpen, settings::sidebarDefaultTab, settings::aiProvider, settings::localModelAddress,
        settings::localModelName, settings::customThemes})
    EXPECT_FALSE(m_settings.text(key) || m_settings.flag(key) || m_settings.real(key) || m_settings.bytes(key))
        << key.toStdString();
}

TEST_F(PreferencesTest, PickersOfferTheToldTextsAndWriteTheToldValues) {
  openPreferences();
  struct Case {
    Tab tab;
    const char* name;
    QString key;
    QStringList texts;
    QStringList values;
  };
  const Case cases[] = {
      {Tab::general, "Default Layout", settings::defaultLayout,
       test::lines({"Tree (Horizontal)", "Vertical Tree", "Radial", "Left/Right Tree", "Org Chart"}),
       test::lines({"tree", "verticalTree", "radial", "leftRightTree", "orgChart"})},
      {Tab::general, "Default tab", settings::sidebarDefaultTab, test::lines({"AI Chat", "Outline"}),
       test::lines({"aiChat", "outline"})},
      {Tab::general, "Default Export Format", settings::defaultExportFormat, test::lines({"JSON", "OPML", "Markdown"}),
       test::lines({"json", "opml", "md"})},
      {Tab::appearance, "Theme", settings::appearance, test::lines({"System", "Light", "Dark"}),
       test::lines({"system", "light", "dark"})},
      {Tab::ai, "AI Provider", settings::aiProvider,
       test::lines({"On-Device", "Claude (Anthropic)", "OpenAI", "Smart (Offline, no real AI)"}),
       test::lines({"apple", "claude", "openai", "demo"})},
  };
  for (const Case& it : cases) {
    preferences()->setTab(it.tab);
    SettingPicker* shown = picker(it.name);
    EXPECT_EQ(entries(*shown), it.texts);
    for (qsizetype row = it.texts.size(); row-- > 0;) {
      choose(shown, it.texts[row]);
      EXPECT_EQ(text(m_settings, it.key), it.values[row]);
    }
  }
}

TEST_F(PreferencesTest, TheExportFormatLacksPictures) {
  openPreferences();
  for (const char* value : {"png", "pdf", "svg"})
    EXPECT_EQ(picker("Default Export Format")->findData(QLatin1String(value)), -1) << value;
}

TEST_F(PreferencesTest, TogglesAndSlidersWriteAtOnce) {
  openPreferences(Tab::appearance);
  const auto expectToggle = [&](const char* name, const QString& key) {
    SettingToggle* shown = toggle(name);
    QTest::keyClick(shown, Qt::Key_Space);
    EXPECT_EQ(m_settings.flag(key), false) << name;
    QTest::mouseClick(shown, Qt::LeftButton, {}, QPoint(20, shown->height() / 2));
    EXPECT_EQ(m_settings.flag(key), true) << name;
  };
  expectToggle("Show Mini-Map", settings::showMiniMap);
  expectToggle("Show Breadcrumbs", settings::showBreadcrumbs);
  expectToggle("Animations", settings::animationsEnabled);
  QTest::keyClick(slider("Corner Radius"), Qt::Key_Right);
  EXPECT_EQ(m_settings.real(settings::nodeCornerRadius), 7.0);
  QTest::keyClick(slider("Corner Radius"), Qt::Key_End);
  EXPECT_EQ(m_settings.real(settings::nodeCornerRadius), 20.0);
  QTest::keyClick(slider("Corner Radius"), Qt::Key_Home);
  EXPECT_EQ(m_settings.real(settings::nodeCornerRadius), 0.0);
  QTest::keyClick(slider("Thickness Scale"), Qt::Key_Right);
  EXPECT_EQ(m_settings.real(settings::edgeThicknessScale), 1.1);
  EXPECT_EQ(control<SettingSlider>(QStringLiteral("Thickness Scale"))->shownText(), QStringLiteral("1.1"));
  QTest::keyClick(slider("Thickness Scale"), Qt::Key_End);
  EXPECT_EQ(m_settings.real(settings::edgeThicknessScale), 2.0);
  QTest::keyClick(slider("Thickness Scale"), Qt::Key_Home);
  EXPECT_EQ(m_settings.real(settings::edgeThicknessScale), 0.5);
  preferences()->setTab(Tab::general);
  expectToggle("Open sidebar on launch", settings::sidebarDefaultOpen);
  preferences()->setTab(Tab::interaction);
  expectToggle("Double-click to edit node titles", settings::editOnDoubleClick);
  expectToggle("Tab key creates child node", settings::createChildOnTab);
}

TEST_F(PreferencesTest, ScrollingOverAControlChangesNothing) {
  openPreferences(Tab::appearance);
  QSlider* radius = slider("Corner Radius");
  ASSERT_FALSE(radius->hasFocus());
  QWheelEvent wheel(radius->rect().center(), radius->mapToGlobal(radius->rect().center()), {}, {0, 120}, {}, {},
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(radius, &wheel);
  EXPECT_EQ(m_settings.real(settings::nodeCornerRadius), std::nullopt);
  SettingPicker* theme = picker("Theme");
  QWheelEvent turn(theme->rect().center(), theme->mapToGlobal(theme->rect().center()), {}, {0, -120}, {}, {},
                   Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(theme, &turn);
  EXPECT_EQ(m_settings.text(settings::appearance), std::nullopt);
}

TEST_F(PreferencesTest, ThemesStandInTheirGroupsWithTheirIds) {
  saveCustomThemes(m_settings, {customTheme(QStringLiteral("A1"), QStringLiteral("Moss"))});
  openPreferences();
  SettingPicker* themes = picker("Default Theme");
  const QStringList expected = {QStringLiteral("Classic"),  QStringLiteral("Ocean"), QStringLiteral("Forest"),
                                QStringLiteral("Lavender"), QStringLiteral("Earth"), QStringLiteral("Teal"),
                                QStringLiteral("Mono"),     QStringLiteral("Plain"), QStringLiteral("Vibrant"),
                                QStringLiteral("Sunset"),   QStringLiteral("Coral"), QStringLiteral("Blueprint"),
                                QStringLiteral("Aurora"),   QStringLiteral("Neon"),  QStringLiteral("Candy"),
                                QStringLiteral("Custom"),   QStringLiteral("Moss")};
  EXPECT_EQ(entries(*themes), expected);
  choose(themes, QStringLiteral("Moss"));
  EXPECT_EQ(m_settings.text(settings::defaultTheme), QStringLiteral("custom_A1"));
  choose(themes, QStringLiteral("Plain"));
  EXPECT_EQ(m_settings.text(settings::defaultTheme), QStringLiteral("default"));
}

TEST_F(PreferencesTest, WithoutCustomThemesThereIsNoSuchGroup) {
  openPreferences();
  EXPECT_EQ(entries(*picker("Default Theme")).indexOf(QStringLiteral("Custom")), -1);
}

TEST_F(PreferencesTest, TheDefaultThemeIsTheSameInBothPlaces) {
  openPreferences();
  preferences()->setTab(Tab::appearance);
  choose(picker("Default Theme"), QStringLiteral("Ocean"));
  preferences()->setTab(Tab::general);
  EXPECT_EQ(picker("Default Theme")->currentText(), QStringLiteral("Ocean"));
  choose(picker("Default Theme"), QStringLiteral("Neon"));
  preferences()->setTab(Tab::appearance);
  EXPECT_EQ(picker("Default Theme")->currentText(), QStringLiteral("Neon"));
}

TEST_F(PreferencesTest, WhatIsChangedElsewhereShowsAtOnce) {
  openPreferences(Tab::appearance);
  m_settings.setFlag(settings::showMiniMap, false);
  m_settings.setReal(settings::nodeCornerRadius, 12.0);
  m_settings.setText(settings::defaultTheme, QStringLiteral("candy"));
  EXPECT_FALSE(toggle("Show Mini-Map")->isChecked());
  EXPECT_EQ(slider("Corner Radius")->value(), 12);
  EXPECT_EQ(picker("Default Theme")->currentText(), QStringLiteral("Candy"));
}

TEST_F(PreferencesTest, NumbersBetweenTwoStepsAreShownRounded) {
  m_settings.setReal(settings::nodeCornerRadius, 6.5);
  m_settings.setReal(settings::edgeThicknessScale, 1.25);
  openPreferences(Tab::appearance);
  EXPECT_EQ(control<SettingSlider>(QStringLiteral("Corner Radius"))->shownText(), QStringLiteral("6"));
  EXPECT_EQ(control<SettingSlider>(QStringLiteral("Thickness Scale"))->shownText(), QStringLiteral("1.2"));
  EXPECT_EQ(m_settings.real(settings::edgeThicknessScale), 1.25);
}

TEST_F(PreferencesTest, UnknownValuesAreKeptAndShownAsNoSelection) {
  m_settings.setText(settings::defaultLayout, QStringLiteral("spiral"));
  m_settings.setText(settings::defaultTheme, QStringLiteral("custom_gone"));
  m_settings.setText(settings::appearance, QStringLiteral("Dark"));
  m_settings.setText(settings::aiProvider, QStringLiteral("other"));
  m_settings.setText(settings::defaultExportFormat, QStringLiteral("png"));
  m_settings.setReal(settings::nodeCornerRadius, 400.0);
  m_settings.setReal(settings::edgeThicknessScale, -3.0);
  openPreferences();
  EXPECT_EQ(picker("Default Layout")->currentIndex(), -1);
  EXPECT_EQ(picker("Default Theme")->currentIndex(), -1);
  EXPECT_EQ(picker("Default Export Format")->currentIndex(), -1);
  preferences()->setTab(Tab::appearance);
  EXPECT_EQ(picker("Theme")->currentIndex(), -1);
  EXPECT_EQ(slider("Corner Radius")->value(), 20);
  EXPECT_EQ(control<SettingSlider>(QStringLiteral("Corner Radius"))->shownText(), QStringLiteral("400"));
  preferences()->setTab(Tab::ai);
  EXPECT_EQ(picker("AI Provider")->currentIndex(), -1);
  EXPECT_EQ(m_settings.text(settings::defaultLayout), QStringLiteral("spiral"));
  EXPECT_EQ(m_settings.text(settings::defaultTheme), QStringLiteral("custom_gone"));
  EXPECT_EQ(m_settings.text(settings::appearance), QStringLiteral("Dark"));
  EXPECT_EQ(m_settings.text(settings::aiProvider), QStringLiteral("other"));
  EXPECT_EQ(m_settings.real(settings::nodeCornerRadius), 400.0);
  EXPECT_EQ(m_settings.real(settings::edgeThicknessScale), -3.0);
}

TEST_F(PreferencesTest, ValuesOfAnotherKindShowTheDefault) {
  m_settings.setFlag(settings::defaultLayout, true);
  m_settings.setText(settings::sidebarDefaultOpen, QStringLiteral("no"));
  m_settings.setText(settings::nodeCornerRadius, QStringLiteral("9"));
  m_settings.setReal(settings::customThemes, 3.0);
  openPreferences();
  EXPECT_EQ(picker("Default Layout")->currentText(), QStringLiteral("Tree (Horizontal)"));
  EXPECT_TRUE(toggle("Open sidebar on launch")->isChecked());
  preferences()->setTab(Tab::appearance);
  EXPECT_EQ(slider("Corner Radius")->value(), 6);
  EXPECT_TRUE(reads(QStringLiteral("0 custom")));
}

TEST_F(PreferencesTest, AppearanceChangesTheRunningProgramAtOnce) {
  openPreferences(Tab::appearance);
  EXPECT_FALSE(m_look->isDark());
  choose(picker("Theme"), QStringLiteral("Dark"));
  EXPECT_TRUE(m_look->isDark());
  EXPECT_EQ(QApplication::palette().color(QPalette::Window), darkTokens().window);
  choose(picker("Theme"), QStringLiteral("Light"));
  EXPECT_FALSE(m_look->isDark());
  m_desktop.setPrefersDark(true);
  EXPECT_FALSE(m_look->isDark());
  choose(picker("Theme"), QStringLiteral("System"));
  EXPECT_TRUE(m_look->isDark());
}

TEST_F(PreferencesTest, SettingsWithoutEffectHaveNone) {
  startActive();
  const MindMap before = editor().mindMap();
  const QImage canvas = window().canvas().grab().toImage();
  const bool sidebar = window().showsSidebar();
  openPreferences(Tab::appearance);
  QTest::keyClick(slider("Corner Radius"), Qt::Key_Home);
  QTest::keyClick(slider("Thickness Scale"), Qt::Key_End);
  for (const char* name : {"Show Mini-Map", "Show Breadcrumbs", "Animations"})
    QTest::keyClick(toggle(name), Qt::Key_Space);
  preferences()->setTab(Tab::general);
  choose(picker("Default Layout"), QStringLiteral("Org Chart"));
  QTest::keyClick(toggle("Open sidebar on launch"), Qt::Key_Space);
  EXPECT_EQ(editor().mindMap(), before);
  EXPECT_EQ(window().showsSidebar(), sidebar);
  EXPECT_FALSE(editor().isDirty());
  QTest::keyClick(preferences()->focusWidget(), Qt::Key_Escape);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
  EXPECT_EQ(window().canvas().grab().toImage(), canvas);
}

TEST_F(PreferencesTest, TheShortcutsReferenceTellsTheKeysThatWork) {
  openPreferences(Tab::interaction);
  const QStringList texts = visibleTexts();
  EXPECT_TRUE(texts.contains(QStringLiteral("Shortcuts Reference")));
  const qsizetype first = texts.indexOf(QStringLiteral("Ctrl+N"));
  ASSERT_GE(first, 0);
  QStringList rows;
  for (qsizetype place = first; place < first + 2 * 17 && place + 1 < texts.size(); place += 2)
    rows.append(texts[place] + QStringLiteral(" | ") + texts[place + 1]);
  QStringList expected;
  for (const char* row : {"Ctrl+N | New sibling / topic", "Tab | New child topic", "Ctrl+E | Toggle branch creation",
                          "Ctrl+D | Duplicate selection", "Ctrl+K | Command palette", "Ctrl+F | Search topics",
                          "Ctrl+Shift+O | Toggle outline", "Ctrl+Shift+L | Toggle AI chat",
                          "Ctrl+Shift+P | Presentation mode", "Ctrl+Shift+G | AI generate", "Ctrl+0 | Zoom to fit",
                          "Ctrl+[/] | Collapse/expand", "Arrow keys | Navigate tree", "Space | Quick-look topic",
                          "Ctrl+drag | Reparent topic", "Shift+drag handle | Cross-link", "Esc | Cancel / exit mode"})
    expected.append(QString::fromUtf8(row));
  EXPECT_EQ(rows, expected);
}

TEST_F(PreferencesTest, KeysOfTheMapDoNothingInTheSettings) {
  startActive();
  editor().selectAll();
  const std::size_t topics = editor().mindMap().nodes.size();
  openPreferences();
  QTest::keyClick(preferences()->focusWidget(), Qt::Key_N, Qt::ControlModifier);
  QTest::keyClick(preferences()->focusWidget(), Qt::Key_Delete);
  EXPECT_EQ(editor().mindMap().nodes.size(), topics);
}

TEST_F(PreferencesTest, KeysOfTheWholeProgramWorkInTheSettingsToo) {
  openPreferences();
  QTest::keyClick(preferences()->focusWidget(), Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_TRUE(preferences()->isVisible());
  QTest::keyClick(preferences()->focusWidget(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(m_terminations, 1);
}

TEST_F(PreferencesTest, TheMinimizeKeyTakesTheSettingsAwayWithTheirWindow) {
  openPreferences();
  QTest::keyClick(preferences()->focusWidget(), Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(window().isMinimized());
  EXPECT_EQ(m_terminations, 0);
}

TEST_F(PreferencesTest, TabReachesEveryControlOfAPageAndComesBack) {
  openPreferences(Tab::appearance);
  std::set<QWidget*> reached;
  for (int presses = 0; presses < 60; ++presses) {
    QWidget* now = preferences()->focusWidget();
    ASSERT_NE(now, nullptr);
    reached.insert(now);
    QTest::keyClick(now, Qt::Key_Tab);
  }
  for (const char* name : {"Show Mini-Map", "Show Breadcrumbs", "Animations"})
    EXPECT_TRUE(reached.contains(toggle(name))) << name;
  EXPECT_TRUE(reached.contains(picker("Theme")));
  EXPECT_TRUE(reached.contains(slider("Thickness Scale")));
  EXPECT_TRUE(reached.contains(button("New Custom Theme")));
  EXPECT_TRUE(reached.contains(preferences()->findChild<QTabBar*>()));
}

TEST_F(PreferencesTest, ThePageScrollsToWhatGetsTheKeyboardFromOutsideIt) {
  openPreferences(Tab::appearance);
  preferences()->resize(preferences()->minimumSize());
  auto* tabs = preferences()->findChild<QTabBar*>();
  tabs->setFocus();
  QTest::keyClick(preferences()->windowHandle(), Qt::Key_Tab, Qt::ShiftModifier);
  EXPECT_TRUE(button("New Custom Theme")->hasFocus());
  EXPECT_EQ(button("New Custom Theme")->visibleRegion().boundingRect().size(), button("New Custom Theme")->size());
  QTest::keyClick(preferences()->windowHandle(), Qt::Key_Tab);
  QTest::keyClick(preferences()->windowHandle(), Qt::Key_Tab);
  EXPECT_TRUE(picker("Theme")->hasFocus());
  EXPECT_EQ(picker("Theme")->visibleRegion().boundingRect().size(), picker("Theme")->size());
}

TEST_F(PreferencesTest, LargeFontsFitTheWindowOnTheScreen) {
  QFont font = QApplication::font();
  font.setPixelSize(26);
  m_desktop.setInterfaceFont(font);
  openPreferences();
  const QSize room = preferences()->screen()->availableSize();
  EXPECT_LE(preferences()->width(), room.width());
  EXPECT_LE(preferences()->height(), room.height());
  for (int tab = 0; tab < 4; ++tab) {
    preferences()->setTab(static_cast<Tab>(tab));
    for (const QWidget* control : preferences()->findChildren<QWidget*>()) {
      if (!control->isVisible() || control->focusPolicy() == Qt::NoFocus || control->isWindow()) continue;
      const int right = control->mapTo(preferences(), QPoint(control->width(), 0)).x();
      EXPECT_LE(right, preferences()->width()) << control->accessibleName().toStdString();
    }
  }
}

}  // namespace
}  // namespace quilmora
