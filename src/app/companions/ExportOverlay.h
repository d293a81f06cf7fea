#pragma once

#include <optional>

#include "app/companions/Card.h"

class QVariantAnimation;

namespace quilmora {

class TextLabel;

// Says that an export is in progress, and how far it is if that is known. Fades in and out.
class ExportOverlay : public Card {
  Q_OBJECT

 public:
  static constexpr int fadeMilliseconds = 150;

  ExportOverlay(const Look& look, QWidget* canvas);

  QString message() const;
  // From 0 to 1, as it fades.
  double shownOpacity() const { return m_opacity; }
  // Announces an export whose progress is not known yet.
  void setMessage(const QString& message);
  void setExporting(bool isExporting);
  // From 0 to 1.
  void setShareDone(double share);
  // Finishes fading in and paints, before work that leaves no time to do so.
  void showAtOnce();

  QSize wantedSize(QSize room) override;

 private:
  class Ring;

  void fadeTo(double opacity);

  Ring* m_ring;
  TextLabel* m_text;
  QVariantAnimation* m_fade;
  double m_opacity = 0.0;
};

}  // namespace quilmora
