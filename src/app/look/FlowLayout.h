#pragma once

#include <vector>

#include <QLayout>

namespace quilmora {

// Places its items in rows from left to right, each at its preferred size, and continues on the next row when one is
// full. The spacing is used between items in both directions.
class FlowLayout : public QLayout {
  Q_OBJECT

 public:
  explicit FlowLayout(int spacing, QWidget* parent = nullptr);
  ~FlowLayout() override;

  void addItem(QLayoutItem* item) override;
  int count() const override { return static_cast<int>(m_items.size()); }
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  Qt::Orientations expandingDirections() const override { return {}; }
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize minimumSize() const override;
  QSize sizeHint() const override;
  void setGeometry(const QRect& rect) override;

 private:
  // The rectangles of the items: from the top left corner of `rect`, within its width, and as high as they need.
  std::vector<QRect> places(const QRect& rect) const;

  std::vector<QLayoutItem*> m_items;
};

}  // namespace quilmora
