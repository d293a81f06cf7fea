#pragma once

#include <QWidget>

#include "app/outline/OutlineModel.h"

class QMenu;

namespace quilmora {

class AIWorkflows;
class EmptyState;
class Look;
class OutlineList;

// The outline of the map as a panel's page: a second way through the tree, which edits by the editor's own commands.
// While nobody sees it, it follows nothing.
class OutlineView : public QWidget {
  Q_OBJECT

 public:
  // All outlive it.
  OutlineView(const Look& look, MindMapViewModel& editor, AIWorkflows& workflows, QWidget* parent);

  OutlineModel& model() { return m_model; }
  OutlineList& list() { return *m_list; }
  // Keeps the title that is being typed. For those who are about to save or to open another document.
  void finishRename();
  // What the row of a topic offers. Deletes itself when it closes; entries whose topic has gone do nothing.
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
