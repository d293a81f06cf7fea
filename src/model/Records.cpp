#include "model/Records.h"

namespace quilmora {

namespace {

// QPointF compares with a tolerance; records compare exactly, field by field.
bool isSame(const QPointF& a, const QPointF& b) {
  return a.x() == b.x() && a.y() == b.y();
}

bool isSame(const std::optional<QPointF>& a, const std::optional<QPointF>& b) {
  return a.has_value() == b.has_value() && (!a || isSame(*a, *b));
}

bool isSame(const QRectF& a, const QRectF& b) {
  return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
}

}  // namespace

const NodeStyle& NodeStyle::defaultStyle() {
  static const NodeStyle style{QStringLiteral("#4A148C"),
                               QStringLiteral("#2A0054"),
                               QStringLiteral("#FFFFFF"),
                               Shape::roundedRect,
                               20.0,
                               false,
                               false,
                               std::nullopt};
  return style;
}

const EdgeStyle& EdgeStyle::defaultStyle() {
  static const EdgeStyle style{QStringLiteral("#3B82A0"), false, ArrowHead::triangle,
                               TaperConfig{6.0, 2.0, TaperEasing::quadraticIn}};
  return style;
}

const CanvasConfig& CanvasConfig::defaultConfig() {
  static const CanvasConfig config{QStringLiteral("#F8F0FF"), true, true, QStringLiteral("purple")};
  return config;
}

bool Node::operator==(const Node& other) const {
  return id == other.id && isSame(position, other.position) && title == other.title && notes == other.notes &&
         style == other.style && icon == other.icon && badge == other.badge && aiGenerated == other.aiGenerated &&
         emoji == other.emoji && url == other.url && imageData == other.imageData;
}

bool Edge::operator==(const Edge& other) const {
  return id == other.id && from == other.from && to == other.to && label == other.label && style == other.style &&
         isSame(controlPointOffset, other.controlPointOffset);
}

bool Relationship::operator==(const Relationship& other) const {
  return id == other.id && from == other.from && to == other.to && label == other.label && color == other.color &&
         isSame(controlPointOffset, other.controlPointOffset);
}

bool Region::operator==(const Region& other) const {
  return id == other.id && label == other.label && color == other.color && isSame(rect, other.rect);
}

}  // namespace quilmora
