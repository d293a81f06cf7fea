#pragma once

#include <optional>

#include <QWidget>

namespace quilmora {

// The edge between a side panel and the canvas, which the pointer can drag. Draws nothing: the panel has its own line.
class PanelEdge : public QWidget {
  Q_OBJECT

 public:
  // The width that the pointer can grab, in logical pixels.
  static constexpr int thickness = 6;

  explicit PanelEdge(QWidget* parent);

 Q_SIGNALS:
  // To an x coordinate in the parent, of the middle of the edge.
  void dragged(int x);
  // The pointer released it there.
  void dropped(int x);
  // A double click asks for the default place.
  void resetWanted();

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  std::optional<int> m_hold;  // where the pointer grabbed it, in its own coordinates
};

}  // namespace quilmora
