#pragma once

#include <memory>
#include <optional>

#include "app/companions/Card.h"
#include "app/companions/MiniMapPicture.h"
#include "platform/Scheduler.h"

namespace quilmora {

class IconButton;
class EditorState;

// An overview of the map with a rectangle for the part that the canvas shows. A click or drag in it moves the canvas
// there. Redrawn when the map changes: a small map at once, a large one a little later and in pieces, while the old
// picture stays.
class MiniMapView : public Card {
  Q_OBJECT

 public:
  // The scheduler must outlive the view.
  MiniMapView(const Look& look, EditorState& editor, Scheduler& scheduler, QWidget* canvas);
  ~MiniMapView() override;

  QSizeF canvasSize() const { return m_canvasSize; }
  void setCanvasSize(QSizeF size);
  QSizeF miniMapSize() const;
  // Of the picture shown; nothing if there is none.
  std::optional<MiniMapGeometry> geometry() const;
  // The rectangle of the overview in the card, below the strip for dragging the card.
  QRectF mapRect() const;
  // Whether the picture shown is that of the current map.
  bool isCurrent() const { return m_drawnGeneration.has_value(); }

  // When folded, it is a button that unfolds it.
  bool isFolded() const { return m_isFolded; }
  void setFolded(bool folded);
  IconButton& foldButton() const { return *m_foldButton; }
  IconButton& unfoldButton() const { return *m_unfoldButton; }

  QSize wantedSize(QSize room) override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }

 private:
  QColor ink() const;
  void mapChanged();
  void schedule(std::chrono::milliseconds delay, void (MiniMapView::*work)());
  void begin();
  void advance();
  void moveCanvasTo(QPointF point);
  QPointF toMiniMap(QPointF point, const MiniMapGeometry& geometry) const;
  // The finished picture, or the very first one while it is being drawn.
  const MiniMapPicture* shownPicture() const { return m_picture ? m_picture.get() : m_growing.get(); }

  EditorState& m_editor;
  Scheduler& m_scheduler;
  IconButton* m_foldButton;
  IconButton* m_unfoldButton;
  bool m_isFolded = false;
  QSizeF m_canvasSize;
  std::unique_ptr<MiniMapPicture> m_picture;
  std::unique_ptr<MiniMapPicture> m_growing;
  quint64 m_growingGeneration = 0;
  std::optional<quint64> m_drawnGeneration;
  Scheduler::Task m_task = 0;
  bool m_isRefreshPending = false;
  bool m_isPanning = false;
};

}  // namespace quilmora
