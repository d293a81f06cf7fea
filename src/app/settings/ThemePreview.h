#pragma once

#include <memory>

#include <QWidget>

#include "canvas/painting/MapPainter.h"
#include "themes/Theme.h"

namespace quilmora {

class Look;

// A small map in the colours of a theme, with topics at every depth that the theme has a row for; drawn as on the
// canvas.
class ThemePreview final : public QWidget {
  Q_OBJECT

 public:
  explicit ThemePreview(const Look& look, QWidget* parent = nullptr);

  void setTheme(const Theme& theme);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QRectF contentBounds();

  const Look& m_look;
  MapPainter m_painter;
  MapScene m_scene;
};

// The map of the preview: at each depth one topic leads on to the next and another one is a leaf.
MindMap previewMap(int depthCount);

}  // namespace quilmora
