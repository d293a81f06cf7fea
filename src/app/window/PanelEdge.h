#pragma once

#include <optional>

#include <QWidget>

namespace quilmora {

class Look;

// The edge between a side panel and the canvas, which the pointer can drag and which, focused with Tab, moves with
// Left, Right, Home and End. Draws only that it has the keyboard: the panel has its own line.
class PanelEdge : public QWidget {
  Q_OBJECT

 public:
  // The width that the pointer can grab, in logical pixels.
  static constexpr int thickness = 6;
  // The distance that an arrow key moves it.
  static constexpr int step = 16;

  // X coordinates in the parent, of the middle of the edge.
  struct Range {
    int least = 0;
    int most = 0;
    int now = 0;

    bool operator==(const Range&) const = default;
  };

  PanelEdge(const Look& look, QWidget* parent);

  const Range& range() const { return m_range; }
  // Screen readers treat it as a value.
  void setRange(const Range& range);
  // Moves it as far as it can go; its owner then places it.
  void moveTo(int x);

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
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  const Look& m_look;
  Range m_range;
  std::optional<int> m_hold;  // where the pointer grabbed it, in its own coordinates
};

}  // namespace quilmora
