#pragma once

#include <functional>
#include <optional>

#include "app/inspectors/Inspector.h"
#include "app/inspectors/SelectedEdges.h"

namespace quilmora {

class PanelPicker;
class PanelToggle;
class TaperSliders;

// One connector.
class EdgeInspector final : public Inspector {
  Q_OBJECT

 public:
  EdgeInspector(const InspectorContext& context, QWidget* parent);

  void refresh(const InspectorSubject& subject) override;

 private:
  void addStyle();
  void addTaper();
  void showStyle(const EdgeStyle& style);
  // The connector as it is now, if it is still there.
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
