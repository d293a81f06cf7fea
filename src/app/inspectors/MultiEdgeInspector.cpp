#include "app/inspectors/MultiEdgeInspector.h"

#include <algorithm>

#include "app/inspectors/PanelControls.h"
#include "app/inspectors/SliderRow.h"
#include "app/inspectors/TaperSliders.h"
#include "app/look/ColorWell.h"
#include "app/look/Widgets.h"
#include "themes/Color.h"

namespace quilmora {

MultiEdgeInspector::MultiEdgeInspector(const InspectorContext& context, QWidget* parent) : Inspector(context, parent) {
  m_title = addHeading(QString(), QStringLiteral("Batch edit properties for selected edges"));
  addSection(tr("Color"));
  m_color = new ColorWell(look(), tr("Color"), this);
  addRow(tr("Branches"), m_color, Place::atEdge);
  auto* applyColor = new PanelButton(QStringLiteral("Apply Color"), PanelButton::Kind::plain, this);
  connect(applyColor, &QPushButton::clicked, this,
          [this] { editor().colorSelectedEdges(hexFromColor(m_color->color())); });
  addPart(applyColor);

  addSection(QStringLiteral("Taper Settings"));
  m_taper = new TaperSliders(look(), this);
  addPart(m_taper);
  m_applyTaper = new PanelButton(QStringLiteral("Apply Taper Settings"), PanelButton::Kind::plain, this);
  connect(m_applyTaper, &QPushButton::clicked, this,
          [this] { editor().taperSelectedEdges(m_taper->start().value(), m_taper->end().value()); });
  addPart(m_applyTaper);

  addSection();
  auto* remove = new PanelButton(QStringLiteral("Delete All Selected"), PanelButton::Kind::destructive, this);
  connect(remove, &QPushButton::clicked, this, [this] { editor().deleteSelection(); });
  addPart(remove);
  addHint(QStringLiteral("Hold Shift and click edges to add them to selection"));
}

void MultiEdgeInspector::refresh(const InspectorSubject& subject) {
  m_title->setPlainText(QStringLiteral("Multiple Edges (%1)").arg(subject.count));
  const bool isSizedByDepth = editor().mindMap().hierarchical.edgeSizing;
  m_taper->setControlledByDepth(isSizedByDepth);
  m_applyTaper->setVisible(!isSizedByDepth);
  if (m_ids == subject.ids) return;
  m_ids = subject.ids;
  load();
}

void MultiEdgeInspector::load() {
  const SharedArray<Edge>& edges = editor().mindMap().edges;
  const auto first =
      std::find_if(edges.begin(), edges.end(), [&](const Edge& edge) { return m_ids->contains(edge.id); });
  if (first == edges.end()) return;
  m_color->cancelChoosing();
  m_color->setColor(colorFromHex(first->style.color));
  m_taper->start().setValue(first->style.taper.startWidth);
  m_taper->end().setValue(first->style.taper.endWidth);
}

}  // namespace quilmora
