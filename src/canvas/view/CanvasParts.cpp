#include "canvas/view/CanvasParts.h"

#include <QPainter>

#include "commands/CommandTable.h"
#include "platform/PlatformText.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

using Kind = CanvasTarget::Kind;

bool isPale(Kind kind) {
  return kind == Kind::relationshipDeleteButton || kind == Kind::regionResizeHandle;
}

// Dark colours get lighter when hovered and darker when pressed; pale ones only get darker.
QColor veil(Kind kind, PartState state, const QColor& ink) {
  const bool isPressed = state == PartState::pressed;
  if (kind == Kind::collapseToggle) return withOpacity(ink, isPressed ? 0.3 : 0.16);
  if (isPale(kind)) return withOpacity(Qt::black, isPressed ? 0.24 : 0.1);
  return isPressed ? withOpacity(Qt::black, 0.24) : withOpacity(Qt::white, 0.28);
}

QString branchToolTip(const QString& text, const QString& commandId) {
  return platformText(QStringLiteral("%1 (%2)").arg(text, findCommand(commandId)->key));
}

}  // namespace

void paintPartState(QPainter& painter, const QRectF& disc, CanvasTarget::Kind kind, PartState state,
                    const QColor& ink) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(veil(kind, state, ink));
  painter.drawEllipse(disc);
  painter.restore();
}

QString partToolTip(CanvasTarget::Kind kind, bool isCollapsed) {
  switch (kind) {
    case Kind::collapseToggle:
      return isCollapsed ? branchToolTip(QStringLiteral("Expand Branch"), QStringLiteral("expandNode"))
                         : branchToolTip(QStringLiteral("Collapse Branch"), QStringLiteral("collapseNode"));
    case Kind::connectionHandle:
      return QStringLiteral("Add Sub-topic (Tab)\nDrag to connect");
    case Kind::edgeSourceHandle:
    case Kind::edgeTargetHandle:
      return QStringLiteral("Drag to another topic");
    case Kind::edgeBendHandle:
    case Kind::relationshipBendHandle:
      return QStringLiteral("Drag to bend");
    case Kind::relationshipDeleteButton:
      return QStringLiteral("Delete Relationship");
    case Kind::regionResizeHandle:
      return QStringLiteral("Drag to resize");
    default:
      return {};
  }
}

}  // namespace quilmora
