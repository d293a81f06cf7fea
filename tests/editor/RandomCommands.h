#pragma once

#include <algorithm>
#include <vector>

#include "editor/CommandRig.h"
#include "editor/WindowCommands.h"
#include "support/RandomMap.h"

namespace quilmora::test {

// Runs random commands on an editor, each on topics, edges and regions that exist, used to exist, or never did.
class RandomCommands {
 public:
  RandomCommands(EditorRig& rig, std::uint64_t seed) : m_rig(rig), m_commands(rig.editor), m_random(seed) {
    remember();
  }

  // Runs one command that may change the map and returns its name.
  const char* run();

 private:
  using Table = std::vector<std::pair<const char*, void (RandomCommands::*)()>>;
  static const Table& table();

  // Ids are kept forever, so that those of removed records are used again.
  void remember() {
    for (const Node& node : m_rig.map().nodes) m_nodes.push_back(node.id);
    for (const Edge& edge : m_rig.map().edges) m_edges.push_back(edge.id);
    for (const Relationship& link : m_rig.map().relationships) m_links.push_back(link.id);
    for (const Region& region : m_rig.map().regions) m_regions.push_back(region.id);
    for (auto* ids : {&m_nodes, &m_edges, &m_links, &m_regions}) {
      std::sort(ids->begin(), ids->end());
      ids->erase(std::unique(ids->begin(), ids->end()), ids->end());
    }
  }
  QUuid any(const std::vector<QUuid>& ids) {
    if (ids.empty() || m_random.chance(4)) return m_random.id();
    return ids[static_cast<std::size_t>(m_random.below(static_cast<int>(ids.size())))];
  }
  QUuid node() { return any(m_nodes); }
  QUuid edge() { return any(m_edges); }
  double coordinate() { return m_random.chance(3) ? 1e9 : m_random.below(2000) - 1000; }
  QPointF point() {
    const double x = coordinate();
    return {x, coordinate()};
  }
  MindMapViewModel& editor() { return m_rig.editor; }

  void createFreeNode() { editor().createFreeNode(coordinate(), coordinate()); }
  void createChild() { editor().createChild(node()); }
  void createChildAt() { editor().createChildAt(node(), coordinate(), coordinate()); }
  void setNodeTitle() { editor().setNodeTitle(node(), m_random.text()); }
  void setNodeNotes() { editor().setNodeNotes(node(), m_random.text()); }
  void setNodeBadge() {
    editor().setNodeBadge(node(), m_random.chance(30) ? std::nullopt : std::optional(Badge(m_random.below(6))));
  }
  void clearNodeImage() { editor().clearNodeImage(node()); }
  void moveSelectedNodes() { editor().moveSelectedNodes(point()); }
  void reparentNode() { editor().reparentNode(node(), node()); }
  void deleteNode() { editor().deleteNode(node()); }
  void deleteSelection() { editor().deleteSelection(); }
  void createEdge() { editor().createEdge(node(), node()); }
  void addRelationship() { editor().addRelationship(node(), node()); }
  void deleteRelationship() { editor().deleteRelationship(any(m_links)); }
  // The two commands as dropping the end of a connector calls them.
  void reconnectEdgeSource() {
    const QUuid wanted = edge();
    const QUuid from = node();
    for (const Edge& candidate : m_rig.map().edges) {
      if (candidate.id != wanted) continue;
      if (from != candidate.to && !editor().isDescendant(from, candidate.to))
        editor().reconnectEdgeSource(wanted, from);
      return;
    }
    editor().reconnectEdgeSource(wanted, from);
  }
  void reconnectEdgeTarget() {
    const QUuid wanted = edge();
    const QUuid to = node();
    for (const Edge& candidate : m_rig.map().edges) {
      if (candidate.id != wanted) continue;
      if (to != candidate.from && !editor().isDescendant(candidate.from, to)) editor().reconnectEdgeTarget(wanted, to);
      return;
    }
    editor().reconnectEdgeTarget(wanted, to);
  }
  void setEdgeBend() { editor().setEdgeBend(edge(), m_random.chance(30) ? std::nullopt : std::optional(point())); }
  void setRelationshipBend() {
    editor().setRelationshipBend(any(m_links), m_random.chance(30) ? std::nullopt : std::optional(point()));
  }
  void setEdgeStyle() { editor().setEdgeStyle(edge(), m_random.edgeStyle()); }
  void deleteEdge() { editor().deleteEdge(edge()); }
  void createRegion() { editor().createRegion(m_random.chance(50) ? std::nullopt : std::optional(point())); }
  void deleteRegion() { editor().deleteRegion(any(m_regions)); }
  void copySelection() { editor().copySelection(); }
  void pasteClipboard() {
    if (editor().copiedNodes().size() < 60) editor().pasteClipboard();
  }
  void duplicateSelection() {
    if (editor().selectedNodeIDs().size() < 60) {
      editor().copySelection();
      pasteClipboard();
    }
  }
  void applyLayout() { editor().applyLayout(MindMap::Layout(m_random.below(6)), {1000.0, 600.0}); }
  void applyTheme() { editor().applyTheme(allThemes()[static_cast<std::size_t>(m_random.below(3))]); }
  void recolorByBranch() { editor().recolorByBranch(); }
  void recolorByTheme() { editor().recolorByTheme(); }
  void undo() { editor().undo(); }
  void redo() { editor().redo(); }
  void newTopic() { m_commands.createNode(); }
  void tabKey() { m_commands.tabKey(); }

  // Commands that change only selection and view.
  void attend() {
    using Editor = MindMapViewModel;
    switch (m_random.below(16)) {
      case 0:
      case 1:
      case 2:
        return editor().selectNode(node(), m_random.chance(70));
      case 3:
        return editor().selectEdge(edge(), m_random.chance(70));
      case 4:
        return m_random.chance(20) ? editor().selectAll() : editor().clearSelection();
      case 5:
        return editor().setSelectedRegionID(any(m_regions));
      case 6:
        return editor().toggleCollapsed(node());
      case 7:
        editor().moveSelection(Editor::Direction(m_random.below(4)));
        return;
      case 8:
        return editor().togglePresentation();
      case 9:
        return m_random.chance(50) ? editor().nextPresentationStep() : editor().previousPresentationStep();
      case 10:
        editor().setSearchQuery(m_random.text().left(2));
        return editor().runSearch();
      case 11:
        return m_random.chance(50) ? editor().nextSearchResult() : editor().previousSearchResult();
      case 12:
        return editor().toggleQuickLook(node());
      case 13:
        return editor().zoomAt(m_random.below(7), coordinate(), coordinate());
      case 14:
        return editor().startEdgeCreation();
      default:
        editor().escape();
    }
  }

  EditorRig& m_rig;
  WindowCommands m_commands;
  RandomMapMaker m_random;
  std::vector<QUuid> m_nodes;
  std::vector<QUuid> m_edges;
  std::vector<QUuid> m_links;
  std::vector<QUuid> m_regions;
};

inline const RandomCommands::Table& RandomCommands::table() {
  using R = RandomCommands;
  static const Table commands = {{"createFreeNode", &R::createFreeNode},
                                 {"createChild", &R::createChild},
                                 {"createChildAt", &R::createChildAt},
                                 {"setNodeTitle", &R::setNodeTitle},
                                 {"setNodeNotes", &R::setNodeNotes},
                                 {"setNodeBadge", &R::setNodeBadge},
                                 {"clearNodeImage", &R::clearNodeImage},
                                 {"moveSelectedNodes", &R::moveSelectedNodes},
                                 {"reparentNode", &R::reparentNode},
                                 {"deleteNode", &R::deleteNode},
                                 {"deleteSelection", &R::deleteSelection},
                                 {"createEdge", &R::createEdge},
                                 {"addRelationship", &R::addRelationship},
                                 {"deleteRelationship", &R::deleteRelationship},
                                 {"reconnectEdgeSource", &R::reconnectEdgeSource},
                                 {"reconnectEdgeTarget", &R::reconnectEdgeTarget},
                                 {"setEdgeBend", &R::setEdgeBend},
                                 {"setRelationshipBend", &R::setRelationshipBend},
                                 {"setEdgeStyle", &R::setEdgeStyle},
                                 {"deleteEdge", &R::deleteEdge},
                                 {"createRegion", &R::createRegion},
                                 {"deleteRegion", &R::deleteRegion},
                                 {"copySelection", &R::copySelection},
                                 {"pasteClipboard", &R::pasteClipboard},
                                 {"duplicateSelection", &R::duplicateSelection},
                                 {"applyLayout", &R::applyLayout},
                                 {"applyTheme", &R::applyTheme},
                                 {"recolorByBranch", &R::recolorByBranch},
                                 {"recolorByTheme", &R::recolorByTheme},
                                 {"undo", &R::undo},
                                 {"redo", &R::redo},
                                 {"newTopic", &R::newTopic},
                                 {"tabKey", &R::tabKey}};
  return commands;
}

inline const char* RandomCommands::run() {
  for (int count = m_random.below(4); count > 0; --count) attend();
  m_rig.clock.advance(std::chrono::milliseconds(m_random.below(900)));
  const auto& [name, command] = table()[static_cast<std::size_t>(m_random.below(static_cast<int>(table().size())))];
  (this->*command)();
  remember();
  return name;
}

}  // namespace quilmora::test
