#include "app/inspectors/InspectorsFixture.h"
#include "app/inspectors/ThemePicker.h"
#include "app/look/ThemeSwatch.h"
#include "platform/SettingsKeys.h"
#include "themes/CustomThemes.h"

namespace quilmora::test {
namespace {

class CanvasInspectorTest : public InspectorsTest {
 protected:
  void startRested() {
    start();
    rest();
  }
  const HierarchicalConfig& sizing() { return editor().mindMap().hierarchical; }
  QStringList themeNames() {
    QStringList names;
    for (const ThemeSwatch* swatch : shown().findChild<ThemePicker*>()->swatches())
      names.append(swatch->accessibleName());
    return names;
  }
  static CustomTheme ownTheme(const QString& id, const QString& name) {
    return {id,
            name,
            QStringLiteral("#000000"),
            QStringLiteral("#111111"),
            {{QStringLiteral("#222222"), QStringLiteral("#333333"), QStringLiteral("#444444")}}};
  }
};

TEST_F(CanvasInspectorTest, SectionsStandInTheirOrder) {
  startRested();
  EXPECT_EQ(texts(), lines({"Canvas",
                            "Configure canvas and hierarchy settings",
                            "Background Color",
                            "Background",
                            "Theme",
                            "Classic",
                            "Vibrant",
                            "Layout",
                            "Branch Edge Sizing",
                            "Root Width: 15.0",
                            "Leaf Width: 5.0",
                            "Branch Node Sizing",
                            "Root Font: 17",
                            "Leaf Font: 12",
                            "Focus Lens",
                            "Tree Info",
                            "3 nodes, 2 edges",
                            "Depth: 1 levels, 1 root(s)",
                            "Navigation",
                            "Scroll to pan, Ctrl+scroll to zoom",
                            "Alt+drag to pan, Ctrl+0 to fit"}));
}

TEST_F(CanvasInspectorTest, TheBackgroundIsChosen) {
  startRested();
  chooseColor("Background Color", "#FF0000");
  EXPECT_EQ(editor().mindMap().canvas.background, QStringLiteral("#FF0000"));
  EXPECT_EQ(editor().mindMap().canvas.themeId, QStringLiteral("purple"));
  EXPECT_EQ(steps(), 1);
}

TEST_F(CanvasInspectorTest, AThemeIsAppliedAndMarked) {
  startRested();
  EXPECT_TRUE(control<ThemeSwatch>("Lavender").isChecked());
  press("Sunset");
  EXPECT_EQ(editor().mindMap().canvas.themeId, QStringLiteral("sunset"));
  EXPECT_EQ(node(1).style.fill, QStringLiteral("#B71C1C"));
  EXPECT_EQ(control<ColorWell>("Background Color").color(), QColor(0xFF, 0xF8, 0xF0));
  EXPECT_TRUE(control<ThemeSwatch>("Sunset").isChecked());
  EXPECT_FALSE(control<ThemeSwatch>("Lavender").isChecked());
  EXPECT_EQ(steps(), 1);
}

TEST_F(CanvasInspectorTest, CustomThemesComeBehindTheBuiltInOnesAndFollowTheSettings) {
  saveCustomThemes(m_settings, {ownTheme(QStringLiteral("A"), QStringLiteral("Mine"))});
  startRested();
  QStringList names = themeNames();
  EXPECT_EQ(names.size(), 14);
  EXPECT_EQ(names.first(), QStringLiteral("Ocean"));
  EXPECT_EQ(names.last(), QStringLiteral("Mine"));
  EXPECT_TRUE(texts().contains(QStringLiteral("Custom")));
  press("Mine");
  EXPECT_EQ(editor().mindMap().canvas.themeId, QStringLiteral("custom_A"));
  EXPECT_TRUE(control<ThemeSwatch>("Mine").isChecked());
  saveCustomThemes(m_settings, {});
  settle();
  EXPECT_EQ(themeNames().size(), 13);
  EXPECT_FALSE(texts().contains(QStringLiteral("Custom")));
}

TEST_F(CanvasInspectorTest, ThousandsOfCustomThemesDoNotFillThePanel) {
  std::vector<CustomTheme> many;
  for (int number = 0; number < 5000; ++number)
    many.push_back(ownTheme(QString::number(number), QStringLiteral("Theme %1").arg(number)));
  saveCustomThemes(m_settings, many);
  startRested();
  EXPECT_EQ(themeNames().size(), 13 + 60);
  EXPECT_TRUE(texts().contains(QStringLiteral("4940 more in the command palette")));
}

TEST_F(CanvasInspectorTest, FiveButtonsAskForALayout) {
  startRested();
  QList<Notification> posted;
  std::vector<NotificationCenter::Subscription> subscriptions;
  for (const Notification notification :
       {Notification::applyTreeLayout, Notification::applyVerticalTreeLayout, Notification::applyRadialLayout,
        Notification::applyLeftRightLayout, Notification::applyOrgChartLayout})
    subscriptions.push_back(m_notifications.observe(
        notification, [&posted, notification](const QVariant&) { posted.append(notification); }));
  const std::pair<const char*, const char*> buttons[] = {{"Tree", "Horizontal"},
                                                         {"Vertical", "Top-down"},
                                                         {"Radial", "Centered"},
                                                         {"L/R", "Balanced"},
                                                         {"Org Chart", "Corporate"}};
  for (const auto& [name, detail] : buttons) {
    EXPECT_EQ(control<QAbstractButton>(name).accessibleDescription(), QLatin1String(detail));
    press(name);
  }
  EXPECT_EQ(posted, (QList<Notification>{Notification::applyTreeLayout, Notification::applyVerticalTreeLayout,
                                         Notification::applyRadialLayout, Notification::applyLeftRightLayout,
                                         Notification::applyOrgChartLayout}));
}

TEST_F(CanvasInspectorTest, SlidersHaveTheirRangesAndSteps) {
  startRested();
  struct Expected {
    const char* name;
    double least, most, step;
  };
  for (const Expected& each : {Expected{"Root Width", 2, 20, 0.5}, Expected{"Leaf Width", 0.5, 10, 0.5},
                               Expected{"Root Font", 12, 28, 1}, Expected{"Leaf Font", 8, 18, 1}}) {
    StepSlider& found = slider(each.name);
    EXPECT_EQ(found.range().least, each.least) << each.name;
    EXPECT_EQ(found.range().most, each.most) << each.name;
    EXPECT_EQ(found.range().step, each.step) << each.name;
    found.setValue(found.maximum());
    EXPECT_EQ(found.stepValue(), each.most) << each.name;
    found.setValue(found.minimum());
    EXPECT_EQ(found.stepValue(), each.least) << each.name;
  }
  EXPECT_EQ(sizing().rootEdgeWidth, 2);
  EXPECT_EQ(sizing().leafEdgeWidth, 0.5);
  EXPECT_EQ(sizing().rootFontSize, 12);
  EXPECT_EQ(sizing().leafFontSize, 8);
}

TEST_F(CanvasInspectorTest, OneMovementOfASliderIsOneStep) {
  startRested();
  StepSlider& width = slider("Root Width");
  width.setSliderDown(true);
  for (const int place : {25, 24, 23}) width.setSliderPosition(place);
  EXPECT_EQ(sizing().rootEdgeWidth, 13.5);
  settle();
  EXPECT_EQ(width.sliderPosition(), 23);
  width.setSliderDown(false);
  EXPECT_EQ(steps(), 1);
  EXPECT_TRUE(texts().contains(QStringLiteral("Root Width: 13.5")));
}

TEST_F(CanvasInspectorTest, TheFontSlidersLeaveTheSettingsAlone) {
  startRested();
  slider("Root Font").setValue(slider("Root Font").maximum());
  EXPECT_EQ(sizing().rootFontSize, 28);
  EXPECT_TRUE(m_settings.isEmpty());
}

TEST_F(CanvasInspectorTest, SizingIsSwitched) {
  startRested();
  press("Branch Edge Sizing");
  EXPECT_FALSE(sizing().edgeSizing);
  press("Branch Node Sizing");
  EXPECT_TRUE(sizing().nodeSizing);
  EXPECT_EQ(steps(), 2);
  editor().undo();
  settle();
  EXPECT_FALSE(control<QCheckBox>("Branch Node Sizing").isChecked());
}

TEST_F(CanvasInspectorTest, TheLensIsChosenAndFollowed) {
  startRested();
  const std::pair<const char*, EditorState::FocusLens> lenses[] = {{"Depth", EditorState::FocusLens::depth},
                                                                   {"Priority", EditorState::FocusLens::priority},
                                                                   {"None", EditorState::FocusLens::none},
                                                                   {"Progress", EditorState::FocusLens::progress}};
  QStringList entries;
  for (int place = 0; place < 4; ++place) entries.append(control<PanelPicker>("Focus Lens").itemText(place));
  EXPECT_EQ(entries, lines({"None", "Priority", "Progress", "Depth"}));
  for (const auto& [entry, lens] : lenses) {
    choose("Focus Lens", entry);
    EXPECT_EQ(editor().activeLens(), lens) << entry;
  }
  EXPECT_EQ(steps(), 0);
  editor().setActiveLens(EditorState::FocusLens::depth);
  settle();
  EXPECT_EQ(control<PanelPicker>("Focus Lens").currentText(), QStringLiteral("Depth"));
}

TEST_F(CanvasInspectorTest, TheFactsFollowTheMap) {
  startRested();
  editor().createChild(topicId(3));
  editor().createFreeNode(900, 900);
  editor().clearSelection();
  settle();
  EXPECT_TRUE(texts().contains(QStringLiteral("5 nodes, 3 edges")));
  EXPECT_TRUE(texts().contains(QStringLiteral("Depth: 2 levels, 2 root(s)")));
}

}  // namespace
}  // namespace quilmora::test
