#pragma once

#include <deque>
#include <map>
#include <set>
#include <vector>

#include "model/IdSet.h"
#include "model/MindMap.h"
#include "model/TreeInfo.h"

namespace quilmora::test {

// The tree's rules again, word for word over dictionaries.
struct TreeReference {
  std::map<QUuid, int> depth;
  std::map<QUuid, QUuid> parent;
  std::map<QUuid, std::vector<QUuid>> children;
  std::vector<QUuid> roots;
  int maxDepth = 0;
  std::set<QUuid> known;  // every id that a topic has or an edge names

  explicit TreeReference(const MindMap& map) {
    std::set<QUuid> targets;
    for (const Edge& edge : map.edges) {
      targets.insert(edge.to);
      children[edge.from].push_back(edge.to);
      parent[edge.to] = edge.from;
      known.insert({edge.from, edge.to});
    }
    std::set<QUuid> seen;
    for (const Node& node : map.nodes) {
      known.insert(node.id);
      if (!targets.count(node.id) && seen.insert(node.id).second) roots.push_back(node.id);
    }
    std::deque<std::pair<QUuid, int>> queue;
    for (const QUuid& root : roots) queue.push_back({root, 0});
    std::set<QUuid> visited;
    while (!queue.empty()) {
      const auto [id, level] = queue.front();
      queue.pop_front();
      if (!visited.insert(id).second) continue;
      depth[id] = level;
      maxDepth = std::max(maxDepth, level);
      if (const auto found = children.find(id); found != children.end())
        for (const QUuid& child : found->second) queue.push_back({child, level + 1});
    }
    for (const Node& node : map.nodes) depth.try_emplace(node.id, 0);
  }

  bool isDescendant(const QUuid& target, const QUuid& root) const {
    std::set<QUuid> visited;
    std::vector<QUuid> open = childrenOf(root);
    while (!open.empty()) {
      const QUuid id = open.back();
      open.pop_back();
      if (id == target) return true;
      if (!visited.insert(id).second) continue;
      for (const QUuid& child : childrenOf(id)) open.push_back(child);
    }
    return false;
  }

  // The walk to the parents, abandoned as endless once it is longer than there are ids.
  bool isHidden(QUuid id, const IdSet& collapsed) const {
    for (std::size_t step = 0; step <= known.size(); ++step) {
      const auto found = parent.find(id);
      if (found == parent.end()) return false;
      id = found->second;
      if (collapsed.contains(id)) return true;
    }
    return false;
  }

  std::vector<QUuid> childrenOf(const QUuid& id) const {
    const auto found = children.find(id);
    return found == children.end() ? std::vector<QUuid>() : found->second;
  }

  // What differs in `tree`, or nothing.
  std::string differenceTo(const TreeInfo& tree) const {
    if (tree.maxDepth() != maxDepth) return "maxDepth";
    if (tree.roots() != roots) return "roots";
    for (const QUuid& id : known) {
      const std::string name = " of " + id.toString().toStdString();
      const auto level = depth.find(id);
      if (tree.depth(id) != (level == depth.end() ? std::optional<int>() : level->second)) return "depth" + name;
      const auto up = parent.find(id);
      if (tree.parent(id) != (up == parent.end() ? std::optional<QUuid>() : up->second)) return "parent" + name;
      std::vector<QUuid> down;
      for (const QUuid& child : tree.children(id)) down.push_back(child);
      if (down != childrenOf(id)) return "children" + name;
      if (tree.childCount(id) != down.size()) return "childCount" + name;
    }
    return {};
  }
};

}  // namespace quilmora::test
