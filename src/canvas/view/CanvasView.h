#pragma once

#include <memory>
#include <vector>

#include <QWidget>

#include "canvas/view/CanvasGestures.h"
#include "canvas/view/CanvasKeys.h"
#include "canvas/view/CanvasScene.h"
#include "canvas/view/LayoutNotificationReceivers.h"
#include "canvas/view/ScenePicture.h"
#include "canvas/view/ViewAnimation.h"
#include "platform/Clock.h"
#include "platform/Notifications.h"

class QNativeGestureEvent;
class QPinchGesture;

namespace quilmora {

class MindMapViewModel;
class Scheduler;
class TitleEditor;
class WindowCommands;

// The surface on which the map is edited. Paints what the editor and the gestures hold, translates the toolkit's events
// into plain values for CanvasGestures and CanvasKeys, and receives the notifications that are meant for the canvas.
// Everything that it is given outlives it.
class CanvasView : public QWidget {
  Q_OBJECT

 public:
  CanvasView(MindMapViewModel& editor, WindowCommands& commands, NotificationCenter& notifications,
             Scheduler& scheduler, QWidget* parent = nullptr);
  // With a clock for double taps and animations.
  CanvasView(MindMapViewModel& editor, WindowCommands& commands, NotificationCenter& notifications,
             Scheduler& scheduler, const Clock& clock, QWidget* parent = nullptr);
  ~CanvasView() override;

  const CanvasGestures& gestures() const { return m_gestures; }
  bool isAnimating() const { return m_animation.isRunning(); }
  // The open title field, or nullptr.
  TitleEditor* titleEditor() const { return m_titleEditor; }
  // Stores the title that is being edited, as leaving the field does. For those who are about to save or to quit.
  void commitTitleEdit();
  QSize minimumSizeHint() const override { return {400, 300}; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void observeEditor();
  void receiveNotifications(NotificationCenter& notifications);
  void zoomToFit();
  void createRegion();
  bool nativeGesture(const QNativeGestureEvent& event);
  void pinchGesture(const QPinchGesture& pinch);
  bool pressKey(const QKeyEvent& event);
  void gesturesChanged();
  void viewMoved();
  void sceneChanged();
  void mapChanged();
  void openTitleEditor(const QUuid& nodeID);
  void closeTitleEditor();
  void placeTitleEditor();

  MindMapViewModel& m_editor;
  WindowCommands& m_commands;
  Scheduler& m_scheduler;
  CanvasScene m_scene;
  ScenePicture m_picture;
  // What of the gestures and of the map is in the picture.
  struct Pictured {
    CanvasState state;
    std::optional<QString> editedTitle;
    quint64 treeGeneration = 0;

    bool operator==(const Pictured&) const = default;
  } m_pictured;
  CanvasGestures m_gestures;
  CanvasKeys m_keys;
  LayoutNotificationReceivers m_layoutReceivers;
  ViewAnimation m_animation;
  std::vector<NotificationCenter::Subscription> m_subscriptions;
  TitleEditor* m_titleEditor = nullptr;
  std::optional<QUuid> m_titleEditorNodeID;
  double m_nativeMagnification = 1.0;
};

}  // namespace quilmora
