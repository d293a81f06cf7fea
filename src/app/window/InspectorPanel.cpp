#include "app/window/InspectorPanel.h"

#include <QVBoxLayout>

#include "app/look/Look.h"

namespace quilmora {

InspectorPanel::InspectorPanel(const Look& look, QWidget* parent) : Ground(look, &Tokens::panel, Qt::LeftEdge, parent) {
  setFixedWidth(metrics::inspectorWidth);
  setAccessibleName(tr("Inspector"));
  auto* title = new TextLabel(look, tr("Inspector"), &Tokens::text, look.font(Look::TextStyle::panelTitle),
                              TextLabel::Overflow::elides, this);
  // In line with the tabs on the other side.
  title->setFixedHeight(metrics::sidebarTabBarHeight);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(metrics::panelPadding, 0, metrics::panelPadding, metrics::panelPadding);
  column->setSpacing(metrics::gap);
  column->addWidget(title);
  column->addWidget(new EmptyState(look, QStringLiteral("slider.horizontal.3"),
                                   tr("The style of what you select, and of the canvas."), this),
                    1);
}

}  // namespace quilmora
