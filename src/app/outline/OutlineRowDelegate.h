#pragma once

#include <QLineEdit>
#include <QPointer>
#include <QStyledItemDelegate>

namespace quilmora {

class Look;

// The places of the parts of an outline's row, from left to right, or mirrored.
struct OutlineRowParts {
  QRect chevron;  // also if there is none
  QRect emoji;
  QRect title;
  QRect notes;
};

// Draws a row of an outline, and renames its topic in place. Takes its data from OutlineModel.
class OutlineRowDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  // Longer titles are left to the canvas, which edits them in parts.
  static constexpr qsizetype maxShownTitleLength = 10'000;

  OutlineRowDelegate(const Look& look, QObject* parent);

  OutlineRowParts parts(const QStyleOptionViewItem& option, const QModelIndex& index) const;
  // The field in which a topic is being renamed, or nullptr.
  QLineEdit* field() const { return m_field; }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
  void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const override;

 private:
  const Look& m_look;
  mutable QPointer<QLineEdit> m_field;
};

// The indent of a row in pixels. Grows with every level, but ever more slowly, so that the deepest title still has
// room.
double outlineIndent(int depth);

}  // namespace quilmora
