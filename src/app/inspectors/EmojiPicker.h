#pragma once

#include <QWidget>

class QLineEdit;

namespace quilmora {

class ChoiceGrid;
class Look;

// A popover from which an emoji is chosen: a grid of the usual ones, and a field for any other. Closes with the choice.
class EmojiPicker final : public QWidget {
  Q_OBJECT

 public:
  // `emoji` is the one that the topic has, or empty; where it has one, it can be taken away too.
  EmojiPicker(const Look& look, const QString& emoji, QWidget* parent);

  static const QStringList& emojis();

  ChoiceGrid& grid() const { return *m_grid; }
  QLineEdit& field() const { return *m_field; }

  // Below the widget, or above it where there is no room below.
  void openAt(const QWidget& widget);

 Q_SIGNALS:
  // An empty text takes the emoji away.
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
// The first character of a text as a person counts them, without blanks around it.
QString firstCharacter(const QString& text);

}  // namespace quilmora
