#pragma once

#include <QListView>
#include <QPoint>

#include "commands/PaletteCommands.h"

class QVariantAnimation;

namespace quilmora {

class CommandRow;
class CommandRows;
class Look;

// The rows of the palette, one of them highlighted. Never takes the keyboard.
class CommandList final : public QListView {
  Q_OBJECT

 public:
  enum class By { keys, pointer };

  CommandList(const Look& look, QWidget* parent);

  // Highlights the first row.
  void setItems(std::vector<CommandItem> items);
  const std::vector<CommandItem>& items() const;
  int highlightedIndex() const { return m_highlighted; }
  // By pointer, the highlight moves smoothly and the list stays where it is until the pointer leaves it; otherwise it
  // would run away from the hand.
  void setHighlightedIndex(int index, By by);
  // The height of all rows.
  int wantedHeight() const;

 Q_SIGNALS:
  void rowChosen(int row);

 protected:
  void mouseMoveEvent(QMouseEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  double highlightOf(int row) const;
  int rowAt(const QMouseEvent& event) const;
  void centreHighlighted();

  const Look& m_look;
  CommandRows* m_rows;
  CommandRow* m_row;
  QVariantAnimation* m_easing;
  int m_highlighted = 0;
  int m_before = -1;   // the previously highlighted row, during the transition
  int m_pressed = -1;  // row on which the button was pressed
  QPoint m_pointer;    // its last position on the screen: a list moving below it is no movement of the pointer
};

}  // namespace quilmora
