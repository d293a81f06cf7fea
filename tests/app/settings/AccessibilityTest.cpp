#include <set>

#include "PreferencesFixture.h"

namespace quilmora {
namespace {

class SettingsAccessibilityTest : public PreferencesTest {
 protected:
  // Every control that a screen reader can reach below this one has a name.
  void expectNames(QAccessibleInterface* parent) {
    for (int index = 0; index < parent->childCount(); ++index) {
      QAccessibleInterface* child = parent->child(index);
      if (child == nullptr || child->state().invisible) continue;
      if (child->state().focusable) {
        EXPECT_FALSE(child->text(QAccessible::Name).isEmpty())
            << (child->object() ? child->object()->metaObject()->className() : "?") << " role " << child->role();
        ++m_count;
      }
      expectNames(child);
    }
  }
  // The controls of an area that a full walk with Tab does not reach.
  QStringList unreachedByTab(QWidget& area) {
    std::set<const QWidget*> reached;
    const QWidget* first = preferences()->focusWidget();
    do {
      reached.insert(preferences()->focusWidget());
      QTest::keyClick(preferences()->windowHandle(), Qt::Key_Tab);
    } while (preferences()->focusWidget() != first && reached.size() < 200);
    QStringList missed;
    for (const QWidget* control : area.findChildren<QWidget*>()) {
      const bool isControl = qobject_cast<const QAbstractButton*>(control) || qobject_cast<const QLineEdit*>(control) ||
                             qobject_cast<const QComboBox*>(control) || qobject_cast<const QSlider*>(control) ||
                             qobject_cast<const QTabBar*>(control) || (control->focusPolicy() & Qt::TabFocus) != 0;
      // The function of a button inside a field or a bar has its own keys.
      const QWidget* owner = control->parentWidget();
      const bool isInside = qobject_cast<const QLineEdit*>(owner) || qobject_cast<const QTabBar*>(owner);
      if (isControl && !isInside && control->isVisible() && control->isEnabled() && !reached.contains(control))
        missed << QLatin1String(control->metaObject()->className()) + QLatin1Char(' ') + control->accessibleName();
    }
    return missed;
  }
  int m_count = 0;
};

TEST_F(SettingsAccessibilityTest, EveryControlOfEveryTabHasAName) {
  saveCustomThemes(m_settings, {customTheme(QStringLiteral("A"), QStringLiteral("Moss"))});
  openPreferences();
  for (int tab = 0; tab < 4; ++tab) {
    preferences()->setTab(static_cast<Tab>(tab));
    QAccessibleInterface* top = QAccessible::queryAccessibleInterface(preferences());
    EXPECT_EQ(top->text(QAccessible::Name), QStringLiteral("Settings"));
    m_count = 0;
    expectNames(top);
    EXPECT_GE(m_count, 3) << tab;
  }
  preferences()->setTab(Tab::ai);
  for (const char* provider : {"Claude (Anthropic)", "OpenAI", "Smart (Offline, no real AI)", "On-Device"}) {
    choose(picker("AI Provider"), QLatin1String(provider));
    expectNames(QAccessible::queryAccessibleInterface(preferences()));
  }
}

TEST_F(SettingsAccessibilityTest, EveryControlOfTheThemeBuilderHasAName) {
  openPreferences(Tab::appearance);
  QTest::keyClick(button("New Custom Theme"), Qt::Key_Space);
  ASSERT_NE(preferences()->themeBuilder(), nullptr);
  expectNames(QAccessible::queryAccessibleInterface(preferences()->themeBuilder()));
  EXPECT_GE(m_count, 17 + 5 + 13);
}

TEST_F(SettingsAccessibilityTest, TabReachesEveryControlOfEveryTab) {
  saveCustomThemes(m_settings, {customTheme(QStringLiteral("A"), QStringLiteral("Moss"))});
  openPreferences();
  for (const Tab tab : {Tab::general, Tab::appearance, Tab::interaction, Tab::ai}) {
    preferences()->setTab(tab);
    EXPECT_EQ(unreachedByTab(*preferences()), QStringList()) << static_cast<int>(tab);
  }
  m_keys.items[accounts::claudeKey] = "sk-test-123456";
  choose(picker("AI Provider"), QStringLiteral("Claude (Anthropic)"));
  QCoreApplication::processEvents();
  EXPECT_EQ(unreachedByTab(*preferences()), QStringList()) << "with a key";
}

TEST_F(SettingsAccessibilityTest, TabReachesEveryControlOfTheThemeBuilder) {
  openPreferences(Tab::appearance);
  QTest::keyClick(button("New Custom Theme"), Qt::Key_Space);
  ASSERT_NE(preferences()->themeBuilder(), nullptr);
  EXPECT_EQ(unreachedByTab(*preferences()->themeBuilder()), QStringList());
}

TEST_F(SettingsAccessibilityTest, RolesAndValuesAreTold) {
  openPreferences();
  const auto heard = [](QWidget* widget) { return QAccessible::queryAccessibleInterface(widget); };
  EXPECT_EQ(heard(picker("Default Layout"))->role(), QAccessible::ComboBox);
  EXPECT_EQ(heard(picker("Default Layout"))->text(QAccessible::Value), QStringLiteral("Tree (Horizontal)"));
  EXPECT_EQ(heard(toggle("Open sidebar on launch"))->role(), QAccessible::CheckBox);
  EXPECT_TRUE(heard(toggle("Open sidebar on launch"))->state().checked);
  preferences()->setTab(Tab::appearance);
  EXPECT_EQ(heard(slider("Thickness Scale"))->role(), QAccessible::Slider);
  EXPECT_EQ(heard(slider("Thickness Scale"))->text(QAccessible::Description), QStringLiteral("1.0"));
}

}  // namespace
}  // namespace quilmora
