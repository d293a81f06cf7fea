#pragma once

#include "app/look/Widgets.h"

namespace quilmora {

// The right panel.
class InspectorPanel : public Ground {
  Q_OBJECT

 public:
  explicit InspectorPanel(const Look& look, QWidget* parent = nullptr);
};

}  // namespace quilmora
