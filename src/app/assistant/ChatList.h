#pragma once

#include <functional>
#include <vector>

#include <QScrollArea>
#include <QTimer>

#include "ai/ChatMessage.h"

namespace quilmora {

class ChatBubble;
class IconButton;
class Look;

// The messages of a chat, one below the other, and "Thinking..." with a button that stops it. The newest message stays
// in view until the user scrolls up. One message is current: Up and Down step through them, Home and End go to the
// first and the last. Heights of messages are refined in small slices of time.
class ChatList final : public QScrollArea {
  Q_OBJECT

 public:
  // The time of one slice of measuring.
  static constexpr std::chrono::milliseconds slice{4};

  ChatList(const Look& look, QWidget* parent);
  ~ChatList() override;

  // Shows these messages, keeping existing bubbles. `apply` is called to apply a message's tree.
  void setMessages(const std::vector<ChatMessage>& messages, const std::function<void(const QUuid&)>& apply);
  void setThinking(bool isThinking);
  void scrollToNewest();

  const std::vector<ChatBubble*>& bubbles() const { return m_bubbles; }
  bool followsNewest() const { return m_followsNewest; }
  bool isMeasured() const { return m_unmeasuredCount == 0; }
  IconButton& stopButton() const { return *m_stop; }
  // The controls that can take the keyboard, in Tab order.
  std::vector<QWidget*> controls() const;

 Q_SIGNALS:
  void stopWanted();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  ChatBubble* newBubble(const ChatMessage& message, const std::function<void(const QUuid&)>& apply);
  int rowWidth() const;
  // Places everything, keeping what the user is reading where it is.
  void arrange(double growthAbove = 0.0);
  void measureSome();
  void scrolled();
  void scrollTo(int value);
  void reveal(const QRect& area);
  void stepCurrent(int step);
  void focusBubble(std::size_t index);
  // The topmost visible bubble.
  std::size_t firstShown() const;

  const Look& m_look;
  QWidget* m_page;
  QWidget* m_thinking;
  IconButton* m_stop;
  std::vector<ChatBubble*> m_bubbles;
  std::size_t m_current = 0;
  std::size_t m_unmeasuredCount = 0;
  QTimer m_measureTimer;
  bool m_followsNewest = true;
  bool m_isPlacing = false;
};

}  // namespace quilmora
