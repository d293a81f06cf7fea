#pragma once

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QUuid>

#include "canvas/view/CanvasState.h"
#include "canvas/view/CanvasTarget.h"

class QPainter;

namespace quilmora {

class MindMapViewModel;

// How a title is set, for the field that is laid over it.
struct TitleLook {
  QFont font;
  double pixelSize = 15.0;
  QColor color;

  bool operator==(const TitleLook&) const = default;
};

// The map as it stands on the canvas: what is drawn of it and what lies where.
class CanvasScene {
 public:
  explicit CanvasScene(MindMapViewModel& editor) : m_editor(editor) {}

  // Paints the part of the view that `exposed` covers (view coordinates). `titleField` is the size of the open title
  // field.
  void paint(QPainter& painter, const QRectF& exposed, const CanvasState& state, QSizeF titleField);
  CanvasTarget targetAt(QPointF canvasPoint, const CanvasState& state);
  TitleLook titleLook(const QUuid& nodeID);
  // Where a title field of this size lies in its topic, in canvas units.
  QRectF titleField(const QUuid& nodeID, QSizeF size);

 private:
  MindMapViewModel& m_editor;
};

}  // namespace quilmora
