#pragma once

#include <memory>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include "app/Application.h"
#include "app/commands/CommandActions.h"
#include "app/dialogs/Alerts.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "app/window/MainWindow.h"
#include "canvas/view/CanvasView.h"
#include "platform/Bookmarks.h"
#include "platform/Clipboard.h"
#include "platform/FileDialogs.h"
#include "platform/FileWriter.h"
#include "platform/HttpTransport.h"
#include "platform/KeyStore.h"
#include "platform/Log.h"
#include "platform/OnDeviceModel.h"
#include "platform/Scheduler.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

// A whole application on in-memory twins. Files are real, in a temporary folder.
class AppTest : public ::testing::Test {
 protected:
  // Sets the application's look and shows the window with room for everything.
  void start(const QStringList& documents = {});
  // The same with the window's own default place. It is not the first start, unless a test says so.
  void startWhereItStands(const QStringList& documents = {});
  void startActive(const QStringList& documents = {});

  Machine machine();
  // Other than what start() stored.
  bool isNothingStored();
  MainWindow& window() { return m_application->window(); }
  MindMapViewModel& editor() { return window().editor(); }
  NotificationCenter& notifications() { return m_application->notifications(); }
  QAction* action(const char* id) { return window().actions().action(QLatin1String(id)); }
  QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
  QString defaultFolder() const { return path("Documents/Quilmora"); }
  QString writtenMap(const char* name, const char* title) const;
  QString titleIn(const QString& file) const { return decodeDocumentAt(file).title; }

  QTemporaryDir m_folder;
  ManualClock m_clock;
  MemorySettingsStore m_settings;
  PathBookmarks m_bookmarks;
  MemoryLog m_log;
  DiskFileWriter m_writer;
  ManualScheduler m_scheduler;
  QueuedFileDialogs m_panels;
  MemoryClipboard m_clipboard;
  RecordedAlerts m_alerts;
  FixedDesktopAppearance m_desktop;
  MemoryKeyStore m_keys;
  MemoryHttpTransport m_transport;
  MemoryOnDeviceModel m_onDeviceModel;
  std::unique_ptr<Look> m_look;
  bool m_isFirstStart = false;
  int m_terminations = 0;
  QStringList m_desktopList;
  QString m_stateFolder;                       // empty: nothing is kept between saves
  std::unique_ptr<Application> m_application;  // destroyed first
};

}  // namespace quilmora
