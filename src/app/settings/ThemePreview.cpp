#include "app/settings/ThemePreview.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>

#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "editor/edits/StyleEdits.h"
#include "model/NewId.h"

namespace quilmora {

namespace {

constexpr int previewHeight = 168;
constexpr int padding = metrics::gapLarge;
// Beyond this the topics would be too small to tell apart.
constexpr int maxDepths = 12;
constexpr QSizeF step(118, 46);

Node topic(const QString& title, QPointF position) {
  Node node;
  node.id = newId();
  node.title = title;
  node.position = position;
  node.style = NodeStyle::defaultStyle();
  return node;
}

Edge connector(const Node& from, const Node& to) {
  Edge edge;
  edge.id = newId();
  edge.from = from.id;
  edge.to = to.id;
  edge.style = EdgeStyle::defaultStyle();
  return edge;
}

PaintOptions previewOptions() {
  PaintOptions options;
  options.selection = false;
  options.depthSizing = false;
  options.collapseToggles = false;
  return options;
}

QString titleAt(int depth) {
  return depth == 0 ? ThemePreview::tr("Root Topic") : ThemePreview::tr("Level %1").arg(depth);
}

}  // namespace

MindMap previewMap(int depthCount) {
  MindMap map;
  Node parent = topic(titleAt(0), {});
  map.nodes.append(parent);
  const int depths = std::clamp(depthCount, 2, maxDepths);
  for (int depth = 1; depth < depths; ++depth) {
    // The path turns up and down alternately, so that a long one stays in view.
    const double side = depth % 2 == 0 ? 1 : -1;
    const double x = depth * step.width();
    const Node next = topic(titleAt(depth), {x, parent.position.y() + side * step.height() / 2});
    const Node other = topic(titleAt(depth), {x, parent.position.y() - side * step.height() / 2});
    map.nodes.append(next);
    map.nodes.append(other);
    map.edges.append(connector(parent, next));
    map.edges.append(connector(parent, other));
    parent = next;
  }
  return map;
}

ThemePreview::ThemePreview(const Look& look, QWidget* parent) : QWidget(parent), m_look(look) {
  setFixedHeight(previewHeight);
  setAccessibleName(tr("Preview"));
  connect(&look, &Look::changed, this, [this] { update(); });
}

void ThemePreview::setTheme(const Theme& theme) {
  MindMap map = previewMap(static_cast<int>(theme.nodeColors.size()));
  m_scene.index = MapIndex(map.nodes, map.edges);
  m_scene.tree = TreeInfo(m_scene.index);
  map.canvas.background = theme.background;
  edits::recolorByTheme(map, theme, m_scene.tree, m_scene.index);
  m_scene.index.adopt(map.nodes, map.edges);
  m_scene.map = map;
  update();
}

QRectF ThemePreview::contentBounds() {
  QRectF bounds;
  for (std::size_t index = 0; index < m_scene.map.nodes.size(); ++index) {
    const QPointF center = m_scene.map.nodes[index].position;
    bounds |= m_painter.measure(m_scene, index, previewOptions()).box.translated(center);
  }
  return bounds;
}

void ThemePreview::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QRectF bounds = contentBounds();
  const QSizeF room = QSizeF(size()) - QSizeF(2 * padding, 2 * padding);
  const double zoom = std::min({1.0, room.width() / bounds.width(), room.height() / bounds.height()});
  m_scene.view = {QRectF(rect()).center() - bounds.center() * zoom, zoom};
  m_scene.exposed = rect();
  m_scene.pixelRatio = 1.0;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  QPainterPath shape;
  shape.addRoundedRect(rect(), metrics::cardRadius, metrics::cardRadius);
  painter.setClipPath(shape);
  m_painter.paint(painter, m_scene, previewOptions());
  painter.restore();
  paint::drawBorder(painter, rect(), metrics::cardRadius, m_look.tokens().hairline);
}

}  // namespace quilmora
