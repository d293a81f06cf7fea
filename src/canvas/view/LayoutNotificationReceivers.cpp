#include "canvas/view/LayoutNotificationReceivers.h"

#include <utility>

#include "canvas/view/CanvasGestures.h"

namespace quilmora {

namespace {

constexpr std::pair<Notification, MindMap::Layout> layoutRequests[] = {
    {Notification::applyTreeLayout, MindMap::Layout::tree},
    {Notification::applyVerticalTreeLayout, MindMap::Layout::verticalTree},
    {Notification::applyRadialLayout, MindMap::Layout::radial},
    {Notification::applyLeftRightLayout, MindMap::Layout::leftRightTree},
    {Notification::applyOrgChartLayout, MindMap::Layout::orgChart},
};

}  // namespace

LayoutNotificationReceivers::LayoutNotificationReceivers(MindMapViewModel& editor, CanvasGestures& gestures,
                                                         NotificationCenter& notifications)
    : m_editor(editor), m_gestures(gestures) {
  for (const auto& [notification, layout] : layoutRequests)
    m_subscriptions.push_back(
        notifications.observe(notification, [this, wanted = layout](const QVariant&) { apply(wanted); }));
  m_subscriptions.push_back(
      notifications.observe(Notification::recolorByBranch, [this](const QVariant&) { m_editor.recolorByBranch(); }));
  m_subscriptions.push_back(
      notifications.observe(Notification::recolorByTheme, [this](const QVariant&) { m_editor.recolorByTheme(); }));
}

void LayoutNotificationReceivers::apply(MindMap::Layout layout) {
  const QSizeF size = m_gestures.state().canvasSize;
  m_editor.applyLayout(layout, size);
  m_editor.fitToContent(size.width(), size.height(), MindMapViewModel::fitPadding);
  m_gestures.refreshInitialZoom();
}

}  // namespace quilmora
