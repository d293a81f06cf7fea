#pragma once

#include <QScrollArea>

#include "app/look/Widgets.h"

class QVBoxLayout;

namespace quilmora {

// The least width of a text field in a row.
inline constexpr int formFieldWidth = 220;

// One group of a form: a header above a card with rows, separated by hairlines.
class FormSection final : public QWidget {
  Q_OBJECT

 public:
  FormSection(const Look& look, const QString& title, QWidget* parent = nullptr);

  // A row over the whole width of the card.
  void addRow(QWidget* row);
  // The label at the left; the control, named after it for screen readers, at the right edge.
  void addRow(const QString& label, QWidget* control);
  // A wrapping note for the row above. Without text it takes no space.
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

// A scrolling page of sections; scrolls by its bar, by Page Up and Page Down, and to the focused control.
class FormPage final : public QScrollArea {
  Q_OBJECT

 public:
  // `ground` is the background of the page.
  FormPage(const Look& look, TokenColor ground, QWidget* parent = nullptr);

  // After the others, or before the one at `index`.
  FormSection* addSection(const QString& title, int index = -1);

  QSize sizeHint() const override;

 private:
  const Look& m_look;
  QVBoxLayout* m_column;
};

}  // namespace quilmora
