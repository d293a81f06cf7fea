#pragma once

#include <optional>

#include <QPointF>
#include <QSizeF>
#include <QUuid>

#include "canvas/painting/ShownGestures.h"
#include "canvas/view/CanvasTarget.h"
#include "platform/Clock.h"

namespace quilmora {

enum class EdgeEndpoint { source, target };

// What gestures show above the picture of the map, drawn at each frame.
struct GesturesAbove {
  std::optional<QPointF> selectionBoxStart;  // view coordinates
  std::optional<QPointF> selectionBoxCurrent;
  bool isPanning = false;
  bool isOptionHeld = false;
  std::optional<CanvasTarget> hoveredPart;  // the button or handle under the pointer while nothing is pressed
  std::optional<CanvasTarget> pressedPart;  // the one held down with the pointer still on it

  bool operator==(const GesturesAbove&) const = default;
};

// What is only remembered between two inputs.
struct GesturesMemory {
  std::optional<QUuid> draggedNodeID;
  double initialZoom = 1.0;  // the zoom that a pinch starts from
  bool hasAppearedOnce = false;
  QPointF panStartOffset;
  QSizeF canvasSize;
  std::optional<QUuid> lastTapNodeID;
  SteadyPoint lastTapTime;
  std::optional<QUuid> draggingEdgeID;
  std::optional<EdgeEndpoint> draggingEdgeEndpoint;
  std::optional<QPointF> edgeDragPosition;  // canvas units

  bool operator==(const GesturesMemory&) const = default;
};

// All state that gestures keep on the canvas. None of it reaches the document.
struct CanvasState : ShownGestures, GesturesAbove, GesturesMemory {
  const ShownGestures& shown() const { return *this; }

  bool operator==(const CanvasState&) const = default;
};

}  // namespace quilmora
