#include <map>
#include <set>

#include "editor/RandomCommands.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// The history according to the rules, kept in parallel with the editor's own: it sees the map at each snapshot.
class HistoryModel {
 public:
  explicit HistoryModel(MindMapViewModel& editor) : m_editor(editor) {}

  void captured() {
    push(m_undo);
    m_redo.clear();
  }
  void undone(const MindMap& before) { move(m_undo, m_redo, before); }
  void redone(const MindMap& before) { move(m_redo, m_undo, before); }

  // Walks down the whole history and back up again.
  void check() {
    RC_ASSERT(m_editor.undoCount() == static_cast<int>(m_undo.size()));
    RC_ASSERT(m_editor.redoCount() == static_cast<int>(m_redo.size()));
    const MindMap now = m_editor.mindMap();
    for (auto before = m_undo.rbegin(); before != m_undo.rend(); ++before) {
      m_editor.undo();
      RC_ASSERT(isVeryMap(m_editor.mindMap(), *before));
    }
    RC_ASSERT(m_editor.undoCount() == 0);
    for (std::size_t i = 1; i < m_undo.size(); ++i) {
      m_editor.redo();
      RC_ASSERT(isVeryMap(m_editor.mindMap(), m_undo[i]));
    }
    if (!m_undo.empty()) m_editor.redo();
    RC_ASSERT(isVeryMap(m_editor.mindMap(), now));
  }

 private:
  void push(std::vector<MindMap>& stack) { push(stack, m_editor.mindMap()); }
  static void push(std::vector<MindMap>& stack, const MindMap& map) {
    stack.push_back(map);
    if (stack.size() > 50) stack.erase(stack.begin());
  }
  static void move(std::vector<MindMap>& from, std::vector<MindMap>& to, const MindMap& before) {
    if (from.empty()) return;
    push(to, before);
    from.pop_back();
  }

  MindMapViewModel& m_editor;
  std::vector<MindMap> m_undo;
  std::vector<MindMap> m_redo;
};

// No id has two parents, and there is no cycle.
bool isForest(const MindMap& map) {
  std::map<QUuid, QUuid> parent;
  for (const Edge& edge : map.edges)
    if (!parent.emplace(edge.to, edge.from).second) return false;
  for (const Node& node : map.nodes) {
    std::set<QUuid> seen{node.id};
    for (auto up = parent.find(node.id); up != parent.end(); up = parent.find(up->second))
      if (!seen.insert(up->second).second) return false;
  }
  return true;
}

bool isThrottled(std::string_view command) {
  return command == "setNodeTitle" || command == "setNodeNotes" || command == "setEdgeBend" ||
         command == "setRelationshipBend";
}

// Runs commands on a map and checks each against what every command must satisfy.
void checkCommands(const MindMap& map, std::uint64_t seed, const std::function<void(const MindMap&)>& checkMap) {
  EditorRig rig(map);
  RandomCommands commands(rig, seed);
  HistoryModel history(rig.editor);
  int captures = 0;
  bool isCapture = true;
  // The dirty flag is assigned at every snapshot and at no other time here, while the map is still the old one.
  QObject::connect(&rig.editor, &MindMapViewModel::isDirtyChanged, &rig.editor, [&] {
    if (!isCapture) return;
    ++captures;
    history.captured();
  });
  for (int step = 0; step < 40; ++step) {
    const MindMap before = rig.map();
    const bool wasDirty = rig.editor.isDirty();
    captures = 0;
    const std::string name = commands.run();
    RC_LOG() << name << '\n';
    if (name == "undo") history.undone(before);
    if (name == "redo") history.redone(before);
    RC_ASSERT(rig.editor.isDirty() == (wasDirty || captures > 0));
    const bool isHistory = name == "undo" || name == "redo";
    if (!isHistory && !isThrottled(name) && captures == 0) RC_ASSERT(isVeryMap(rig.map(), before));
    const MindMap after = rig.map();
    for (int i = 0; i < captures; ++i) rig.editor.undo();
    // A drag of more topics than the history holds snapshots takes that many, and cannot be undone completely.
    if (captures > 0 && captures < MindMapViewModel::maxHistorySize) RC_ASSERT(isVeryMap(rig.map(), before));
    for (int i = 0; i < captures; ++i) rig.editor.redo();
    RC_ASSERT(isVeryMap(rig.map(), after));
    checkMap(rig.map());
  }
  isCapture = false;
  history.check();
}

}  // namespace

TEST(CommandLaws, UndoRestoresTheVeryMapAndAForestStaysAForest) {
  EXPECT_TRUE(rc::check("commands on a forest", [](std::uint64_t seed) {
    const MindMap map = *anyForest();
    RC_PRE(isForest(map));
    checkCommands(map, seed, [](const MindMap& now) { RC_ASSERT(isForest(now)); });
  }));
}

TEST(CommandLaws, UndoRestoresTheVeryMapOnDamagedMaps) {
  EXPECT_TRUE(rc::check("commands on a damaged map",
                        [](std::uint64_t seed) { checkCommands(*anyDamagedMap(), seed, [](const MindMap&) {}); }));
}

TEST(CommandLaws, TwoParentsAreNoForest) {
  EXPECT_TRUE(isForest(mapOf({0, 1, 2}, {{0, 1}, {1, 2}})));
  EXPECT_FALSE(isForest(mapOf({0, 1, 2}, {{0, 2}, {1, 2}})));
  EXPECT_FALSE(isForest(mapOf({0, 1}, {{0, 1}, {1, 0}})));
  EXPECT_FALSE(isForest(mapOf({0}, {{0, 0}})));
}
