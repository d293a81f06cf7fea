#pragma once

#include "app/companions/Card.h"

namespace quilmora {

class AIWorkflows;
class BusySign;
class IconButton;
class SymbolLabel;
class TextLabel;

// Shows above the canvas what the assistant is doing to the map, and what went wrong with it if no sheet says so; an
// error stays until it is closed or the next request starts.
class AIActivityCard final : public Card {
  Q_OBJECT

 public:
  // Both must outlive it.
  AIActivityCard(const Look& look, AIWorkflows& workflows, QWidget* canvas);

  QString text() const;
  bool isError() const { return m_isError; }
  IconButton& closeButton() const { return *m_close; }
  QSize wantedSize(QSize room) override;

 private:
  void follow();

  AIWorkflows& m_workflows;
  BusySign* m_busy;
  SymbolLabel* m_sign;
  TextLabel* m_text;
  IconButton* m_close;
  bool m_isError = false;
};

}  // namespace quilmora
