#pragma once

#include <QScrollArea>

#include "app/look/Widgets.h"

class QVBoxLayout;

namespace quilmora {

// One group of a form: a header above a card with rows, which hairlines part.
class FormSection final : public QWidget {
  Q_OBJECT

 public:
  FormSection(const Look& look, const QString& title, QWidget* parent = nullptr);

  // A row of its own, over the whole width of the card.
  void addRow(QWidget* row);
  // The label at the left; the control, which gets its name for screen readers, at the right edge.
  void addRow(const QString& label, QWidget* control);
  // Plain words that wrap, to the row above. Without words it takes no room.
  TextLabel* addNote(const QString& text = {}, TokenColor color = &Tokens::secondary);
  static void setNote(TextLabel& note, const QString& text);
  void insertRow(int index, QWidget* row);
  int rowCount() const;

 private:
  class Card;

  const Look& m_look;
  Card* m_card;
  QVBoxLayout* m_rows;
};

// A page of sections that scrolls: by its bar, by Page Up and Page Down, and to whatever gets the keyboard.
class FormPage final : public QScrollArea {
  Q_OBJECT

 public:
  // `ground` is what the page lies on.
  FormPage(const Look& look, TokenColor ground, QWidget* parent = nullptr);

  // Behind the others, or before the one at `index`.
  FormSection* addSection(const QString& title, int index = -1);

  QSize sizeHint() const override;

 private:
  const Look& m_look;
  QVBoxLayout* m_column;
};

}  // namespace quilmora
