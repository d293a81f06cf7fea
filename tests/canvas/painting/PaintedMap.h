#pragma once

#include <vector>

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include "canvas/painting/MapPainter.h"
#include "model/MindMap.h"

namespace quilmora {

inline const QColor white(0xFFFFFF);

// A small map and what painting it needs, for tests that look at pixels.
struct PaintedMap {
  MindMap map;
  std::vector<char> hidden;
  IdSet selectedNodes;
  IdSet selectedEdges;
  IdSet collapsed;
  MapScene scene;
  PaintOptions options;
  MapPainter painter;

  PaintedMap() {
    map.canvas.background = QStringLiteral("#FFFFFF");
    map.hierarchical.edgeSizing = false;
  }

  QUuid addNode(QPointF position, const QString& title = {}, const char* fill = "#4080C0",
                const char* stroke = "#203040") {
    Node node;
    node.id = QUuid::createUuid();
    node.title = title;
    node.position = position;
    node.style = NodeStyle::defaultStyle();
    node.style.fill = QString::fromLatin1(fill);
    node.style.stroke = QString::fromLatin1(stroke);
    map.nodes.append(node);
    return node.id;
  }
  QUuid addEdge(const QUuid& from, const QUuid& to, const char* color = "#FF0000", double width = 10.0) {
    Edge edge;
    edge.id = QUuid::createUuid();
    edge.from = from;
    edge.to = to;
    edge.style = EdgeStyle::defaultStyle();
    edge.style.color = QString::fromLatin1(color);
    edge.style.taper = {width, width, EdgeStyle::TaperEasing::linear};
    map.edges.append(edge);
    return edge.id;
  }
  template <class Change>
  void changeNode(std::size_t index, Change&& change) {
    map.nodes.update(index, change);
  }
  template <class Change>
  void changeEdge(std::size_t index, Change&& change) {
    map.edges.update(index, change);
  }

  // Updates the scene.
  void refresh() {
    hidden.resize(map.nodes.size(), 0);
    scene.map = map;
    scene.index.update(map.nodes, map.edges);
    scene.tree = TreeInfo(scene.index);
    if (*scene.hiddenNodes != hidden) scene.hiddenNodes = SharedValue(hidden);
    scene.selectedNodeIDs = selectedNodes;
    scene.selectedEdgeIDs = selectedEdges;
    scene.collapsedNodeIDs = collapsed;
  }

  // A picture of the view with the canvas point (0, 0) in its middle.
  QImage paint(QSize size = QSize(400, 300), double ratio = 1.0, double zoom = 1.0) {
    refresh();
    m_ratio = ratio;
    m_zoom = zoom;
    m_size = size;
    QImage image(QSizeF(size.width() * ratio, size.height() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::black);
    scene.exposed = QRectF(QPointF(0, 0), QSizeF(size));
    scene.view = {QPointF(size.width() / 2.0, size.height() / 2.0), zoom};
    QPainter qPainter(&image);
    painter.paint(qPainter, scene, options);
    qPainter.end();
    return image;
  }

  // The colour of the last picture at a canvas point.
  QColor at(const QImage& image, QPointF canvasPoint) const {
    const QPointF pixel = (canvasPoint * m_zoom + QPointF(m_size.width() / 2.0, m_size.height() / 2.0)) * m_ratio;
    return image.pixelColor(static_cast<int>(std::floor(pixel.x())), static_cast<int>(std::floor(pixel.y())));
  }

  NodeMetrics metrics(std::size_t index) {
    refresh();
    return painter.measure(scene, index, options);
  }

 private:
  double m_ratio = 1.0;
  double m_zoom = 1.0;
  QSize m_size;
};

inline QString pngData(const QImage& image) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return QString::fromLatin1(bytes.toBase64());
}

inline int colorDistance(const QColor& a, const QColor& b) {
  return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
}

}  // namespace quilmora
