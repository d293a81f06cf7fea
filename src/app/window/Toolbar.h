#pragma once

#include <unordered_map>

#include "app/look/Widgets.h"

namespace quilmora {

class CommandActions;

// One row of symbol buttons over the canvas and the panels, made from the table of the toolbar.
class Toolbar : public Ground {
  Q_OBJECT

 public:
  Toolbar(const Look& look, const CommandActions& actions, QWidget* parent = nullptr);

  QToolButton* button(const QString& commandId) const;
  // Shows in the accent that what the button toggles is there now.
  void setOn(const QString& commandId, bool on);

 private:
  std::unordered_map<QString, QToolButton*> m_buttons;
};

}  // namespace quilmora
