#pragma once

#include <vector>

#include <QPointer>
#include <QWidget>

class QAbstractButton;

namespace quilmora {

// Buttons in rows of equal cells, in as many columns as there is room for. Tab goes to one of them; from there the
// arrows, Home and End move on.
class ChoiceGrid : public QWidget {
  Q_OBJECT

 public:
  // Cells are as wide as the widest button wants, or share the width of the grid.
  enum class Cells { natural, sharing };
  ChoiceGrid(Cells cells, int maxColumns, QWidget* parent);

  // The button is a child of the grid.
  void add(QAbstractButton* button);
  const std::vector<QAbstractButton*>& buttons() const { return m_buttons; }
  // Where Tab goes.
  void setEntry(QAbstractButton* button);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QSize cellSize() const;
  int columnsIn(int width) const;
  void arrange();
  bool walk(QAbstractButton& from, int key);

  Cells m_cells;
  int m_maxColumns;
  std::vector<QAbstractButton*> m_buttons;
  QPointer<QAbstractButton> m_entry;
};

}  // namespace quilmora
