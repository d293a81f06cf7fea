#pragma once

#include "app/companions/Card.h"

class QPushButton;

namespace quilmora {

class MindMapViewModel;
class IconButton;
class TextLabel;

// Says above the canvas that changes of the last run were restored, with a button that goes back to the saved map. It
// disappears with the next step of history, or when it is closed.
class RecoveryCard final : public Card {
  Q_OBJECT

 public:
  RecoveryCard(const Look& look, MindMapViewModel& editor, QWidget* canvas);

  void tellRecovered();
  // Says that what the last run left does not fit and was set aside.
  void tellSetAside();

  QString text() const;
  QPushButton& undoButton() const { return *m_undo; }
  QSize wantedSize(QSize room) override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void tell(const QString& text, bool offersUndo);
  void place();

  MindMapViewModel& m_editor;
  TextLabel* m_text;
  QPushButton* m_undo;
  IconButton* m_close;
};

}  // namespace quilmora
