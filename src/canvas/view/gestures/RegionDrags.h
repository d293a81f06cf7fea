#pragma once

#include "canvas/view/CanvasGesture.h"

namespace quilmora {

// How far the pointer has moved since a press, in view pixels. If the canvas was panned or zoomed meanwhile, the place
// of the press has moved along.
class ViewTranslation {
 public:
  // `start` is where the button was pressed, in view coordinates.
  ViewTranslation(const MindMapViewModel& editor, QPointF start);
  QPointF to(QPointF position) const;
  // The same in canvas units, even at a zoom of almost zero.
  QSizeF scaledTo(QPointF position) const;

 private:
  ViewTransform view() const { return {m_editor.canvasOffset(), m_editor.canvasZoom()}; }

  const MindMapViewModel& m_editor;
  QPointF m_start;
  ViewTransform m_startView;
};

// Moves a region, but nothing that is on it.
class RegionMoveDrag final : public CanvasGesture {
 public:
  static constexpr double minimumDistance = 3.0;  // view pixels

  RegionMoveDrag(GestureContext context, const QUuid& regionID, QPointF start);
  ~RegionMoveDrag() override;

  void change(const PointerInput& input) override;
  void end(const PointerInput& input) override;

 private:
  QUuid m_regionID;
  ViewTranslation m_translation;
};

// Resizes a region by its bottom right corner.
class RegionResizeDrag final : public CanvasGesture {
 public:
  static constexpr double minimumDistance = 2.0;  // view pixels

  RegionResizeDrag(GestureContext context, const QUuid& regionID, QPointF start);
  ~RegionResizeDrag() override;

  void change(const PointerInput& input) override;
  void end(const PointerInput& input) override;

 private:
  QUuid m_regionID;
  ViewTranslation m_translation;
};

}  // namespace quilmora
