#pragma once

#include <optional>

#include "app/inspectors/ChoiceGrid.h"
#include "themes/StylePresets.h"

namespace quilmora {

class Look;

// The ready-made styles as round samples.
class StyleSamples : public ChoiceGrid {
  Q_OBJECT

 public:
  // Marks the sample with these colours, if there is one.
  void setMatching(const std::optional<TopicColors>& colors);

 Q_SIGNALS:
  void picked(const quilmora::TopicColors& colors);

 protected:
  StyleSamples(const Look& look, QWidget* parent);

 private:
  class Sample;
  std::vector<Sample*> m_samples;
};

// For one topic: the sample with its colours is marked.
class StyleSamplerRow final : public StyleSamples {
  Q_OBJECT

 public:
  StyleSamplerRow(const Look& look, QWidget* parent) : StyleSamples(look, parent) {}
};

// For all selected topics.
class MultiStyleSamplerRow final : public StyleSamples {
  Q_OBJECT

 public:
  MultiStyleSamplerRow(const Look& look, QWidget* parent) : StyleSamples(look, parent) {}
};

}  // namespace quilmora
