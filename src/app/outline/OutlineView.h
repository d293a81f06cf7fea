#pragma once

#include <QWidget>

#include "app/outline/OutlineModel.h"

class QMenu;

namespace quilmora {

class AIWorkflows;
class EmptyState;
class Look;
class OutlineList;

// The outline of the map as a page of the sidebar: a second way through the tree, which edits with the editor's own
// commands. While it is hidden, it follows nothing.
class OutlineView : public QWidget {
  Q_OBJECT

 public:
  // All must outlive it.
  OutlineView(const Look& look, MindMapViewModel& editor, AIWorkflows& workflows, QWidget* parent);

  OutlineModel& model() { return m_model; }
  OutlineList& list() { return *m_list; }
  // Commits the title being typed. Call before saving or opening another document.
  void finishRename();
  // The menu for a topic's row. Deletes itself when it closes; entries whose topic is gone do nothing.
  QMenu* rowMenu(const QUuid& id);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void follow();
  void followSoon();
  void catchUp();
  void choose(const QUuid& id);
  void remove(const QUuid& id);
  // Brings the row of the selected topic into view.
  void showSelected();

  MindMapViewModel& m_editor;
  AIWorkflows& m_workflows;
  OutlineModel m_model;
  OutlineList* m_list;
  EmptyState* m_empty;
  bool m_isCatchingUpSoon = false;
  bool m_hasNewSelection = true;
};

}  // namespace quilmora
