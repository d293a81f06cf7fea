#include <QWidget>
#include <gtest/gtest.h>

#include "app/look/FlowLayout.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

class Box final : public QWidget {
 public:
  Box(QSize size, QWidget* parent) : QWidget(parent), m_size(size) {}
  QSize sizeHint() const override { return m_size; }

 private:
  QSize m_size;
};

class FlowLayoutTest : public ::testing::Test {
 protected:
  Box* add(int width, int height = 20) {
    auto* box = new Box({width, height}, &m_page);
    m_flow.addWidget(box);
    return box;
  }

  QWidget m_page;
  FlowLayout& m_flow = *new FlowLayout(6, &m_page);
};

TEST_F(FlowLayoutTest, FillsARowFromTheLeftAndGoesOnInTheNext) {
  const Box* a = add(40);
  const Box* b = add(50);
  const Box* c = add(30, 24);
  const Box* d = add(10);
  m_flow.setGeometry(QRect(0, 0, 100, 200));
  EXPECT_EQ(a->geometry(), QRect(0, 0, 40, 20));
  EXPECT_EQ(b->geometry(), QRect(46, 0, 50, 20));
  EXPECT_EQ(c->geometry(), QRect(0, 26, 30, 24));
  EXPECT_EQ(d->geometry(), QRect(36, 26, 10, 20));
  EXPECT_EQ(m_flow.heightForWidth(100), 50);
}

TEST_F(FlowLayoutTest, WhatFitsExactlyStays) {
  add(40);
  const Box* b = add(54);
  m_flow.setGeometry(QRect(0, 0, 100, 200));
  EXPECT_EQ(b->geometry(), QRect(46, 0, 54, 20));
  m_flow.setGeometry(QRect(0, 0, 99, 200));
  EXPECT_EQ(b->geometry(), QRect(0, 26, 54, 20));
}

TEST_F(FlowLayoutTest, WhatIsWiderThanTheRowIsCutToIt) {
  const Box* a = add(400);
  m_flow.setGeometry(QRect(5, 5, 100, 200));
  EXPECT_EQ(a->geometry(), QRect(5, 5, 100, 20));
}

TEST_F(FlowLayoutTest, GivesBackWhatIsTaken) {
  add(40);
  QLayoutItem* item = m_flow.takeAt(0);
  ASSERT_NE(item, nullptr);
  delete item;
  EXPECT_EQ(m_flow.count(), 0);
  EXPECT_EQ(m_flow.takeAt(0), nullptr);
  EXPECT_EQ(m_flow.heightForWidth(100), 0);
}

}  // namespace
}  // namespace quilmora
