#pragma once

#include <QLineEdit>
#include <QPointer>

#include "app/companions/Card.h"

namespace quilmora {

class IconButton;
class EditorNavigation;
class TextLabel;

// The find field: searches at each change of its text, and steps through the results. Takes the keyboard when it opens,
// and returns it to the canvas when it closes.
class SearchBar : public Card {
  Q_OBJECT

 public:
  SearchBar(const Look& look, EditorNavigation& editor, QWidget* canvas);

  QLineEdit& field() const { return *m_field; }
  bool isFocused() const { return m_field->hasFocus(); }
  // "2/7", or that there is no result; empty without a query.
  QString countText() const;
  IconButton& previousButton() const { return *m_previous; }
  IconButton& nextButton() const { return *m_next; }

  QSize wantedSize(QSize room) override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void followSearching();
  void followQuery();
  void followResults();

  EditorNavigation& m_editor;
  QPointer<QWidget> m_before;  // had the keyboard before
  QLineEdit* m_field;
  TextLabel* m_count;
  IconButton* m_previous;
  IconButton* m_next;
};

}  // namespace quilmora
