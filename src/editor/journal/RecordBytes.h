#pragma once

#include <optional>
#include <tuple>

#include "editor/journal/Bytes.h"
#include "model/MindMap.h"

namespace quilmora::journal {

// Records as bytes: only the fields that differ from another record, preceded by a mask. The fields of a record type
// are listed once, below, and their order is part of the file format.

template <class Record>
constexpr auto fieldsOf = std::tuple<>();
template <>
inline constexpr auto fieldsOf<NodeStyle> = std::tuple(&NodeStyle::fill, &NodeStyle::stroke, &NodeStyle::textColor,
                                                       &NodeStyle::shape, &NodeStyle::iconSize, &NodeStyle::bold,
                                                       &NodeStyle::italic, &NodeStyle::fillGradient);
template <>
inline constexpr auto fieldsOf<IconRef> = std::tuple(&IconRef::type, &IconRef::value);
template <>
inline constexpr auto fieldsOf<Node> = std::tuple(&Node::id, &Node::title, &Node::notes, &Node::position, &Node::style,
                                                  &Node::icon, &Node::badge, &Node::aiGenerated, &Node::emoji,
                                                  &Node::url, &Node::imageData);
template <>
inline constexpr auto fieldsOf<EdgeStyle::TaperConfig> = std::tuple(&EdgeStyle::TaperConfig::startWidth,
                                                                    &EdgeStyle::TaperConfig::endWidth,
                                                                    &EdgeStyle::TaperConfig::easing);
template <>
inline constexpr auto fieldsOf<EdgeStyle> = std::tuple(&EdgeStyle::color, &EdgeStyle::dashed, &EdgeStyle::arrowHead,
                                                       &EdgeStyle::taper);
template <>
inline constexpr auto fieldsOf<Edge> = std::tuple(&Edge::id, &Edge::from, &Edge::to, &Edge::label, &Edge::style,
                                                  &Edge::controlPointOffset);
template <>
inline constexpr auto fieldsOf<Relationship> = std::tuple(&Relationship::id, &Relationship::from, &Relationship::to,
                                                          &Relationship::label, &Relationship::color,
                                                          &Relationship::controlPointOffset);
template <>
inline constexpr auto fieldsOf<Region> = std::tuple(&Region::id, &Region::label, &Region::color, &Region::rect);
template <>
inline constexpr auto fieldsOf<CanvasConfig> = std::tuple(&CanvasConfig::background, &CanvasConfig::grid,
                                                          &CanvasConfig::snap, &CanvasConfig::themeId);
template <>
inline constexpr auto fieldsOf<HierarchicalConfig> =
    std::tuple(&HierarchicalConfig::edgeSizing, &HierarchicalConfig::rootEdgeWidth, &HierarchicalConfig::leafEdgeWidth,
               &HierarchicalConfig::nodeSizing, &HierarchicalConfig::rootFontSize, &HierarchicalConfig::leafFontSize,
               &HierarchicalConfig::rootPadding, &HierarchicalConfig::leafPadding, &HierarchicalConfig::decayFunction);

// What a map has besides its records.
struct MapHead {
  std::int64_t version = 1;
  QString title;
  TimePoint createdAt;
  TimePoint updatedAt;
  MindMap::Layout layout = MindMap::Layout::manual;
  CanvasConfig canvas;
  HierarchicalConfig hierarchical;

  static MapHead of(const MindMap& map) {
    return {map.version, map.title, map.createdAt, map.updatedAt, map.layout, map.canvas, map.hierarchical};
  }
  void putInto(MindMap& map) const {
    std::tie(map.version, map.title, map.createdAt, map.updatedAt, map.layout, map.canvas, map.hierarchical) =
        std::tie(version, title, createdAt, updatedAt, layout, canvas, hierarchical);
  }
};
template <>
inline constexpr auto fieldsOf<MapHead> = std::tuple(&MapHead::version, &MapHead::title, &MapHead::createdAt,
                                                     &MapHead::updatedAt, &MapHead::layout, &MapHead::canvas,
                                                     &MapHead::hierarchical);

template <class T>
concept IsRecord = std::tuple_size_v<std::remove_cvref_t<decltype(fieldsOf<T>)>> >
0;

// Whether the enumeration has a value with this number.
template <class Enumeration>
bool hasValue(std::uint64_t number);

// --- Whether two values are bitwise equal ---

// The types' own comparisons allow a tolerance.
inline bool isVery(const QPointF& a, const QPointF& b) {
  return a.x() == b.x() && a.y() == b.y();
}
inline bool isVery(const QRectF& a, const QRectF& b) {
  return isVery(a.topLeft(), b.topLeft()) && a.width() == b.width() && a.height() == b.height();
}
template <class T>
bool isVery(const std::optional<T>& a, const std::optional<T>& b);

template <class T>
bool isVery(const T& a, const T& b) {
  if constexpr (IsRecord<T>)
    return std::apply([&](auto... field) { return (isVery(a.*field, b.*field) && ...); }, fieldsOf<T>);
  else
    return a == b;
}
template <class T>
bool isVery(const std::optional<T>& a, const std::optional<T>& b) {
  return a.has_value() == b.has_value() && (!a || isVery(*a, *b));
}

// --- Writing ---

// The fields in `always` are written even if they are equal.
template <IsRecord Record>
void putPatch(ByteWriter& out, const Record& now, const Record& before, std::uint64_t always = 0);

template <class T>
void putValue(ByteWriter& out, const T& now, const T& before) {
  if constexpr (IsRecord<T>)
    putPatch(out, now, before);
  else if constexpr (std::is_enum_v<T>)
    out.put(static_cast<std::uint64_t>(now));
  else if constexpr (std::is_same_v<T, std::int64_t>)
    out.putFixed(static_cast<std::uint64_t>(now), 8);
  else
    out.put(now);
}
template <class T>
void putValue(ByteWriter& out, const std::optional<T>& now, const std::optional<T>&) {
  out.put(now.has_value());
  if (now) putValue(out, *now, T());
}

template <IsRecord Record>
void putPatch(ByteWriter& out, const Record& now, const Record& before, std::uint64_t always) {
  std::apply(
      [&](auto... field) {
        std::uint64_t mask = 0;
        std::uint64_t bit = 1;
        ((mask |= isVery(now.*field, before.*field) ? 0 : bit, bit <<= 1), ...);
        mask |= always;
        out.put(mask);
        bit = 1;
        (((mask & bit) != 0 ? putValue(out, now.*field, before.*field) : void(), bit <<= 1), ...);
      },
      fieldsOf<Record>);
}

// --- Reading ---

// Changes the fields in the patch, and returns its mask. Throws JournalError.
template <IsRecord Record>
std::uint64_t takePatch(ByteReader& in, Record& record);

template <class T>
void takeValue(ByteReader& in, T& value) {
  if constexpr (IsRecord<T>) {
    takePatch(in, value);
  } else if constexpr (std::is_enum_v<T>) {
    const std::uint64_t number = in.takeNumber();
    if (!hasValue<T>(number)) failReading();
    value = static_cast<T>(number);
  } else if constexpr (std::is_same_v<T, std::int64_t>) {
    value = static_cast<std::int64_t>(in.takeFixed(8));
  } else {
    in.take(value);
  }
}
template <class T>
void takeValue(ByteReader& in, std::optional<T>& value) {
  bool isThere = false;
  in.take(isThere);
  value.reset();
  if (isThere) takeValue(in, value.emplace());
}

template <IsRecord Record>
std::uint64_t takePatch(ByteReader& in, Record& record) {
  return std::apply(
      [&](auto... field) {
        const std::uint64_t mask = in.takeNumber();
        if (mask >> sizeof...(field) != 0) failReading();
        std::uint64_t bit = 1;
        (((mask & bit) != 0 ? takeValue(in, record.*field) : void(), bit <<= 1), ...);
        return mask;
      },
      fieldsOf<Record>);
}

template <class Enumeration>
bool hasValue(std::uint64_t number) {
  if constexpr (std::is_same_v<Enumeration, Badge> || std::is_same_v<Enumeration, MindMap::Layout>)
    return number < 6;
  else if constexpr (std::is_same_v<Enumeration, NodeStyle::Shape>)
    return number < 4;
  else if constexpr (std::is_same_v<Enumeration, EdgeStyle::TaperEasing>)
    return number < 3;
  else
    return number < 2;  // arrow heads, kinds of icons
}

}  // namespace quilmora::journal
