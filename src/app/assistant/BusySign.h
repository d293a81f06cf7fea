#pragma once

#include <QTimer>
#include <QWidget>

namespace quilmora {

class Look;

// A ring with an arc that turns while it is shown; the arc stands still if the desktop wants no motion.
class BusySign final : public QWidget {
  Q_OBJECT

 public:
  explicit BusySign(const Look& look, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  const Look& m_look;
  QTimer m_timer;
  int m_step = 0;
};

}  // namespace quilmora
