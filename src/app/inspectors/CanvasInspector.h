#pragma once

#include "app/inspectors/Inspector.h"

namespace quilmora {

class PanelPicker;
class PanelToggle;
class SliderRow;
class ThemePicker;

// The form for the canvas and the map as a whole.
class CanvasInspector final : public Inspector {
  Q_OBJECT

 public:
  CanvasInspector(const InspectorContext& context, QWidget* parent);

  void refresh(const InspectorSubject& subject) override;

 private:
  // A quantity with a slider.
  using Quantity = double HierarchicalConfig::*;

  void addBackground();
  void addThemes();
  void addLayouts();
  void addSizing();
  void addLens();
  void addFacts();
  PanelToggle* addSwitch(bool HierarchicalConfig::*flag);
  SliderRow* addSlider(const QString& label, double least, double most, double step, int decimals, Quantity quantity);
  void followThemes();
  void showFacts();

  ColorWell* m_background = nullptr;
  ThemePicker* m_themes = nullptr;
  PanelToggle* m_edgeSizing = nullptr;
  SliderRow* m_rootEdgeWidth = nullptr;
  SliderRow* m_leafEdgeWidth = nullptr;
  PanelToggle* m_nodeSizing = nullptr;
  SliderRow* m_rootFontSize = nullptr;
  SliderRow* m_leafFontSize = nullptr;
  PanelPicker* m_lens = nullptr;
  TextLabel* m_counts = nullptr;
  TextLabel* m_depth = nullptr;
};

}  // namespace quilmora
