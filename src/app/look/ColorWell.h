#pragma once

#include <QAbstractButton>
#include <QPointer>

namespace quilmora {

class ColorDialog;
class Look;

// A swatch of a colour. Pressing it opens the colour dialog, whose colours the swatch shows while a person tries them.
class ColorWell final : public QAbstractButton {
  Q_OBJECT

 public:
  enum class Opacity { none, chosen };

  // `name`, such as "Fill", is what screen readers say and the title of the dialog.
  ColorWell(const Look& look, const QString& name, QWidget* parent = nullptr, Opacity opacity = Opacity::none);
  ~ColorWell() override;

  const QColor& color() const { return m_color; }
  // Emits nothing. An invalid colour shows as none.
  void setColor(const QColor& color);
  // "#RRGGBB", with the opacity behind it where it is not whole; what screen readers say of the colour.
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
  // A colour is tried, which may be one of many; leaving without a choice gives back that from before.
  void colorChanged(const QColor& color);
  // The choice is over: with this colour, or without one, after colorChanged where another one had been tried.
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
