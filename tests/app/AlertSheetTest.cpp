#include <QAccessible>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include "app/dialogs/AlertSheet.h"
#include "app/dialogs/Alerts.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "platform/SettingsStore.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

class AlertSheetTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_window.resize(640, 400);
    m_window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    m_field->setFocus();
  }
  QList<AlertSheet*> openSheets() {
    QList<AlertSheet*> sheets = m_window.findChildren<AlertSheet*>();
    sheets.removeIf([](const AlertSheet* sheet) { return !sheet->isOpen(); });
    return sheets;
  }
  void press(Qt::Key key) { QTest::keyClick(m_window.focusWidget(), key); }

  MemorySettingsStore m_settings;
  FixedDesktopAppearance m_desktop;
  Look m_look{m_settings, m_desktop};
  SheetAlerts m_alerts{m_look};
  QWidget m_window;
  QLineEdit* m_field = new QLineEdit(&m_window);
};

TEST_F(AlertSheetTest, ErrorsThatComeWhileOneIsOpenJoinIt) {
  m_alerts.showError(&m_window, QStringLiteral("File not found: a.mindmap"));
  m_alerts.showError(&m_window, QStringLiteral("File not found: b.mindmap"));
  m_alerts.showError(&m_window, QStringLiteral("File not found: a.mindmap"));
  ASSERT_EQ(openSheets().size(), 1);
  EXPECT_EQ(openSheets().first()->title(), QStringLiteral("Error"));
  EXPECT_EQ(openSheets().first()->message(), QStringLiteral("File not found: a.mindmap\n\nFile not found: b.mindmap"));
  press(Qt::Key_Escape);
  EXPECT_TRUE(openSheets().isEmpty());
  m_alerts.showError(&m_window, QStringLiteral("File not found: c.mindmap"));
  EXPECT_EQ(openSheets().first()->message(), QStringLiteral("File not found: c.mindmap"));
}

TEST_F(AlertSheetTest, ThousandsOfErrorsFitTheWindow) {
  for (int number = 1; number <= 2000; ++number)
    m_alerts.showError(&m_window, QStringLiteral("File not found: %1.mindmap").arg(number));
  m_alerts.showError(&m_window, QString(100'000, u'x'));
  ASSERT_EQ(openSheets().size(), 1);
  EXPECT_TRUE(openSheets().first()->message().startsWith(QStringLiteral("1998 more, and last:")));
  QCoreApplication::processEvents();
  const auto* button = openSheets().first()->findChild<QPushButton*>();
  EXPECT_TRUE(m_window.rect().contains(QRect(button->mapTo(&m_window, QPoint()), button->size())));
}

TEST_F(AlertSheetTest, GivesTheKeyboardBackToWhoeverHadIt) {
  m_alerts.showError(&m_window, QStringLiteral("no"));
  EXPECT_FALSE(m_field->hasFocus());
  press(Qt::Key_Return);
  EXPECT_TRUE(m_field->hasFocus());
}

TEST_F(AlertSheetTest, TheOneOnTopHasTheKeyboardAndThenTheOneBelow) {
  m_alerts.ask(&m_window, {QStringLiteral("Really?"), QString(), {}});
  m_alerts.showError(&m_window, QStringLiteral("no"));
  ASSERT_EQ(openSheets().size(), 2);
  AlertSheet* below = openSheets().at(0);
  AlertSheet* above = openSheets().at(1);
  EXPECT_TRUE(above->isAncestorOf(m_window.focusWidget()));
  m_field->setFocus();
  EXPECT_TRUE(above->isAncestorOf(m_window.focusWidget()));
  press(Qt::Key_Escape);
  EXPECT_FALSE(above->isOpen());
  EXPECT_TRUE(below->isAncestorOf(m_window.focusWidget()));
  press(Qt::Key_Escape);
  EXPECT_TRUE(m_field->hasFocus());
}

TEST_F(AlertSheetTest, AnswersAreGivenByKeyAndCancelGivesNone) {
  int plain = 0;
  int primary = 0;
  const Question question{QStringLiteral("Keep?"),
                          QStringLiteral("It cannot be written."),
                          {{QStringLiteral("Open &Anyway"), Question::Answer::Weight::plain, [&] { ++plain; }},
                           {QStringLiteral("&Save As…"), Question::Answer::Weight::primary, [&] { ++primary; }}}};
  m_alerts.ask(&m_window, question);
  press(Qt::Key_Return);
  EXPECT_EQ(primary, 1);
  m_alerts.ask(&m_window, question);
  QTest::keyClick(m_window.focusWidget(), Qt::Key_A, Qt::AltModifier);
  EXPECT_EQ(plain, 1);
  m_alerts.ask(&m_window, question);
  press(Qt::Key_Escape);
  m_alerts.ask(&m_window, question);
  QTest::keyClick(m_window.focusWidget(), Qt::Key_C, Qt::AltModifier);
  EXPECT_TRUE(openSheets().isEmpty());
  EXPECT_EQ(primary + plain, 2);
}

TEST_F(AlertSheetTest, ScreenReadersHearWhatHappened) {
  m_alerts.showError(&m_window, QStringLiteral("File not found: a.mindmap"));
  const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(openSheets().first());
  EXPECT_EQ(heard->role(), QAccessible::AlertMessage);
  EXPECT_EQ(heard->text(QAccessible::Name), QStringLiteral("Error"));
  EXPECT_EQ(heard->text(QAccessible::Description), QStringLiteral("File not found: a.mindmap"));
}

TEST_F(AlertSheetTest, MessagesArePlainText) {
  m_alerts.showError(&m_window, QStringLiteral("<img src=file:///dev/zero> <b>bold</b>"));
  EXPECT_EQ(openSheets().first()->message(), QStringLiteral("<img src=file:///dev/zero> <b>bold</b>"));
  for (const QLabel* label : openSheets().first()->findChildren<QLabel*>())
    EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

}  // namespace
}  // namespace quilmora
