#include <memory>
#include <optional>

#include <QSet>
#include <QSignalSpy>
#include <QStringList>
#include <gtest/gtest.h>

#include "platform/Notifications.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

using Subscription = NotificationCenter::Subscription;

TEST(Notifications, NamesAreThoseOfTheEnumeration) {
  EXPECT_EQ(notificationName(Notification::createNode), QStringLiteral("createNode"));
  EXPECT_EQ(notificationName(Notification::openRecentFile), QStringLiteral("openRecentFile"));
  EXPECT_EQ(notificationName(Notification::toggleAIChat), QStringLiteral("toggleAIChat"));
  EXPECT_EQ(notificationName(Notification::newFromTemplate), QStringLiteral("newFromTemplate"));
  EXPECT_EQ(notificationName(Notification::autoSaveBeforeQuit), QStringLiteral("autoSaveBeforeQuit"));
  EXPECT_EQ(notificationName(Notification::zoomToFit), QStringLiteral("zoomToFit"));
  EXPECT_EQ(notificationName(Notification::applyOrgChartLayout), QStringLiteral("applyOrgChartLayout"));
  EXPECT_EQ(notificationName(Notification::recolorByTheme), QStringLiteral("recolorByTheme"));
}

TEST(Notifications, EachHasANameOfItsOwn) {
  QSet<QString> names;
  for (int number = 0; number < notificationCount(); ++number) {
    names.insert(notificationName(static_cast<Notification>(number)));
  }
  EXPECT_EQ(names.size(), 35);
}

TEST(Notifications, ReachTheirReceiversInOrderBeforePostReturns) {
  NotificationCenter center;
  QStringList heard;
  const Subscription first = center.observe(Notification::exportDocument,
                                            [&](const QVariant& object) { heard.append(u'1' + object.toString()); });
  const Subscription other =
      center.observe(Notification::undo, [&](const QVariant&) { heard.append(QStringLiteral("undo")); });
  const Subscription second = center.observe(Notification::exportDocument,
                                             [&](const QVariant& object) { heard.append(u'2' + object.toString()); });

  center.post(Notification::exportDocument, QStringLiteral("opml"));

  EXPECT_EQ(heard, QStringList({QStringLiteral("1opml"), QStringLiteral("2opml")}));
}

TEST(Notifications, WithoutAnObjectCarryAnInvalidValue) {
  NotificationCenter center;
  std::optional<bool> isValid;
  const Subscription subscription =
      center.observe(Notification::redo, [&](const QVariant& object) { isValid = object.isValid(); });
  center.post(Notification::redo);
  EXPECT_EQ(isValid, false);
}

TEST(Notifications, EndWithTheSubscription) {
  NotificationCenter center;
  int heard = 0;
  {
    Subscription kept;
    {
      Subscription subscription = center.observe(Notification::undo, [&](const QVariant&) { ++heard; });
      kept = std::move(subscription);
    }
    center.post(Notification::undo);
    EXPECT_EQ(heard, 1);
  }
  center.post(Notification::undo);
  EXPECT_EQ(heard, 1);
}

TEST(Notifications, AssigningASubscriptionEndsTheOneBefore) {
  NotificationCenter center;
  QStringList heard;
  Subscription subscription =
      center.observe(Notification::undo, [&](const QVariant&) { heard.append(QStringLiteral("old")); });
  subscription = center.observe(Notification::undo, [&](const QVariant&) { heard.append(QStringLiteral("new")); });
  center.post(Notification::undo);
  EXPECT_EQ(heard, QStringList({QStringLiteral("new")}));

  Subscription& same = subscription;
  subscription = std::move(same);
  center.post(Notification::undo);
  EXPECT_EQ(heard.size(), 2);
}

TEST(Notifications, ReceiverMayEndItselfWhileItRuns) {
  NotificationCenter center;
  int heard = 0;
  int after = 0;
  std::optional<Subscription> own;
  own = center.observe(Notification::undo, [&](const QVariant&) {
    ++heard;
    own.reset();
  });
  const Subscription later = center.observe(Notification::undo, [&](const QVariant&) { ++after; });
  center.post(Notification::undo);
  center.post(Notification::undo);
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(after, 2);
}

TEST(Notifications, ReceiverThatAnotherEndsIsNotReached) {
  NotificationCenter center;
  int before = 0;
  int after = 0;
  std::optional<Subscription> first;
  std::optional<Subscription> last;
  first = center.observe(Notification::undo, [&](const QVariant&) { ++before; });
  const Subscription ender = center.observe(Notification::undo, [&](const QVariant&) {
    first.reset();
    last.reset();
  });
  last = center.observe(Notification::undo, [&](const QVariant&) { ++after; });
  center.post(Notification::undo);
  EXPECT_EQ(before, 1);
  EXPECT_EQ(after, 0);
}

TEST(Notifications, ReceiverThatComesDuringAPostWaitsForTheNext) {
  NotificationCenter center;
  int heard = 0;
  std::vector<Subscription> late;
  const Subscription adder = center.observe(Notification::undo, [&](const QVariant&) {
    if (late.empty()) late.push_back(center.observe(Notification::undo, [&](const QVariant&) { ++heard; }));
  });
  center.post(Notification::undo);
  EXPECT_EQ(heard, 0);
  center.post(Notification::undo);
  EXPECT_EQ(heard, 1);
}

TEST(Notifications, MayBePostedByAReceiver) {
  NotificationCenter center;
  QStringList heard;
  const Subscription outer = center.observe(Notification::undo, [&](const QVariant&) {
    center.post(Notification::redo);
    heard.append(QStringLiteral("undo"));
  });
  const Subscription inner =
      center.observe(Notification::redo, [&](const QVariant&) { heard.append(QStringLiteral("redo")); });
  center.post(Notification::undo);
  EXPECT_EQ(heard, QStringList({QStringLiteral("redo"), QStringLiteral("undo")}));
}

TEST(Notifications, CenterMayEndBeforeItsSubscriptionsAndDuringAPost) {
  int heard = 0;
  auto center = std::make_unique<NotificationCenter>();
  const Subscription ender = center->observe(Notification::undo, [&](const QVariant&) { center.reset(); });
  const Subscription unreached = center->observe(Notification::undo, [&](const QVariant&) { ++heard; });
  center->post(Notification::undo);
  EXPECT_EQ(center, nullptr);
  EXPECT_EQ(heard, 0);
}

TEST(Notifications, ReceiverMayOwnSubscriptionsWhenTheCenterEnds) {
  auto center = std::make_unique<NotificationCenter>();
  auto owned = std::make_shared<Subscription>(center->observe(Notification::undo, [](const QVariant&) {}));
  const Subscription owner = center->observe(Notification::redo, [owned](const QVariant&) {});
  owned.reset();
  center.reset();
  SUCCEED();
}

TEST(Notifications, TellWhenTheFirstReceiverComesAndTheLastOneGoes) {
  NotificationCenter center;
  QSignalSpy spy(&center, &NotificationCenter::receiversChanged);
  EXPECT_FALSE(center.hasReceiver(Notification::zoomIn));
  {
    const Subscription first = center.observe(Notification::zoomIn, [](const QVariant&) {});
    EXPECT_TRUE(center.hasReceiver(Notification::zoomIn));
    EXPECT_FALSE(center.hasReceiver(Notification::zoomOut));
    EXPECT_EQ(spy.count(), 1);
    const Subscription second = center.observe(Notification::zoomIn, [](const QVariant&) {});
    EXPECT_EQ(spy.count(), 1);
  }
  EXPECT_EQ(spy.count(), 2);
  EXPECT_EQ(spy.at(1).at(0).value<Notification>(), Notification::zoomIn);
  EXPECT_FALSE(center.hasReceiver(Notification::zoomIn));
}

}  // namespace
}  // namespace quilmora
