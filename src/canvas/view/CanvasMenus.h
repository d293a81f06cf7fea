#pragma once

#include <functional>
#include <vector>

#include <QUuid>

#include "editor/MindMapViewModel.h"

class QMenu;
class QWidget;

namespace quilmora {

class CanvasGestures;

// What the canvas offers for one topic or one region. Each menu deletes itself when it closes; entries whose subject
// has gone meanwhile do nothing. Entries that destroy carry the property `isDestructive`.
class CanvasMenus {
 public:
  // `addImage` asks the user for the image of a topic.
  CanvasMenus(MindMapViewModel& editor, CanvasGestures& gestures, std::function<void(const QUuid&)> addImage)
      : m_editor(editor), m_gestures(gestures), m_addImage(std::move(addImage)) {}

  // An entry that others add to the menu of a topic, before "Delete".
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
