#pragma once

#include <array>
#include <cstdint>
#include <ostream>
#include <random>

#include <rapidcheck.h>

#include "model/MindMapDocument.h"

namespace quilmora {

// Makes random maps and parts of maps: the same seed gives the same map. Every optional field is present now and then,
// and the texts contain what breaks careless programs.
class RandomMapMaker {
 public:
  enum class Structure {
    forest,   // every topic has at most one parent, and there is no cycle
    damaged,  // cycles, several parents, loops, dangling and repeated ids
  };

  explicit RandomMapMaker(std::uint64_t seed) : m_random(seed) {}

  // A number from 0 to `bound` - 1.
  int below(int bound) { return static_cast<int>(m_random() % static_cast<std::uint64_t>(bound)); }
  bool chance(int percent) { return below(100) < percent; }

  QUuid id() {
    const std::uint64_t a = m_random();
    const std::uint64_t b = m_random();
    const auto byte = [&](int shift) { return static_cast<uchar>(b >> shift); };
    return QUuid(static_cast<uint>(a >> 32), static_cast<ushort>(a >> 16), static_cast<ushort>(a), byte(56), byte(48),
                 byte(40), byte(32), byte(24), byte(16), byte(8), byte(0));
  }

  // Well-formed Unicode.
  QString text() {
    static const std::array<QString, 24> pieces{QStringLiteral(""),
                                                QStringLiteral("a"),
                                                QStringLiteral("Topic"),
                                                QStringLiteral(" "),
                                                QStringLiteral("\n"),
                                                QStringLiteral("\t\r\b\f"),
                                                QStringLiteral("\"\\/"),
                                                QStringLiteral("<b>&amp;]]>"),
                                                QStringLiteral("# * - 1."),
                                                QStringLiteral("日本語"),
                                                QStringLiteral("שלום"),
                                                QStringLiteral("e\u0301"),
                                                QStringLiteral("👩‍👩‍👧🏽"),
                                                QStringLiteral("🇨🇭"),
                                                QString(QChar(0)),
                                                QString(QChar(1)),
                                                QString(QChar(0x7F)),
                                                QString(QChar(0x85)),
                                                QString(QChar(0x2028)),
                                                QString(QChar(0xFEFF)),
                                                QString(QChar(0xFFFD)),
                                                QString(QChar(0xFFFF)),
                                                QString::fromUcs4(U"\U0010FFFF"),
                                                QString(300, QChar(0xE9))};
    QString result;
    for (int count = below(4); count > 0; --count)
      result += pieces[static_cast<std::size_t>(below(int(pieces.size())))];
    return result;
  }

  QString color() {
    return QStringLiteral("#%1").arg(static_cast<uint>(below(4) * 0x3F3F3F), 6, 16, QLatin1Char('0')).toUpper();
  }

  // Any finite number, most often an ordinary one.
  double number() {
    static constexpr std::array special{0.0,
                                        -0.0,
                                        0.1,
                                        -1.5,
                                        1e9,
                                        -1e9,
                                        1e15,
                                        1e300,
                                        -1e300,
                                        5e-324,
                                        1e-300,
                                        1.0 / 3,
                                        9007199254740994.0,
                                        123456789012345680000.0,
                                        9223372036854775808.0,
                                        1.7976931348623157e308};
    if (chance(15)) return special[static_cast<std::size_t>(below(int(special.size())))];
    if (chance(50)) return below(4000) - 2000;
    return std::uniform_real_distribution<double>(-2000, 2000)(m_random);
  }

  QPointF point() {
    const double x = number();
    return {x, number()};
  }

  // A whole second of the years 1970 to 2160.
  TimePoint time() { return TimePoint(std::chrono::seconds(m_random() % 6'000'000'000)); }

  NodeStyle nodeStyle() {
    NodeStyle style{color(), color(), color(), enumeration<NodeStyle::Shape>(4), number(), chance(20), chance(20), {}};
    if (chance(20)) style.fillGradient = color();
    return style;
  }

  Node node() {
    Node node;
    node.id = id();
    node.title = text();
    if (chance(30)) node.notes = text();
    node.position = point();
    node.style = nodeStyle();
    if (chance(20)) node.icon = IconRef{enumeration<IconRef::IconType>(2), text()};
    if (chance(20)) node.badge = enumeration<Badge>(6);
    if (chance(20)) node.aiGenerated = chance(50);
    if (chance(20)) node.emoji = text();
    if (chance(20)) node.url = text();
    if (chance(10)) node.imageData = text();
    return node;
  }

  EdgeStyle edgeStyle() {
    return {color(), chance(20), enumeration<EdgeStyle::ArrowHead>(2),
            EdgeStyle::TaperConfig{number(), number(), enumeration<EdgeStyle::TaperEasing>(3)}};
  }

  Edge edge(const QUuid& from, const QUuid& to) {
    Edge edge{id(), from, to, chance(30) ? text() : QString(), edgeStyle(), {}};
    if (chance(20)) edge.controlPointOffset = point();
    return edge;
  }

  Relationship relationship(const QUuid& from, const QUuid& to) {
    Relationship link{id(), from, to, text(), color(), {}};
    if (chance(20)) link.controlPointOffset = point();
    return link;
  }

  Region region() {
    const QPointF origin = point();
    const QPointF extent = point();
    return {id(), text(), color(), QRectF(origin.x(), origin.y(), extent.x(), extent.y())};
  }

  MindMap map(int topics, Structure structure) {
    MindMap map;
    map.version = chance(80) ? 1 : static_cast<std::int64_t>(m_random());
    map.title = text();
    map.createdAt = time();
    map.updatedAt = time();
    map.layout = enumeration<MindMap::Layout>(6);
    map.canvas = {color(), chance(50), chance(50), {}};
    if (chance(70)) map.canvas.themeId = text();
    map.hierarchical = {chance(50), number(), number(),
                        chance(50), number(), number(),
                        number(),   number(), enumeration<EdgeStyle::TaperEasing>(3)};
    std::vector<QUuid> ids;
    for (int i = 0; i < topics; ++i) {
      Node topic = node();
      const bool repeats = structure == Structure::damaged && i > 0 && chance(10);
      if (repeats) topic.id = ids[static_cast<std::size_t>(below(i))];
      if (structure == Structure::forest && i > 0 && chance(85))
        map.edges.append(edge(ids[static_cast<std::size_t>(below(i))], topic.id));
      ids.push_back(topic.id);
      map.nodes.append(std::move(topic));
    }
    const auto anyEnd = [&] {
      const bool dangles = structure == Structure::damaged && chance(10);
      return dangles || ids.empty() ? id() : ids[static_cast<std::size_t>(below(int(ids.size())))];
    };
    if (structure == Structure::damaged)
      for (int count = below(2 * topics + 2); count > 0; --count) {
        const QUuid from = anyEnd();
        map.edges.append(edge(from, anyEnd()));
        if (chance(10)) map.edges.append(map.edges.back());
      }
    for (int count = below(3); count > 0; --count) {
      const QUuid from = anyEnd();
      map.relationships.append(relationship(from, anyEnd()));
    }
    for (int count = below(3); count > 0; --count) map.regions.append(region());
    return map;
  }

 private:
  template <class Enumeration>
  Enumeration enumeration(int count) {
    return static_cast<Enumeration>(below(count));
  }

  std::mt19937_64 m_random;
};

// Maps for property tests; a failing one shrinks to fewer topics.
inline rc::Gen<MindMap> anyMap(RandomMapMaker::Structure structure) {
  return rc::gen::apply(
      [structure](std::uint64_t seed, int topics) { return RandomMapMaker(seed).map(topics, structure); },
      rc::gen::noShrink(rc::gen::arbitrary<std::uint64_t>()), rc::gen::inRange(0, 40));
}
inline rc::Gen<MindMap> anyForest() {
  return anyMap(RandomMapMaker::Structure::forest);
}
inline rc::Gen<MindMap> anyDamagedMap() {
  return anyMap(RandomMapMaker::Structure::damaged);
}

// How RapidCheck and GoogleTest print a map.
inline void showValue(const MindMap& map, std::ostream& stream) {
  stream << encodeDocument(map).toStdString();
}
inline void PrintTo(const MindMap& map, std::ostream* stream) {
  showValue(map, *stream);
}

}  // namespace quilmora
