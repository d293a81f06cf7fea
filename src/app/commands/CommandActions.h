#pragma once

#include <functional>
#include <unordered_map>

#include <QAction>
#include <QObject>
#include <QPointer>

#include "app/commands/CommandTable.h"

class QWidget;

class QKeyEvent;

namespace quilmora {

class MindMapViewModel;

// The commands of one window as actions. An entry posts its notification and can be chosen only while somebody receives
// it and the editor's state gives it something to do.
class CommandActions : public QObject {
  Q_OBJECT

 public:
  // What entries do that post nothing; an empty function leaves its entry disabled.
  struct Handlers {
    std::function<void()> quit;
    std::function<void()> about;
    std::function<void()> settings;
  };

  CommandActions(MindMapViewModel& editor, NotificationCenter& notifications, Handlers handlers, QWidget* window);

  // The action of a command that is no submenu; nullptr for an unknown id.
  QAction* action(const QString& id) const;
  bool isEnabled(const Command& command) const;
  // Brings every action up to the state of things.
  void refresh();

 protected:
  // Watches the text field that has the keyboard: a key of a menu entry is never taken for one of the field's own.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void trigger(const Command& command);
  void focusChanged(QWidget* now);
  bool isKeyOfTheWindow(const QKeyEvent& event) const;
  bool isPossible(Notification notification) const;
  void applyTheme(const QString& id);

  MindMapViewModel& m_editor;
  NotificationCenter& m_notifications;
  Handlers m_handlers;
  QWidget* m_window;
  QPointer<QWidget> m_textField;  // that has the keyboard, also while the menu bar borrows it
  std::unordered_map<QString, QAction*> m_actions;
};

}  // namespace quilmora
