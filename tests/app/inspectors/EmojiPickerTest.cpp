#include <QPointer>

#include "app/inspectors/ChoiceGrid.h"
#include "app/inspectors/EmojiPicker.h"
#include "app/inspectors/InspectorsFixture.h"
#include "app/inspectors/NodeInspector.h"
#include "app/look/Widgets.h"

namespace quilmora::test {
namespace {

class EmojiPickerTest : public InspectorsTest {
 protected:
  void startOn(int number, MindMap map = threeTopics()) {
    start(std::move(map));
    select({number});
    rest();
  }
  EmojiPicker& openPicker() {
    press("Emoji: none");
    return *static_cast<NodeInspector&>(shown()).emojiPicker();
  }
};

TEST_F(EmojiPickerTest, AnEmojiIsPickedFromThirtyTwo) {
  startOn(2);
  EmojiPicker& picker = openPicker();
  const QStringList wanted =
      lines({"🎯",      "💡", "⚡",      "🔥", "✅", "⭐", "📌", "🚀",    "💰",       "🎨", "📊", "🔑", "💎", "🏆", "📝", "🔔",
             "❤️", "👍", "⚠️", "❌", "🔄", "📁", "🌍", "🧩", "🛠️", "📱", "💻", "🎓", "🏠", "🔒", "📈", "🤖"});
  EXPECT_EQ(EmojiPicker::emojis(), wanted);
  ASSERT_EQ(picker.grid().buttons().size(), 32u);
  EXPECT_EQ(picker.findChild<TextLabel*>()->text(), QStringLiteral("Pick an emoji"));
  EXPECT_EQ(picker.field().placeholderText(), QStringLiteral("paste"));
  EXPECT_EQ(picker.field().width(), 44);
  const QPointer<EmojiPicker> watched = &picker;
  picker.grid().buttons()[7]->click();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  settle();
  EXPECT_EQ(watched, nullptr);
  EXPECT_EQ(node(2).emoji, QStringLiteral("🚀"));
  EXPECT_EQ(steps(), 1);
  EXPECT_TRUE(has<QAbstractButton>("Emoji: 🚀"));
}

TEST_F(EmojiPickerTest, AnyOtherEmojiIsPasted) {
  startOn(2);
  EmojiPicker& picker = openPicker();
  picker.field().setFocus();
  picker.field().insert(QStringLiteral(" 👩‍🚀👍"));
  Q_EMIT picker.field().textEdited(picker.field().text());
  EXPECT_EQ(node(2).emoji, QStringLiteral("👩‍🚀"));
}

TEST_F(EmojiPickerTest, ALetterWaitsForReturn) {
  startOn(2);
  EmojiPicker& picker = openPicker();
  QTest::keyClicks(&picker.field(), QStringLiteral("A"));
  EXPECT_EQ(node(2).emoji, std::nullopt);
  QTest::keyClick(&picker.field(), Qt::Key_Return);
  EXPECT_EQ(node(2).emoji, QStringLiteral("A"));
}

TEST_F(EmojiPickerTest, AnEmojiIsTakenAway) {
  MindMap map = mapOf({1});
  map.nodes.update(0, [](Node& node) { node.emoji = QStringLiteral("🚀"); });
  startOn(1, std::move(map));
  press("Emoji: 🚀");
  EmojiPicker* picker = static_cast<NodeInspector&>(shown()).emojiPicker();
  EXPECT_TRUE(picker->grid().buttons()[7]->isChecked());
  picker->findChild<QToolButton*>()->click();
  EXPECT_EQ(node(1).emoji, std::nullopt);
  EXPECT_EQ(steps(), 1);
}

TEST_F(EmojiPickerTest, ThePickerIsUsedByKeys) {
  startOn(2);
  EmojiPicker& picker = openPicker();
  QTest::keyClick(picker.focusWidget(), Qt::Key_Down);
  QTest::keyClick(picker.focusWidget(), Qt::Key_Right);
  QTest::keyClick(picker.focusWidget(), Qt::Key_Space);
  EXPECT_EQ(node(2).emoji, QStringLiteral("🎨"));
}

}  // namespace
}  // namespace quilmora::test
