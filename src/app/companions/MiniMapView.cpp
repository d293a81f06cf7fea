#include "app/companions/MiniMapView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "app/look/Widgets.h"
#include "canvas/painting/CanvasColors.h"
#include "editor/EditorState.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

using namespace std::chrono_literals;

constexpr QSize overviewSize(180, 120);
constexpr int stripHeight = 14;
constexpr QSize foldButtonSize(18, 12);
constexpr QSize foldButtonIcon(8, 8);
constexpr double groundOpacity = 0.85;
// How many topics and edges are drawn at a time, which takes a few milliseconds at most.
constexpr std::size_t countAtOnce = 1200;
constexpr auto quietTime = 150ms;
constexpr auto pause = 4ms;

const QColor gray(0x8E, 0x8E, 0x93);

}  // namespace

MiniMapView::MiniMapView(const Look& look, EditorState& editor, Scheduler& scheduler, QWidget* canvas)
    : Card(look, canvas),
      m_editor(editor),
      m_scheduler(scheduler),
      m_foldButton(new IconButton(look, QStringLiteral("xmark"), tr("Hide Mini-Map"), this)),
      m_unfoldButton(new IconButton(look, QStringLiteral("map"), tr("Show Mini-Map"), this)) {
  setAccessibleName(tr("Mini-map"));
  m_foldButton->setFixedSize(foldButtonSize);
  m_foldButton->setIconSize(foldButtonIcon);
  m_foldButton->move(overviewSize.width() - foldButtonSize.width() - 2, 1);
  m_unfoldButton->hide();
  for (IconButton* button : {m_foldButton, m_unfoldButton}) {
    button->setFocusPolicy(Qt::NoFocus);
    button->setCursor(Qt::ArrowCursor);
    connect(button, &IconButton::clicked, this, [this, button] { setFolded(button == m_foldButton); });
  }
  setMovable();
  setMouseTracking(true);
  setGroundOpacity(groundOpacity);
  setContour(withOpacity(gray, 0.3));
  connect(&editor, &EditorState::mindMapChanged, this, &MiniMapView::mapChanged);
  connect(&editor, &EditorState::canvasOffsetChanged, this, [this] { update(); });
  connect(&editor, &EditorState::canvasZoomChanged, this, [this] { update(); });
  connect(&look, &Look::changed, this, &MiniMapView::mapChanged);
  mapChanged();
}

MiniMapView::~MiniMapView() {
  m_scheduler.cancel(m_task);
}

void MiniMapView::setCanvasSize(QSizeF size) {
  m_canvasSize = size;
  update();
}

QSizeF MiniMapView::miniMapSize() const {
  return overviewSize;
}

QRectF MiniMapView::mapRect() const {
  return QRectF(QPointF(0, stripHeight), QSizeF(overviewSize));
}

QSize MiniMapView::wantedSize(QSize) {
  return m_isFolded ? m_unfoldButton->size() : overviewSize + QSize(0, stripHeight);
}

void MiniMapView::setFolded(bool folded) {
  if (m_isFolded == folded) return;
  m_isFolded = folded;
  setMovable(folded ? Grip::none : Grip::shown);
  m_foldButton->setVisible(!folded);
  m_unfoldButton->setVisible(folded);
  Q_EMIT placementWanted();
  if (folded)
    setGround(std::nullopt);
  else
    mapChanged();
}

// The overview shows the canvas, so it uses the canvas's background and blue.
QColor MiniMapView::ink() const {
  return CanvasColors::onBackground(colorFromHex(m_editor.mindMap().canvas.background)).selection;
}

std::optional<MiniMapGeometry> MiniMapView::geometry() const {
  const MiniMapPicture* picture = shownPicture();
  return picture ? std::optional(picture->geometry()) : std::nullopt;
}

void MiniMapView::mapChanged() {
  m_drawnGeneration.reset();
  if (m_isFolded) return;
  const MindMap& map = m_editor.mindMap();
  setGround(colorFromHex(map.canvas.background), stripHeight);
  const bool isLarge = map.nodes.size() + map.edges.size() > countAtOnce;
  if (isLarge) {
    schedule(quietTime, &MiniMapView::begin);
    return;
  }
  m_scheduler.cancel(std::exchange(m_task, 0));
  runSoon(m_isRefreshPending, [this] {
    if (!isCurrent()) begin();
  });
}

void MiniMapView::schedule(std::chrono::milliseconds delay, void (MiniMapView::*work)()) {
  m_scheduler.cancel(m_task);
  m_task = m_scheduler.after(delay, [this, work] {
    m_task = 0;
    (this->*work)();
  });
}

void MiniMapView::begin() {
  const auto geometry = MiniMapGeometry::of(m_editor.mapIndex().positions(), miniMapSize());
  m_growing.reset();
  m_growingGeneration = m_editor.treeGeneration();
  if (!geometry) {
    m_picture.reset();
    m_drawnGeneration = m_growingGeneration;
    update();
    return;
  }
  m_growing =
      std::make_unique<MiniMapPicture>(*geometry, miniMapSize(), devicePixelRatioF(), withOpacity(gray, 0.3), ink());
  advance();
}

void MiniMapView::advance() {
  // Another change has restarted the drawing.
  if (!m_growing || m_growingGeneration != m_editor.treeGeneration()) return;
  if (m_growing->advance(m_editor.mapIndex(), countAtOnce)) {
    m_picture = std::move(m_growing);
    m_drawnGeneration = m_growingGeneration;
    update();
    return;
  }
  if (!m_picture) update();
  schedule(pause, &MiniMapView::advance);
}

void MiniMapView::paintEvent(QPaintEvent* event) {
  Card::paintEvent(event);
  const MiniMapPicture* picture = shownPicture();
  if (!picture || m_isFolded) return;
  if (picture->image().devicePixelRatio() != devicePixelRatioF() && isCurrent()) mapChanged();
  QPainter painter(this);
  const paint::Scope scope(&painter);
  QPainterPath inside;
  inside.addRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), metrics::cardRadius - 1, metrics::cardRadius - 1);
  painter.setClipPath(inside);
  painter.setClipRect(mapRect(), Qt::IntersectClip);
  painter.drawImage(mapRect().topLeft(), picture->image());
  const MiniMapGeometry& geometry = picture->geometry();
  const QRectF viewport = geometry.viewport(m_editor.canvasOffset(), m_editor.canvasZoom(), m_canvasSize)
                              .translated(geometry.inset() + mapRect().topLeft());
  // Lines far outside would only cost time.
  const QRectF shown = viewport.intersected(mapRect().adjusted(-10, -10, 10, 10));
  const QColor blue = ink();
  painter.fillRect(shown, withOpacity(blue, 0.05));
  painter.setPen(QPen(withOpacity(blue, 0.6), 1.0));
  painter.drawRect(shown);
}

QPointF MiniMapView::toMiniMap(QPointF point, const MiniMapGeometry& geometry) const {
  return point - mapRect().topLeft() - geometry.inset();
}

void MiniMapView::moveCanvasTo(QPointF point) {
  if (const auto shown = geometry())
    m_editor.setCanvasOffset(shown->offsetCentring(toMiniMap(point, *shown), m_editor.canvasZoom(), m_canvasSize));
}

void MiniMapView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || m_isFolded || !mapRect().contains(event->position())) {
    Card::mousePressEvent(event);
    return;
  }
  event->accept();
  m_isPanning = true;
  moveCanvasTo(event->position());
}

void MiniMapView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) {
    m_isPanning = false;
    setCursor(mapRect().contains(event->position()) ? Qt::ArrowCursor : Qt::OpenHandCursor);
  }
  if (!m_isPanning) {
    Card::mouseMoveEvent(event);
    return;
  }
  event->accept();
  moveCanvasTo(event->position());
}

void MiniMapView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) m_isPanning = false;
  Card::mouseReleaseEvent(event);
}

}  // namespace quilmora
