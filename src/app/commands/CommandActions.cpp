#include "app/commands/CommandActions.h"

#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

#include "app/dialogs/TextField.h"
#include "editor/MindMapViewModel.h"
#include "themes/Theme.h"

namespace quilmora {

CommandActions::CommandActions(MindMapViewModel& editor, NotificationCenter& notifications, Handlers handlers,
                               QWidget* window)
    : QObject(window),
      m_editor(editor),
      m_notifications(notifications),
      m_handlers(std::move(handlers)),
      m_window(window) {
  for (const Command& command : commandTable()) {
    if (command.action == Command::Action::submenu) continue;
    auto* action = new QAction(command.text, this);
    action->setObjectName(command.id);
    action->setShortcut(command.keySequence());
    action->setMenuRole(QAction::NoRole);
    action->setCheckable(command.action == Command::Action::applyTheme);
    connect(action, &QAction::triggered, this, [this, &command] { trigger(command); });
    m_actions.emplace(command.id, action);
  }
  connect(&notifications, &NotificationCenter::receiversChanged, this, &CommandActions::refresh);
  connect(&editor, &MindMapViewModel::historyChanged, this, &CommandActions::refresh);
  connect(&editor, &MindMapViewModel::mindMapChanged, this, &CommandActions::refresh);
  connect(&editor, &MindMapViewModel::selectedNodeIDsChanged, this, &CommandActions::refresh);
  connect(&editor, &MindMapViewModel::selectedEdgeIDsChanged, this, &CommandActions::refresh);
  connect(&editor, &MindMapViewModel::selectedRegionIDChanged, this, &CommandActions::refresh);
  connect(&editor, &MindMapViewModel::collapsedNodeIDsChanged, this, &CommandActions::refresh);
  connect(&editor, &MindMapViewModel::isEditingInlineChanged, this, &CommandActions::refresh);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { focusChanged(now); });
  refresh();
}

QAction* CommandActions::action(const QString& id) const {
  const auto found = m_actions.find(id);
  return found == m_actions.end() ? nullptr : found->second;
}

void CommandActions::focusChanged(QWidget* now) {
  if (qobject_cast<QMenuBar*>(now) != nullptr || qobject_cast<QMenu*>(now) != nullptr) return;
  const bool isOurs = now != nullptr && now->window() == m_window;
  if (m_textField) m_textField->removeEventFilter(this);
  m_textField = isOurs && isTextField(now) ? now : nullptr;
  if (m_textField) m_textField->installEventFilter(this);
  refresh();
}

namespace {

// What a text field does itself when its key is pressed there.
bool worksOnText(const Command& command, const QWidget& field) {
  switch (command.action) {
    case Command::Action::cut:
    case Command::Action::copy:
    case Command::Action::paste:
    case Command::Action::selectAll:
      return true;
    case Command::Action::post:
      return (command.notification == Notification::undo || command.notification == Notification::redo) &&
             !field.property("readOnly").toBool();
    default:
      return false;
  }
}

}  // namespace

bool CommandActions::isKeyOfTheWindow(const QKeyEvent& event) const {
  const QKeySequence pressed(event.keyCombination());
  return std::ranges::any_of(commandTable(), [&](const Command& command) {
    const QAction* entry = action(command.id);
    return entry && entry->shortcut() == pressed && !worksOnText(command, *m_textField);
  });
}

// Toolkits give fields keys of their own that menu entries have here too, such as Ctrl+E for the end of the line.
bool CommandActions::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_textField) return false;
  const bool isAsked = event->type() == QEvent::ShortcutOverride;
  if (!isAsked && event->type() != QEvent::KeyPress) return false;
  if (!isKeyOfTheWindow(*static_cast<QKeyEvent*>(event))) return false;
  // A key press comes only where the entry cannot be chosen now: then it does nothing at all.
  event->setAccepted(!isAsked);
  return true;
}

bool CommandActions::isEnabled(const Command& command) const {
  switch (command.action) {
    case Command::Action::post:
      return m_notifications.hasReceiver(*command.notification) && isPossible(*command.notification);
    case Command::Action::submenu:
      return true;
    case Command::Action::deleteSelection:
      if (m_editor.isEditingInline()) return false;
      return !m_editor.selectedNodeIDs().empty() || !m_editor.selectedEdgeIDs().empty() ||
             m_editor.selectedRegionID().has_value();
    case Command::Action::cut:
    case Command::Action::copy:
    case Command::Action::paste:
      return m_textField != nullptr;
    case Command::Action::selectAll:
      return true;
    case Command::Action::applyTheme:
      return true;
    case Command::Action::settings:
      return m_handlers.settings != nullptr;
    case Command::Action::about:
      return m_handlers.about != nullptr;
    case Command::Action::quit:
      return m_handlers.quit != nullptr;
  }
  return false;
}

bool CommandActions::isPossible(Notification notification) const {
  const auto isCollapsed = [this](const QUuid& id) { return m_editor.collapsedNodeIDs().contains(id); };
  switch (notification) {
    case Notification::undo:
      return m_editor.undoCount() > 0;
    case Notification::redo:
      return m_editor.redoCount() > 0;
    case Notification::createNode:
    case Notification::createEdge:
      return !m_editor.isEditingInline();
    case Notification::duplicateSelection:
      return !m_editor.isEditingInline() && !m_editor.selectedNodeIDs().empty();
    case Notification::collapseNode: {
      const auto first = m_editor.firstSelectedNode();
      return first && !isCollapsed(*first) && m_editor.treeInfo().childCount(*first) > 0;
    }
    case Notification::expandNode: {
      const auto first = m_editor.firstSelectedNode();
      return first && isCollapsed(*first);
    }
    default:
      return true;
  }
}

void CommandActions::refresh() {
  const QString themeId = m_editor.mindMap().canvas.themeId.value_or(QString());
  for (const Command& command : commandTable()) {
    QAction* entry = action(command.id);
    if (entry == nullptr) continue;
    entry->setEnabled(isEnabled(command));
    if (entry->isCheckable()) entry->setChecked(command.object.toString() == themeId);
  }
}

void CommandActions::trigger(const Command& command) {
  const auto callOnTextField = [this](const char* slot) {
    if (m_textField != nullptr) QMetaObject::invokeMethod(m_textField, slot);
  };
  switch (command.action) {
    case Command::Action::post:
      m_notifications.post(*command.notification, command.object);
      break;
    case Command::Action::submenu:
      break;
    case Command::Action::deleteSelection:
      m_editor.deleteSelection();
      break;
    case Command::Action::cut:
      callOnTextField("cut");
      break;
    case Command::Action::copy:
      callOnTextField("copy");
      break;
    case Command::Action::paste:
      callOnTextField("paste");
      break;
    case Command::Action::selectAll:
      if (m_textField != nullptr)
        callOnTextField("selectAll");
      else
        m_editor.selectAll();
      break;
    case Command::Action::applyTheme:
      applyTheme(command.object.toString());
      break;
    case Command::Action::settings:
      m_handlers.settings();
      break;
    case Command::Action::about:
      m_handlers.about();
      break;
    case Command::Action::quit:
      m_handlers.quit();
      break;
  }
}

void CommandActions::applyTheme(const QString& id) {
  if (const Theme* theme = builtInTheme(id)) m_editor.applyTheme(*theme);
  refresh();
}

}  // namespace quilmora
