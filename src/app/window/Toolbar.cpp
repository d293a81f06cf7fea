#include "app/window/Toolbar.h"

#include <QHBoxLayout>

#include "app/commands/CommandActions.h"
#include "canvas/view/PlainText.h"

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
    QToolButton* button = addButton(look, *findCommand(entry.commandId), *actions.action(entry.commandId));
    m_buttons.emplace(entry.commandId, button);
    row->addWidget(button);
  }
}

QToolButton* Toolbar::addButton(const Look& look, const Command& command, QAction& action) {
  auto* button = new IconButton(look, command.symbol, command.name(), this);
  plain::setToolTip(*button, command.toolTip());
  const auto follow = [button, &action] {
    button->setEnabled(action.isEnabled());
    if (action.isCheckable()) button->setOn(action.isChecked());
  };
  connect(&action, &QAction::changed, button, follow);
  connect(button, &QToolButton::clicked, &action, [&action] { action.trigger(); });
  follow();
  return button;
}

QToolButton* Toolbar::button(const QString& commandId) const {
  const auto found = m_buttons.find(commandId);
  return found == m_buttons.end() ? nullptr : found->second;
}

}  // namespace quilmora
