#include <QApplication>
#include <QScrollBar>
#include <benchmark/benchmark.h>

#include "app/assistant/ChatBubble.h"
#include "app/assistant/ChatList.h"
#include "app/look/DesktopAppearance.h"
#include "app/look/Look.h"
#include "platform/SettingsStore.h"

// The messages of a chat, in a window on the offscreen platform. The argument is the number of messages, or of letters
// in one reply.

namespace quilmora {
namespace {

struct Chat {
  Chat() {
    list.resize(259, 600);
    list.show();
    QApplication::processEvents();
  }
  void say(const QString& text, bool isUser) {
    messages.push_back(ChatMessage::create(isUser ? ChatRole::user : ChatRole::assistant, text, {}));
  }
  void show() {
    list.setMessages(messages, [](const QUuid&) {});
  }
  void fill(int count) {
    for (int i = 0; i < count; ++i)
      say(QStringLiteral("Message %1 says what a message of usual length says, in **two** lines or three.").arg(i),
          i % 2 == 0);
    show();
  }
  void measureAll() {
    while (!list.isMeasured()) QApplication::processEvents();
  }

  MemorySettingsStore settings;
  FixedDesktopAppearance desktop;
  Look look{settings, desktop};
  ChatList list{look, nullptr};
  std::vector<ChatMessage> messages;
};

QString longReply(qsizetype size) {
  QString text;
  while (text.size() < size) text += QStringLiteral("Some words of a long reply, number %1.\n").arg(text.size());
  return text;
}

// Measured until the new message is painted.
void appendMessage(benchmark::State& state) {
  Chat chat;
  chat.fill(static_cast<int>(state.range(0)));
  chat.measureAll();
  for (auto _ : state) {
    chat.say(QStringLiteral("And one more message, which is new."), true);
    chat.show();
    chat.list.repaint();
  }
}

void scrollFrame(benchmark::State& state) {
  Chat chat;
  chat.fill(static_cast<int>(state.range(0)));
  chat.measureAll();
  QScrollBar& bar = *chat.list.verticalScrollBar();
  int step = 37;
  for (auto _ : state) {
    if (bar.value() + step > bar.maximum() || bar.value() + step < 0) step = -step;
    bar.setValue(bar.value() + step);
    chat.list.repaint();
  }
}

void showLongReply(benchmark::State& state) {
  Chat chat;
  const QString reply = longReply(state.range(0));
  for (auto _ : state) {
    chat.messages.clear();
    chat.say(reply, false);
    chat.show();
    chat.list.repaint();
  }
}

void scrollLongReply(benchmark::State& state) {
  Chat chat;
  chat.say(longReply(state.range(0)), false);
  chat.show();
  chat.measureAll();
  QScrollBar& bar = *chat.list.verticalScrollBar();
  int step = 97;
  for (auto _ : state) {
    if (bar.value() + step > bar.maximum() || bar.value() + step < 0) step = -step;
    bar.setValue(bar.value() + step);
    chat.list.repaint();
  }
}

BENCHMARK(appendMessage)->Name("chat: a further message, painted")->Arg(2'000)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollFrame)->Name("chat: a frame of scrolling")->Arg(2'000)->Unit(benchmark::kMillisecond);
BENCHMARK(showLongReply)->Name("chat: a long reply, painted")->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(scrollLongReply)->Name("chat: a frame in a long reply")->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quilmora
