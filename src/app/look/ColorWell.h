#pragma once

#include <QAbstractButton>
#include <QPointer>

namespace quilmora {

class ColorDialog;
class Look;

// A swatch of a colour. Pressing it opens the colour dialog, and the swatch follows the colours being tried.
class ColorWell final : public QAbstractButton {
  Q_OBJECT

 public:
  enum class Opacity { none, chosen };

  // `name`, such as "Fill", is the name for screen readers and the title of the dialog.
  ColorWell(const Look& look, const QString& name, QWidget* parent = nullptr, Opacity opacity = Opacity::none);
  ~ColorWell() override;

  const QColor& color() const { return m_color; }
  // Emits nothing. An invalid colour shows as none.
  void setColor(const QColor& color);
  // "#RRGGBB", followed by the opacity unless it is full; screen readers read it.
  QString value() const;

  bool isChoosing() const;
  // The dialog while it is open, else nullptr.
  ColorDialog* dialog() const;
  void startChoosing();
  // As Escape does.
  void cancelChoosing();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void choosingBegan();
  // A colour is being tried, possibly one of many; leaving without a choice reports the original one.
  void colorChanged(const QColor& color);
  // The choice has ended: with this colour, or without one; after colorChanged if other colours were tried.
  void colorChosen(const QColor& color);
  void choosingCancelled();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void tryColor(const QColor& color);
  void choosingEnded(int result);

  const Look& m_look;
  Opacity m_opacity;
  QColor m_color;
  QColor m_before;
  QPointer<ColorDialog> m_dialog;
};

}  // namespace quilmora
