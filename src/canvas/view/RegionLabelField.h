#pragma once

#include <QColor>
#include <QLineEdit>

namespace quilmora {

// The plain text field in which a region's label is edited, at the place of the label and in its colours.
class RegionLabelField : public QLineEdit {
  Q_OBJECT

 public:
  static constexpr double minWidth = 60.0;  // of the text, in canvas units

  RegionLabelField(const QString& label, QWidget* canvas);

  // Puts the field's top left corner at `corner`, in view coordinates.
  void place(QPointF corner, double zoom, const QColor& color);
  // Ends the edit as leaving the field does: the typed text is kept.
  void finish();

 Q_SIGNALS:
  void submitted();
  void cancelled();

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  enum class End { submit, cancel };
  void end(End how);
  void fitToText();
  int frameWidth() const;

  QPointF m_corner;
  double m_scale = 1.0;
  QColor m_color;
  bool m_isDone = false;
};

}  // namespace quilmora
