#pragma once

#include <memory>
#include <vector>

#include <QWidget>

#include "canvas/view/CanvasGestures.h"
#include "canvas/view/CanvasKeys.h"
#include "canvas/view/CanvasMenus.h"
#include "canvas/view/CanvasScene.h"
#include "canvas/view/LayoutNotificationReceivers.h"
#include "canvas/view/ScenePicture.h"
#include "canvas/view/TopicReveal.h"
#include "canvas/view/ViewAnimation.h"
#include "editor/journal/OpenText.h"
#include "platform/Clock.h"
#include "platform/Notifications.h"

class QHelpEvent;
class QNativeGestureEvent;
class QPinchGesture;

namespace quilmora {

class MindMapViewModel;
class RegionLabelField;
class Scheduler;
class TitleEditor;
class WindowCommands;

// The widget on which the map is edited. Paints the state of the editor and the gestures, translates the toolkit's
// events into plain values for CanvasGestures and CanvasKeys, and receives the notifications meant for the canvas.
// Everything passed to it must outlive it.
class CanvasView : public QWidget {
  Q_OBJECT

 public:
  // The clock is for double taps and animations.
  CanvasView(MindMapViewModel& editor, WindowCommands& commands, NotificationCenter& notifications,
             Scheduler& scheduler, const Clock& clock, QWidget* parent = nullptr);
  ~CanvasView() override;

  const CanvasGestures& gestures() const { return m_gestures; }
  bool isAnimating() const { return m_animation.isRunning(); }
  // The open title field, or nullptr.
  TitleEditor* titleEditor() const { return m_titleEditor; }
  // The open field of a region's label, or nullptr.
  RegionLabelField* labelField() const { return m_labelField; }
  // Sets the title or label being edited, as leaving the field does. Call before saving or quitting.
  void commitTitleEdit();
  // The text of the open field, if the map does not have it yet.
  std::optional<OpenText> openText() const;
  // `areas` returns the parts of the view below cards, so that new topics are not shown there.
  void setCoveredAreas(std::function<std::vector<QRect>()> areas) { m_coveredAreas = std::move(areas); }
  // Moves the view by as little as necessary for the topic to be visible and below nothing.
  void bringIntoSight(const QUuid& nodeID) { m_reveal.reveal({nodeID}); }
  // Whether automatic moves of the view are animated; otherwise they are immediate.
  void setGlides(bool glides) { m_glides = glides; }
  // Adds to the menu of each topic.
  void setTopicEntries(std::vector<CanvasMenus::TopicEntry> entries) { m_menus.setTopicEntries(std::move(entries)); }
  // Makes the next frame repaint everything.
  void forgetPicture() { m_picture.markAllStale(); }
  // Makes every frame complete, as if painting took no time; for tests.
  void assumeQuickPainting();
  // Limits every slice of painting to this many steps; for tests.
  void assumeSlices(int steps);
  // Whether the last frame showed every detail.
  bool isPictureSettled() const { return m_picture.isSettled() && !m_scene.isDecodingPictures(); }
  QSize minimumSizeHint() const override { return {400, 300}; }
  QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 Q_SIGNALS:
  // openText() may have changed.
  void openTextChanged();
  // The user wants to choose an image for the topic.
  void imageWanted(const QUuid& nodeID);
  // A file was dropped on the topic; it may not be an image.
  void imageDropped(const QUuid& nodeID, const QString& path);

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void childEvent(QChildEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  // For a title field that does not have the keyboard yet, or that opens for it.
  void inputMethodEvent(QInputMethodEvent* event) override;
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
  void showPartToolTip(const QHelpEvent& event);
  void gesturesChanged();
  void viewMoved();
  // Marks what has become stale since the last frame.
  void followScene();
  void mapChanged();
  void openTitleEditor(const QUuid& nodeID);
  void closeTitleEditor();
  void placeTitleEditor();

  // --- Keys and input methods (CanvasViewKeys.cpp) ---

  bool pressKey(const QKeyEvent& event);
  bool pressArrowOrCommand(const QKeyEvent& event);
  // Whether letters typed now would open the title of the selected topic.
  bool takesLetters() const;
  bool beginTyping();
  void followInputMethod();

  // --- Menus, image files, labels of regions (CanvasViewMenus.cpp) ---

  // For whatever is at the point, in view coordinates. Returns whether there is a menu.
  bool openMenuAt(QPoint position);
  // For the selection.
  bool openMenuOfSelection();
  bool popUp(QMenu* menu, QPoint position);
  CanvasTarget targetAt(QPointF position);
  std::optional<QUuid> topicAt(QPointF position);
  void followLabelEditing();
  void openLabelField(const QUuid& regionID);
  void closeLabelField();
  void placeLabelField();
  void takeKeyboardFrom(QWidget& field);

  MindMapViewModel& m_editor;
  WindowCommands& m_commands;
  Scheduler& m_scheduler;
  CanvasScene m_scene;
  ScenePicture m_picture;
  CanvasGestures m_gestures;
  CanvasKeys m_keys;
  LayoutNotificationReceivers m_layoutReceivers;
  ViewAnimation m_animation;
  std::function<std::vector<QRect>()> m_coveredAreas = [] { return std::vector<QRect>(); };
  bool m_glides = true;
  TopicReveal m_reveal;
  std::vector<NotificationCenter::Subscription> m_subscriptions;
  TitleEditor* m_titleEditor = nullptr;
  std::optional<QUuid> m_titleEditorNodeID;
  CanvasMenus m_menus;
  RegionLabelField* m_labelField = nullptr;
  std::optional<QUuid> m_labelFieldRegionID;
  double m_nativeMagnification = 1.0;
};

}  // namespace quilmora
