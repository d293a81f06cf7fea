#pragma once

#include <optional>

#include <QWidget>

namespace quilmora {

// The edge between a side panel and the canvas, to be dragged by the pointer. Draws nothing: the panel has its line.
class PanelEdge : public QWidget {
  Q_OBJECT

 public:
  // In logical pixels: where the pointer takes hold of it.
  static constexpr int thickness = 6;

  explicit PanelEdge(QWidget* parent);

 Q_SIGNALS:
  // To a place in the parent, in the middle of the edge.
  void dragged(int x);
  // The pointer let it go there.
  void dropped(int x);
  // A double click asks for the usual place.
  void resetWanted();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  std::optional<int> m_hold;  // where the pointer holds it, in its own coordinates
};

}  // namespace quilmora
