#pragma once

#include <functional>
#include <vector>

#include <QWidget>

class QAbstractButton;

namespace quilmora {

class Look;

// A row of plain buttons with chevrons between them, which scrolls sideways when it is longer than its space and
// initially shows its end. Buttons are created as they come into view, so that a path of any length is cheap.
class CrumbStrip : public QWidget {
  Q_OBJECT

 public:
  CrumbStrip(const Look& look, QWidget* parent);

  // A path of `count` places; titles are requested as needed. Unchanged places are kept.
  void setPath(std::size_t count, std::function<QString(std::size_t)> title);
  QAbstractButton* button(std::size_t index);

  int wantedHeight() const;
  // The width of the whole path, or `most` if that is less.
  int wantedWidth(int most);
  // How far the path is scrolled away from its end, in pixels.
  int scrolled() const { return m_scrolled; }
  void scrollTo(int distance);
  void scrollToShow(const QWidget& button);

 Q_SIGNALS:
  void chosen(std::size_t index);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  class Crumb;
  class Fades;

  // A place of the path, and the distance of its right edge from the path's end.
  struct Item {
    Crumb* crumb;
    QString title;
    int right;
  };

  std::size_t placeOf(std::size_t itemIndex) const { return m_count - 1 - itemIndex; }
  bool isSame(std::size_t count, const std::function<QString(std::size_t)>& title) const;
  void clear();
  void extendBy(std::size_t itemCount);
  void extendTo(int distance);
  int builtWidth() const;
  int endX() const;
  void placeButtons();

  const Look& m_look;
  std::size_t m_count = 0;
  std::function<QString(std::size_t)> m_title;
  std::vector<Item> m_items;  // from the end of the path
  Fades* m_fades;
  int m_scrolled = 0;
};

}  // namespace quilmora
