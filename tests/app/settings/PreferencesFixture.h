#pragma once

#include <QAccessible>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>

#include "app/AppFixture.h"
#include "app/look/Widgets.h"
#include "app/settings/PreferencesView.h"
#include "app/settings/SettingControls.h"
#include "app/settings/ThemeBuilderView.h"
#include "support/QtPrinters.h"
#include "themes/CustomThemes.h"

namespace quilmora {

// The application with its settings window, opened by its key.
class PreferencesTest : public AppTest {
 protected:
  using Tab = PreferencesView::Tab;

  void openPreferences(Tab tab = Tab::general) {
    if (m_application == nullptr) startActive();
    QTest::keyClick(&window().canvas(), Qt::Key_Comma, Qt::ControlModifier);
    ASSERT_NE(preferences(), nullptr);
    ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == preferences(); }));
    preferences()->setTab(tab);
  }
  PreferencesView* preferences() { return window().findChild<PreferencesView*>(); }
  void goThroughDeletions() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

  // A visible control by its name for screen readers.
  template <class Control>
  Control* control(const QString& name, int index = 0) {
    for (Control* found : preferences()->findChildren<Control*>())
      if (found->isVisible() && found->accessibleName() == name && index-- == 0) return found;
    ADD_FAILURE() << "no control " << name.toStdString();
    return nullptr;
  }
  SettingPicker* picker(const char* name) { return control<SettingPicker>(QLatin1String(name)); }
  SettingToggle* toggle(const char* name) { return control<SettingToggle>(QLatin1String(name)); }
  QSlider* slider(const char* name) { return control<QSlider>(QLatin1String(name)); }
  QLineEdit* field(const char* name) { return control<QLineEdit>(QLatin1String(name)); }
  QPushButton* button(const char* text) {
    for (auto* found : preferences()->findChildren<QPushButton*>())
      if (found->isVisible() && found->text().remove(u'&') == QLatin1String(text)) return found;
    ADD_FAILURE() << "no button " << text;
    return nullptr;
  }
  // The text of the visible labels, from top to bottom.
  QStringList visibleTexts() {
    QStringList texts;
    for (const TextLabel* label : preferences()->findChildren<TextLabel*>())
      if (label->isVisible()) texts.append(label->text());
    return texts;
  }
  bool reads(const QString& text) { return visibleTexts().contains(text); }

  // Chooses with the keyboard alone: the first letters of an entry.
  void choose(SettingPicker* picker, const QString& text) {
    picker->setFocus(Qt::TabFocusReason);
    const int index = picker->findText(text);
    ASSERT_GE(index, 0) << text.toStdString();
    QTest::keyClick(picker, Qt::Key_Home);
    for (int presses = 0; picker->currentText() != text && presses < picker->count(); ++presses)
      QTest::keyClick(picker, Qt::Key_Down);
    EXPECT_EQ(picker->currentText(), text);
  }
  static QStringList entries(const SettingPicker& picker) {
    QStringList texts;
    for (int row = 0; row < picker.count(); ++row) texts.append(picker.itemText(row));
    return texts;
  }
  static CustomTheme customTheme(const QString& id, const QString& name) {
    return {id,
            name,
            QStringLiteral("#FFFFFF"),
            QStringLiteral("#112233"),
            {{QStringLiteral("#AA0000"), QStringLiteral("#BB0000"), QStringLiteral("#FFFFFF")}}};
  }
};

}  // namespace quilmora
