#pragma once

#include <functional>
#include <optional>

#include "app/inspectors/Inspector.h"
#include "app/inspectors/SelectedEdges.h"

namespace quilmora {

class PanelPicker;
class PanelToggle;
class TaperSliders;

// The form for one connector.
class EdgeInspector final : public Inspector {
  Q_OBJECT

 public:
  EdgeInspector(const InspectorContext& context, QWidget* parent);

  void refresh(const InspectorSubject& subject) override;

 private:
  void addStyle();
  void addTaper();
  void showStyle(const EdgeStyle& style);
  // The current connector, if it still exists.
  std::optional<Edge> present();
  void changeStyle(const std::function<void(EdgeStyle&)>& change);

  QUuid m_id;
  SelectedEdges m_finder;
  ColorWell* m_color = nullptr;
  PanelToggle* m_dashed = nullptr;
  PanelPicker* m_arrowHead = nullptr;
  TaperSliders* m_taper = nullptr;
  PanelPicker* m_easing = nullptr;
};

}  // namespace quilmora
