#pragma once

#include <functional>
#include <memory>
#include <vector>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariant>

namespace quilmora {
Q_NAMESPACE

// The requests that menus, the palette and panels broadcast to the main window or the canvas.
enum class Notification {
  createNode,
  createEdge,
  openDocument,
  saveDocument,
  saveDocumentAs,
  importDocument,
  exportDocument,  // object: the format's raw text
  openRecentFile,  // object: the file's path
  undo,
  redo,
  duplicateSelection,
  toggleSearch,
  toggleOutline,
  toggleAIChat,
  toggleSidebar,
  toggleInspector,
  collapseNode,
  expandNode,
  togglePresentation,
  toggleCommandPalette,
  newFromTemplate,  // object: the template's name
  aiGenerate,
  showOnboarding,
  autoSaveBeforeQuit,
  zoomToFit,
  zoomIn,
  zoomOut,
  applyTreeLayout,
  applyVerticalTreeLayout,
  applyRadialLayout,
  applyLeftRightLayout,
  applyOrgChartLayout,
  createRegion,
  recolorByBranch,
  recolorByTheme,
};
Q_ENUM_NS(Notification)

// The name under which a notification is known outside the code, such as "createNode".
QString notificationName(Notification notification);
int notificationCount();

// Synchronous broadcast on the main thread: post() returns after every receiver has run, in the order of subscription.
// During a post, receivers may subscribe and unsubscribe anyone, themselves included.
class NotificationCenter : public QObject {
  Q_OBJECT

 public:
  using Receiver = std::function<void(const QVariant& object)>;

  NotificationCenter() = default;
  ~NotificationCenter() override;

  // Ends its subscription when it is destroyed.
  class Subscription {
   public:
    Subscription() = default;
    Subscription(Subscription&& other) noexcept;
    Subscription& operator=(Subscription&& other) noexcept;
    ~Subscription();

   private:
    friend class NotificationCenter;
    QPointer<NotificationCenter> m_center;
    quint64 m_key = 0;
  };

  [[nodiscard]] Subscription observe(Notification notification, Receiver receiver);
  void post(Notification notification, const QVariant& object = {});
  bool hasReceiver(Notification notification) const;

 Q_SIGNALS:
  // A notification gained its first receiver or lost its last one.
  void receiversChanged(quilmora::Notification notification);

 private:
  struct Entry {
    quint64 key;
    Notification notification;
    std::shared_ptr<Receiver> receiver;
  };
  void remove(quint64 key);

  std::vector<Entry> m_entries;
  quint64 m_lastKey = 0;
};

}  // namespace quilmora
