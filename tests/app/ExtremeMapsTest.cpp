#include <QElapsedTimer>

#include "app/AppFixture.h"
#include "support/ExtremeMap.h"

namespace quilmora::test {
namespace {

// Far more than any step takes on the slowest machine, and far less than a step that does not end.
constexpr qint64 timeoutMilliseconds = 20'000;

// A user's minute with a map of extreme numbers and texts.
class ExtremeMapsTest : public AppTest {
 protected:
  template <class Work>
  void step(const char* name, Work&& work) {
    QElapsedTimer time;
    time.start();
    work();
    m_scheduler.advance(std::chrono::milliseconds(400));
    canvas().grab();
    EXPECT_LT(time.elapsed(), timeoutMilliseconds) << name;
  }
  CanvasView& canvas() { return window().canvas(); }
  void drag(QPoint from, QPoint to) {
    QTest::mousePress(&canvas(), Qt::LeftButton, {}, from);
    QTest::mouseMove(&canvas(), (from + to) / 2);
    canvas().grab();
    QTest::mouseMove(&canvas(), to);
    canvas().grab();
    QTest::mouseRelease(&canvas(), Qt::LeftButton, {}, to);
  }
  void open(const MindMap& map) {
    const QString file = path("Extreme.mindmap");
    ASSERT_EQ(m_writer.write(file, encodeDocument(map)).reason(), QString());
    start({file});
  }
  void spendAMinute() {
    const QPoint middle = canvas().rect().center();
    step("fit", [&] { notifications().post(Notification::zoomToFit); });
    step("select all", [&] { editor().selectAll(); });
    step("drag", [&] { drag(middle, middle + QPoint(90, 40)); });
    step("box", [&] { drag(QPoint(5, 5), middle); });
    step("zoom", [&] { notifications().post(Notification::zoomIn); });
    for (std::size_t index = 0; index < editor().mindMap().nodes.size() && index < 2; ++index) {
      const QUuid id = editor().mindMap().nodes[index].id;
      step("select", [&] { editor().selectNode(id, false); });
      step("quick look", [&] { editor().setQuickLookNodeID(id); });
      editor().setQuickLookNodeID(std::nullopt);
      step("edit", [&] {
        canvas().setFocus();
        QTest::keyClick(&canvas(), Qt::Key_F2);
        if (QWidget* field = QApplication::focusWidget(); field != nullptr && field != &canvas()) {
          QTest::keyClick(field, Qt::Key_End);
          QTest::keyClick(field, Qt::Key_Z);
        }
        canvas().commitTitleEdit();
      });
    }
    step("search", [&] {
      editor().toggleSearch();
      editor().setSearchQuery(QStringLiteral("x"));
      editor().runSearch();
      editor().nextSearchResult();
    });
    editor().toggleSearch();
    step("present", [&] {
      editor().togglePresentation();
      for (int place = 0; place < 4; ++place) editor().nextPresentationStep();
    });
    editor().setIsPresentationMode(false);
    step("lens", [&] { editor().clearSelection(); });
    step("quit", [&] { m_application->quit(); });
  }
};

TEST_F(ExtremeMapsTest, EveryStepEnds) {
  for (std::uint64_t seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE(seed);
    open(ExtremeMapMaker(seed).map(static_cast<int>(2 + seed)));
    spendAMinute();
    m_application.reset();
  }
}

}  // namespace
}  // namespace quilmora::test
