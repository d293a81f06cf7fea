#pragma once

#include <QDialog>

class QColorDialog;

namespace quilmora {

// The toolkit's colour dialog with our buttons, above the window of its parent and no larger than the screen: what does
// not fit scrolls. Modal for that window alone; open() returns at once.
class ColorDialog final : public QDialog {
  Q_OBJECT

 public:
  ColorDialog(const QString& title, const QColor& color, bool hasOpacity, QWidget* parent);

  QColor color() const;
  void setColor(const QColor& color);

 Q_SIGNALS:
  // Emitted while the user tries colours.
  void colorChanged(const QColor& color);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QColorDialog* m_colors;
};

}  // namespace quilmora
