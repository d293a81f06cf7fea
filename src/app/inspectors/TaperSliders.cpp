#include "app/inspectors/TaperSliders.h"

#include <QVBoxLayout>

#include "app/inspectors/SliderRow.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"

namespace quilmora {

namespace {

constexpr StepSlider::Range widths{1.0, 20.0, 0.5};

}  // namespace

TaperSliders::TaperSliders(const Look& look, QWidget* parent)
    : QWidget(parent),
      m_start(new SliderRow(look, QStringLiteral("Start Width: "), widths, 1, this)),
      m_end(new SliderRow(look, QStringLiteral("End Width: "), widths, 1, this)),
      m_note(new TextLabel(look, QStringLiteral("Controlled by Branch Edge Sizing (see Canvas inspector)"),
                           &Tokens::secondary, look.font(), TextLabel::Overflow::wraps, this)) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(metrics::gap);
  column->addWidget(m_start);
  column->addWidget(m_end);
  column->addWidget(m_note);
  setControlledByDepth(false);
}

void TaperSliders::setControlledByDepth(bool controlled) {
  m_start->setVisible(!controlled);
  m_end->setVisible(!controlled);
  m_note->setVisible(controlled);
}

}  // namespace quilmora
