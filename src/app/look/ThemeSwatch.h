#pragma once

#include <QAbstractButton>
#include <QColor>

class QPainter;

namespace quilmora {

class Look;
struct Theme;

// A theme in a picker: a disc in the two stops of its first row with the name below. The applied theme is checked and
// has a ring; a click alone does not change that.
class ThemeSwatch final : public QAbstractButton {
  Q_OBJECT

 public:
  ThemeSwatch(const Look& look, const Theme& theme, QWidget* parent = nullptr);

  const QString& themeId() const { return m_themeId; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void nextCheckState() override {}
  void paintEvent(QPaintEvent* event) override;

 private:
  const Look& m_look;
  QString m_themeId;
  QColor m_first;
  QColor m_second;
  QColor m_stroke;
};

}  // namespace quilmora
