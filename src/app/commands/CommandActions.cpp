#include "app/commands/CommandActions.h"

#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

#include "app/dialogs/TextField.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

namespace {

// The keypad's keys are treated like the others.
QKeySequence sequenceOf(const QKeyEvent& event) {
  return QKeySequence(QKeyCombination(event.modifiers() & ~Qt::KeypadModifier, static_cast<Qt::Key>(event.key())));
}

bool worksOnText(const Command& command, const QObject& field) {
  return command.textSlot != nullptr && !(command.notification && field.property("readOnly").toBool());
}

}  // namespace

CommandActions::CommandActions(MindMapViewModel& editor, NotificationCenter& notifications,
                               CommandContext::Handlers handlers, QWidget* window)
    : QObject(window),
      m_notifications(notifications),
      m_window(window),
      m_context{editor, std::move(handlers), {}, nullptr} {
  for (const Command& command : commandTable())
    if (!command.submenu) addAction(command);
  connect(&notifications, &NotificationCenter::receiversChanged, this, &CommandActions::refresh);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { focusChanged(now); });
  followEditor();
  refresh();
}

void CommandActions::addAction(const Command& command) {
  auto* action = new QAction(command.text, this);
  action->setObjectName(command.id);
  if (!command.yieldsKey) action->setShortcuts(command.allKeys());
  if (command.isProgramWide) action->setShortcutContext(Qt::ApplicationShortcut);
  action->setMenuRole(QAction::NoRole);
  action->setCheckable(command.isOn != nullptr);
  connect(action, &QAction::triggered, this, [this, &command] { trigger(command); });
  // Their keys work even while the menu bar is hidden.
  m_window->addAction(action);
  m_actions.emplace(command.id, action);
  for (const QKeySequence& sequence : command.allKeys()) m_keys.push_back({sequence, &command});
}

void CommandActions::followEditor() {
  const MindMapViewModel* editor = &m_context.editor;
  const auto follow = [&](auto signal) { connect(editor, signal, this, &CommandActions::refresh); };
  follow(&MindMapViewModel::historyChanged);
  follow(&MindMapViewModel::mindMapChanged);
  follow(&MindMapViewModel::selectedNodeIDsChanged);
  follow(&MindMapViewModel::selectedEdgeIDsChanged);
  follow(&MindMapViewModel::selectedRegionIDChanged);
  follow(&MindMapViewModel::collapsedNodeIDsChanged);
  follow(&MindMapViewModel::isEditingInlineChanged);
  follow(&MindMapViewModel::isEdgeCreationModeChanged);
  follow(&MindMapViewModel::isPresentationModeChanged);
}

QAction* CommandActions::action(const QString& id) const {
  const auto found = m_actions.find(id);
  return found == m_actions.end() ? nullptr : found->second;
}

void CommandActions::setShown(const CommandContext::Shown& shown) {
  m_context.shown = shown;
  refresh();
}

void CommandActions::focusChanged(QWidget* now) {
  if (qobject_cast<QMenuBar*>(now) != nullptr || qobject_cast<QMenu*>(now) != nullptr) return;
  const bool isOurs = now != nullptr && now->window() == m_window;
  QPointer<QObject>& field = m_context.textField;
  if (field) field->removeEventFilter(this);
  field = isOurs && isTextField(now) ? now : nullptr;
  if (field) field->installEventFilter(this);
  refresh();
}

const Command* CommandActions::commandOfKey(const QKeyEvent& event, bool yieldsKey) const {
  const QKeySequence pressed = sequenceOf(event);
  const auto found = std::ranges::find_if(
      m_keys, [&](const Key& key) { return key.command->yieldsKey == yieldsKey && key.sequence == pressed; });
  return found == m_keys.end() ? nullptr : found->command;
}

bool CommandActions::pressPassedOnKey(const QKeyEvent& event) {
  const Command* command = m_context.textField ? nullptr : commandOfKey(event, true);
  if (command == nullptr || !action(command->id)->isEnabled()) return false;
  action(command->id)->trigger();
  return true;
}

// Toolkits give fields keys that are menu entries here, such as Ctrl+E for the end of the line.
bool CommandActions::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_context.textField) return false;
  const bool isAsked = event->type() == QEvent::ShortcutOverride;
  if (!isAsked && event->type() != QEvent::KeyPress) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  const Command* command = commandOfKey(key, false);
  if (command == nullptr) return false;
  if (!worksOnText(*command, *m_context.textField)) {
    // A key press arrives only if the entry is disabled: then it does nothing at all.
    event->setAccepted(!isAsked);
    return true;
  }
  // The field knows the key that is shown, but may not know the others.
  if (command->keySequence() == sequenceOf(key)) return false;
  if (!isAsked) QMetaObject::invokeMethod(m_context.textField, command->textSlot);
  event->accept();
  return true;
}

bool CommandActions::isEnabled(const Command& command) const {
  if (command.notification && !m_notifications.hasReceiver(*command.notification)) return false;
  return command.isPossible == nullptr || command.isPossible(m_context, command.object);
}

void CommandActions::refresh() {
  for (const Command& command : commandTable()) {
    QAction* entry = action(command.id);
    if (entry == nullptr) continue;
    entry->setEnabled(isEnabled(command));
    if (command.isOn != nullptr) entry->setChecked(command.isOn(m_context, command.object));
  }
}

void CommandActions::trigger(const Command& command) {
  const QPointer guard(this);
  if (command.notification)
    m_notifications.post(*command.notification, command.object);
  else
    command.call(m_context, command.object);
  // Triggering an entry toggles its check mark, which must show only the state.
  if (guard) refresh();
}

}  // namespace quilmora
