#pragma once

#include <optional>
#include <vector>

#include <QByteArray>
#include <QString>

namespace quilmora {

// What every provider returns: a topic with its subtree. A value; copying, comparing and destroying one uses no stack,
// however deeply it nests.
struct AITreeNode {
  QString title;
  std::optional<QString> notes;
  std::optional<std::vector<AITreeNode>> children;  // absent and empty are different

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

// The tree as JSON on one line: `title` always, `notes` and `children` if present.
QByteArray encodeTree(const AITreeNode& tree);

// Reads what encodeTree writes. Other keys are skipped, a null counts as absent, and the last of a repeated key counts.
// Throws AITreeError.
AITreeNode decodeTree(const QByteArray& json);

}  // namespace quilmora
