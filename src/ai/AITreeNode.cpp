#include "ai/AITreeNode.h"

#include <utility>

#include "model/JsonWriter.h"

namespace quilmora {

namespace {

// Copies everything in `source` to `target`, which has no children yet.
void copyTree(const AITreeNode& source, AITreeNode& target) {
  std::vector<std::pair<const AITreeNode*, AITreeNode*>> pending{{&source, &target}};
  while (!pending.empty()) {
    const auto [from, to] = pending.back();
    pending.pop_back();
    to->title = from->title;
    to->notes = from->notes;
    if (!from->children) continue;
    to->children.emplace(from->children->size());
    for (std::size_t i = 0; i < from->children->size(); ++i)
      pending.emplace_back(&(*from->children)[i], &(*to->children)[i]);
  }
}

bool hasChildren(const AITreeNode& node) {
  return node.children && !node.children->empty();
}

}  // namespace

AITreeNode::AITreeNode(const AITreeNode& other) {
  copyTree(other, *this);
}

AITreeNode& AITreeNode::operator=(const AITreeNode& other) {
  return *this = AITreeNode(other);
}

AITreeNode::~AITreeNode() {
  if (!hasChildren(*this)) return;
  // Each list hands over the lists below it before it is destroyed, so that no destructor recurses into another.
  std::vector<std::vector<AITreeNode>> pending;
  pending.push_back(std::move(*children));
  while (!pending.empty()) {
    std::vector<AITreeNode> list = std::move(pending.back());
    pending.pop_back();
    for (AITreeNode& node : list)
      if (hasChildren(node)) pending.push_back(std::move(*node.children));
  }
}

bool AITreeNode::operator==(const AITreeNode& other) const {
  std::vector<std::pair<const AITreeNode*, const AITreeNode*>> pending{{this, &other}};
  while (!pending.empty()) {
    const auto [one, two] = pending.back();
    pending.pop_back();
    if (one->title != two->title || one->notes != two->notes) return false;
    if (one->children.has_value() != two->children.has_value()) return false;
    if (!one->children) continue;
    if (one->children->size() != two->children->size()) return false;
    for (std::size_t i = 0; i < one->children->size(); ++i)
      pending.emplace_back(&(*one->children)[i], &(*two->children)[i]);
  }
  return true;
}

QByteArray encodeTree(const AITreeNode& tree) {
  json::JsonWriter json(JsonForm::compact);
  const auto begin = [&json](const AITreeNode& node) {
    json.beginObject();
    json.key("title");
    json.text(node.title);
    if (node.notes) {
      json.key("notes");
      json.text(*node.notes);
    }
    if (!node.children) return;
    json.key("children");
    json.beginArray();
  };

  struct Level {
    const AITreeNode* node;
    std::size_t next = 0;
  };
  begin(tree);
  std::vector<Level> open{{&tree}};
  while (!open.empty()) {
    Level& level = open.back();
    if (level.node->children && level.next < level.node->children->size()) {
      const AITreeNode& child = (*level.node->children)[level.next++];
      json.item();
      begin(child);
      open.push_back({&child});
      continue;
    }
    if (level.node->children) json.endArray();
    json.endObject();
    open.pop_back();
  }
  return json.take();
}

}  // namespace quilmora
