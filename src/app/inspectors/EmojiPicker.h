#pragma once

#include <QWidget>

class QLineEdit;

namespace quilmora {

class ChoiceGrid;
class Look;

// A popover for choosing an emoji: a grid of common ones, and a field for any other. Closes with the choice.
class EmojiPicker final : public QWidget {
  Q_OBJECT

 public:
  // `emoji` is the topic's current one, or empty; an existing one can be removed, too.
  EmojiPicker(const Look& look, const QString& emoji, QWidget* parent);

  static const QStringList& emojis();

  ChoiceGrid& grid() const { return *m_grid; }
  QLineEdit& field() const { return *m_field; }

  // Below the widget, or above it if there is no room below.
  void openAt(const QWidget& widget);

 Q_SIGNALS:
  // An empty text removes the emoji.
  void selected(const QString& emoji);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void choose(const QString& emoji);
  void textWasTyped(const QString& text);

  const Look& m_look;
  ChoiceGrid* m_grid;
  QLineEdit* m_field;
};

QFont emojiFont(const Look& look);
// The first user-perceived character of a text, ignoring spaces around it.
QString firstCharacter(const QString& text);

}  // namespace quilmora
