#include "app/inspectors/MultiNodeInspector.h"

#include <algorithm>

#include "app/inspectors/ChoiceGrid.h"
#include "app/inspectors/PanelControls.h"
#include "app/inspectors/StyleSamplerRow.h"
#include "app/inspectors/TileButton.h"
#include "app/look/ColorWell.h"
#include "app/look/Widgets.h"
#include "platform/PlatformText.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

using edits::Alignment;
using edits::Axis;

constexpr int alignColumns = 3;
constexpr int distributeColumns = 2;

}  // namespace

MultiNodeInspector::MultiNodeInspector(const InspectorContext& context, QWidget* parent) : Inspector(context, parent) {
  m_title = addHeading(QString(), QStringLiteral("Batch edit colors for selected nodes"));
  addColors();
  addSection(QStringLiteral("Quick Style"));
  auto* samples = new MultiStyleSamplerRow(look(), this);
  connect(samples, &StyleSamples::picked, this,
          [this](const TopicColors& colors) { editor().colorSelectedNodes(colors); });
  addPart(samples);
  addArrangement();
  addSection();
  auto* remove = new PanelButton(QStringLiteral("Delete All Selected"), PanelButton::Kind::destructive, this);
  connect(remove, &QPushButton::clicked, this, [this] { editor().deleteSelection(); });
  addPart(remove);
  addHint(platformText(QStringLiteral("Shift+click to multi-select. Cmd+drag to reparent.")));
}

void MultiNodeInspector::addColors() {
  addSection(QStringLiteral("Apply Colors"));
  m_fill = new ColorWell(look(), QStringLiteral("Fill"), this);
  m_stroke = new ColorWell(look(), QStringLiteral("Border"), this);
  m_text = new ColorWell(look(), QStringLiteral("Text"), this);
  addWells({{QStringLiteral("Fill"), m_fill}, {QStringLiteral("Border"), m_stroke}, {QStringLiteral("Text"), m_text}});
  auto* apply = new PanelButton(QStringLiteral("Apply to All Selected"), PanelButton::Kind::plain, this);
  connect(apply, &QPushButton::clicked, this, [this] {
    editor().colorSelectedNodes(
        {hexFromColor(m_fill->color()), hexFromColor(m_stroke->color()), hexFromColor(m_text->color())});
  });
  addPart(apply);
}

void MultiNodeInspector::addArrangement() {
  addSection(QStringLiteral("Align"));
  auto* align = new ChoiceGrid(ChoiceGrid::Cells::sharing, alignColumns, this);
  const auto addAlignment = [&](const char* symbol, const char* name, Alignment alignment) {
    auto* tile = new TileButton(look(), QLatin1String(symbol), QLatin1String(name), {}, align);
    connect(tile, &QAbstractButton::clicked, this, [this, alignment] { editor().alignSelectedNodes(alignment); });
    align->add(tile);
  };
  addAlignment("align.horizontal.left", "Left", Alignment::left);
  addAlignment("align.horizontal.center", "Center H", Alignment::centerH);
  addAlignment("align.horizontal.right", "Right", Alignment::right);
  addAlignment("align.vertical.top", "Top", Alignment::top);
  addAlignment("align.vertical.center", "Center V", Alignment::centerV);
  addAlignment("align.vertical.bottom", "Bottom", Alignment::bottom);
  addPart(align);

  addSection(QStringLiteral("Distribute"));
  auto* distribute = new ChoiceGrid(ChoiceGrid::Cells::sharing, distributeColumns, this);
  const auto addDistribution = [&](const char* symbol, const char* name, Axis axis) {
    auto* tile = new TileButton(look(), QLatin1String(symbol), QLatin1String(name), {}, distribute);
    connect(tile, &QAbstractButton::clicked, this, [this, axis] { editor().distributeSelectedNodes(axis); });
    distribute->add(tile);
  };
  addDistribution("distribute.horizontal", "Horiz", Axis::horizontal);
  addDistribution("distribute.vertical", "Vert", Axis::vertical);
  addPart(distribute);
}

void MultiNodeInspector::refresh(const InspectorSubject& subject) {
  m_title->setPlainText(QStringLiteral("Multiple Nodes (%1)").arg(subject.count));
  if (m_ids == subject.ids) return;
  m_ids = subject.ids;
  loadColors();
}

void MultiNodeInspector::loadColors() {
  const SharedArray<Node>& nodes = editor().mindMap().nodes;
  const auto first =
      std::find_if(nodes.begin(), nodes.end(), [&](const Node& node) { return m_ids->contains(node.id); });
  if (first == nodes.end()) return;
  for (ColorWell* well : {m_fill, m_stroke, m_text}) well->cancelChoosing();
  m_fill->setColor(colorFromHex(first->style.fill));
  m_stroke->setColor(colorFromHex(first->style.stroke));
  m_text->setColor(colorFromHex(first->style.textColor));
}

}  // namespace quilmora
