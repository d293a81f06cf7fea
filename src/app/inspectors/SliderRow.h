#pragma once

#include <QSlider>

namespace quilmora {

class Look;
class TextLabel;

// A slider over real numbers in even steps. Leaves the wheel to its container.
class StepSlider final : public QSlider {
  Q_OBJECT

 public:
  struct Range {
    double least;
    double most;
    double step;
  };

  StepSlider(const QString& name, Range range, QWidget* parent);

  const Range& range() const { return m_range; }
  double stepValue() const { return m_range.least + value() * m_range.step; }
  // Sets the nearest step within the range; emits nothing, and does not move a thumb that is being held.
  void setStepValue(double value);

 Q_SIGNALS:
  // By the user or by an assistive tool, at each step on the way.
  void moved(double value);

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  Range m_range;
};

// A slider below its name and value, such as "Start Width: 6.0".
class SliderRow final : public QWidget {
  Q_OBJECT

 public:
  // `label` is the text before the value: "Start Width: ".
  SliderRow(const Look& look, const QString& label, StepSlider::Range range, int decimals, QWidget* parent);

  // The local copy. A value between two steps or outside the range is shown and kept until the slider moves.
  double value() const { return m_value; }
  void setValue(double value);
  StepSlider& slider() const { return *m_slider; }
  QString text() const;

 Q_SIGNALS:
  void moved(double value);

 private:
  void showValue();

  QString m_labelText;
  int m_decimals;
  double m_value = 0;
  TextLabel* m_label;
  StepSlider* m_slider;
};

}  // namespace quilmora
