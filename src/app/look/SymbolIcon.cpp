#include "app/look/SymbolIcon.h"

#include <QIconEngine>
#include <QPainter>

#include "canvas/painting/Symbols.h"

namespace quilmora {

namespace {

class SymbolIconEngine final : public QIconEngine {
 public:
  SymbolIconEngine(std::shared_ptr<const Tokens> tokens, QString symbol, QColor Tokens::*color)
      : m_tokens(std::move(tokens)), m_symbol(std::move(symbol)), m_color(color) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    paintSymbol(*painter, m_symbol, rect, color(mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return render(size, mode, state, 1.0);
  }

  // `size` is in device pixels.
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
    return render(QSizeF(size) / scale, mode, state, scale);
  }

  QIconEngine* clone() const override { return new SymbolIconEngine(m_tokens, m_symbol, m_color); }
  bool isNull() override { return m_symbol.isEmpty(); }

 private:
  QPixmap render(QSizeF size, QIcon::Mode mode, QIcon::State state, double scale) const {
    return symbolPixmap(m_symbol, size, color(mode, state), scale);
  }

  QColor color(QIcon::Mode mode, QIcon::State state) const {
    if (mode == QIcon::Disabled) return m_tokens->disabledText;
    return state == QIcon::On ? m_tokens->accent : (*m_tokens).*m_color;
  }

  std::shared_ptr<const Tokens> m_tokens;
  QString m_symbol;
  QColor Tokens::*m_color;
};

}  // namespace

QIcon symbolIcon(std::shared_ptr<const Tokens> tokens, const QString& symbol, QColor Tokens::*color) {
  return QIcon(new SymbolIconEngine(std::move(tokens), symbol, color));
}

}  // namespace quilmora
