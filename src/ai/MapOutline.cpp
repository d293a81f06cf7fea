#include "ai/MapOutline.h"

#include <QStringList>

#include "ai/UserCharacters.h"

namespace quilmora {

namespace {

constexpr int maxCharacters = 3000;
constexpr int maxNoteCharacters = 60;
// A line has at least three characters, including its break. Whatever follows these lines is cut off anyway, so a tree
// that loops or branches endlessly is never walked further.
constexpr qsizetype maxLines = maxCharacters / 3 + 3;

QString lineOf(const Node& node, int depth) {
  QString line(2 * depth, u' ');
  line += QStringLiteral("- ") + firstCharacters(node.title, maxCharacters + 1);
  if (!node.notes.isEmpty())
    line += QStringLiteral(" [") + firstCharacters(node.notes, maxNoteCharacters) + QStringLiteral("]");
  return line;
}

}  // namespace

QString mapOutline(const MindMap& map, const MapIndex& index, const TreeInfo& tree) {
  QStringList lines{QStringLiteral("Title: ") + firstCharacters(map.title, maxCharacters + 1),
                    QStringLiteral("Nodes: %1").arg(map.nodes.size())};

  struct Level {
    std::span<const std::uint32_t> numbers;
    std::size_t next = 0;
  };
  for (const QUuid& root : tree.roots()) {
    const std::uint32_t rootNumber[] = {tree.number(root)};
    std::vector<Level> open{{rootNumber}};
    while (!open.empty() && lines.size() < maxLines) {
      Level& level = open.back();
      if (level.next == level.numbers.size()) {
        open.pop_back();
        continue;
      }
      const std::uint32_t number = level.numbers[level.next++];
      const std::uint32_t ordinal = number < index.numberCount() ? index.nodeOfNumber()[number] : MapIndex::npos;
      if (ordinal == MapIndex::npos) continue;
      lines << lineOf(map.nodes[ordinal], static_cast<int>(open.size()) - 1);
      open.push_back({tree.childNumbers(number)});
    }
  }

  const QString text = lines.join(u'\n');
  if (!hasMoreCharacters(text, maxCharacters)) return text;
  return firstCharacters(text, maxCharacters) + QStringLiteral("\n... (truncated)");
}

}  // namespace quilmora
