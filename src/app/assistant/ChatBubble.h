#pragma once

#include <chrono>
#include <functional>

#include <QUuid>
#include <QWidget>

#include "ai/ChatMessage.h"
#include "app/assistant/MessageText.h"

class QPushButton;

namespace quilmora {

class Look;

// One message of the chat: the user's at the trailing side in the accent colour, the assistant's at the leading side
// with an icon, and with "Apply to Map" below if it contains a map. Its text can be selected with the pointer and the
// keyboard, and copied.
class ChatBubble final : public QWidget {
  Q_OBJECT

 public:
  // From the leading edge to the assistant's text, and to the button below it.
  static constexpr int indent = 28;

  // `onApply` is called by the button, which a message without a map does not have.
  ChatBubble(const Look& look, const ChatMessage& message, std::function<void()> onApply, QWidget* parent);

  const QUuid& messageID() const { return m_messageID; }
  const MessageText& text() const { return m_text; }
  QString selectedText() const;
  // nullptr if there is nothing to apply.
  QPushButton* applyButton() const { return m_apply; }
  void setApplied(bool applied);

  // Wraps the text for a row of this width.
  void setRowWidth(int width);
  int wantedHeight() const;
  bool isMeasured() const { return m_text.isMeasured(); }
  // Refines the height until the deadline. Returns how much the part above `top` of the bubble grew.
  double measureUntil(std::chrono::steady_clock::time_point deadline, double top);
  void selectNothing();

 Q_SIGNALS:
  void focused();
  // Painting found a different height.
  void heightChanged();
  // The text at this place is being selected and should be visible.
  void revealWanted(QPoint place);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QRectF bubbleRect() const;
  QPointF textCorner() const;
  qsizetype positionAt(QPointF point);
  void select(MessageText::Selection selection);
  void moveSelectionEnd(bool forward, bool byWord);
  bool isSelectionKey(const QKeyEvent& event) const;
  void copy() const;
  void placeButton();
  MessageText::Colors colors() const;
  void showApplied();

  const Look& m_look;
  QUuid m_messageID;
  bool m_isUser;
  bool m_carriesMap;
  bool m_isApplied = false;
  MessageText m_text;
  MessageText::Selection m_selection;
  bool m_isSelecting = false;
  QPushButton* m_apply = nullptr;
};

}  // namespace quilmora
