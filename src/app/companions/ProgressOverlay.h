#pragma once

#include "app/companions/Card.h"

class QVariantAnimation;

namespace quilmora {

class BusySign;
class TextLabel;

// Says that an export or import is in progress, and how far it is if that is known. Fades in and out.
class ProgressOverlay : public Card {
  Q_OBJECT

 public:
  static constexpr int fadeMilliseconds = 150;

  ProgressOverlay(const Look& look, QWidget* canvas);

  QString message() const;
  // From 0 to 1, as it fades.
  double shownOpacity() const { return m_opacity; }
  // Announces work whose progress is not known yet.
  void setMessage(const QString& message);
  void setWorking(bool isWorking);
  // From 0 to 1.
  void setShareDone(double share);

  QSize wantedSize(QSize room) override;

 private:
  void fadeTo(double opacity);

  BusySign* m_ring;
  TextLabel* m_text;
  QVariantAnimation* m_fade;
  double m_opacity = 0.0;
};

}  // namespace quilmora
