#pragma once

#include <QObject>

namespace quilmora {

// Whether Alt is held down. When that changes, repaints the widgets that underline their mnemonics meanwhile.
class HeldAlt final : public QObject {
  Q_OBJECT

 public:
  explicit HeldAlt(QObject* parent);

  bool isHeld() const { return m_isHeld; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void setHeld(bool held);

  bool m_isHeld = false;
};

}  // namespace quilmora
