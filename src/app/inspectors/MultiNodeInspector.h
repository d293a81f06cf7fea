#pragma once

#include "app/inspectors/Inspector.h"

namespace quilmora {

// The form for several topics. Its colours stay in the panel until they are applied.
class MultiNodeInspector final : public Inspector {
  Q_OBJECT

 public:
  MultiNodeInspector(const InspectorContext& context, QWidget* parent);

  void refresh(const InspectorSubject& subject) override;

 private:
  void addColors();
  void addArrangement();
  void loadColors();

  std::optional<IdSet> m_ids;
  TextLabel* m_title = nullptr;
  ColorWell* m_fill = nullptr;
  ColorWell* m_stroke = nullptr;
  ColorWell* m_text = nullptr;
};

}  // namespace quilmora
