#pragma once

#include <QAbstractButton>

namespace quilmora {

class Look;

// A symbol above its name, with an optional second line below.
class TileButton final : public QAbstractButton {
  Q_OBJECT

 public:
  TileButton(const Look& look, const QString& symbol, const QString& name, const QString& detail, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Look& m_look;
  QString m_symbol;
  QString m_detail;
  QFont m_detailFont;
};

}  // namespace quilmora
