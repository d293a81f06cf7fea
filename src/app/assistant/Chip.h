#pragma once

#include <QAbstractButton>

namespace quilmora {

class Look;

// A choice of one or two words in a rounded frame, optionally with a symbol before them. When checked, it is filled
// with the accent colour.
class Chip final : public QAbstractButton {
  Q_OBJECT

 public:
  // `text` may contain a mnemonic.
  Chip(const Look& look, QString symbol, const QString& text, QWidget* parent = nullptr);

  // Without its mnemonic.
  QString label() const;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Look& m_look;
  QString m_symbol;
};

}  // namespace quilmora
