#pragma once

#include <vector>

#include <QScrollArea>

namespace quilmora {

class Chip;
class Look;

// What a chat shows before its first message: groups of suggested prompts, one chip each.
class ChatSuggestions final : public QScrollArea {
  Q_OBJECT

 public:
  ChatSuggestions(const Look& look, QWidget* parent);

  // In Tab order.
  const std::vector<Chip*>& chips() const { return m_chips; }

 Q_SIGNALS:
  // The chip for this prompt was chosen.
  void chosen(const QString& prompt);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  std::vector<Chip*> m_chips;
};

}  // namespace quilmora
