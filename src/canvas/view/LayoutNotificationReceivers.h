#pragma once

#include <vector>

#include "editor/MindMapViewModel.h"
#include "platform/Notifications.h"

namespace quilmora {

class CanvasGestures;

// Receives, for as long as the canvas exists, the requests that arrange or recolour the whole map.
class LayoutNotificationReceivers {
 public:
  LayoutNotificationReceivers(MindMapViewModel& editor, CanvasGestures& gestures, NotificationCenter& notifications);

 private:
  void apply(MindMap::Layout layout);

  MindMapViewModel& m_editor;
  CanvasGestures& m_gestures;
  std::vector<NotificationCenter::Subscription> m_subscriptions;
};

}  // namespace quilmora
