#include "app/inspectors/CanvasInspector.h"

#include <array>

#include "app/inspectors/ChoiceGrid.h"
#include "app/inspectors/PanelControls.h"
#include "app/inspectors/SliderRow.h"
#include "app/inspectors/ThemePicker.h"
#include "app/inspectors/TileButton.h"
#include "app/look/ColorWell.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "canvas/view/PlainText.h"
#include "commands/CommandTable.h"
#include "platform/Notifications.h"
#include "platform/PlatformText.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"
#include "themes/Color.h"
#include "themes/CustomThemes.h"

namespace quilmora {

namespace {

using Lens = EditorState::FocusLens;

constexpr int layoutColumns = 3;
constexpr std::array lenses = {Lens::none, Lens::priority, Lens::progress, Lens::depth};

QStringList lensNames() {
  QStringList names;
  for (const Lens lens : lenses) names.append(rawValue(lens));
  return names;
}

}  // namespace

CanvasInspector::CanvasInspector(const InspectorContext& context, QWidget* parent) : Inspector(context, parent) {
  addHeading(QStringLiteral("Canvas"), QStringLiteral("Configure canvas and hierarchy settings"));
  addBackground();
  addThemes();
  addLayouts();
  addSizing();
  addLens();
  addFacts();
}

void CanvasInspector::addBackground() {
  addSection(QStringLiteral("Background Color"));
  m_background = new ColorWell(look(), tr("Background Color"), this);
  connect(m_background, &ColorWell::colorChosen, this, [this](const QColor& chosen) {
    if (colorFromHex(editor().mindMap().canvas.background) != chosen)
      editor().setCanvasBackground(hexFromColor(chosen));
  });
  addRow(tr("Background"), m_background, Place::atEdge);
}

void CanvasInspector::addThemes() {
  addSection(QStringLiteral("Theme"));
  m_themes = new ThemePicker(look(), this);
  connect(m_themes, &ThemePicker::picked, this, [this](const Theme& theme) {
    editor().applyTheme(theme);
    showColor(*m_background, theme.background);
  });
  followThemes();
  connect(&context().settings.changes(), &SettingsChanges::changed, this, [this](const QString& key) {
    if (key == settings::customThemes) followThemes();
  });
  addPart(m_themes);
}

void CanvasInspector::followThemes() {
  m_themes->setThemes(allThemesIncludingCustom(context().settings));
  m_themes->setCurrent(editor().mindMap().canvas.themeId.value_or(QString()));
}

void CanvasInspector::addLayouts() {
  addSection(QStringLiteral("Layout"));
  auto* grid = new ChoiceGrid(ChoiceGrid::Cells::sharing, layoutColumns, this);
  const auto addLayout = [&](const char* symbol, const char* name, const char* detail, Notification notification) {
    auto* tile = new TileButton(look(), QLatin1String(symbol), QLatin1String(name), QLatin1String(detail), grid);
    if (const Command* command = findCommand(notificationName(notification)))
      plain::setToolTip(*tile, command->toolTip());
    connect(tile, &QAbstractButton::clicked, this,
            [this, notification] { context().notifications.post(notification); });
    grid->add(tile);
  };
  using enum Notification;
  addLayout("arrow.right.to.line", "Tree", "Horizontal", applyTreeLayout);
  addLayout("arrow.down.to.line", "Vertical", "Top-down", applyVerticalTreeLayout);
  addLayout("circle.dotted", "Radial", "Centered", applyRadialLayout);
  addLayout("arrow.left.and.right", "L/R", "Balanced", applyLeftRightLayout);
  addLayout("person.3", "Org Chart", "Corporate", applyOrgChartLayout);
  addPart(grid);
}

PanelToggle* CanvasInspector::addSwitch(bool HierarchicalConfig::*flag) {
  auto* toggle = new PanelToggle(tr("Size by depth"), this);
  connect(toggle, &QCheckBox::toggled, this, [this, flag](bool on) {
    HierarchicalConfig config = editor().mindMap().hierarchical;
    config.*flag = on;
    editor().setHierarchical(config, false);
  });
  addPart(toggle);
  return toggle;
}

SliderRow* CanvasInspector::addSlider(const QString& label, double least, double most, double step, int decimals,
                                      Quantity quantity) {
  auto* row = new SliderRow(look(), label, {least, most, step}, decimals, this);
  connect(row, &SliderRow::moved, this, [this, quantity](double value) {
    HierarchicalConfig config = editor().mindMap().hierarchical;
    config.*quantity = value;
    editor().setHierarchical(config, true);
  });
  addPart(row);
  return row;
}

void CanvasInspector::addSizing() {
  using Config = HierarchicalConfig;
  addSection(QStringLiteral("Branch Edge Sizing"));
  m_edgeSizing = addSwitch(&Config::edgeSizing);
  m_edgeSizing->setAccessibleName(QStringLiteral("Branch Edge Sizing"));
  m_rootEdgeWidth = addSlider(QStringLiteral("Root Width: "), 2, 20, 0.5, 1, &Config::rootEdgeWidth);
  m_leafEdgeWidth = addSlider(QStringLiteral("Leaf Width: "), 0.5, 10, 0.5, 1, &Config::leafEdgeWidth);
  addSection(QStringLiteral("Branch Node Sizing"));
  m_nodeSizing = addSwitch(&Config::nodeSizing);
  m_nodeSizing->setAccessibleName(QStringLiteral("Branch Node Sizing"));
  m_rootFontSize = addSlider(QStringLiteral("Root Font: "), 12, 28, 1, 0, &Config::rootFontSize);
  m_leafFontSize = addSlider(QStringLiteral("Leaf Font: "), 8, 18, 1, 0, &Config::leafFontSize);
}

void CanvasInspector::addLens() {
  addSection(QStringLiteral("Focus Lens"));
  m_lens = new PanelPicker(tr("Focus Lens"), lensNames(), this);
  connect(m_lens, &PanelPicker::chosen, this,
          [this](int index) { editor().setActiveLens(lenses.at(static_cast<std::size_t>(index))); });
  addPart(m_lens);
}

void CanvasInspector::addFacts() {
  const auto addLine = [this](const QString& text) {
    auto* line = new TextLabel(look(), text, &Tokens::text, look().font(), TextLabel::Overflow::wraps, this);
    addPart(line);
    return line;
  };
  addSection(QStringLiteral("Tree Info"));
  m_counts = addLine({});
  m_depth = addLine({});
  addSection(QStringLiteral("Navigation"));
  addHint(platformText(QStringLiteral("Scroll to pan, ⌘+scroll to zoom")));
  addHint(platformText(QStringLiteral("Option+drag to pan, ⌘0 to fit")));
}

void CanvasInspector::refresh(const InspectorSubject&) {
  const MindMap& map = editor().mindMap();
  const HierarchicalConfig& sizing = map.hierarchical;
  showColor(*m_background, map.canvas.background);
  m_themes->setCurrent(map.canvas.themeId.value_or(QString()));
  m_edgeSizing->setOn(sizing.edgeSizing);
  m_rootEdgeWidth->setValue(sizing.rootEdgeWidth);
  m_leafEdgeWidth->setValue(sizing.leafEdgeWidth);
  m_nodeSizing->setOn(sizing.nodeSizing);
  m_rootFontSize->setValue(sizing.rootFontSize);
  m_leafFontSize->setValue(sizing.leafFontSize);
  m_lens->setChosen(static_cast<int>(editor().activeLens()));
  showFacts();
}

void CanvasInspector::showFacts() {
  const MindMap& map = editor().mindMap();
  const TreeInfo& tree = editor().treeInfo();
  m_counts->setPlainText(QStringLiteral("%1 nodes, %2 edges").arg(map.nodes.size()).arg(map.edges.size()));
  m_depth->setPlainText(QStringLiteral("Depth: %1 levels, %2 root(s)").arg(tree.maxDepth()).arg(tree.roots().size()));
}

}  // namespace quilmora
