#include <QLabel>
#include <QTextDocument>

#include "app/AppFixture.h"
#include "app/commands/RecentFilesMenu.h"
#include "app/dialogs/AlertSheet.h"

namespace quilmora::test {
namespace {

const QString hostile = QStringLiteral("<img src=file:%2Fdev%2Fzero> R&D");

using PlainTextsTest = AppTest;

TEST_F(PlainTextsTest, APathInOpenRecentIsNoMarkup) {
  RecentFiles files(m_settings, m_bookmarks);
  files.add(QStringLiteral("/maps/<img src=file:/dev/zero>/R&D.mindmap"));
  NotificationCenter center;
  const RecentFilesMenu menu(QStringLiteral("Open Recent"), files, center, nullptr);
  const QAction* entry = menu.actions().constFirst();
  EXPECT_EQ(entry->text(), QStringLiteral("R&&D.mindmap"));
  EXPECT_FALSE(entry->toolTip().contains(QLatin1String("<img")));
  QTextDocument shown;
  shown.setHtml(entry->toolTip());
  EXPECT_EQ(shown.toPlainText(), QStringLiteral("/maps/<img src=file:/dev/zero>/R&D.mindmap"));
}

TEST_F(PlainTextsTest, AnAlertShowsTheLettersOfItsTexts) {
  const Look look(m_settings, m_desktop);
  QWidget window;
  AlertSheet alert(look, AlertSheet::Kind::warning, hostile, hostile, &window);
  EXPECT_EQ(alert.title(), hostile);
  EXPECT_EQ(alert.message(), hostile);
  const auto labels = alert.findChildren<QLabel*>();
  EXPECT_EQ(labels.size(), 2);
  for (const QLabel* label : labels) EXPECT_EQ(label->textFormat(), Qt::PlainText);
}

}  // namespace
}  // namespace quilmora::test
