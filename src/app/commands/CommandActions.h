#pragma once

#include <unordered_map>
#include <vector>

#include <QAction>
#include <QObject>

#include "commands/CommandTable.h"

class QKeyEvent;

namespace quilmora {

// The commands of one window as actions. An entry can be chosen only while somebody receives its notification and its
// row finds it possible.
class CommandActions : public QObject {
  Q_OBJECT

 public:
  CommandActions(MindMapViewModel& editor, NotificationCenter& notifications, CommandContext::Handlers handlers,
                 QWidget* window);

  // The action of a command that is no submenu; nullptr for an unknown id.
  QAction* action(const QString& id) const;
  void setShown(const CommandContext::Shown& shown);
  // Chooses the command whose key the views of the window have passed on. Returns whether there was one to choose.
  bool pressPassedOnKey(const QKeyEvent& event);

 protected:
  // Watches the text field that has the keyboard: a key of a menu entry is never taken for one of the field's own.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addAction(const Command& command);
  void followEditor();
  // Brings every action up to the state of things.
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
