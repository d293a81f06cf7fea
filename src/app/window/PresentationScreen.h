#pragma once

#include <QObject>

#include "platform/Scheduler.h"

class QMainWindow;

namespace quilmora {

class MindMapViewModel;
class WindowContent;

// Fills the screen with the map alone during a presentation, and restores everything afterwards. Nothing of it is
// stored in the settings. Everything must outlive it.
class PresentationScreen : public QObject {
  Q_OBJECT

 public:
  PresentationScreen(QMainWindow& window, WindowContent& content, QWidget& canvas, MindMapViewModel& editor,
                     Scheduler& scheduler);
  ~PresentationScreen() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void follow();
  void canvasResized(QSize size);

  QMainWindow& m_window;
  WindowContent& m_content;
  QWidget& m_canvas;
  MindMapViewModel& m_editor;
  Scheduler& m_scheduler;
  bool m_isPresenting = false;
  bool m_wasFullScreen = false;
  // The desktop restores the window's size a moment after the presentation; the map is fitted to that too.
  Scheduler::Task m_settling = 0;
};

}  // namespace quilmora
