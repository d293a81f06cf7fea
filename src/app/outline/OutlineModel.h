#pragma once

#include <optional>
#include <vector>

#include <QAbstractListModel>

#include "app/outline/OutlineTree.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

// The visible rows of a map's outline, from top to bottom. A topic with several parents has a row below each, and a
// topic that is its own ancestor has no row there. Follows the map when asked to, at the cost of what changed. Rows
// that a damaged map multiplies without bound come in portions, as the view asks for more.
class OutlineModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role { idRole = Qt::UserRole, depthRole, hasChildrenRole, isExpandedRole, emojiRole, hasNotesRole };

  // Empty until follow() is called.
  explicit OutlineModel(MindMapViewModel& editor, QObject* parent = nullptr);

  // Updates the rows to the current map. Rows that stay keep their index and whether they are folded.
  void follow();

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  // Renames the topic, unless the title is unchanged.
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

  const OutlineNodeRow& row(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
  const QUuid& idOf(int row) const { return m_tree.idOf(this->row(row).number); }
  // As the row shows it: on one line, with a placeholder word if it is empty.
  QString shownTitle(int row) const;
  bool isParent(int row) const { return !m_tree.children(this->row(row).number).empty(); }
  // The row of the parent topic, or nothing.
  std::optional<int> parentRow(int row) const;
  // Folds an expanded row and expands a folded one. Does nothing for a row without children.
  void toggle(int row);
  // The first row of the topic from `start` on, wrapping around, or nothing.
  std::optional<int> findRow(const QUuid& id, int start = 0) const;
  // The same for the first row whose title begins with the letters, ignoring case.
  std::optional<int> findTitle(const QString& letters, int start) const;
  // Expands whatever hides the topic's row below its parents, and finds it. Nothing for a topic that no root reaches.
  std::optional<int> revealRow(const QUuid& id);

 private:
  // The rows of its ancestors, from the root down.
  std::vector<int> rowsAbove(int row) const;
  template <class Wanted>
  std::optional<int> findRowThat(Wanted wanted, int start) const;
  int endOfBranch(int row) const;
  std::uint32_t repetitionOf(int row) const;
  template <class Step>
  OutlineFolds::Place placeAt(const std::vector<int>& path, Step step) const;
  OutlineFolds::Place findPlace(const std::vector<int>& path) const;
  void enter(OutlineWalk& walk, const std::vector<int>& path) const;

  void reset();
  bool followStructure(const OutlineTree& before);
  // Updates the rows directly below this one, or the roots, to the tree. Returns whether it could.
  bool patchBelow(std::optional<int> row);
  void insertRowsAt(int first, std::vector<OutlineNodeRow> rows);
  void removeRowsAt(int first, int end);
  void tellTexts(const SharedArray<Node>& before, const OutlineTree& treeBefore);
  void rowChanged(int row);
  const Node* topicOf(int row) const;

  MindMapViewModel& m_editor;
  quint64 m_generation = 0;
  std::optional<quint64> m_document;
  SharedArray<Node> m_nodes;
  OutlineTree m_tree;
  OutlineFolds m_folds;
  std::vector<OutlineNodeRow> m_rows;
  std::size_t m_limit = 0;
  bool m_isCut = false;  // there are more rows after the last one
};

}  // namespace quilmora
