#include "app/companions/CompanionsFixture.h"
#include "app/companions/SearchBar.h"
#include "app/look/Widgets.h"

namespace quilmora::test {
namespace {

class SearchBarTest : public CompanionsTest {
 protected:
  SearchBar& bar() { return companions().searchBar(); }
  void open() {
    startActive();
    editor().toggleSearch();
  }
  QUuid selected() { return *editor().firstSelectedNode(); }
};

TEST_F(SearchBarTest, OpensAtTheTopRightWithTheKeyboardInItsField) {
  startActive();
  EXPECT_FALSE(bar().isVisible());
  editor().toggleSearch();
  EXPECT_TRUE(bar().isVisible());
  EXPECT_TRUE(bar().isFocused());
  EXPECT_EQ(bar().field().placeholderText(), QStringLiteral("Search nodes..."));
  EXPECT_EQ(bar().geometry().topRight(), QPoint(800 - 12 - 1, 12));
  editor().toggleSearch();
  EXPECT_FALSE(bar().isVisible());
  EXPECT_TRUE(canvas().hasFocus());
}

TEST_F(SearchBarTest, IsDraggedByItsGroundToAnotherCorner) {
  startActive();
  editor().toggleSearch();
  const QPoint hold(10, 4);
  QTest::mousePress(&bar(), Qt::LeftButton, {}, hold);
  QTest::mouseMove(&bar(), hold + QPoint(-300, 0));
  QTest::mouseRelease(&bar(), Qt::LeftButton, {}, hold);
  EXPECT_TRUE(QTest::qWaitFor([this] { return bar().pos() == QPoint(12, 12); }));
  EXPECT_TRUE(bar().isFocused());
  editor().toggleSearch();
  editor().toggleSearch();
  EXPECT_EQ(bar().pos(), QPoint(12, 12));
}

TEST_F(SearchBarTest, SearchesAtEachChangeOfTheText) {
  open();
  EXPECT_EQ(bar().countText(), QString());
  EXPECT_FALSE(bar().nextButton().isEnabled());
  QTest::keyClicks(&bar().field(), QStringLiteral("topic"));
  EXPECT_EQ(editor().searchQuery(), QStringLiteral("topic"));
  EXPECT_EQ(bar().countText(), QStringLiteral("1/3"));
  EXPECT_EQ(selected(), topicId(1));
  QTest::keyClicks(&bar().field(), QStringLiteral(" 2"));
  EXPECT_EQ(bar().countText(), QStringLiteral("1/1"));
  EXPECT_EQ(selected(), topicId(2));
  QTest::keyClicks(&bar().field(), QStringLiteral("x"));
  EXPECT_EQ(bar().countText(), QStringLiteral("No results"));
  EXPECT_FALSE(bar().previousButton().isEnabled());
  EXPECT_EQ(selected(), topicId(2));
}

TEST_F(SearchBarTest, ReturnAndTheChevronsStepThroughTheResults) {
  open();
  QTest::keyClicks(&bar().field(), QStringLiteral("topic"));
  QTest::keyClick(&bar().field(), Qt::Key_Return);
  EXPECT_EQ(bar().countText(), QStringLiteral("2/3"));
  EXPECT_EQ(selected(), topicId(2));
  EXPECT_TRUE(bar().isFocused());
  QTest::keyClick(&bar().field(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(selected(), topicId(1));
  QTest::mouseClick(&bar().previousButton(), Qt::LeftButton);
  EXPECT_EQ(bar().countText(), QStringLiteral("3/3"));
  QTest::mouseClick(&bar().nextButton(), Qt::LeftButton);
  EXPECT_EQ(bar().countText(), QStringLiteral("1/3"));
  EXPECT_TRUE(bar().isFocused());
}

TEST_F(SearchBarTest, EscapeEndsWhatComesFirstInTheChain) {
  open();
  editor().setQuickLookNodeID(topicId(1));
  QTest::keyClick(&bar().field(), Qt::Key_Escape);
  EXPECT_FALSE(editor().quickLookNodeID());
  EXPECT_TRUE(bar().isVisible());
  QTest::keyClicks(&bar().field(), QStringLiteral("topic"));
  QTest::keyClick(&bar().field(), Qt::Key_Escape);
  EXPECT_FALSE(bar().isVisible());
  EXPECT_EQ(editor().searchQuery(), QString());
  EXPECT_TRUE(editor().searchResultIDs().empty());
  EXPECT_TRUE(canvas().hasFocus());
  editor().toggleSearch();
  EXPECT_EQ(bar().field().text(), QString());
}

TEST_F(SearchBarTest, KeysThatTheFieldDoesNotUseStayInIt) {
  open();
  struct KeyCounter : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::KeyPress) ++count;
      return false;
    }
    int count = 0;
  } counter;
  canvas().installEventFilter(&counter);
  for (const auto key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Space, Qt::Key_Delete, Qt::Key_F2})
    QTest::keyClick(&bar().field(), key);
  EXPECT_EQ(counter.count, 0);
}

TEST_F(SearchBarTest, AKeyboardThatIsElsewhereStaysThere) {
  open();
  QLineEdit other(&canvas());
  other.show();
  other.setFocus();
  editor().toggleSearch();
  EXPECT_TRUE(other.hasFocus());
}

TEST_F(SearchBarTest, ASearchWithoutAHitSaysSo) {
  open();
  QTest::keyClicks(&bar().field(), QStringLiteral("zebra"));
  EXPECT_EQ(bar().countText(), QStringLiteral("No results"));
  bar().field().clear();
  EXPECT_EQ(bar().countText(), QString());
}

}  // namespace
}  // namespace quilmora::test
