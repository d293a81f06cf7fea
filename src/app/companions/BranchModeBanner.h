#pragma once

#include "app/companions/Card.h"

namespace quilmora {

class EditorState;

// Says that branch mode is on. The pointer passes through to what is below it.
class BranchModeBanner : public Card {
  Q_OBJECT

 public:
  BranchModeBanner(const Look& look, EditorState& editor, QWidget* canvas);
  QSize wantedSize(QSize room) override;
};

}  // namespace quilmora
