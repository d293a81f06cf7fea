#pragma once

#include <functional>
#include <vector>

#include <QAbstractListModel>
#include <QFont>
#include <QStyledItemDelegate>

#include "commands/PaletteCommands.h"

namespace quilmora {

class Look;

// The rows of the palette as a model; screen readers read title, second line and key.
class CommandRows final : public QAbstractListModel {
  Q_OBJECT

 public:
  using QAbstractListModel::QAbstractListModel;

  void setItems(std::vector<CommandItem> items);
  const std::vector<CommandItem>& items() const { return m_items; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::vector<CommandItem> m_items;
};

// Draws a row: symbol, two lines of text, and the key in a pill at its end. `highlight` returns how far a row is
// highlighted, from 0 to 1.
class CommandRow final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using Highlight = std::function<double(int row)>;

  CommandRow(const Look& look, const CommandRows& rows, Highlight highlight, QObject* parent);

  int height() const;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 private:
  struct Places {
    QRect symbol;
    QRect title;
    QRect subtitle;
    QRect pill;  // empty without a key
  };
  Places placesIn(const QRect& row, const QString& key) const;

  const Look& m_look;
  const CommandRows& m_rows;
  Highlight m_highlight;
  QFont m_titleFont;
  QFont m_subtitleFont;
  QFont m_pillFont;
};

}  // namespace quilmora
