#include "app/window/PresentationScreen.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QResizeEvent>

#include "app/window/WindowContent.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

constexpr std::chrono::milliseconds settlingTime{800};

}  // namespace

PresentationScreen::PresentationScreen(QMainWindow& window, WindowContent& content, QWidget& canvas,
                                       MindMapViewModel& editor, Scheduler& scheduler)
    : m_window(window), m_content(content), m_canvas(canvas), m_editor(editor), m_scheduler(scheduler) {
  connect(&editor, &MindMapViewModel::isPresentationModeChanged, this, &PresentationScreen::follow);
  canvas.installEventFilter(this);
}

PresentationScreen::~PresentationScreen() {
  m_scheduler.cancel(m_settling);
}

void PresentationScreen::follow() {
  if (m_isPresenting == m_editor.isPresentationMode()) return;
  m_isPresenting = m_editor.isPresentationMode();
  m_scheduler.cancel(std::exchange(m_settling, 0));
  if (m_isPresenting) {
    m_wasFullScreen = m_window.isFullScreen();
    m_canvas.setFocus(Qt::OtherFocusReason);
  } else {
    m_settling = m_scheduler.after(settlingTime, [this] { m_settling = 0; });
  }
  m_window.menuBar()->setVisible(!m_isPresenting);
  m_content.setBare(m_isPresenting);
  m_window.setWindowState(m_isPresenting || m_wasFullScreen ? m_window.windowState() | Qt::WindowFullScreen
                                                            : m_window.windowState() & ~Qt::WindowFullScreen);
}

void PresentationScreen::canvasResized(QSize size) {
  const auto node = m_editor.currentPresentationNode();
  if (node)
    m_editor.centerOn(*node, size.width(), size.height(), false);
  else if (m_settling != 0)
    m_editor.fitToContent(size.width(), size.height(), MindMapViewModel::fitPadding);
}

bool PresentationScreen::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &m_canvas && event->type() == QEvent::Resize) canvasResized(static_cast<QResizeEvent*>(event)->size());
  return QObject::eventFilter(watched, event);
}

}  // namespace quilmora
