#pragma once

#include <QPlainTextEdit>

namespace quilmora {

// A field for a few lines of text that grows with them. Return submits them; with Shift it starts a new line.
class SubmitField final : public QPlainTextEdit {
  Q_OBJECT

 public:
  // The minimum and maximum height in lines; beyond the maximum it scrolls.
  SubmitField(int minLines, int maxLines, QWidget* parent = nullptr);

  QSize sizeHint() const override { return {QPlainTextEdit::sizeHint().width(), m_height}; }
  QSize minimumSizeHint() const override { return {QPlainTextEdit::minimumSizeHint().width(), m_height}; }

 Q_SIGNALS:
  void submitted();
  // Escape was pressed.
  void left();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void fitHeight();

  int m_minLines;
  int m_maxLines;
  int m_height = 0;
};

}  // namespace quilmora
