#include <QBuffer>
#include <QDesktopServices>
#include <QImage>
#include <QSignalSpy>

#include "app/inspectors/InspectorsFixture.h"
#include "app/inspectors/StyleSamplerRow.h"

namespace quilmora::test {
namespace {

class NodeInspectorTest : public InspectorsTest {
 protected:
  void startOn(int number, MindMap map = threeTopics()) {
    start(std::move(map));
    select({number});
    rest();
  }
  QString valueIn(const char* field) { return control<QLineEdit>(field).text(); }
};

MindMap withTopic(const std::function<void(Node&)>& change) {
  Node node = topic(1);
  change(node);
  MindMap map = mapOf({});
  map.nodes = {node};
  return map;
}

TEST_F(NodeInspectorTest, SectionsStandInTheirOrder) {
  startOn(1);
  EXPECT_EQ(texts(), lines({"Title", "Style", "Shape", "Emoji", "Badge", "Quick Style", "Link", "Image",
                            "Or drag & drop an image onto the topic", "Notes", "Markdown supported", "Colors", "Fill",
                            "Border", "Text"}));
  EXPECT_EQ(control<QLineEdit>("Title").placeholderText(), QStringLiteral("Node title"));
  EXPECT_EQ(control<QLineEdit>("Link").placeholderText(), QStringLiteral("https://..."));
  EXPECT_TRUE(has<QAbstractButton>("Delete Topic"));
}

TEST_F(NodeInspectorTest, ATitleIsWrittenWithReturnInOneStep) {
  startOn(2);
  auto& title = control<QLineEdit>("Title");
  title.setFocus();
  title.selectAll();
  QTest::keyClicks(&title, QStringLiteral("Harbour"));
  EXPECT_EQ(node(2).title, QStringLiteral("Topic 2"));
  QTest::keyClick(&title, Qt::Key_Return);
  EXPECT_EQ(node(2).title, QStringLiteral("Harbour"));
  EXPECT_EQ(steps(), 1);
  m_canvas->setFocus();
  EXPECT_EQ(steps(), 1);
}

TEST_F(NodeInspectorTest, LeavingAFieldUntouchedChangesNothing) {
  startOn(1, withTopic([](Node& node) {
            node.title = QStringLiteral("Two\nlines\u00A0here");
            node.notes = QStringLiteral("a\r\nb\u2028c\u00A0d");
            node.url = QString();
          }));
  for (const char* name : {"Title", "Link"}) {
    control<QLineEdit>(name).setFocus();
    settle();
  }
  control<CopyNotes>("Notes").setFocus();
  m_canvas->setFocus();
  m_panel->commitTyping();
  EXPECT_EQ(steps(), 0);
}

TEST_F(NodeInspectorTest, FieldsFollowTheMapUnlessSomethingWaits) {
  startOn(2);
  auto& title = control<QLineEdit>("Title");
  editor().setNodeTitle(topicId(2), QStringLiteral("From the canvas"));
  settle();
  EXPECT_EQ(title.text(), QStringLiteral("From the canvas"));
  title.setFocus();
  QTest::keyClicks(&title, QStringLiteral("!"));
  editor().setNodeNotes(topicId(2), QStringLiteral("Elsewhere"));
  settle();
  EXPECT_TRUE(title.text().contains(QLatin1Char('!')));
  EXPECT_EQ(control<CopyNotes>("Notes").toPlainText(), QStringLiteral("Elsewhere"));
}

TEST_F(NodeInspectorTest, NotesAreWrittenAfterAPauseAndWhenTheKeyboardLeaves) {
  startOn(2);
  auto& notes = control<CopyNotes>("Notes");
  notes.setFocus();
  QTest::keyClicks(&notes, QStringLiteral("By boat"));
  m_scheduler.advance(std::chrono::milliseconds(900));
  EXPECT_EQ(node(2).notes, QString());
  m_scheduler.advance(std::chrono::milliseconds(200));
  EXPECT_EQ(node(2).notes, QStringLiteral("By boat"));
  EXPECT_EQ(steps(), 1);
  m_rig->clock.advance(std::chrono::seconds(5));
  QTest::keyClick(&notes, Qt::Key_Return);
  QTest::keyClicks(&notes, QStringLiteral("or train"));
  QTest::keyClick(&notes, Qt::Key_Tab);
  EXPECT_FALSE(notes.hasFocus());
  EXPECT_EQ(node(2).notes, QStringLiteral("By boat\nor train"));
  EXPECT_EQ(steps(), 2);
}

TEST_F(NodeInspectorTest, NotesKeepBlanksThatDoNotBreak) {
  startOn(1, withTopic([](Node& node) { node.notes = QStringLiteral("10\u00A0km"); }));
  auto& notes = control<CopyNotes>("Notes");
  notes.setFocus();
  notes.moveCursor(QTextCursor::End);
  QTest::keyClicks(&notes, QStringLiteral("!"));
  m_panel->commitTyping();
  EXPECT_EQ(node(1).notes, QStringLiteral("10\u00A0km!"));
}

TEST_F(NodeInspectorTest, TextsTooLongForAPanelAreShownInPartAndStayWhole) {
  startOn(1, withTopic([](Node& node) {
            node.title = QString(1'000'000, u'W');
            node.notes = QString(1'000'000, u'm');
            node.url = QStringLiteral("https://") + QString(1'000'000, u'x');
          }));
  EXPECT_EQ(valueIn("Title").size(), 10'000);
  EXPECT_TRUE(control<QLineEdit>("Title").isReadOnly());
  EXPECT_TRUE(control<CopyNotes>("Notes").isReadOnly());
  m_panel->commitTyping();
  EXPECT_EQ(node(1).title.size(), 1'000'000);
  EXPECT_EQ(node(1).notes.size(), 1'000'000);
  EXPECT_EQ(steps(), 0);
}

TEST_F(NodeInspectorTest, AShapeIsOneStepAndChangesNothingElse) {
  startOn(2);
  choose("Shape", "Ellipse");
  Node expected = topic(2, 10, 20);
  expected.style.shape = NodeStyle::Shape::ellipse;
  EXPECT_EQ(node(2), expected);
  EXPECT_EQ(steps(), 1);
  choose("Shape", "Ellipse");
  EXPECT_EQ(steps(), 1);
}

TEST_F(NodeInspectorTest, EveryShapeIsOffered) {
  startOn(2);
  EXPECT_EQ(control<PanelPicker>("Shape").count(), 4);
  const std::pair<const char*, NodeStyle::Shape> shapes[] = {{"Circle", NodeStyle::Shape::circle},
                                                             {"Rectangle", NodeStyle::Shape::rectangle},
                                                             {"Ellipse", NodeStyle::Shape::ellipse},
                                                             {"Rounded Rectangle", NodeStyle::Shape::roundedRect}};
  for (const auto& [entry, shape] : shapes) {
    choose("Shape", entry);
    EXPECT_EQ(node(2).style.shape, shape) << entry;
  }
  EXPECT_EQ(steps(), 4);
}

TEST_F(NodeInspectorTest, TheMenuOfBadgesHasTheSevenEntries) {
  startOn(2);
  auto& menu = control<PanelPicker>("Badge");
  QStringList entries;
  for (int place = 0; place < menu.count(); ++place) entries.append(menu.itemText(place));
  EXPECT_EQ(entries,
            lines({"No Badge", "P1 - Critical", "P2 - High", "P3 - Medium", "Done", "In Progress", "Blocked"}));
  const std::pair<const char*, Badge> badges[] = {{"P1 - Critical", Badge::priority1}, {"P2 - High", Badge::priority2},
                                                  {"P3 - Medium", Badge::priority3},   {"Done", Badge::done},
                                                  {"In Progress", Badge::inProgress},  {"Blocked", Badge::blocked}};
  for (const auto& [entry, badge] : badges) {
    choose("Badge", entry);
    EXPECT_EQ(node(2).badge, badge) << entry;
  }
  choose("Badge", "No Badge");
  EXPECT_EQ(node(2).badge, std::nullopt);
  EXPECT_EQ(steps(), 7);
}

TEST_F(NodeInspectorTest, ASampleSetsThreeColoursInOneStep) {
  startOn(1, withTopic([](Node& node) {
            node.style.fillGradient = QStringLiteral("#123456");
            node.style.bold = true;
          }));
  press("Teal");
  NodeStyle expected = NodeStyle::defaultStyle();
  expected.fill = QStringLiteral("#00796B");
  expected.stroke = QStringLiteral("#004D40");
  expected.textColor = QStringLiteral("#FFFFFF");
  expected.fillGradient = QStringLiteral("#123456");
  expected.bold = true;
  EXPECT_EQ(node(1).style, expected);
  EXPECT_EQ(steps(), 1);
  EXPECT_TRUE(control<QAbstractButton>("Teal").isChecked());
  EXPECT_FALSE(control<QAbstractButton>("Ocean").isChecked());
}

TEST_F(NodeInspectorTest, ThereAreFourteenSamplesOfTwentyEight) {
  startOn(1);
  const auto* row = shown().findChild<StyleSamplerRow*>();
  QStringList names;
  for (const QAbstractButton* sample : row->buttons()) {
    EXPECT_EQ(sample->size(), QSize(28, 28));
    EXPECT_EQ(sample->toolTip(), sample->accessibleName());
    names.append(sample->accessibleName());
  }
  EXPECT_EQ(names, lines({"Ocean", "Sky", "Mist", "Forest", "Mint", "Sunset", "Coral", "Lavender", "Rose", "Earth",
                          "Sand", "Slate", "Silver", "Teal"}));
}

TEST_F(NodeInspectorTest, TheMatchingSampleHasTheStrongerRing) {
  startOn(2);
  // The accent at the outer edge, where others have nothing.
  const auto isRinged = [this](const char* name) {
    const QColor edge = control<QAbstractButton>(name).grab().toImage().pixelColor(14, 0);
    return edge.blue() > 200 && edge.red() < 60;
  };
  EXPECT_FALSE(isRinged("Teal"));
  press("Teal");
  EXPECT_TRUE(isRinged("Teal"));
  EXPECT_FALSE(isRinged("Ocean"));
  // One different colour of the three makes it another style.
  chooseColor("Text", "#FFFFFE");
  EXPECT_FALSE(isRinged("Teal"));
}

TEST_F(NodeInspectorTest, ColoursAreWrittenWhenTheChoiceEnds) {
  startOn(2);
  ColorWell& fill = control<ColorWell>("Fill");
  fill.click();
  fill.dialog()->setColor(QColor(0xFF, 0, 0));
  EXPECT_EQ(node(2).style.fill, QStringLiteral("#4A148C"));
  fill.dialog()->accept();
  settle();
  EXPECT_EQ(node(2).style.fill, QStringLiteral("#FF0000"));
  EXPECT_EQ(steps(), 1);
  chooseColor("Border", "#00FF00");
  chooseColor("Text", "#0000FF");
  EXPECT_EQ(node(2).style.stroke, QStringLiteral("#00FF00"));
  EXPECT_EQ(node(2).style.textColor, QStringLiteral("#0000FF"));
  EXPECT_EQ(steps(), 3);
  fill.click();
  fill.dialog()->setColor(QColor(1, 2, 3));
  fill.cancelChoosing();
  settle();
  EXPECT_EQ(node(2).style.fill, QStringLiteral("#FF0000"));
  EXPECT_EQ(steps(), 3);
}

TEST_F(NodeInspectorTest, AColourThatIsOnlyLookedAtStaysAsItWasWritten) {
  startOn(1, withTopic([](Node& node) { node.style.fill = QStringLiteral("red"); }));
  ColorWell& fill = control<ColorWell>("Fill");
  EXPECT_EQ(fill.color(), QColor(128, 128, 128));
  fill.click();
  fill.dialog()->accept();
  settle();
  EXPECT_EQ(node(1).style.fill, QStringLiteral("red"));
  EXPECT_EQ(steps(), 0);
}

// --- The link ---

struct Browser : QObject {
  Q_OBJECT
 public:
  Browser() {
    for (const char* scheme : schemes) QDesktopServices::setUrlHandler(QLatin1String(scheme), this, "open");
  }
  ~Browser() override {
    for (const char* scheme : schemes) QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
  }
  static constexpr std::array schemes = {"http", "https", "httpx", "file", "ftp", "javascript"};
  Q_INVOKABLE void open(const QUrl& url) { opened.append(url.toString()); }
  QStringList opened;
};

TEST_F(NodeInspectorTest, TheButtonThatOpensShowsForWhatBeginsLikeAWebAddress) {
  startOn(2);
  auto& link = control<CopyField>("Link");
  EXPECT_FALSE(has<QAbstractButton>("Open URL"));
  link.setText(QStringLiteral("http"));
  EXPECT_TRUE(has<QAbstractButton>("Open URL"));
  link.setText(QStringLiteral("ftp://example.org"));
  EXPECT_FALSE(has<QAbstractButton>("Open URL"));
}

TEST_F(NodeInspectorTest, OnlyWebAddressesAreOpened) {
  Browser browser;
  startOn(2);
  auto& link = control<CopyField>("Link");
  for (const char* text : {"http://example.org/a?b=c d", "https://example.org", "http", "http:", "httpx://example.org",
                           "https:///etc/passwd", "http:file:///etc/passwd"}) {
    link.setText(QLatin1String(text));
    if (has<QAbstractButton>("Open URL")) press("Open URL");
  }
  EXPECT_EQ(browser.opened, lines({"http://example.org/a?b=c d", "https://example.org"}));
}

TEST_F(NodeInspectorTest, AnEmptyLinkIsNone) {
  startOn(1, withTopic([](Node& node) { node.url = QStringLiteral("https://example.org"); }));
  auto& link = control<CopyField>("Link");
  link.setFocus();
  link.selectAll();
  QTest::keyClick(&link, Qt::Key_Delete);
  QTest::keyClick(&link, Qt::Key_Return);
  EXPECT_EQ(node(1).url, std::nullopt);
  EXPECT_EQ(steps(), 1);
}

// --- The picture ---

QString picture() {
  QImage image(8, 4, QImage::Format_RGB32);
  image.fill(Qt::red);
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return QString::fromLatin1(png.toBase64());
}

TEST_F(NodeInspectorTest, APictureIsAddedReplacedAndRemoved) {
  startOn(1, withTopic([](Node&) {}));
  QList<QUuid> asked;
  QObject::connect(m_panel, &InspectorPanel::imageWanted, m_panel, [&](const QUuid& id) { asked.append(id); });
  EXPECT_TRUE(has<QAbstractButton>("Add Image..."));
  EXPECT_FALSE(has<QAbstractButton>("Remove"));
  press("Add Image...");
  editor().setNodeImage(topicId(1), QImage::fromData(QByteArray::fromBase64(picture().toLatin1())));
  settle();
  EXPECT_FALSE(has<QAbstractButton>("Add Image..."));
  press("Replace Image...");
  EXPECT_EQ(asked, (QList<QUuid>{topicId(1), topicId(1)}));
  rest();
  press("Remove");
  EXPECT_EQ(node(1).imageData, std::nullopt);
  EXPECT_EQ(steps(), 1);
  EXPECT_TRUE(has<QAbstractButton>("Add Image..."));
}

TEST_F(NodeInspectorTest, TheThumbnailShowsThePicture) {
  startOn(1, withTopic([](Node& node) { node.imageData = picture(); }));
  for (QWidget* part : shown().findChildren<QWidget*>()) {
    if (part->accessibleName() != QStringLiteral("Image") || !part->isVisible() || qobject_cast<TextLabel*>(part))
      continue;
    EXPECT_EQ(part->grab().toImage().pixelColor(part->width() / 2, part->height() / 2), QColor(Qt::red));
    return;
  }
  FAIL() << "there is no thumbnail";
}

TEST_F(NodeInspectorTest, ABrokenPictureCanBeRemoved) {
  startOn(1, withTopic([](Node& node) { node.imageData = QStringLiteral("%%%"); }));
  shown().grab();
  press("Remove");
  EXPECT_EQ(node(1).imageData, std::nullopt);
}

}  // namespace
}  // namespace quilmora::test

#include "NodeInspectorTest.moc"
