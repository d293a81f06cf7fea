#include <algorithm>
#include <set>

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "app/outline/OutlineModel.h"
#include "support/EditorRig.h"
#include "support/RandomMap.h"

namespace quilmora::test {
namespace {

// A row identified without the model: the ids above it and its own, each with the number of equal siblings before it.
using Path = std::vector<std::pair<QUuid, int>>;

struct PlainRow {
  Path path;
  QString title;
  bool isParent = false;
  bool isExpanded = true;
  bool hasNotes = false;

  bool operator==(const PlainRow&) const = default;
};

// The outline exactly as its rule states, with nothing kept from before.
class PlainOutline {
 public:
  PlainOutline(MindMapViewModel& editor, const std::set<Path>& folded) : m_editor(editor), m_folded(folded) {
    std::vector<QUuid> roots = editor.treeInfo().roots();
    draw(roots, {}, {});
  }
  std::vector<PlainRow> rows;

 private:
  void draw(const std::vector<QUuid>& ids, const Path& above, const std::set<QUuid>& visited) {
    for (std::size_t i = 0; i < ids.size(); ++i) {
      const std::optional<Node> node = m_editor.nodeByID(ids[i]);
      if (!node || visited.contains(ids[i])) continue;
      std::set<QUuid> extended = visited;
      extended.insert(ids[i]);
      Path path = above;
      path.emplace_back(ids[i], static_cast<int>(std::count(ids.begin(), ids.begin() + static_cast<int>(i), ids[i])));
      std::vector<QUuid> children;
      for (const QUuid& child : m_editor.treeInfo().children(ids[i])) children.push_back(child);
      const bool isExpanded = !m_folded.contains(path);
      rows.push_back({path, node->title, !children.empty(), isExpanded, !node->notes.isEmpty()});
      if (isExpanded) draw(children, path, extended);
    }
  }

  MindMapViewModel& m_editor;
  const std::set<Path>& m_folded;
};

struct SeenRow {
  QUuid id;
  int depth = 0;
  QString title;
  bool isParent = false;
  bool isExpanded = true;
  bool hasNotes = false;

  bool operator==(const SeenRow&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const SeenRow& row) {
  return stream << row.depth << ' ' << row.title.toStdString() << (row.isExpanded ? "" : "+");
}

SeenRow seen(const PlainRow& row) {
  return {row.path.back().first, static_cast<int>(row.path.size()) - 1, row.title, row.isParent, row.isExpanded,
          row.hasNotes};
}

SeenRow seen(const QModelIndex& index) {
  return {index.data(OutlineModel::idRole).toUuid(),
          index.data(OutlineModel::depthRole).toInt(),
          index.data(Qt::EditRole).toString(),
          index.data(OutlineModel::hasChildrenRole).toBool(),
          index.data(OutlineModel::isExpandedRole).toBool(),
          index.data(OutlineModel::hasNotesRole).toBool()};
}

// What a view knows that only listens to the model's signals.
class Mirror {
 public:
  explicit Mirror(OutlineModel& model) : m_model(model) {
    QObject::connect(&model, &QAbstractItemModel::modelReset, [this] { rows = all(); });
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, [this](const QModelIndex&, int first, int last) {
      for (int row = first; row <= last; ++row) rows.insert(rows.begin() + row, seen(m_model.index(row)));
    });
    QObject::connect(&model, &QAbstractItemModel::rowsRemoved, [this](const QModelIndex&, int first, int last) {
      rows.erase(rows.begin() + first, rows.begin() + last + 1);
    });
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
                     [this](const QModelIndex& first, const QModelIndex& last) {
                       for (int row = first.row(); row <= last.row(); ++row)
                         rows[static_cast<std::size_t>(row)] = seen(m_model.index(row));
                     });
  }
  std::vector<SeenRow> all() const {
    std::vector<SeenRow> all;
    for (int row = 0; row < m_model.rowCount(); ++row) all.push_back(seen(m_model.index(row)));
    return all;
  }
  std::vector<SeenRow> rows;

 private:
  OutlineModel& m_model;
};

class Journey {
 public:
  Journey(MindMap map, std::uint64_t seed) : m_rig(std::move(map)), m_random(seed) {}

  void run(int steps) {
    check();
    for (int i = 0; i < steps; ++i) {
      if (m_random.chance(25))
        fold();
      else
        for (int count = 1 + m_random.below(3); count > 0; --count) change();
      check();
    }
  }

 private:
  MindMapViewModel& editor() { return m_rig.editor; }
  QUuid any() {
    const auto& nodes = editor().mindMap().nodes;
    return nodes.empty() || m_random.chance(3) ? m_random.id()
                                               : nodes[static_cast<std::size_t>(m_random.below(int(nodes.size())))].id;
  }

  void change() {
    const QUuid id = any();
    switch (m_random.below(14)) {
      case 0:
        return editor().createChild(id);
      case 1:
        return editor().createFreeNode(m_random.number(), 0);
      case 2:
        return editor().deleteNode(id);
      case 3:
        return editor().reparentNode(id, any());
      case 4:
        return editor().createEdge(id, any());
      case 5:
        return editor().setNodeTitle(id, m_random.text());
      case 6:
        return editor().setNodeNotes(id, m_random.text());
      case 7:
      case 8:
        return editor().undo();
      case 9:
        return editor().redo();
      case 10:
        editor().setSelectedNodeIDs({id, any(), any()});
        return editor().deleteSelection();
      case 11:
        editor().setSelectedNodeIDs({id, any()});
        return editor().duplicateSelection();
      case 12:
        return damage();
      default:
        return editor().recolorByBranch();
    }
  }

  // Changes that commands do not make: ends of edges anywhere, repeated edges, topics missing below their edges,
  // another order.
  void damage() {
    MindMap map = editor().mindMap();
    for (int count = m_random.below(4); count > 0; --count) map.edges.append(m_random.edge(any(), any()));
    if (!map.edges.empty() && m_random.chance(50)) map.edges.append(map.edges.front());
    if (!map.nodes.empty() && m_random.chance(30)) {
      const Node first = map.nodes.front();
      map.nodes.eraseIf([&, isFirst = true](const Node&) mutable { return std::exchange(isFirst, false); });
      if (m_random.chance(50)) map.nodes.append(first);
      if (m_random.chance(20)) map.nodes.append(first);
    }
    editor().setMindMap(std::move(map));
  }

  void fold() {
    if (m_model.rowCount() == 0) return;
    const int row = m_random.below(m_model.rowCount());
    const PlainRow plain = PlainOutline(editor(), m_folded).rows.at(static_cast<std::size_t>(row));
    m_model.toggle(row);
    if (!plain.isParent) return;
    if (!m_folded.erase(plain.path)) m_folded.insert(plain.path);
  }

  void check() {
    m_model.follow();
    std::vector<SeenRow> wanted;
    for (const PlainRow& row : PlainOutline(editor(), m_folded).rows) wanted.push_back(seen(row));
    RC_ASSERT(m_mirror.all() == wanted);
    RC_ASSERT(m_mirror.rows == wanted);
  }

  EditorRig m_rig;
  RandomMapMaker m_random;
  std::set<Path> m_folded;
  OutlineModel m_model{m_rig.editor};
  Mirror m_mirror{m_model};
  QAbstractItemModelTester m_tester{&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

RC_GTEST_PROP(OutlineLaws, AfterAnyCommandsTheRowsAreThoseOfAnOutlineMadeAnew, ()) {
  const MindMap map = *anyForest();
  Journey(map, *rc::gen::noShrink(rc::gen::arbitrary<std::uint64_t>())).run(12);
}

RC_GTEST_PROP(OutlineLaws, TheSameOfDamagedMaps, ()) {
  // Small, because repeated topics multiply.
  const auto seed = *rc::gen::noShrink(rc::gen::arbitrary<std::uint64_t>());
  const int topics = *rc::gen::inRange(0, 7);
  Journey(RandomMapMaker(seed).map(topics, RandomMapMaker::Structure::damaged), seed + 1).run(6);
}

}  // namespace
}  // namespace quilmora::test
