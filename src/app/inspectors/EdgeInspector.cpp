#include "app/inspectors/EdgeInspector.h"

#include "app/inspectors/PanelControls.h"
#include "app/inspectors/SliderRow.h"
#include "app/inspectors/TaperSliders.h"
#include "app/look/ColorWell.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

// In the order of EdgeStyle::ArrowHead.
QStringList arrowHeadNames() {
  return {QStringLiteral("Triangle"), QStringLiteral("None")};
}

// In the order of EdgeStyle::TaperEasing.
QStringList easingNames() {
  return {QStringLiteral("Linear"), QStringLiteral("Quadratic"), QStringLiteral("Cubic")};
}

}  // namespace

EdgeInspector::EdgeInspector(const InspectorContext& context, QWidget* parent) : Inspector(context, parent) {
  addSection(QStringLiteral("Color"));
  m_color = new ColorWell(look(), tr("Color"), this);
  connect(m_color, &ColorWell::colorChosen, this, [this](const QColor& chosen) {
    const auto edge = present();
    if (edge && colorFromHex(edge->style.color) != chosen)
      changeStyle([&](EdgeStyle& style) { style.color = hexFromColor(chosen); });
  });
  addRow(tr("Branch"), m_color, Place::atEdge);
  addStyle();
  addTaper();
  addSection();
  auto* remove = new PanelButton(QStringLiteral("Delete Branch"), PanelButton::Kind::destructive, this);
  connect(remove, &QPushButton::clicked, this, [this] {
    if (present()) editor().deleteEdge(m_id);
  });
  addPart(remove);
}

void EdgeInspector::addStyle() {
  addSection();
  m_dashed = new PanelToggle(tr("Dashed"), this);
  connect(m_dashed, &QCheckBox::toggled, this,
          [this](bool on) { changeStyle([on](EdgeStyle& style) { style.dashed = on; }); });
  addPart(m_dashed);
  m_arrowHead = new PanelPicker(tr("Arrow Head"), arrowHeadNames(), this);
  connect(m_arrowHead, &PanelPicker::chosen, this, [this](int index) {
    changeStyle([index](EdgeStyle& style) { style.arrowHead = static_cast<EdgeStyle::ArrowHead>(index); });
  });
  addRow(tr("Arrow Head"), m_arrowHead, Place::overRest);
}

void EdgeInspector::addTaper() {
  addSection(QStringLiteral("Taper Settings"));
  m_taper = new TaperSliders(look(), this);
  connect(&m_taper->start(), &SliderRow::moved, this,
          [this](double width) { changeStyle([width](EdgeStyle& style) { style.taper.startWidth = width; }); });
  connect(&m_taper->end(), &SliderRow::moved, this,
          [this](double width) { changeStyle([width](EdgeStyle& style) { style.taper.endWidth = width; }); });
  addPart(m_taper);
  m_easing = new PanelPicker(tr("Easing"), easingNames(), this);
  connect(m_easing, &PanelPicker::chosen, this, [this](int index) {
    changeStyle([index](EdgeStyle& style) { style.taper.easing = static_cast<EdgeStyle::TaperEasing>(index); });
  });
  addRow(tr("Easing"), m_easing, Place::overRest);
}

std::optional<Edge> EdgeInspector::present() {
  const SharedArray<Edge>& edges = editor().mindMap().edges;
  const auto& ordinals = m_finder.find(edges, {m_id});
  return ordinals.empty() ? std::nullopt : std::optional(edges[ordinals.front()]);
}

void EdgeInspector::changeStyle(const std::function<void(EdgeStyle&)>& change) {
  const auto edge = present();
  if (!edge) return;
  EdgeStyle style = edge->style;
  change(style);
  editor().setEdgeStyle(m_id, style);
}

void EdgeInspector::refresh(const InspectorSubject& subject) {
  if (m_id != subject.id) m_color->cancelChoosing();
  m_id = subject.id;
  if (const auto edge = present()) showStyle(edge->style);
}

void EdgeInspector::showStyle(const EdgeStyle& style) {
  showColor(*m_color, style.color);
  m_dashed->setOn(style.dashed);
  m_arrowHead->setChosen(static_cast<int>(style.arrowHead));
  m_taper->start().setValue(style.taper.startWidth);
  m_taper->end().setValue(style.taper.endWidth);
  m_taper->setControlledByDepth(editor().mindMap().hierarchical.edgeSizing);
  m_easing->setChosen(static_cast<int>(style.taper.easing));
}

}  // namespace quilmora
