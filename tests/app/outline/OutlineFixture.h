#pragma once

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <gtest/gtest.h>

#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "app/outline/OutlineList.h"
#include "app/outline/OutlineView.h"
#include "editor/AIRig.h"
#include "support/LargeMaps.h"
#include "support/Lines.h"
#include "support/QtPrinters.h"

namespace quilmora::test {

// The page in a window of its own, 260 by 600, over a canvas of 1000 by 600.
class OutlineTest : public ::testing::Test {
 protected:
  void open(MindMap map) {
    m_rig = std::make_unique<AIRig>(std::move(map));
    m_window = std::make_unique<Ground>(m_look, &Tokens::panel, Qt::Edges());
    m_window->resize(260, 600);
    m_view = new OutlineView(m_look, editor(), m_rig->workflows, m_window.get());
    m_view->setGeometry(m_window->rect());
    m_window->show();
    AIRig::settle();
  }
  void openActive(MindMap map) {
    open(std::move(map));
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    list().setFocus(Qt::TabFocusReason);
    AIRig::settle();
  }
  MindMapViewModel& editor() { return m_rig->editor; }
  OutlineModel& model() { return m_view->model(); }
  OutlineList& list() { return m_view->list(); }
  bool showsEmptyText() { return !m_view->findChild<EmptyState*>()->isHidden(); }
  QModelIndex index(int row) { return model().index(row); }
  int row(int topic, int start = 0) { return model().findRow(topicId(topic), start).value_or(-1); }
  QStringList titles() {
    QStringList titles;
    for (int i = 0; i < model().rowCount(); ++i) titles << model().shownTitle(i);
    return titles;
  }
  void click(QPoint place) {
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
    AIRig::settle();
  }
  void clickTitle(int row) { click(list().parts(index(row)).title.center()); }
  void clickChevron(int row) { click(list().parts(index(row)).chevron.center()); }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(m_window->windowHandle(), key, modifiers);
    AIRig::settle();
  }
  void type(const char* letters) {
    for (const char* letter = letters; *letter != 0; ++letter) QTest::keyClick(m_window->windowHandle(), *letter);
    AIRig::settle();
  }
  QString current() { return list().currentIndex().data().toString(); }
  // Triggers an entry of the row's menu.
  void choose(int topic, const char* text) {
    std::unique_ptr<QMenu> menu(m_view->rowMenu(topicId(topic)));
    for (QAction* entry : menu->actions())
      if (entry->text() == QLatin1String(text)) return entry->trigger();
    ADD_FAILURE() << text;
  }
  QColor colorAt(QPoint place) { return m_window->grab().toImage().pixelColor(place); }

  MemorySettingsStore m_settings;
  FixedDesktopAppearance m_desktop;
  Look m_look{m_settings, m_desktop};
  std::unique_ptr<AIRig> m_rig;
  std::unique_ptr<QWidget> m_window;
  OutlineView* m_view = nullptr;
};

inline MindMap family() {
  return mapOf({1, 2, 3, 4, 5}, {{1, 2}, {1, 3}, {2, 4}, {3, 5}});
}

}  // namespace quilmora::test
