#pragma once

#include "app/inspectors/Inspector.h"

namespace quilmora {

class PanelButton;
class TaperSliders;

// The form for several connectors. Its colour and widths stay in the panel until they are applied.
class MultiEdgeInspector final : public Inspector {
  Q_OBJECT

 public:
  MultiEdgeInspector(const InspectorContext& context, QWidget* parent);

  void refresh(const InspectorSubject& subject) override;

 private:
  void load();

  std::optional<IdSet> m_ids;
  TextLabel* m_title = nullptr;
  ColorWell* m_color = nullptr;
  TaperSliders* m_taper = nullptr;
  PanelButton* m_applyTaper = nullptr;
};

}  // namespace quilmora
