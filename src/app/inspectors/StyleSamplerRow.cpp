#include "app/inspectors/StyleSamplerRow.h"

#include <QAbstractButton>
#include <QPainter>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "canvas/view/PlainText.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr int sampleSize = 28;
constexpr int samplesInARow = 7;
constexpr double plainRing = 0.5;
constexpr double matchingRing = 1.5;
constexpr double ringGap = 2.0;

}  // namespace

class StyleSamples::Sample final : public QAbstractButton {
 public:
  Sample(const Look& look, const StylePreset& preset, QWidget* parent)
      : QAbstractButton(parent), m_look(look), m_colors(preset.colors) {
    setFixedSize(sampleSize, sampleSize);
    setCheckable(true);
    setAttribute(Qt::WA_Hover);
    setAccessibleName(preset.name);
    plain::setToolTip(*this, preset.name);
    connect(&look, &Look::changed, this, [this] { update(); });
  }

  const TopicColors& colors() const { return m_colors; }
  bool matches(const TopicColors& colors) const {
    const auto isSame = [](const QString& a, const QString& b) { return colorFromHex(a) == colorFromHex(b); };
    return isSame(m_colors.fill, colors.fill) && isSame(m_colors.stroke, colors.stroke) &&
           isSame(m_colors.textColor, colors.textColor);
  }

  QSize sizeHint() const override { return {sampleSize, sampleSize}; }

 protected:
  void nextCheckState() override {}

  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Tokens& tokens = m_look.tokens();
    QStyleOption option;
    option.initFrom(this);
    const bool isFocused = showsKeyboardFocus(option);
    const bool isApart = isChecked() || isFocused || underMouse();
    const QRectF outer = rect();
    const QRectF disc = isApart
                            ? outer.adjusted(1, 1, -1, -1).marginsRemoved(QMarginsF(ringGap, ringGap, ringGap, ringGap))
                            : outer.adjusted(1, 1, -1, -1);
    painter.setBrush(colorFromHex(m_colors.fill));
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(disc);
    painter.setBrush(Qt::NoBrush);
    // A pale disc would be lost on a pale panel.
    painter.setPen(QPen(isDown() ? tokens.text : tokens.secondary, plainRing));
    painter.drawEllipse(disc);
    if (!isApart) return;
    const double width = isFocused ? metrics::focusRingWidth : matchingRing;
    const double half = width / 2;
    painter.setPen(QPen(isChecked() || isFocused ? tokens.accent : tokens.groove, width));
    painter.drawEllipse(outer.adjusted(half, half, -half, -half));
  }

 private:
  const Look& m_look;
  TopicColors m_colors;
};

StyleSamples::StyleSamples(const Look& look, QWidget* parent) : ChoiceGrid(Cells::natural, samplesInARow, parent) {
  for (const StylePreset& preset : stylePresets()) {
    auto* sample = new Sample(look, preset, this);
    connect(sample, &QAbstractButton::clicked, this, [this, sample] { Q_EMIT picked(sample->colors()); });
    add(sample);
    m_samples.push_back(sample);
  }
}

void StyleSamples::setMatching(const std::optional<TopicColors>& colors) {
  for (Sample* sample : m_samples) {
    sample->setChecked(colors && sample->matches(*colors));
    if (sample->isChecked() && !isAncestorOf(focusWidget())) setEntry(sample);
  }
}

}  // namespace quilmora
