#include "platform/Notifications.h"

#include <algorithm>
#include <utility>

#include <QMetaEnum>

namespace quilmora {

QString notificationName(Notification notification) {
  return QString::fromLatin1(QMetaEnum::fromType<Notification>().valueToKey(static_cast<int>(notification)));
}

int notificationCount() {
  return QMetaEnum::fromType<Notification>().keyCount();
}

NotificationCenter::~NotificationCenter() {
  // Destroying a receiver may destroy a subscription, which calls remove() again: it must find an emptied list.
  const std::vector<Entry> dropped = std::exchange(m_entries, {});
}

NotificationCenter::Subscription::Subscription(Subscription&& other) noexcept
    : m_center(std::exchange(other.m_center, nullptr)), m_key(std::exchange(other.m_key, 0)) {}

NotificationCenter::Subscription& NotificationCenter::Subscription::operator=(Subscription&& other) noexcept {
  Subscription ended(std::move(other));
  std::swap(m_center, ended.m_center);
  std::swap(m_key, ended.m_key);
  return *this;
}

NotificationCenter::Subscription::~Subscription() {
  if (m_center) m_center->remove(m_key);
}

NotificationCenter::Subscription NotificationCenter::observe(Notification notification, Receiver receiver) {
  const bool isFirst = !hasReceiver(notification);
  Subscription subscription;
  subscription.m_center = this;
  subscription.m_key = ++m_lastKey;
  m_entries.push_back({m_lastKey, notification, std::make_shared<Receiver>(std::move(receiver))});
  if (isFirst) Q_EMIT receiversChanged(notification);
  return subscription;
}

void NotificationCenter::post(Notification notification, const QVariant& object) {
  // While a post runs, receivers may subscribe, unsubscribe or destroy the centre: each is looked up again right before
  // its turn, and new ones wait for the next post.
  std::vector<quint64> keys;
  for (const Entry& entry : m_entries) {
    if (entry.notification == notification) keys.push_back(entry.key);
  }
  const QPointer<NotificationCenter> guard(this);
  for (const quint64 key : keys) {
    if (!guard) return;
    const auto entry = std::ranges::lower_bound(m_entries, key, {}, &Entry::key);
    if (entry == m_entries.end() || entry->key != key) continue;
    const std::shared_ptr<Receiver> receiver = entry->receiver;
    (*receiver)(object);
  }
}

bool NotificationCenter::hasReceiver(Notification notification) const {
  return std::ranges::any_of(m_entries, [&](const Entry& entry) { return entry.notification == notification; });
}

void NotificationCenter::remove(quint64 key) {
  const auto entry = std::ranges::lower_bound(m_entries, key, {}, &Entry::key);
  if (entry == m_entries.end() || entry->key != key) return;
  // Destroyed last, because it may own subscriptions itself.
  const Entry removed = std::move(*entry);
  m_entries.erase(entry);
  if (!hasReceiver(removed.notification)) Q_EMIT receiversChanged(removed.notification);
}

}  // namespace quilmora
