#include <gtest/gtest.h>

#include "platform/KeyStore.h"
#include "platform/SettingsStore.h"
#include "support/Await.h"

namespace {

using namespace quilmora;
using namespace std::chrono_literals;
using accounts::claudeKey;
using accounts::openAIKey;

QString loaded(KeyStore& store, const QString& account) {
  QFuture<QString> future = store.loadKey(account);
  return ends(future) ? future.result() : QStringLiteral("no answer");
}

TEST(KeyStore, KeepsAKeyByItsAccount) {
  MemoryKeyStore store;
  store.saveKey(claudeKey, QStringLiteral("sk-1"));
  EXPECT_EQ(store.items, (std::map<QString, QByteArray>{{QStringLiteral("ai_claude_key"), "sk-1"}}));
  EXPECT_EQ(loaded(store, claudeKey), QStringLiteral("sk-1"));
  EXPECT_EQ(loaded(store, openAIKey), QString());
  store.saveKey(claudeKey, QStringLiteral("sk-2"));
  EXPECT_EQ(store.items[claudeKey], "sk-2");
  EXPECT_EQ(store.state(), KeyStore::State::kept);
  EXPECT_EQ(store.note(), QString());
}

TEST(KeyStore, SavingEmptyTextLeavesNoItemBehind) {
  MemoryKeyStore store;
  store.saveKey(claudeKey, QStringLiteral("sk-1"));
  store.saveKey(claudeKey, QString());
  EXPECT_TRUE(store.items.empty());
  EXPECT_EQ(store.knownKey(claudeKey), QString());
  store.deleteKey(claudeKey);
  EXPECT_TRUE(store.items.empty());
  EXPECT_EQ(store.state(), KeyStore::State::kept) << "deleting what is not there is no failure";
}

TEST(KeyStore, KnowsNothingBeforeItWasAsked) {
  MemoryKeyStore store;
  store.items[openAIKey] = "sk-3";
  EXPECT_EQ(store.knownKey(openAIKey), std::nullopt);
  EXPECT_EQ(store.state(), KeyStore::State::unknown);
  EXPECT_EQ(loaded(store, openAIKey), QStringLiteral("sk-3"));
  store.items[openAIKey] = "changed elsewhere";
  EXPECT_EQ(loaded(store, openAIKey), QStringLiteral("sk-3")) << "kept";
}

TEST(KeyStore, AValueThatIsNotTextReadsAsEmpty) {
  MemoryKeyStore store;
  store.items[openAIKey] = "\xff\xfe";
  EXPECT_EQ(loaded(store, openAIKey), QString());
}

TEST(KeyStore, WhereNothingIsToBeHadAKeyIsKeptForThisRunAndThatIsTold) {
  MemoryKeyStore store;
  store.isAvailable = false;
  EXPECT_EQ(loaded(store, claudeKey), QString());
  EXPECT_EQ(store.state(), KeyStore::State::thisRunOnly);
  store.saveKey(claudeKey, QStringLiteral("sk-1"));
  EXPECT_EQ(loaded(store, claudeKey), QStringLiteral("sk-1"));
  EXPECT_TRUE(store.items.empty());
  EXPECT_EQ(store.note(), QStringLiteral("The desktop's key store takes no keys. They are kept until Quilmora ends."));
  store.isAvailable = true;
  store.saveKey(claudeKey, QStringLiteral("sk-2"));
  EXPECT_EQ(store.state(), KeyStore::State::kept);
  EXPECT_EQ(store.note(), QString());
}

TEST(KeyStore, WhoDeniesOrHasNothingIsAskedAgainTheNextTime) {
  MemoryKeyStore store;
  store.items[claudeKey] = "sk-1";
  store.denies = true;
  EXPECT_EQ(loaded(store, claudeKey), QString());
  EXPECT_EQ(store.knownKey(claudeKey), QString());
  store.denies = false;
  EXPECT_EQ(loaded(store, claudeKey), QStringLiteral("sk-1"));
}

TEST(KeyStore, AStoreThatComesLateIsFound) {
  MemoryKeyStore store;
  store.isAvailable = false;
  EXPECT_EQ(loaded(store, claudeKey), QString());
  store.isAvailable = true;
  EXPECT_EQ(loaded(store, claudeKey), QString());
  store.items[claudeKey] = "sk-1";
  EXPECT_EQ(loaded(store, claudeKey), QStringLiteral("sk-1"));
  EXPECT_EQ(store.state(), KeyStore::State::kept);
}

TEST(KeyStore, AStoreThatHangsEndsNobodysPatienceTwice) {
  MemoryKeyStore store(30ms);
  store.items[claudeKey] = "sk-1";
  store.holdsAnswers = true;
  QFuture<QString> first = store.loadKey(claudeKey);
  EXPECT_FALSE(first.isFinished());
  EXPECT_EQ(loaded(store, claudeKey), QString());
  EXPECT_TRUE(first.isFinished());
  EXPECT_EQ(store.state(), KeyStore::State::thisRunOnly);
  EXPECT_TRUE(store.loadKey(claudeKey).isFinished()) << "nobody waits for it any more";
  EXPECT_EQ(store.heldCount(), 1u) << "nor is it asked twice";
  store.release();
  EXPECT_EQ(store.knownKey(claudeKey), QStringLiteral("sk-1"));
  EXPECT_EQ(store.state(), KeyStore::State::kept);
}

TEST(KeyStore, AWriteThatHangsIsTold) {
  MemoryKeyStore store(30ms);
  store.holdsAnswers = true;
  store.saveKey(claudeKey, QStringLiteral("sk-1"));
  EXPECT_EQ(store.knownKey(claudeKey), QStringLiteral("sk-1"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return store.state() == KeyStore::State::thisRunOnly; }));
  store.release();
  EXPECT_EQ(store.state(), KeyStore::State::kept);
  EXPECT_EQ(store.items[claudeKey], "sk-1");
}

TEST(KeyStore, WhatIsTypedWhileOneIsWrittenIsWrittenOnceByItsLastText) {
  MemoryKeyStore store;
  store.holdsAnswers = true;
  for (const char* text : {"s", "sk", "sk-", "sk-9"}) store.saveKey(claudeKey, QString::fromLatin1(text));
  EXPECT_EQ(store.heldCount(), 1u);
  store.release();
  EXPECT_EQ(store.items[claudeKey], "sk-9");
}

TEST(KeyStore, AnAnswerThatComesAfterASaveDoesNotTakeItBack) {
  MemoryKeyStore store;
  store.items[claudeKey] = "old";
  store.holdsAnswers = true;
  QFuture<QString> future = store.loadKey(claudeKey);
  store.saveKey(claudeKey, QStringLiteral("new"));
  EXPECT_EQ(future.result(), QStringLiteral("new"));
  store.release();
  EXPECT_EQ(store.knownKey(claudeKey), QStringLiteral("new"));
  EXPECT_EQ(store.items[claudeKey], "new");
}

TEST(KeyStore, KeysMoveOutOfTheSettingsAtStart) {
  MemorySettingsStore settings;
  MemoryKeyStore store;
  settings.setText(claudeKey, QStringLiteral("sk-1"));
  settings.setText(openAIKey, QString());
  migrateKeys(settings, store);
  EXPECT_EQ(store.items, (std::map<QString, QByteArray>{{claudeKey, "sk-1"}}));
  EXPECT_EQ(settings.text(claudeKey), std::nullopt);
  EXPECT_EQ(settings.text(openAIKey), QString()) << "an empty one is none";
  settings.setText(openAIKey, QStringLiteral("sk-2"));
  migrateKeys(settings, store);
  EXPECT_EQ(store.items, (std::map<QString, QByteArray>{{claudeKey, "sk-1"}, {openAIKey, "sk-2"}}));
  EXPECT_TRUE(settings.isEmpty());
}

}  // namespace
