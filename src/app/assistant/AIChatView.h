#pragma once

#include <QWidget>

#include "editor/ChatSession.h"

namespace quilmora {

class Alerts;
class ChatHeader;
class ChatList;
class ChatSuggestions;
class IconButton;
class Look;
class ProviderState;
class SubmitField;

// The chat beside the canvas: who answers, the messages, and a field to ask. It keeps only the text being typed;
// everything else is the session's.
class AIChatView final : public QWidget {
  Q_OBJECT

 public:
  // All must outlive it.
  struct Parts {
    const Look& look;
    Alerts& alerts;
    AIWorkflows& workflows;
    ChatSession& chat;
    ProviderState& provider;
  };

  AIChatView(const Parts& parts, QWidget* parent);

  SubmitField& input() const { return *m_input; }
  ChatHeader& header() const { return *m_header; }
  ChatList& list() const { return *m_list; }
  ChatSuggestions& suggestions() const { return *m_suggestions; }
  IconButton& sendButton() const { return *m_send; }
  // The controls that can take the keyboard now, in Tab order.
  std::vector<QWidget*> controls() const;

 Q_SIGNALS:
  // Escape was pressed: the keyboard goes back to the canvas.
  void left();
  void settingsWanted();

 protected:
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  void send();
  void ask(const QString& text);
  void askToClear();
  void followMessages();
  void tellNewest();
  void followLoading();
  void followInput();

  Parts m_parts;
  ChatHeader* m_header;
  ChatSuggestions* m_suggestions;
  ChatList* m_list;
  SubmitField* m_input;
  IconButton* m_send;
  QUuid m_newest;  // the message last announced to screen readers
  bool m_isLookDue = false;
};

}  // namespace quilmora
