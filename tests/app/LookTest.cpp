#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "app/look/Tokens.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {
namespace {

QString hex(const QColor& color) {
  return color.name(QColor::HexRgb).toUpper();
}

struct Named {
  const char* name;
  QColor Tokens::*color;
};

constexpr Named grounds[] = {{"window", &Tokens::window}, {"panel", &Tokens::panel}, {"raised", &Tokens::raised}};
constexpr Named texts[] = {{"text", &Tokens::text},
                           {"secondary", &Tokens::secondary},
                           {"danger", &Tokens::danger},
                           {"warning", &Tokens::warning},
                           {"success", &Tokens::success}};

TEST(Tokens, Light) {
  const Tokens& tokens = lightTokens();
  EXPECT_EQ(hex(tokens.window), QStringLiteral("#F5F5F7"));
  EXPECT_EQ(hex(tokens.panel), QStringLiteral("#FBFBFD"));
  EXPECT_EQ(hex(tokens.raised), QStringLiteral("#FFFFFF"));
  EXPECT_EQ(hex(tokens.hairline), QStringLiteral("#DEDEE3"));
  EXPECT_EQ(hex(tokens.text), QStringLiteral("#1D1D1F"));
  EXPECT_EQ(hex(tokens.secondary), QStringLiteral("#6A6A70"));
  EXPECT_EQ(hex(tokens.accent), QStringLiteral("#0A6CFF"));
  EXPECT_EQ(hex(tokens.onAccent), QStringLiteral("#FFFFFF"));
  EXPECT_EQ(hex(tokens.tint), QStringLiteral("#0A6CFF"));
  EXPECT_NEAR(tokens.tint.alphaF(), 0.12, 0.001);
  EXPECT_NEAR(tokens.hover.alphaF(), 0.06, 0.001);
  EXPECT_EQ(hex(tokens.danger), QStringLiteral("#D70015"));
  EXPECT_EQ(hex(tokens.warning), QStringLiteral("#B25000"));
  EXPECT_EQ(hex(tokens.success), QStringLiteral("#1E7F37"));
  EXPECT_EQ(hex(tokens.shadow), QStringLiteral("#000000"));
  EXPECT_NEAR(tokens.shadow.alphaF(), 0.14, 0.001);
}

TEST(Tokens, Dark) {
  const Tokens& tokens = darkTokens();
  EXPECT_EQ(hex(tokens.window), QStringLiteral("#1C1C1E"));
  EXPECT_EQ(hex(tokens.panel), QStringLiteral("#242426"));
  EXPECT_EQ(hex(tokens.raised), QStringLiteral("#2C2C2E"));
  EXPECT_EQ(hex(tokens.hairline), QStringLiteral("#3A3A3C"));
  EXPECT_EQ(hex(tokens.text), QStringLiteral("#F2F2F5"));
  EXPECT_EQ(hex(tokens.secondary), QStringLiteral("#A5A5AB"));
  EXPECT_EQ(hex(tokens.accent), QStringLiteral("#3D94FF"));
  EXPECT_EQ(hex(tokens.onAccent), QStringLiteral("#FFFFFF"));
  EXPECT_EQ(hex(tokens.tint), QStringLiteral("#3D94FF"));
  EXPECT_NEAR(tokens.tint.alphaF(), 0.20, 0.001);
  EXPECT_NEAR(tokens.hover.alphaF(), 0.10, 0.001);
  EXPECT_EQ(hex(tokens.danger), QStringLiteral("#FF6961"));
  EXPECT_EQ(hex(tokens.warning), QStringLiteral("#FFB340"));
  EXPECT_EQ(hex(tokens.success), QStringLiteral("#4CD07D"));
  EXPECT_NEAR(tokens.shadow.alphaF(), 0.45, 0.001);
}

TEST(Tokens, ContrastOfKnownPairs) {
  EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21.0, 0.001);
  EXPECT_NEAR(contrastRatio(Qt::white, Qt::white), 1.0, 0.001);
  EXPECT_NEAR(contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(Tokens, EveryTextReadsOnEveryGround) {
  for (const Tokens* tokens : {&lightTokens(), &darkTokens()}) {
    for (const Named& ground : grounds) {
      for (const Named& text : texts) {
        EXPECT_GE(contrastRatio(tokens->*text.color, tokens->*ground.color), 4.5)
            << text.name << " on " << ground.name << (tokens->isDark ? ", dark" : ", light");
      }
    }
    EXPECT_GE(contrastRatio(tokens->onAccent, tokens->accentFill), 4.5);
    // A selected row below the text.
    EXPECT_GE(contrastRatio(tokens->text, blended(tokens->tint, tokens->raised)), 4.5);
    EXPECT_GE(contrastRatio(tokens->secondary, blended(tokens->hover, tokens->raised)), 4.5);
  }
}

class LookTest : public ::testing::Test {
 protected:
  MemorySettingsStore m_settings;
  FixedDesktopAppearance m_desktop;
};

TEST_F(LookTest, AppearanceChoosesTheTable) {
  m_desktop.setPrefersDark(true);
  m_settings.setText(settings::appearance, QStringLiteral("light"));
  EXPECT_FALSE(Look(m_settings, m_desktop).isDark());
  m_desktop.setPrefersDark(false);
  m_settings.setText(settings::appearance, QStringLiteral("dark"));
  EXPECT_TRUE(Look(m_settings, m_desktop).isDark());
}

TEST_F(LookTest, AnyOtherAppearanceIsTheDesktops) {
  for (const char* value : {"system", "purple", ""}) {
    m_settings.setText(settings::appearance, QLatin1String(value));
    m_desktop.setPrefersDark(false);
    EXPECT_FALSE(Look(m_settings, m_desktop).isDark()) << value;
    m_desktop.setPrefersDark(true);
    EXPECT_TRUE(Look(m_settings, m_desktop).isDark()) << value;
  }
  m_settings.remove(settings::appearance);
  EXPECT_TRUE(Look(m_settings, m_desktop).isDark());
  EXPECT_TRUE(m_settings.isEmpty());
}

TEST_F(LookTest, FollowsTheDesktopWhileItRuns) {
  Look look(m_settings, m_desktop);
  look.install(*qApp);
  int changes = 0;
  QObject::connect(&look, &Look::changed, [&] { ++changes; });
  m_desktop.setPrefersDark(true);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(hex(QApplication::palette().color(QPalette::Window)), QStringLiteral("#1C1C1E"));
  m_desktop.setPrefersDark(true);
  EXPECT_EQ(changes, 1);
  m_settings.setText(settings::appearance, QStringLiteral("light"));
  look.refresh();
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(hex(QApplication::palette().color(QPalette::Window)), QStringLiteral("#F5F5F7"));
}

TEST_F(LookTest, FontsAreSizedInProportionToTheDesktops) {
  QFont desktopFont = QApplication::font();
  desktopFont.setPixelSize(26);
  m_desktop.setInterfaceFont(desktopFont);
  const Look look(m_settings, m_desktop);
  EXPECT_EQ(look.font().pixelSize(), 26);
  EXPECT_EQ(look.font(Look::TextStyle::sectionHeader).pixelSize(), 22);
  EXPECT_EQ(look.font(Look::TextStyle::panelTitle).pixelSize(), 30);
  EXPECT_EQ(look.font(Look::TextStyle::sectionHeader).weight(), QFont::DemiBold);
}

TEST_F(LookTest, WithoutADesktopFontTheBaseIs13Pixels) {
  const Look look(m_settings, m_desktop);
  EXPECT_EQ(look.font().pixelSize(), 13);
  EXPECT_EQ(look.font(Look::TextStyle::sectionHeader).pixelSize(), 11);
  EXPECT_EQ(look.font(Look::TextStyle::panelTitle).pixelSize(), 15);
}

// The colour in the middle of a control's left quarter, away from its text.
QColor groundOf(QWidget& widget) {
  const QImage picture = widget.grab().toImage();
  return picture.pixelColor(6, picture.height() / 2);
}

TEST_F(LookTest, ButtonsTakeTheirGroundFromTheTable) {
  m_settings.setText(settings::appearance, QStringLiteral("dark"));
  const Look look(m_settings, m_desktop);
  look.install(*qApp);
  QPushButton plain(QStringLiteral("Plain"));
  QPushButton primary(QStringLiteral("Primary"));
  primary.setDefault(true);
  plain.resize(plain.sizeHint());
  primary.resize(primary.sizeHint());
  EXPECT_EQ(plain.sizeHint().height(), 28);
  EXPECT_EQ(hex(groundOf(plain)), QStringLiteral("#2C2C2E"));
  EXPECT_EQ(hex(groundOf(primary)), QStringLiteral("#0A6CFF"));
}

TEST_F(LookTest, BordersAreOneDevicePixelAtEveryScale) {
  m_settings.setText(settings::appearance, QStringLiteral("light"));
  const Look look(m_settings, m_desktop);
  look.install(*qApp);
  QLineEdit field;
  field.resize(120, 28);
  for (const double scale : {1.0, 1.5, 2.25}) {
    QImage picture((QSizeF(field.size()) * scale).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::black);
    QPainter painter(&picture);
    field.render(&painter);
    painter.end();
    const int middle = picture.width() / 2;
    EXPECT_EQ(hex(picture.pixelColor(middle, 0)), QStringLiteral("#DEDEE3")) << scale;
    EXPECT_EQ(hex(picture.pixelColor(middle, 1)), QStringLiteral("#FFFFFF")) << scale;
    EXPECT_EQ(hex(picture.pixelColor(0, picture.height() / 2)), QStringLiteral("#DEDEE3")) << scale;
    EXPECT_EQ(hex(picture.pixelColor(1, picture.height() / 2)), QStringLiteral("#FFFFFF")) << scale;
  }
}

TEST_F(LookTest, TheFocusRingIsForTheKeyboardOnly) {
  m_settings.setText(settings::appearance, QStringLiteral("light"));
  const Look look(m_settings, m_desktop);
  look.install(*qApp);
  QWidget window;
  auto* button = new QPushButton(QStringLiteral("Press"), &window);
  auto* other = new QPushButton(QStringLiteral("Other"), &window);
  button->setAutoDefault(false);
  other->setAutoDefault(false);
  button->setGeometry(10, 10, 100, 28);
  other->setGeometry(10, 50, 100, 28);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  const auto edge = [button] { return hex(button->grab().toImage().pixelColor(50, 1)); };
  QTest::mouseClick(button, Qt::LeftButton);
  ASSERT_TRUE(button->hasFocus());
  EXPECT_NE(edge(), QStringLiteral("#0A6CFF"));
  other->setFocus();
  QTest::keyClick(&window, Qt::Key_Backtab, Qt::ShiftModifier);
  ASSERT_TRUE(button->hasFocus());
  EXPECT_EQ(edge(), QStringLiteral("#0A6CFF"));
}

TEST_F(LookTest, MnemonicsShowWhileAltIsHeld) {
  const Look look(m_settings, m_desktop);
  look.install(*qApp);
  QWidget window;
  QPushButton button(QStringLiteral("&Press"), &window);
  button.setGeometry(10, 10, 100, 28);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  struct Paints : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      count += event->type() == QEvent::Paint;
      return false;
    }
    int count = 0;
  } paints;
  const auto picture = [&] {
    // It is repainted by itself.
    paints.count = 0;
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.count > 0; }));
    return button.grab().toImage();
  };
  button.installEventFilter(&paints);
  const QImage plain = button.grab().toImage();
  QTest::keyPress(&window, Qt::Key_Alt);
  const QImage underlined = picture();
  EXPECT_NE(underlined, plain);
  QTest::keyRelease(&window, Qt::Key_Alt, Qt::AltModifier);
  EXPECT_EQ(picture(), plain);
  // The release goes to another window.
  QTest::keyPress(&window, Qt::Key_Alt);
  EXPECT_EQ(picture(), underlined);
  QEvent gone(QEvent::WindowDeactivate);
  QCoreApplication::sendEvent(&window, &gone);
  EXPECT_EQ(picture(), plain);
}

}  // namespace
}  // namespace quilmora
