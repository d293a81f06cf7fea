#pragma once

#include <optional>
#include <vector>

#include <QByteArray>
#include <QString>

namespace quilmora {

// What every back end answers with: a topic with its subtree. A value; copying, comparing and destroying one takes no
// stack, however deep it nests.
struct AITreeNode {
  QString title;
  std::optional<QString> notes;
  std::optional<std::vector<AITreeNode>> children;  // absent and empty are different states

  AITreeNode() = default;
  explicit AITreeNode(QString name) : title(std::move(name)) {}
  AITreeNode(QString name, std::vector<AITreeNode> subtrees) : title(std::move(name)), children(std::move(subtrees)) {}
  AITreeNode(const AITreeNode& other);
  AITreeNode(AITreeNode&&) = default;
  AITreeNode& operator=(const AITreeNode& other);
  AITreeNode& operator=(AITreeNode&&) = default;
  ~AITreeNode();

  bool operator==(const AITreeNode& other) const;
};

// The tree as JSON on one line: `title` always, `notes` and `children` where they are present.
QByteArray encodeTree(const AITreeNode& tree);

// Reads what encodeTree writes. Keys beside the three are passed over, a null counts as absent, and of a key that
// stands twice the last one counts. Throws AITreeError.
AITreeNode decodeTree(const QByteArray& json);

}  // namespace quilmora
