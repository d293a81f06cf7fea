#pragma once

#include <unordered_map>
#include <vector>

#include <QAction>
#include <QObject>

#include "commands/CommandTable.h"

class QKeyEvent;

namespace quilmora {

// The commands of one window as actions. An entry is enabled only while its notification has a receiver and its row's
// condition holds.
class CommandActions : public QObject {
  Q_OBJECT

 public:
  CommandActions(MindMapViewModel& editor, NotificationCenter& notifications, CommandContext::Handlers handlers,
                 QWidget* window);

  // The action of a command that is not a submenu; nullptr for an unknown id.
  QAction* action(const QString& id) const;
  void setShown(const CommandContext::Shown& shown);
  // Triggers the command whose key the window's views have passed on. Returns whether there was an enabled one.
  bool pressPassedOnKey(const QKeyEvent& event);

 protected:
  // Watches the focused text field, so that the field never uses a menu entry's key for something else.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addAction(const Command& command);
  void followEditor();
  // Updates every action to the current state.
  void refresh();
  bool isEnabled(const Command& command) const;
  void trigger(const Command& command);
  void focusChanged(QWidget* now);
  const Command* commandOfKey(const QKeyEvent& event, bool yieldsKey) const;

  struct Key {
    QKeySequence sequence;
    const Command* command;
  };

  NotificationCenter& m_notifications;
  QWidget* m_window;
  CommandContext m_context;
  std::unordered_map<QString, QAction*> m_actions;
  std::vector<Key> m_keys;
};

}  // namespace quilmora
