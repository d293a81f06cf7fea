#include "app/outline/OutlineAccessibility.h"

#include <unordered_map>

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QPointer>

#include "app/outline/OutlineList.h"

namespace quilmora {

namespace {

QString translated(const char* text) {
  return QCoreApplication::translate("Outline", text);
}

// One row, by its current index.
class RowAccessible final : public QAccessibleInterface, public QAccessibleActionInterface {
 public:
  RowAccessible(OutlineList& list, int row) : m_list(&list), m_row(row) {}

  bool isValid() const override { return m_list && m_row < model().rowCount(); }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return m_list->window()->windowHandle(); }
  QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_list); }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }

  QString text(QAccessible::Text kind) const override {
    if (!isValid()) return {};
    switch (kind) {
      case QAccessible::Name:
        return model().shownTitle(m_row);
      case QAccessible::Value:
        return translated("Level %1").arg(model().row(m_row).depth + 1);
      case QAccessible::Description:
        return index().data(OutlineModel::hasNotesRole).toBool() ? translated("Has notes") : QString();
      default:
        return {};
    }
  }
  void setText(QAccessible::Text, const QString&) override {}

  QRect rect() const override {
    if (!isValid()) return {};
    const QRect place = m_list->visualRect(index());
    return {m_list->viewport()->mapToGlobal(place.topLeft()), place.size()};
  }
  QAccessible::Role role() const override { return QAccessible::TreeItem; }

  QAccessible::State state() const override {
    QAccessible::State state;
    if (!isValid()) {
      state.invalid = true;
      return state;
    }
    const bool isExpanded = model().row(m_row).isExpanded;
    state.selectable = state.focusable = true;
    state.selected = m_list->isSelected(m_row);
    state.focused = m_list->hasFocus() && m_list->currentIndex().row() == m_row;
    state.expandable = model().isParent(m_row);
    state.expanded = state.expandable && isExpanded;
    state.collapsed = state.expandable && !isExpanded;
    state.offscreen = !m_list->viewport()->rect().intersects(m_list->visualRect(index()));
    return state;
  }

  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }
  QStringList actionNames() const override {
    QStringList names{pressAction(), showMenuAction()};
    if (isValid() && model().isParent(m_row)) names.append(toggleAction());
    return names;
  }
  void doAction(const QString& name) override {
    if (!isValid()) return;
    if (name == pressAction()) m_list->choose(index());
    if (name == toggleAction()) model().toggle(m_row);
    if (name == showMenuAction())
      Q_EMIT m_list->menuWanted(index(), m_list->viewport()->mapToGlobal(m_list->visualRect(index()).center()));
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  OutlineModel& model() const { return m_list->outline(); }
  QModelIndex index() const { return model().index(m_row); }

  QPointer<OutlineList> m_list;
  int m_row;
};

class ListAccessible final : public QAccessibleWidget {
 public:
  explicit ListAccessible(OutlineList& list) : QAccessibleWidget(&list, QAccessible::Tree), m_list(list) {
    const auto forget = [this] { forgetRows(); };
    const OutlineModel& model = list.outline();
    m_connections = {QObject::connect(&model, &QAbstractItemModel::rowsInserted, &list, forget),
                     QObject::connect(&model, &QAbstractItemModel::rowsRemoved, &list, forget),
                     QObject::connect(&model, &QAbstractItemModel::modelReset, &list, forget)};
  }
  ~ListAccessible() override {
    for (const QMetaObject::Connection& connection : m_connections) QObject::disconnect(connection);
    forgetRows();
  }

  // The rows, followed by the field in which a topic is being renamed.
  int childCount() const override { return rowCount() + (m_list.renameField() != nullptr ? 1 : 0); }
  QAccessibleInterface* child(int position) const override {
    if (position < 0 || position >= childCount()) return nullptr;
    if (position >= rowCount()) return QAccessible::queryAccessibleInterface(m_list.renameField());
    const auto [entry, isNew] = m_rows.try_emplace(position, 0);
    if (isNew) entry->second = QAccessible::registerAccessibleInterface(new RowAccessible(m_list, position));
    return QAccessible::accessibleInterface(entry->second);
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    for (const auto& [row, id] : m_rows)
      if (QAccessible::accessibleInterface(id) == child) return row;
    return child != nullptr && child->object() != nullptr && child->object() == m_list.renameField() ? rowCount() : -1;
  }
  QAccessibleInterface* childAt(int x, int y) const override {
    return child(m_list.indexAt(m_list.viewport()->mapFromGlobal(QPoint(x, y))).row());
  }
  QAccessibleInterface* focusChild() const override {
    if (QLineEdit* field = m_list.renameField()) return QAccessible::queryAccessibleInterface(field);
    return m_list.hasFocus() ? child(m_list.currentIndex().row()) : nullptr;
  }

 private:
  int rowCount() const { return m_list.outline().rowCount(); }
  void forgetRows() {
    for (const auto& [row, id] : std::exchange(m_rows, {})) QAccessible::deleteAccessibleInterface(id);
  }

  OutlineList& m_list;
  mutable std::unordered_map<int, QAccessible::Id> m_rows;
  std::vector<QMetaObject::Connection> m_connections;
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
  auto* list = className == QLatin1String(OutlineList::staticMetaObject.className())
                   ? qobject_cast<OutlineList*>(object)
                   : nullptr;
  return list != nullptr ? new ListAccessible(*list) : nullptr;
}

}  // namespace

void installOutlineAccessibility() {
  static const bool isInstalled = [] {
    QAccessible::installFactory(makeAccessible);
    return true;
  }();
  Q_UNUSED(isInstalled);
}

}  // namespace quilmora
