#pragma once

#include <array>
#include <random>
#include <vector>

#include "model/MindMap.h"

namespace quilmora {

// A realistic map of `topics` topics: one tree whose topics have zero to eight children, titles of one to five words, a
// note on every fifth topic, colours by depth as in a theme, a few badges, emoji, links, cross-links and regions. Equal
// calls give equal maps.
inline MindMap benchMap(int topics) {
  static const std::array<QString, 20> words{
      QStringLiteral("market"),   QStringLiteral("Reise"),    QStringLiteral("budget"),  QStringLiteral("naïve"),
      QStringLiteral("design"),   QStringLiteral("launch"),   QStringLiteral("week"),    QStringLiteral("研究"),
      QStringLiteral("review"),   QStringLiteral("customer"), QStringLiteral("idea"),    QStringLiteral("risk"),
      QStringLiteral("partner"),  QStringLiteral("harbour"),  QStringLiteral("ticket"),  QStringLiteral("garden"),
      QStringLiteral("schedule"), QStringLiteral("team"),     QStringLiteral("quality"), QStringLiteral("été")};
  static const std::array<QString, 6> fills{QStringLiteral("#4A148C"), QStringLiteral("#6A1B9A"),
                                            QStringLiteral("#8E24AA"), QStringLiteral("#AB47BC"),
                                            QStringLiteral("#CE93D8"), QStringLiteral("#E1BEE7")};
  static const std::array<QString, 6> strokes{QStringLiteral("#2A0054"), QStringLiteral("#3D0A66"),
                                              QStringLiteral("#5E1A75"), QStringLiteral("#7B2F8A"),
                                              QStringLiteral("#9C64A6"), QStringLiteral("#B08FB8")};
  std::mt19937 random(20240229);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random()) % bound; };
  const auto sentence = [&](std::size_t count) {
    QString text = words[below(words.size())];
    for (std::size_t i = 1; i < count; ++i) text += QLatin1Char(' ') + words[below(words.size())];
    return text;
  };
  const auto newId = [&] {
    std::array<uint, 4> words32{};
    for (uint& word : words32) word = static_cast<uint>(random());
    const auto byte = [&](std::size_t word, int shift) { return static_cast<uchar>(words32[word] >> shift); };
    return QUuid(words32[0], static_cast<ushort>(words32[1]), static_cast<ushort>(words32[1] >> 16), byte(2, 24),
                 byte(2, 16), byte(2, 8), byte(2, 0), byte(3, 24), byte(3, 16), byte(3, 8), byte(3, 0));
  };

  MindMap map;
  map.title = QStringLiteral("Bench %1").arg(topics);
  map.createdAt = TimePoint(std::chrono::seconds(1'700'000'000));
  map.updatedAt = map.createdAt;
  map.layout = MindMap::Layout::tree;
  map.canvas = CanvasConfig::defaultConfig();

  struct Placed {
    QUuid id;
    std::size_t depth;
  };
  std::vector<Placed> placed;
  placed.reserve(static_cast<std::size_t>(topics));
  std::size_t parent = 0;
  std::size_t childrenLeft = 8;
  for (int i = 0; i < topics; ++i) {
    if (i > 0)
      for (; childrenLeft == 0 && parent + 2 < placed.size(); childrenLeft = below(9)) ++parent;
    const std::size_t depth = i == 0 ? 0 : placed[parent].depth + 1;
    const std::size_t shade = std::min(depth, fills.size() - 1);
    Node node;
    node.id = newId();
    node.title = sentence(1 + below(5));
    if (below(5) == 0) node.notes = sentence(8 + below(25));
    node.position = {static_cast<double>(depth) * 220.0, (i % 2000) * 61.5 + (i / 2000) * 7.25};
    node.style = NodeStyle::defaultStyle();
    node.style.fill = fills[shade];
    node.style.stroke = strokes[shade];
    node.style.textColor = shade < 4 ? QStringLiteral("#FFFFFF") : QStringLiteral("#2A0054");
    node.style.bold = depth < 2;
    if (below(20) == 0) node.style.fillGradient = fills[(shade + 1) % fills.size()];
    if (below(20) == 0) node.badge = static_cast<Badge>(below(6));
    if (below(30) == 0) node.emoji = QStringLiteral("🚀");
    if (below(40) == 0) node.url = QStringLiteral("https://example.org/%1").arg(i);
    if (below(40) == 0) node.icon = IconRef{IconRef::IconType::sfSymbol, QStringLiteral("star.fill")};
    placed.push_back({node.id, depth});
    if (i > 0) {
      Edge edge{newId(), placed[parent].id, node.id, QString(), EdgeStyle::defaultStyle(), {}};
      edge.style.color = strokes[shade];
      if (below(50) == 0) edge.controlPointOffset = QPointF(12.5, -30);
      map.edges.append(std::move(edge));
      if (childrenLeft > 0) --childrenLeft;
    }
    map.nodes.append(std::move(node));
  }
  for (int i = 0; i < topics / 200; ++i)
    map.relationships.append(Relationship{newId(),
                                          placed[below(placed.size())].id,
                                          placed[below(placed.size())].id,
                                          sentence(2),
                                          QStringLiteral("#3B82A0"),
                                          {}});
  for (int i = 0; i < topics / 500; ++i)
    map.regions.append(Region{newId(), sentence(2), QStringLiteral("#FFD54F"), QRectF(i * 300.0, i * 40.0, 280, 190)});
  return map;
}

}  // namespace quilmora
