#include "app/inspectors/SliderRow.h"

#include <algorithm>
#include <cmath>

#include <QAccessibleWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "app/look/Look.h"
#include "app/look/NumberText.h"
#include "app/look/Widgets.h"

namespace quilmora {

namespace {

// Reports the real number instead of the number of steps.
class SliderInterface final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit SliderInterface(StepSlider* slider) : QAccessibleWidget(slider, QAccessible::Slider) {}

  void* interface_cast(QAccessible::InterfaceType type) override {
    if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
  }
  QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Value ? QString::number(slider().stepValue()) : QAccessibleWidget::text(kind);
  }
  QVariant currentValue() const override { return slider().stepValue(); }
  void setCurrentValue(const QVariant& value) override {
    const StepSlider::Range& range = slider().range();
    slider().setValue(static_cast<int>(std::lround((value.toDouble() - range.least) / range.step)));
  }
  QVariant maximumValue() const override { return slider().range().most; }
  QVariant minimumValue() const override { return slider().range().least; }
  QVariant minimumStepSize() const override { return slider().range().step; }

 private:
  StepSlider& slider() const { return *static_cast<StepSlider*>(widget()); }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* slider = qobject_cast<StepSlider*>(object);
  return slider == nullptr ? nullptr : new SliderInterface(slider);
}

}  // namespace

StepSlider::StepSlider(const QString& name, Range range, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), m_range(range) {
  static const bool isInstalled = [] {
    QAccessible::installFactory(makeInterface);
    return true;
  }();
  Q_UNUSED(isInstalled);
  setAccessibleName(name);
  setFocusPolicy(Qt::TabFocus);
  setRange(0, static_cast<int>(std::lround((range.most - range.least) / range.step)));
  setSingleStep(1);
  setPageStep(std::max(2, maximum() / 10));
  connect(this, &QSlider::valueChanged, this, [this] { Q_EMIT moved(stepValue()); });
}

void StepSlider::setStepValue(double value) {
  if (isSliderDown()) return;
  const QSignalBlocker blocker(this);
  const double steps = (std::clamp(value, m_range.least, m_range.most) - m_range.least) / m_range.step;
  setValue(static_cast<int>(std::lround(steps)));
}

void StepSlider::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

SliderRow::SliderRow(const Look& look, const QString& label, StepSlider::Range range, int decimals, QWidget* parent)
    : QWidget(parent),
      m_labelText(label),
      m_decimals(decimals),
      m_label(new TextLabel(look, label, &Tokens::secondary, look.font(), TextLabel::Overflow::elides, this)) {
  QString name = label.trimmed();
  if (name.endsWith(u':')) name.chop(1);
  m_slider = new StepSlider(name, range, this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(metrics::gapSmall);
  column->addWidget(m_label);
  column->addWidget(m_slider);
  connect(m_slider, &StepSlider::moved, this, [this](double value) {
    m_value = value;
    showValue();
    Q_EMIT moved(value);
  });
}

void SliderRow::setValue(double value) {
  m_value = value;
  m_slider->setStepValue(value);
  showValue();
}

QString SliderRow::text() const {
  return m_label->text();
}

void SliderRow::showValue() {
  m_label->setPlainText(m_labelText + fixedText(m_value, m_decimals));
}

}  // namespace quilmora
