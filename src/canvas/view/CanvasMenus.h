#pragma once

#include <functional>
#include <vector>

#include <QUuid>

#include "editor/MindMapViewModel.h"

class QMenu;
class QWidget;

namespace quilmora {

class CanvasGestures;

// The menus for a topic and for a region. Each menu deletes itself when it closes; entries whose subject is gone by
// then do nothing. Destructive entries have the property `isDestructive`.
class CanvasMenus {
 public:
  // `addImage` asks the user for an image for the topic.
  CanvasMenus(MindMapViewModel& editor, CanvasGestures& gestures, std::function<void(const QUuid&)> addImage)
      : m_editor(editor), m_gestures(gestures), m_addImage(std::move(addImage)) {}

  // An entry that other code adds to a topic's menu, before "Delete".
  struct TopicEntry {
    QString text;
    std::function<void(const QUuid& nodeID)> chosen;
  };
  void setTopicEntries(std::vector<TopicEntry> entries) { m_topicEntries = std::move(entries); }

  // Both return nullptr for an unknown id.
  QMenu* nodeMenu(const QUuid& nodeID, QWidget* parent);
  QMenu* regionMenu(const QUuid& regionID, QWidget* parent);

 private:
  void duplicate(const QUuid& nodeID);

  MindMapViewModel& m_editor;
  CanvasGestures& m_gestures;
  std::function<void(const QUuid&)> m_addImage;
  std::vector<TopicEntry> m_topicEntries;
};

}  // namespace quilmora
