#pragma once

#include "app/companions/Card.h"

namespace quilmora {

class EditorState;

// Tells that branch mode is on. The pointer reaches what lies below it.
class BranchModeBanner : public Card {
  Q_OBJECT

 public:
  BranchModeBanner(const Look& look, EditorState& editor, QWidget* canvas);
  QSize wantedSize(QSize room) override;
};

}  // namespace quilmora
