#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "app/dialogs/DocumentFileDialog.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "platform/SettingsStore.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

class DocumentFileDialogTest : public ::testing::Test {
 protected:
  MemorySettingsStore m_settings;
  FixedDesktopAppearance m_desktop;
  Look m_look{m_settings, m_desktop};
  SymbolFileIcons m_icons{m_look};
  QTemporaryDir m_folder;
};

TEST_F(DocumentFileDialogTest, AnExportNamesItsFormat) {
  const DocumentFileDialog dialog(m_look, m_icons,
                                  {m_folder.path(), QStringLiteral("Trip v1.2.md"), QStringLiteral("md")}, nullptr);
  EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Export"));
  EXPECT_EQ(dialog.labelText(QFileDialog::Accept), QStringLiteral("Export"));
  EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Markdown (*.md)")});
  EXPECT_EQ(dialog.selectedFiles(), QStringList{m_folder.filePath(QStringLiteral("Trip v1.2.md"))});
}

TEST_F(DocumentFileDialogTest, SavingAMapIsNoExport) {
  const DocumentFileDialog dialog(
      m_look, m_icons, {m_folder.path(), QStringLiteral("Trip.mindmap"), QStringLiteral("mindmap")}, nullptr);
  EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Save"));
  EXPECT_EQ(dialog.nameFilters(), QStringList{QStringLiteral("Mind maps (*.mindmap)")});
}

TEST_F(DocumentFileDialogTest, TheFoldersThatWereVisitedAreWrittenNowhere) {
  const DocumentFileDialog dialog(m_look, m_icons, FileDialogs::OpenRequest{{QStringLiteral("mindmap")}}, nullptr);
  const QSettings toolkits(QSettings::UserScope, QStringLiteral("QtProject"));
  EXPECT_TRUE(toolkits.fileName().startsWith(QLatin1String("/dev/null/"))) << toolkits.fileName().toStdString();
}

}  // namespace
}  // namespace quilmora
