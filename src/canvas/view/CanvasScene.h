#pragma once

#include <memory>
#include <optional>

#include <QColor>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QUuid>

#include "canvas/painting/MapPainter.h"
#include "canvas/painting/PartVisibility.h"
#include "canvas/painting/SceneDifference.h"
#include "canvas/view/CanvasState.h"
#include "canvas/view/CanvasTarget.h"
#include "canvas/view/ScenePicture.h"

class QPainter;

namespace quilmora {

class EditorNavigation;

// How a title is set, for the field laid over it.
struct TitleLook {
  QFont font;
  double pixelSize = 15.0;  // at zoom 1
  QColor color;

  bool operator==(const TitleLook&) const = default;
};

// The map as shown on the canvas: what is drawn, and what is where.
class CanvasScene final : public ScenePicture::Source {
 public:
  explicit CanvasScene(EditorNavigation& editor) : m_editor(editor) {}

  // Sets what to show from now on. Returns the parts that look different.
  ChangedParts follow(const ShownGestures& shown);
  void setPixelRatio(double ratio) { m_pixelRatio = ratio; }
  PaintSteps prepare(double zoom, const QRect& tiles) override;
  PaintSteps paint(QPainter& painter, double zoom, QPoint tile) override;
  // Paints what a gesture moves, which the tiles leave out, in device pixels of a view of this size. After a drag the
  // topics are shown this way until the tiles have caught up.
  void paintMoving(QPainter& painter, QSize pixels, const ViewTransform& view, bool haveTilesCaughtUp);
  // Paints the selection box, which is above everything else (view coordinates).
  void paintSelectionBox(QPainter& painter, const CanvasState& state) const;
  // Paints the response of the button or handle under the pointer, above the picture of the map (view coordinates).
  void paintPartState(QPainter& painter, const CanvasState& state);
  CanvasTarget targetAt(QPointF canvasPoint, const CanvasState& state);
  // Finds only buttons and handles; anything else is the background. Faster on a large map.
  CanvasTarget partAt(QPointF canvasPoint, const CanvasState& state);
  // The disc of a button or handle in canvas units; nothing if it is not shown.
  std::optional<QRectF> partRect(const CanvasTarget& part, const CanvasState& state);
  // The topic whose box or small parts contain the point, whatever handles are above it.
  std::optional<QUuid> topicAt(QPointF canvasPoint);
  // The area of an existing topic with its buttons and handles, in canvas units.
  QRectF topicBounds(const QUuid& nodeID);
  // Of an existing topic.
  TitleLook titleLook(const QUuid& nodeID);
  // The place of an existing topic's title field when it holds this text, in canvas units.
  QRectF titleField(const QUuid& nodeID, const QString& editedTitle);

  // Large pictures of topics are decoded on other threads, and `ready` is called when some of them are done.
  void decodePicturesInBackground(std::function<void()> ready) {
    m_painter.measurer().pictures().decodeInBackground(std::move(ready));
  }
  bool isDecodingPictures() const { return m_painter.measurer().pictures().isDecoding(); }

 private:
  // The current map, for hit tests; cheap if nothing changed.
  const MapScene& current(const ShownGestures& shown = {});
  bool isCurrent(const IdSet& selectedNodes, const IdSet& selectedEdges);
  // The scene to be shown, in this view.
  MapScene pictured(const ViewTransform& view, const QRectF& exposed) const;
  // The handle of a selected edge or relationship.
  std::optional<CanvasTarget> linkHandleAt(QPointF point, const CanvasState& state);
  std::optional<CanvasTarget> edgeHandleAt(QPointF point);
  std::optional<CanvasTarget> relationshipHandleAt(QPointF point, const CanvasState& state);
  // `measuresLeft` as in MapPainter::nodeAt.
  std::optional<CanvasTarget> nodePartAt(const MapScene& scene, QPointF point, std::size_t* measuresLeft = nullptr);
  std::optional<CanvasTarget> regionAt(QPointF point) const;
  std::optional<QPointF> shownPosition(const QUuid& nodeID);
  double handleDiameter(CanvasPart part) const;
  std::optional<QRectF> nodePartRect(const CanvasTarget& part, const CanvasState& state);
  std::optional<QRectF> edgeHandleRect(const CanvasTarget& part);
  std::optional<QRectF> relationshipHandleRect(const CanvasTarget& part);

  EditorNavigation& m_editor;
  MapScene m_current;
  MapScene m_pictured;
  double m_pixelRatio = 1.0;
  MapPainter m_painter;
  std::shared_ptr<ScenePlan> m_plan;
  SceneDifference m_difference;
};

}  // namespace quilmora
