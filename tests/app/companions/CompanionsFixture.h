#pragma once

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include "app/companions/CanvasCompanions.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "platform/Scheduler.h"
#include "support/EditorRig.h"

namespace quilmora::test {

// The cards above a plain widget instead of the canvas, 800 by 600.
class CompanionsTest : public ::testing::Test {
 protected:
  void start(MindMap map = mapOf({1, 2, 3}, {{1, 2}, {2, 3}})) {
    m_rig = std::make_unique<EditorRig>(std::move(map));
    m_canvas = std::make_unique<QWidget>();
    m_canvas->setFocusPolicy(Qt::StrongFocus);
    m_canvas->resize(800, 600);
    editor().setLastKnownCanvasSize(QSizeF(800, 600));
    m_companions = new CanvasCompanions(m_look, editor(), m_scheduler, m_canvas.get());
    m_canvas->show();
    m_canvas->setFocus();
    settle();
  }
  void startActive() {
    start();
    m_canvas->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_canvas.get()));
  }
  MindMapViewModel& editor() { return m_rig->editor; }
  CanvasCompanions& companions() { return *m_companions; }
  QWidget& canvas() { return *m_canvas; }
  // Runs queued work.
  static void settle() { QCoreApplication::processEvents(); }

  MemorySettingsStore m_settings;
  FixedDesktopAppearance m_desktop;
  Look m_look{m_settings, m_desktop};
  ManualScheduler m_scheduler;
  std::unique_ptr<EditorRig> m_rig;
  std::unique_ptr<QWidget> m_canvas;
  CanvasCompanions* m_companions = nullptr;
};

}  // namespace quilmora::test
