#pragma once

#include <QWidget>

#include "app/assistant/ProviderState.h"

class QPushButton;
class QToolButton;

namespace quilmora {

class IconButton;
class Look;
class SymbolLabel;
class TextLabel;

// The head of the chat: who answers, with a menu to choose another, what is wrong with it, and where the text goes.
class ChatHeader final : public QWidget {
  Q_OBJECT

 public:
  // Both must outlive it.
  ChatHeader(const Look& look, ProviderState& provider, QWidget* parent);

  QToolButton& providerButton() const { return *m_provider; }
  QPushButton& settingsButton() const { return *m_settings; }
  IconButton& clearButton() const { return *m_clear; }
  QString warningText() const;
  QString destinationText() const;

 Q_SIGNALS:
  void providerChosen();
  void settingsWanted();
  void clearWanted();

 private:
  void fillMenu();
  void follow();

  const Look& m_look;
  ProviderState& m_state;
  QPushButton* m_settings;
  IconButton* m_clear;
  QToolButton* m_provider;
  SymbolLabel* m_warningSign;
  TextLabel* m_warning;
  TextLabel* m_destination;
  std::vector<ProviderState::Row> m_rows;  // as shown in the menu
};

}  // namespace quilmora
