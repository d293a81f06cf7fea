#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>

#include "app/inspectors/ChoiceGrid.h"
#include "app/inspectors/EmojiPicker.h"
#include "app/inspectors/InspectorsFixture.h"
#include "app/inspectors/NodeInspector.h"
#include "app/look/ThemeSwatch.h"

namespace quilmora::test {
namespace {

class InspectorAccessTest : public InspectorsTest {
 protected:
  // Calls look() with each of the five inspectors visible.
  void walk(const std::function<void()>& look) {
    select({});
    look();
    select({2});
    look();
    select({2, 3});
    look();
    selectEdges({0});
    look();
    selectEdges({0, 1});
    look();
  }
};

bool isControl(QAccessible::Role role) {
  switch (role) {
    case QAccessible::Button:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::Slider:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
      return true;
    default:
      return false;
  }
}

// Every visible control below the widget.
std::vector<QAccessibleInterface*> controlsOf(QWidget* top) {
  std::vector<QAccessibleInterface*> found;
  std::vector<QAccessibleInterface*> waiting{QAccessible::queryAccessibleInterface(top)};
  while (!waiting.empty()) {
    QAccessibleInterface* each = waiting.back();
    waiting.pop_back();
    if (each == nullptr || each->state().invisible) continue;
    if (isControl(each->role())) found.push_back(each);
    if (each->role() == QAccessible::ComboBox) continue;
    for (int child = 0; child < each->childCount(); ++child) waiting.push_back(each->child(child));
  }
  return found;
}

TEST_F(InspectorAccessTest, EveryControlHasANameAndARole) {
  start();
  HierarchicalConfig config = editor().mindMap().hierarchical;
  config.edgeSizing = false;
  editor().setHierarchical(config, false);
  std::vector<std::size_t> counts;
  walk([&] {
    const auto controls = controlsOf(m_panel);
    counts.push_back(controls.size());
    for (QAccessibleInterface* each : controls)
      EXPECT_FALSE(each->text(QAccessible::Name).isEmpty())
          << kind().toStdString() << ": " << each->object()->metaObject()->className();
    // No widget that takes the keyboard or the pointer has the wrong role.
    for (const QWidget* widget : shown().findChildren<QWidget*>()) {
      if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible()) continue;
      QAccessibleInterface* each = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
      EXPECT_TRUE(isControl(each->role())) << widget->metaObject()->className() << int(each->role());
    }
  });
  EXPECT_EQ(counts, (std::vector<std::size_t>{26, 25, 27, 7, 6}));
}

TEST_F(InspectorAccessTest, ControlsTellTheirValues) {
  start();
  QAccessibleInterface* width = QAccessible::queryAccessibleInterface(&slider("Root Width"));
  ASSERT_EQ(width->role(), QAccessible::Slider);
  EXPECT_EQ(width->text(QAccessible::Value), QStringLiteral("15"));
  QAccessibleValueInterface* value = width->valueInterface();
  ASSERT_NE(value, nullptr);
  EXPECT_EQ(value->currentValue().toDouble(), 15);
  EXPECT_EQ(value->minimumValue().toDouble(), 2);
  EXPECT_EQ(value->maximumValue().toDouble(), 20);
  EXPECT_EQ(value->minimumStepSize().toDouble(), 0.5);
  value->setCurrentValue(7.5);
  EXPECT_EQ(editor().mindMap().hierarchical.rootEdgeWidth, 7.5);

  EXPECT_EQ(QAccessible::queryAccessibleInterface(&control<ColorWell>("Background Color"))->text(QAccessible::Value),
            QStringLiteral("#F8F0FF"));
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(&control<ThemeSwatch>("Lavender"))->state().checked);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&control<PanelPicker>("Focus Lens"))->text(QAccessible::Value),
            QStringLiteral("None"));
  EXPECT_TRUE(QAccessible::queryAccessibleInterface(&control<QCheckBox>("Branch Edge Sizing"))->state().checked);
  select({1});
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&control<CopyField>("Title"))->text(QAccessible::Value),
            QStringLiteral("Topic 1"));
}

TEST_F(InspectorAccessTest, ThePopoverOfEmojiHasNamesToo) {
  start();
  select({1});
  press("Emoji: none");
  EmojiPicker* picker = static_cast<NodeInspector&>(shown()).emojiPicker();
  const auto controls = controlsOf(picker);
  EXPECT_EQ(controls.size(), 33u);
  for (QAccessibleInterface* each : controls) EXPECT_FALSE(each->text(QAccessible::Name).isEmpty());
  picker->close();
}

TEST_F(InspectorAccessTest, TabReachesEveryControlAndGridsAreOneStop) {
  start();
  walk([&] {
    QList<QWidget*> stops;
    for (QWidget* widget : shown().findChildren<QWidget*>())
      if (widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus)) stops.append(widget);
    QList<QWidget*> reached;
    stops.first()->setFocus(Qt::TabFocusReason);
    for (qsizetype step = 0; step < stops.size(); ++step) {
      reached.append(m_window->focusWidget());
      QTest::keyClick(m_window->focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(reached, stops) << kind().toStdString();
    for (const ChoiceGrid* grid : shown().findChildren<ChoiceGrid*>()) {
      qsizetype entries = 0;
      for (const QAbstractButton* button : grid->buttons()) entries += button->focusPolicy() != Qt::NoFocus;
      EXPECT_EQ(entries, 1);
    }
  });
}

TEST_F(InspectorAccessTest, ArrowsWalkThroughAGrid) {
  start();
  select({2});
  auto& first = control<QAbstractButton>("Ocean");
  first.setFocus(Qt::TabFocusReason);
  QTest::keyClick(&first, Qt::Key_Right);
  EXPECT_TRUE(control<QAbstractButton>("Sky").hasFocus());
  QTest::keyClick(m_window->focusWidget(), Qt::Key_Down);
  EXPECT_TRUE(control<QAbstractButton>("Rose").hasFocus());
  QTest::keyClick(m_window->focusWidget(), Qt::Key_Down);
  EXPECT_TRUE(control<QAbstractButton>("Rose").hasFocus());
  QTest::keyClick(m_window->focusWidget(), Qt::Key_End);
  EXPECT_TRUE(control<QAbstractButton>("Teal").hasFocus());
  QTest::keyClick(m_window->focusWidget(), Qt::Key_Space);
  settle();
  EXPECT_EQ(node(2).style.fill, QStringLiteral("#00796B"));
}

TEST_F(InspectorAccessTest, NothingReachesBeyondThePanelWithLettersOfTwiceTheSize) {
  for (const int pixels : {13, 26}) {
    QFont font;
    font.setPixelSize(pixels);
    m_desktop.setInterfaceFont(font);
    start();
    walk([&] {
      auto* area = m_panel->findChild<QScrollArea*>();
      EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
      EXPECT_LE(shown().width(), area->viewport()->width());
      for (const QWidget* part : shown().findChildren<QWidget*>()) {
        if (!part->isVisible()) continue;
        const QRect place(part->mapTo(&shown(), QPoint()), part->size());
        EXPECT_GE(place.left(), 0) << pixels << ' ' << part->metaObject()->className();
        EXPECT_LE(place.right(), shown().width()) << pixels << ' ' << part->metaObject()->className();
        // Letters are never cut off at the top or the bottom.
        const auto* button = qobject_cast<const QAbstractButton*>(part);
        if (button && !button->text().isEmpty() && button->fontMetrics().height() > button->height())
          ADD_FAILURE() << pixels << ' ' << part->accessibleName().toStdString();
      }
    });
  }
}

TEST_F(InspectorAccessTest, WhatIsCutHasAToolTip) {
  QFont font;
  font.setPixelSize(26);
  m_desktop.setInterfaceFont(font);
  start();
  selectEdges({0, 1});
  auto& button = control<PanelButton>("Apply Color");
  EXPECT_EQ(button.toolTip(), QString());
  button.setFixedWidth(80);
  settle();
  EXPECT_EQ(button.toolTip(), QStringLiteral("Apply Color"));
}

}  // namespace
}  // namespace quilmora::test
