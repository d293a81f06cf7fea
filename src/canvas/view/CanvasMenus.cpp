#include "canvas/view/CanvasMenus.h"

#include <QMenu>
#include <QPainter>

#include "canvas/view/CanvasGestures.h"
#include "canvas/view/PlainText.h"
#include "commands/CommandTable.h"
#include "themes/Color.h"
#include "themes/RegionColors.h"

namespace quilmora {

namespace {

constexpr int swatchSize = 16;
constexpr int maxScale = 3;

QIcon swatch(const QColor& color) {
  QPixmap picture(swatchSize * maxScale, swatchSize * maxScale);
  picture.setDevicePixelRatio(maxScale);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawEllipse(QRectF(1, 1, swatchSize - 2, swatchSize - 2));
  painter.end();
  return QIcon(picture);
}

QMenu* newMenu(QWidget* parent) {
  auto* menu = new QMenu(parent);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  return menu;
}

template <class Action>
void addDelete(QMenu& menu, Action action) {
  menu.addSeparator();
  QAction* entry = plain::addAction(menu, findCommand(QStringLiteral("delete"))->name());
  QObject::connect(entry, &QAction::triggered, &menu, action);
  entry->setProperty("isDestructive", true);
}

}  // namespace

QMenu* CanvasMenus::nodeMenu(const QUuid& nodeID, QWidget* parent) {
  const std::optional<Node> node = m_editor.nodeByID(nodeID);
  if (!node) return nullptr;
  QMenu* menu = newMenu(parent);
  const auto add = [&](const QString& text, const auto& action) {
    QObject::connect(plain::addAction(*menu, text), &QAction::triggered, menu, [this, nodeID, action] {
      if (m_editor.hasNode(nodeID)) action();
    });
  };
  add(QStringLiteral("Add Sub-topic"), [this, nodeID] { m_editor.createChild(nodeID); });
  add(findCommand(QStringLiteral("duplicateSelection"))->name(), [this, nodeID] { duplicate(nodeID); });
  if (node->imageData)
    add(QStringLiteral("Remove Image"), [this, nodeID] { m_editor.clearNodeImage(nodeID); });
  else
    add(QStringLiteral("Add Image..."), [this, nodeID] { m_addImage(nodeID); });
  if (m_editor.collapsedNodeIDs().contains(nodeID))
    add(QStringLiteral("Expand Branch"), [this, nodeID] { m_editor.toggleCollapsed(nodeID); });
  else if (m_editor.treeInfo().childCount(nodeID) > 0)
    add(QStringLiteral("Collapse Branch"), [this, nodeID] { m_editor.toggleCollapsed(nodeID); });
  if (!m_topicEntries.empty()) menu->addSeparator();
  for (const TopicEntry& entry : m_topicEntries) add(entry.text, [nodeID, chosen = entry.chosen] { chosen(nodeID); });
  addDelete(*menu, [this, nodeID] {
    if (m_editor.hasNode(nodeID)) m_editor.deleteNode(nodeID);
  });
  return menu;
}

void CanvasMenus::duplicate(const QUuid& nodeID) {
  m_editor.selectNode(nodeID, false);
  m_editor.duplicateSelection();
}

QMenu* CanvasMenus::regionMenu(const QUuid& regionID, QWidget* parent) {
  if (!m_editor.regionByID(regionID)) return nullptr;
  QMenu* menu = newMenu(parent);
  menu->addAction(QStringLiteral("Rename"), menu, [this, regionID] { m_gestures.beginLabelEditing(regionID); });
  QMenu* colors = menu->addMenu(QStringLiteral("Color"));
  for (const RegionColor& color : regionColorPalette) {
    const QString hex = color.hex;
    QAction* entry = plain::addAction(*colors, color.name);
    entry->setIcon(swatch(colorFromHex(hex)));
    QObject::connect(entry, &QAction::triggered, menu,
                     [this, regionID, hex] { m_editor.setRegionColor(regionID, hex); });
  }
  addDelete(*menu, [this, regionID] {
    if (m_editor.regionByID(regionID)) m_editor.deleteRegion(regionID);
  });
  return menu;
}

}  // namespace quilmora
