#pragma once

#include <QPushButton>
#include <QToolButton>
#include <QWidget>

#include "app/look/Tokens.h"

class QLabel;

namespace quilmora {

class Look;

// One of the colours of the table, such as &Tokens::panel.
using TokenColor = QColor Tokens::*;

// A background in one of the colours, with hairlines along some of its edges.
class Ground : public QWidget {
  Q_OBJECT

 public:
  Ground(const Look& look, TokenColor color, Qt::Edges hairlines, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  const Look& m_look;
  TokenColor m_color;
  Qt::Edges m_hairlines;
};

// A symbol as part of a page; takes no input.
class SymbolLabel : public QWidget {
  Q_OBJECT

 public:
  SymbolLabel(const Look& look, QString symbol, int size, TokenColor color, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Look& m_look;
  QString m_symbol;
  TokenColor m_color;
};

// A text in one of the colours and styles, wrapping or elided with a tool tip.
class TextLabel : public QWidget {
  Q_OBJECT

 public:
  enum class Overflow { wraps, elides };
  TextLabel(const Look& look, QString text, TokenColor color, const QFont& font, Overflow overflow,
            QWidget* parent = nullptr);

  QString text() const { return m_text; }
  void setPlainText(const QString& text);
  void setAlignment(Qt::Alignment alignment);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return m_overflow == Overflow::wraps; }
  int heightForWidth(int width) const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void updateToolTip();

  const Look& m_look;
  QString m_text;
  TokenColor m_color;
  Overflow m_overflow;
  Qt::Alignment m_alignment = Qt::AlignLeft | Qt::AlignVCenter;
};

// What is shown while there is nothing else: a symbol and a line saying what the place is for.
class EmptyState : public QWidget {
  Q_OBJECT

 public:
  EmptyState(const Look& look, const QString& symbol, const QString& text, QWidget* parent = nullptr);
};

// A button with only a symbol, 30 wide and high; its name is for screen readers.
class IconButton : public QToolButton {
  Q_OBJECT

 public:
  IconButton(const Look& look, const QString& symbol, const QString& name, QWidget* parent = nullptr);

  // Shows in the accent colour that the button's feature is on. A click alone does not change it.
  void setOn(bool on);

 protected:
  void nextCheckState() override {}
};

}  // namespace quilmora
