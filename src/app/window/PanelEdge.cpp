#include "app/window/PanelEdge.h"

#include <algorithm>
#include <utility>

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"

namespace quilmora {

namespace {

// A splitter whose value is its place.
class EdgeInterface final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit EdgeInterface(PanelEdge* edge) : QAccessibleWidget(edge, QAccessible::Splitter) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QVariant currentValue() const override { return edge().range().now; }
  void setCurrentValue(const QVariant& value) override { edge().moveTo(value.toInt()); }
  QVariant minimumValue() const override { return edge().range().least; }
  QVariant maximumValue() const override { return edge().range().most; }
  QVariant minimumStepSize() const override { return PanelEdge::step; }

 private:
  PanelEdge& edge() const { return *static_cast<PanelEdge*>(widget()); }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* edge = qobject_cast<PanelEdge*>(object);
  return edge == nullptr ? nullptr : new EdgeInterface(edge);
}

}  // namespace

PanelEdge::PanelEdge(const Look& look, QWidget* parent) : QWidget(parent), m_look(look) {
  static const bool isInstalled = [] {
    QAccessible::installFactory(makeInterface);
    return true;
  }();
  Q_UNUSED(isInstalled)
  setCursor(Qt::SplitHCursor);
  setFocusPolicy(Qt::TabFocus);
  setAccessibleName(tr("Edge of the sidebar"));
  connect(&look, &Look::changed, this, [this] { update(); });
}

void PanelEdge::setRange(const Range& range) {
  const Range before = std::exchange(m_range, range);
  if (before.now == range.now) return;
  QAccessibleValueChangeEvent event(this, range.now);
  QAccessible::updateAccessibility(&event);
}

void PanelEdge::moveTo(int x) {
  const int place = std::clamp(x, m_range.least, std::max(m_range.least, m_range.most));
  if (place != m_range.now) Q_EMIT dragged(place);
}

void PanelEdge::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) m_hold = event->position().toPoint().x() - thickness / 2;
}

void PanelEdge::mouseMoveEvent(QMouseEvent* event) {
  if (m_hold) Q_EMIT dragged(mapToParent(event->position().toPoint()).x() - *m_hold);
}

void PanelEdge::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (const auto hold = std::exchange(m_hold, std::nullopt))
    Q_EMIT dropped(mapToParent(event->position().toPoint()).x() - *hold);
}

void PanelEdge::mouseDoubleClickEvent(QMouseEvent*) {
  Q_EMIT resetWanted();
}

// Up and Down stop here too: pressed on the edge, they are not meant for topics.
void PanelEdge::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      moveTo(m_range.now - step);
      break;
    case Qt::Key_Right:
      moveTo(m_range.now + step);
      break;
    case Qt::Key_Home:
      moveTo(m_range.least);
      break;
    case Qt::Key_End:
      moveTo(m_range.most);
      break;
    case Qt::Key_Up:
    case Qt::Key_Down:
      break;
    default:
      QWidget::keyPressEvent(event);
      return;
  }
  event->accept();
}

void PanelEdge::paintEvent(QPaintEvent*) {
  QStyleOption option;
  option.initFrom(this);
  if (!showsKeyboardFocus(option)) return;
  QPainter painter(this);
  QRectF line(0, 0, metrics::focusRingWidth, height());
  line.moveCenter(QRectF(rect()).center());
  painter.fillRect(line, m_look.tokens().accent);
}

}  // namespace quilmora
