#pragma once

#include <optional>

#include <QTimer>
#include <QWidget>

namespace quilmora {

class Look;

// A ring with an arc that turns while it is shown, or that fills as work proceeds; the arc stands still if the desktop
// wants no motion.
class BusySign final : public QWidget {
  Q_OBJECT

 public:
  explicit BusySign(const Look& look, QWidget* parent = nullptr);

  // From 0 to 1; nothing while it is not known how far the work is.
  void setShare(std::optional<double> share);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  const Look& m_look;
  QTimer m_timer;
  int m_step = 0;
  std::optional<double> m_share;
};

}  // namespace quilmora
