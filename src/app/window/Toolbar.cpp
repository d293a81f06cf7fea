#include "app/window/Toolbar.h"

#include <QHBoxLayout>

#include "app/commands/CommandActions.h"

namespace quilmora {

Toolbar::Toolbar(const Look& look, const CommandActions& actions, QWidget* parent)
    : Ground(look, &Tokens::window, Qt::BottomEdge, parent) {
  setFixedHeight(metrics::toolbarHeight);
  setAccessibleName(tr("Toolbar"));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(metrics::gapMedium, 0, metrics::gapMedium, 0);
  row->setSpacing(metrics::gapSmall);
  for (const ToolbarButton& entry : toolbarTable()) {
    if (entry.stretchBefore) row->addStretch();
    if (entry.gapBefore) row->addSpacing(metrics::gapLarge - metrics::gapSmall);
    auto* button = new IconButton(look, entry.symbol, entry.name, this);
    button->setToolTip(toolbarToolTip(entry));
    QAction* action = actions.action(entry.commandId);
    button->setEnabled(action->isEnabled());
    connect(action, &QAction::changed, button, [button, action] { button->setEnabled(action->isEnabled()); });
    connect(button, &QToolButton::clicked, action, [action] { action->trigger(); });
    m_buttons.emplace(entry.commandId, button);
    row->addWidget(button);
  }
}

QToolButton* Toolbar::button(const QString& commandId) const {
  const auto found = m_buttons.find(commandId);
  return found == m_buttons.end() ? nullptr : found->second;
}

void Toolbar::setOn(const QString& commandId, bool on) {
  QToolButton* toggled = button(commandId);
  // A click flips a checkable button by itself; the state comes from what is shown alone.
  toggled->setCheckable(on);
  toggled->setChecked(on);
}

}  // namespace quilmora
