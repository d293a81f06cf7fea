#pragma once

#include <unordered_map>

#include "app/look/Widgets.h"

class QAction;

namespace quilmora {

class CommandActions;
struct Command;

// A row of symbol buttons above the canvas and the panels, made from the table of the toolbar. A button shows in the
// accent colour that what it toggles is visible.
class Toolbar : public Ground {
  Q_OBJECT

 public:
  Toolbar(const Look& look, const CommandActions& actions, QWidget* parent = nullptr);

  QToolButton* button(const QString& commandId) const;

 private:
  QToolButton* addButton(const Look& look, const Command& command, QAction& action);

  std::unordered_map<QString, QToolButton*> m_buttons;
};

}  // namespace quilmora
