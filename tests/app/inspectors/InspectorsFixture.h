#pragma once

#include <stdexcept>

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include "app/inspectors/CopyFields.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/inspectors/PanelControls.h"
#include "app/inspectors/SliderRow.h"
#include "app/look/ColorDialog.h"
#include "app/look/ColorWell.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "platform/Notifications.h"
#include "platform/Scheduler.h"
#include "support/EditorRig.h"
#include "support/Lines.h"
#include "support/QtPrinters.h"

namespace quilmora::test {

// The panel over an editor with only in-memory twins around it, beside a plain widget instead of the canvas.
class InspectorsTest : public ::testing::Test {
 protected:
  void start(MindMap map = threeTopics()) {
    m_rig = std::make_unique<EditorRig>(std::move(map));
    m_look = std::make_unique<Look>(m_settings, m_desktop);
    m_look->install(*qApp);
    m_window = std::make_unique<QWidget>();
    m_window->resize(900, 700);
    m_canvas = new QWidget(m_window.get());
    m_canvas->setFocusPolicy(Qt::StrongFocus);
    m_canvas->setGeometry(0, 0, 500, 700);
    m_panel = new InspectorPanel({*m_look, editor(), m_notifications, m_scheduler, m_settings}, m_window.get());
    m_panel->setGeometry(580, 0, 320, 700);
    QObject::connect(m_panel, &InspectorPanel::keyboardReleased, m_canvas, [this] { m_canvas->setFocus(); });
    m_window->show();
    m_window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
    m_canvas->setFocus();
    settle();
  }
  void TearDown() override { m_window.reset(); }

  // A parent with two children.
  static MindMap threeTopics() {
    MindMap map = mapOf({}, {{1, 2}, {1, 3}});
    map.nodes = {topic(1, 0, 0), topic(2, 10, 20), topic(3, 100, 40)};
    return map;
  }

  MindMapViewModel& editor() { return m_rig->editor; }
  Node node(int number) { return *editor().nodeByID(topicId(number)); }
  Edge edge(int number) { return editor().mindMap().edges[static_cast<std::size_t>(number)]; }
  void select(std::initializer_list<int> numbers) {
    IdSet ids;
    for (const int number : numbers) ids.insert(topicId(number));
    editor().setSelectedEdgeIDs({});
    editor().setSelectedNodeIDs(std::move(ids));
    settle();
  }
  void selectEdges(std::initializer_list<int> numbers) {
    IdSet ids;
    for (const int number : numbers) ids.insert(edgeId(number));
    editor().setSelectedNodeIDs({});
    editor().setSelectedEdgeIDs(std::move(ids));
    settle();
  }
  // Runs queued work.
  static void settle() { QCoreApplication::processEvents(); }
  // Forgets the undo steps so far, and waits until the snapshot throttle is over.
  void rest() {
    editor().clearHistory();
    m_rig->clock.advance(std::chrono::seconds(10));
  }
  int steps() { return editor().undoCount(); }

  Inspector& shown() { return *m_panel->inspector(); }
  QString kind() { return QString::fromLatin1(shown().metaObject()->className()).section(QLatin1String("::"), -1); }
  // The visible control with this kind and name.
  template <class Control>
  Control& control(const char* name) {
    for (Control* each : shown().findChildren<Control*>())
      if (each->accessibleName() == QString::fromUtf8(name)) return *each;
    ADD_FAILURE() << "there is no " << name;
    throw std::runtime_error(name);
  }
  template <class Control>
  bool has(const char* name) {
    for (Control* each : shown().findChildren<Control*>())
      if (each->accessibleName() == QString::fromUtf8(name) && each->isVisible()) return true;
    return false;
  }
  void press(const char* name) {
    control<QAbstractButton>(name).click();
    settle();
  }
  StepSlider& slider(const char* name) { return control<StepSlider>(name); }
  void choose(const char* picker, const char* entry) {
    PanelPicker& box = control<PanelPicker>(picker);
    const int place = box.findText(QLatin1String(entry));
    ASSERT_GE(place, 0) << entry;
    box.setCurrentIndex(place);
    Q_EMIT box.activated(place);
    settle();
  }
  void chooseColor(const char* well, const char* hex) {
    ColorWell& swatch = control<ColorWell>(well);
    swatch.click();
    ASSERT_NE(swatch.dialog(), nullptr);
    swatch.dialog()->setColor(QColor(QLatin1String(hex)));
    swatch.dialog()->accept();
    settle();
  }
  // The visible texts, from top to bottom.
  QStringList texts() {
    QStringList texts;
    for (const TextLabel* label : shown().findChildren<TextLabel*>())
      if (label->isVisible()) texts.append(label->text());
    return texts;
  }

  MemorySettingsStore m_settings;
  FixedDesktopAppearance m_desktop;
  NotificationCenter m_notifications;
  ManualScheduler m_scheduler;
  std::unique_ptr<Look> m_look;
  std::unique_ptr<EditorRig> m_rig;
  std::unique_ptr<QWidget> m_window;
  QWidget* m_canvas = nullptr;
  InspectorPanel* m_panel = nullptr;
};

}  // namespace quilmora::test
