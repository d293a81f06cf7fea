#pragma once

#include <vector>

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace quilmora {

// Moves the keyboard between the areas of a window with F6 or Ctrl+Tab, and backwards with Shift. An area that had the
// keyboard before gets it back on the same control.
class FocusWalk : public QObject {
 public:
  // The areas in the order of the walk; hidden ones are skipped. The window owns the walk.
  FocusWalk(const std::vector<QWidget*>& areas, QWidget* window);

  // Adds a widget beside an area that counts as part of it.
  void setAnnex(const QWidget& area, QWidget* annex);

  void forward() { step(1); }
  void backward() { step(-1); }

 private:
  struct Area {
    QPointer<QWidget> widget;
    QPointer<QWidget> last = {};  // the control that last had the keyboard there
    QPointer<QWidget> annex = {};
  };

  void step(int direction);

  std::vector<Area> m_areas;
  QWidget* m_window;
};

}  // namespace quilmora
