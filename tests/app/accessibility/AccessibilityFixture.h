#pragma once

#include <algorithm>
#include <vector>

#include <QAbstractButton>
#include <QAccessible>
#include <QPointer>

#include "app/AppFixture.h"
#include "app/outline/OutlineList.h"
#include "app/outline/OutlineView.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora {

using namespace test;

// Everything that a user can operate, or that has a value.
inline bool isControl(const QAccessibleInterface& part) {
  switch (part.role()) {
    case QAccessible::Button:
    case QAccessible::ButtonMenu:
    case QAccessible::ButtonDropDown:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::Slider:
    case QAccessible::SpinBox:
    case QAccessible::Link:
    case QAccessible::PageTab:
    case QAccessible::MenuItem:
    case QAccessible::Tree:
    case QAccessible::TreeItem:
    case QAccessible::List:
    case QAccessible::ListItem:
    case QAccessible::Dialog:
    case QAccessible::Splitter:
    case QAccessible::Canvas:
    case QAccessible::ProgressBar:
      return true;
    default:
      return part.state().focusable != 0;
  }
}

inline QString described(const QAccessibleInterface& part) {
  const QObject* object = part.object();
  return QStringLiteral("role %1, %2")
      .arg(part.role())
      .arg(object ? QLatin1String(object->metaObject()->className()) : QLatin1String("no object"));
}

inline const QStringList nothing;

// A whole window, and what opens in it.
class AccessibilityTest : public AppTest {
 protected:
  void startWithMap() {
    startActive();
    MindMap map = mapOf({1, 2, 3, 4}, {{1, 2}, {1, 3}});
    map.nodes.update(1, [](Node& node) {
      node.notes = QStringLiteral("A note.");
      node.url = QStringLiteral("https://example.org");
      node.emoji = QStringLiteral("🚀");
      node.badge = Badge::done;
    });
    for (std::size_t i = 0; i < map.nodes.size(); ++i)
      map.nodes.update(i, [&](Node& node) { node.position = QPointF(200.0 * static_cast<double>(i), 0); });
    map.regions.append(
        Region{topicId(900), QStringLiteral("Zone"), QStringLiteral("#FFD54F"), QRectF(0, 200, 200, 100)});
    editor().setMindMap(std::move(map));
    settle();
  }
  static void settle() {
    for (int turn = 0; turn < 10; ++turn) QCoreApplication::processEvents();
  }

  // The visible controls below it that have no name.
  static QStringList nameless(QAccessibleInterface* part) {
    QStringList found;
    if (part == nullptr || part->state().invisible) return found;
    if (isControl(*part) && part->text(QAccessible::Name).trimmed().isEmpty()) found << described(*part);
    for (int i = 0; i < std::min(part->childCount(), 60); ++i) found << nameless(part->child(i));
    return found;
  }
  QStringList nameless() {
    settle();
    return nameless(QAccessible::queryAccessibleInterface(&window()));
  }

  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(window().windowHandle(), key, modifiers);
    settle();
  }
  // What Tab should reach below it.
  static std::vector<QPointer<QWidget>> stops(const QWidget& area) {
    std::vector<QPointer<QWidget>> found;
    for (QWidget* part : area.findChildren<QWidget*>())
      if (part->isVisible() && part->isEnabled() && (part->focusPolicy() & Qt::TabFocus) &&
          part->focusProxy() == nullptr)
        found.emplace_back(part);
    return found;
  }
  // Those of them that Tab does not reach from the first.
  QStringList unreached(const QWidget& area) {
    std::vector<QPointer<QWidget>> left = stops(area);
    if (left.empty()) return {};
    left.front()->setFocus(Qt::TabFocusReason);
    const std::size_t most = 4 * (stops(window()).size() + 20);
    for (std::size_t i = 0; i < most && !left.empty(); ++i) {
      std::erase_if(left, [&](const QPointer<QWidget>& stop) { return !stop || stop == window().focusWidget(); });
      // The canvas keeps Tab for itself; F6 moves on.
      key(window().focusWidget() == &window().canvas() ? Qt::Key_F6 : Qt::Key_Tab);
    }
    QStringList names;
    for (const QPointer<QWidget>& part : left)
      if (part) names << QLatin1String(part->metaObject()->className()) + QLatin1Char(' ') + part->accessibleName();
    return names;
  }

  // The controls of an area that never take the keyboard. In a group Tab goes to the chosen one, and arrows to the
  // rest.
  static QStringList unreachable(const QWidget& area) {
    QStringList names;
    for (const QAbstractButton* button : area.findChildren<QAbstractButton*>())
      if (button->isVisible() && button->isEnabled() && (button->focusPolicy() & Qt::TabFocus) == 0 &&
          !((button->autoExclusive() || button->group() != nullptr) && !button->isChecked()))
        names << QLatin1String(button->metaObject()->className()) + QLatin1Char(' ') + button->accessibleName();
    return names;
  }

  OutlineList& showOutline() {
    if (window().sidebarTab() != SidebarTab::outline) notifications().post(Notification::toggleOutline);
    settle();
    return window().outline()->list();
  }
};

}  // namespace quilmora
