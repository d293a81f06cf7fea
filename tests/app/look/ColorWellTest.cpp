#include <map>

#include <QAccessible>
#include <QApplication>
#include <QColorDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>
#include <gtest/gtest.h>

#include "app/look/ColorDialog.h"
#include "app/look/ColorWell.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "app/look/ThemeSwatch.h"
#include "commands/Mnemonics.h"
#include "platform/SettingsStore.h"
#include "support/QtPrinters.h"
#include "themes/Theme.h"

namespace quilmora {
namespace {

const QColor blue(0x1A, 0x52, 0x76);

class ColorWellTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_look.install(*qApp);
    auto* column = new QVBoxLayout(&m_window);
    m_well = new ColorWell(m_look, QStringLiteral("Fill"), &m_window);
    m_well->setColor(blue);
    column->addWidget(m_well);
    column->addWidget(new QPushButton(QStringLiteral("Other"), &m_window));
    m_window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    m_well->setFocus(Qt::TabFocusReason);
  }

  ColorDialog* openDialog() {
    QTest::keyClick(m_well, Qt::Key_Space);
    EXPECT_NE(m_well->dialog(), nullptr);
    return m_well->dialog();
  }
  static QColorDialog* colorsOf(ColorDialog* dialog) { return dialog->findChild<QColorDialog*>(); }

  MemorySettingsStore m_settings;
  FixedDesktopAppearance m_desktop;
  Look m_look{m_settings, m_desktop};
  QWidget m_window;
  ColorWell* m_well = nullptr;
};

TEST_F(ColorWellTest, TheSpaceBarOpensTheDialogAboveItsWindowAlone) {
  ColorDialog* dialog = openDialog();
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->windowModality(), Qt::WindowModal);
  EXPECT_EQ(dialog->parentWidget(), &m_window);
  EXPECT_EQ(dialog->windowTitle(), QStringLiteral("Fill"));
  EXPECT_EQ(dialog->color(), blue);
  EXPECT_TRUE(colorsOf(dialog)->testOption(QColorDialog::DontUseNativeDialog));
  EXPECT_FALSE(colorsOf(dialog)->testOption(QColorDialog::ShowAlphaChannel));
}

TEST_F(ColorWellTest, TheDialogIsNoLargerThanTheScreen) {
  ColorDialog* dialog = openDialog();
  const QSize room = dialog->screen()->availableSize();
  EXPECT_LE(dialog->width(), room.width());
  EXPECT_LE(dialog->height(), room.height());
  dialog->resize(300, 200);
  EXPECT_EQ(dialog->size(), QSize(300, 200)) << "what does not fit scrolls";
}

TEST_F(ColorWellTest, EveryMnemonicOfTheDialogLeadsToOneControl) {
  ColorDialog* dialog = openDialog();
  QStringList texts;
  for (const QAbstractButton* button : dialog->findChildren<QAbstractButton*>())
    if (button->isVisible()) texts.append(button->text());
  for (const QLabel* label : dialog->findChildren<QLabel*>())
    if (label->isVisible()) texts.append(label->text());
  std::map<QChar, QString> owners;
  for (const QString& text : texts) {
    const QChar letter = mnemonicOf(text);
    if (letter.isNull()) continue;
    EXPECT_TRUE(owners.emplace(letter, text).second) << text.toStdString() << ", " << owners[letter].toStdString();
  }
  EXPECT_GE(owners.size(), 10u);
  ASSERT_TRUE(QTest::qWaitForWindowActive(dialog));
  QTest::keyClick(dialog->windowHandle(), Qt::Key_H, Qt::AltModifier);
  EXPECT_NE(qobject_cast<QLineEdit*>(dialog->focusWidget()), nullptr) << dialog->focusWidget();
}

TEST_F(ColorWellTest, TellsEveryColorThatIsTriedAndTheChosenOne) {
  const QSignalSpy began(m_well, &ColorWell::choosingBegan);
  const QSignalSpy changed(m_well, &ColorWell::colorChanged);
  const QSignalSpy chosen(m_well, &ColorWell::colorChosen);
  const QSignalSpy cancelled(m_well, &ColorWell::choosingCancelled);
  ColorDialog* dialog = openDialog();
  EXPECT_EQ(began.count(), 1);
  dialog->setColor(Qt::red);
  dialog->setColor(Qt::green);
  ASSERT_EQ(changed.count(), 2);
  EXPECT_EQ(changed[0][0].value<QColor>(), QColor(Qt::red));
  EXPECT_EQ(m_well->color(), QColor(Qt::green));
  EXPECT_EQ(chosen.count(), 0);
  QTest::keyClick(dialog, Qt::Key_Return);
  ASSERT_EQ(chosen.count(), 1);
  EXPECT_EQ(chosen[0][0].value<QColor>(), QColor(Qt::green));
  EXPECT_EQ(cancelled.count(), 0);
  EXPECT_EQ(m_well->value(), QStringLiteral("#00FF00"));
  EXPECT_FALSE(m_well->isChoosing());
}

TEST_F(ColorWellTest, EscapeInAFieldOfTheDialogGivesColorAndKeyboardBack) {
  const QSignalSpy changed(m_well, &ColorWell::colorChanged);
  const QSignalSpy chosen(m_well, &ColorWell::colorChosen);
  const QSignalSpy cancelled(m_well, &ColorWell::choosingCancelled);
  ColorDialog* dialog = openDialog();
  dialog->setColor(Qt::red);
  auto* field = colorsOf(dialog)->findChild<QLineEdit*>();
  ASSERT_NE(field, nullptr);
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_EQ(m_well->color(), blue);
  ASSERT_EQ(changed.count(), 2);
  EXPECT_EQ(changed[1][0].value<QColor>(), blue);
  EXPECT_EQ(cancelled.count(), 1);
  EXPECT_EQ(chosen.count(), 0);
  EXPECT_EQ(m_window.focusWidget(), m_well);
}

TEST_F(ColorWellTest, LeavingWithoutATrialChangesNothing) {
  const QSignalSpy changed(m_well, &ColorWell::colorChanged);
  openDialog();
  m_well->cancelChoosing();
  EXPECT_EQ(changed.count(), 0);
  EXPECT_EQ(m_well->color(), blue);
}

TEST_F(ColorWellTest, AWellThatGoesClosesItsDialog) {
  const QPointer<ColorDialog> dialog = openDialog();
  delete m_well;
  EXPECT_FALSE(dialog != nullptr && dialog->isVisible());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(dialog, nullptr);
}

TEST_F(ColorWellTest, SettingAColorTellsNobody) {
  const QSignalSpy changed(m_well, &ColorWell::colorChanged);
  m_well->setColor(Qt::yellow);
  EXPECT_EQ(changed.count(), 0);
  EXPECT_EQ(m_well->color(), QColor(Qt::yellow));
}

TEST_F(ColorWellTest, OpacityIsChosenOnlyWhereItIsWanted) {
  ColorWell well(m_look, QStringLiteral("Shade"), &m_window, ColorWell::Opacity::chosen);
  QColor half = blue;
  half.setAlphaF(0.5F);
  well.setColor(half);
  EXPECT_EQ(well.value(), QStringLiteral("#1A5276, 50%"));
  well.startChoosing();
  EXPECT_TRUE(colorsOf(well.dialog())->testOption(QColorDialog::ShowAlphaChannel));
  EXPECT_EQ(well.dialog()->color().alpha(), half.alpha());
}

TEST_F(ColorWellTest, ScreenReadersHearNameAndValueAndCanPress) {
  QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(m_well);
  ASSERT_NE(heard, nullptr);
  EXPECT_EQ(heard->role(), QAccessible::Button);
  EXPECT_EQ(heard->text(QAccessible::Name), QStringLiteral("Fill"));
  EXPECT_EQ(heard->text(QAccessible::Value), QStringLiteral("#1A5276"));
  heard->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_TRUE(m_well->isChoosing());
}

TEST_F(ColorWellTest, TheSwatchIsDrawnInItsColorWithARingForTheKeyboard) {
  const auto picture = [&] { return m_well->grab().toImage(); };
  const QPoint middle(m_well->rect().center());
  EXPECT_EQ(picture().pixelColor(middle), blue);
  const auto hasRing = [&] {
    const QImage image = picture();
    return image.pixelColor(image.width() / 2, image.height() / 2 - 13) == m_look.tokens().accent;
  };
  QTest::keyClick(&m_window, Qt::Key_Tab);
  QTest::keyClick(&m_window, Qt::Key_Backtab);
  ASSERT_TRUE(m_well->hasFocus());
  EXPECT_TRUE(hasRing());
  m_well->clearFocus();
  EXPECT_FALSE(hasRing());
}

TEST_F(ColorWellTest, AThemeSwatchShowsItsNameAndFirstRow) {
  ThemeSwatch swatch(m_look, *builtInTheme(QStringLiteral("ocean")));
  swatch.resize(swatch.sizeHint());
  EXPECT_EQ(swatch.accessibleName(), QStringLiteral("Ocean"));
  EXPECT_EQ(swatch.themeId(), QStringLiteral("ocean"));
  EXPECT_EQ(swatch.grab().toImage().pixelColor(swatch.width() / 2, 20), blue);
  QTest::mouseClick(&swatch, Qt::LeftButton);
  EXPECT_FALSE(swatch.isChecked()) << "the map tells what is applied";
}

}  // namespace
}  // namespace quilmora
