#pragma once

#include <functional>

#include <QAbstractItemView>
#include <QElapsedTimer>

#include "app/outline/OutlineModel.h"
#include "app/outline/OutlineRowDelegate.h"

namespace quilmora {

class Look;

// The rows of an outline, all of one height: the cost depends on what is on the screen, however long the outline is.
// Has a current row for the keyboard in addition to the selected topics.
class OutlineList : public QAbstractItemView {
  Q_OBJECT

 public:
  // Both must outlive it.
  OutlineList(const Look& look, OutlineModel& model, QWidget* parent);

  // Sets how to find out which topics are selected.
  void setIsSelected(std::function<bool(const QUuid&)> isSelected) { m_isSelected = std::move(isSelected); }
  bool isSelected(int row) const { return m_isSelected(m_model.idOf(row)); }
  OutlineModel& outline() const { return m_model; }
  OutlineRowParts parts(const QModelIndex& index) const;
  QLineEdit* renameField() const { return m_delegate->field(); }

  // Commits the typed text as the topic's title.
  void finishRename();
  // Makes the row current and scrolls it into view, to the middle if it is far.
  void showRow(int row);
  // As a click on its title does.
  void choose(const QModelIndex& index);

  QRect visualRect(const QModelIndex& index) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  QModelIndex indexAt(const QPoint& point) const override;
  void keyboardSearch(const QString& search) override;
  void reset() override;

 Q_SIGNALS:
  void chosen(const QUuid& id);
  void deletionWanted(const QUuid& id);
  void menuWanted(const QModelIndex& index, const QPoint& globalPosition);

 protected:
  int horizontalOffset() const override { return 0; }
  int verticalOffset() const override;
  bool isIndexHidden(const QModelIndex&) const override { return false; }
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  // The editor holds the selection.
  void setSelection(const QRect&, QItemSelectionModel::SelectionFlags) override {}
  QRegion visualRegionForSelection(const QItemSelection&) const override { return {}; }
  void updateGeometries() override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void scrollContentsBy(int dx, int dy) override;

  bool viewportEvent(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseReleaseEvent(QMouseEvent*) override {}
  void keyPressEvent(QKeyEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void followRows();
  // Rows were inserted or removed there: keeps what the user sees in place.
  void keepInPlace(int first, int count);
  void takeColors();
  QStyleOptionViewItem optionFor(const QModelIndex& index) const;
  void setHovered(const QModelIndex& index);
  bool pressRowKey(const QKeyEvent& event, const QModelIndex& index);
  bool pressMoveKey(int key);
  void foldOrLeave(const QModelIndex& index);
  void expandOrEnter(const QModelIndex& index);

  const Look& m_look;
  OutlineModel& m_model;
  OutlineRowDelegate* m_delegate;
  std::function<bool(const QUuid&)> m_isSelected = [](const QUuid&) { return false; };
  int m_rowHeight = 1;
  QPersistentModelIndex m_hovered;
  QUuid m_currentID;  // survives a rebuilt model
  QString m_search;
  QElapsedTimer m_searchTimer;
};

}  // namespace quilmora
