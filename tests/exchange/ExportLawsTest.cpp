#include <algorithm>
#include <cmath>

#include <QXmlStreamReader>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "exchange/TextExports.h"
#include "model/IdSet.h"
#include "model/StoredText.h"
#include "support/QtPrinters.h"
#include "support/RandomMap.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

// The rules of the outlines again, written as slowly and plainly as they are stated.
class NaiveOutline {
 public:
  explicit NaiveOutline(const MindMap& map) : m_map(map) {}

  QString opml() {
    const auto created = textOfTime(m_map.createdAt);
    QString text =
        QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n  <head>\n    <title>") +
        escaped(m_map.title) + QStringLiteral("</title>\n    <dateCreated>") +
        QString::fromLatin1(created.data(), created.size()) + QStringLiteral("</dateCreated>\n  </head>\n  <body>");
    m_visited.clear();
    for (const Node& root : roots()) text += opmlOf(root, 2);
    return text + QStringLiteral("  </body>\n</opml>");
  }

  QString markdown() {
    QString text = QStringLiteral("# ") + m_map.title + QStringLiteral("\n\n");
    m_visited.clear();
    for (const Node& root : roots()) text += markdownOf(root, 0);
    return text;
  }

  // In the order of both.
  std::vector<Node> topics() {
    markdown();
    return m_order;
  }

  std::vector<Node> roots() const {
    std::vector<Node> result;
    for (const Node& node : m_map.nodes) {
      const auto leadsHere = [&](const Edge& edge) { return edge.to == node.id; };
      if (std::none_of(m_map.edges.begin(), m_map.edges.end(), leadsHere)) result.push_back(node);
    }
    return result;
  }

  std::vector<Node> children(const Node& parent) const {
    std::vector<Node> result;
    for (const Edge& edge : m_map.edges) {
      if (edge.from != parent.id) continue;
      const auto child =
          std::find_if(m_map.nodes.begin(), m_map.nodes.end(), [&](const Node& node) { return node.id == edge.to; });
      if (child != m_map.nodes.end()) result.push_back(*child);
    }
    return result;
  }

  // The part of a text that XML can hold.
  static QString held(QString text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
      const ushort c = text[i].unicode();
      const bool isControl = c < 0x20 && c != '\t' && c != '\n' && c != '\r';
      const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
      if (isControl || c >= 0xFFFE || (text[i].isSurrogate() && !isPair)) text[i] = QChar::ReplacementCharacter;
      if (isPair) ++i;
    }
    return text;
  }

  static QString escaped(const QString& text) {
    return held(text)
        .replace(u'&', QStringLiteral("&amp;"))
        .replace(u'<', QStringLiteral("&lt;"))
        .replace(u'>', QStringLiteral("&gt;"))
        .replace(u'"', QStringLiteral("&quot;"))
        .replace(u'\'', QStringLiteral("&apos;"));
  }

 private:
  bool visit(const Node& node) {
    if (m_visited.contains(node.id)) return false;
    m_visited.insert(node.id);
    return true;
  }

  QString opmlOf(const Node& node, int level) {
    if (!visit(node)) return {};
    const QString indent(2 * level, u' ');
    QString text = indent + QStringLiteral("<outline text=\"") + escaped(node.title) + u'"';
    if (!node.notes.isEmpty()) text += QStringLiteral(" _note=\"") + escaped(node.notes) + u'"';
    const std::vector<Node> below = children(node);
    if (below.empty()) return text + QStringLiteral(" />\n");
    text += QStringLiteral(">\n");
    for (const Node& child : below) text += opmlOf(child, level + 1);
    return text + indent + QStringLiteral("</outline>\n");
  }

  QString markdownOf(const Node& node, int depth) {
    if (!visit(node)) return {};
    m_order.push_back(node);
    const QString indent(2 * depth, u' ');
    QString text = indent + QStringLiteral("- **") + node.title + QStringLiteral("**");
    if (!node.notes.isEmpty()) text += u'\n' + indent + QStringLiteral("  ") + node.notes;
    text += u'\n';
    for (const Node& child : children(node)) text += markdownOf(child, depth + 1);
    return text;
  }

  const MindMap& m_map;
  IdSet m_visited;
  std::vector<Node> m_order;
};

// Puts characters that UTF-8 and XML cannot hold into some titles and notes.
MindMap withBrokenTexts(MindMap map, std::uint64_t seed) {
  RandomMapMaker random(seed);
  const auto breakText = [&](QString& text) {
    static constexpr char16_t units[] = {0xD83D, 0xDE80, 0xD800, 0xDFFF, 0xFFFE, 0xFFFF, 0, 1, 0x0B, '&', '\r', 'a'};
    if (!random.chance(30)) return;
    for (int count = random.below(5); count > 0; --count)
      text.insert(random.below(static_cast<int>(text.size()) + 1), QChar(units[random.below(std::size(units))]));
  };
  breakText(map.title);
  map.nodes.updateAll([&](Node& node) {
    breakText(node.title);
    breakText(node.notes);
  });
  return map;
}

rc::Gen<MindMap> anyBrokenMap() {
  return rc::gen::mapcat(rc::gen::arbitrary<bool>(), [](bool isDamaged) {
    return rc::gen::apply(withBrokenTexts, isDamaged ? anyDamagedMap() : anyForest(),
                          rc::gen::noShrink(rc::gen::arbitrary<std::uint64_t>()));
  });
}

// Line ends as XML readers see them; in attributes all white space becomes spaces.
QString inContent(const QString& text) {
  return NaiveOutline::held(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
}
QString inAttribute(const QString& text) {
  return inContent(text).replace(u'\n', u' ').replace(u'\t', u' ');
}

TEST(ExportLaws, OpmlIsWhatThePlainRulesGive) {
  EXPECT_TRUE(rc::check("OPML", [] {
    const MindMap map = *anyBrokenMap();
    RC_ASSERT(exportOPML(map) == NaiveOutline(map).opml().toUtf8());
  }));
}

TEST(ExportLaws, MarkdownIsWhatThePlainRulesGive) {
  EXPECT_TRUE(rc::check("Markdown", [] {
    const MindMap map = *(*rc::gen::arbitrary<bool>() ? anyDamagedMap() : anyForest());
    RC_ASSERT(exportMarkdown(map) == NaiveOutline(map).markdown().toUtf8());
  }));
}

TEST(ExportLaws, RootsAndChildrenAreWhatThePlainRulesGive) {
  EXPECT_TRUE(rc::check("roots and children", [] {
    const MindMap map = *anyDamagedMap();
    const NaiveOutline naive(map);
    RC_ASSERT(rootNodes(map) == naive.roots());
    for (const Node& node : map.nodes) RC_ASSERT(childNodes(node, map) == naive.children(node));
  }));
}

TEST(ExportLaws, OpmlParsesAndHoldsTitlesAndNotesInOrder) {
  EXPECT_TRUE(rc::check("OPML parses", [] {
    const MindMap map = *anyBrokenMap();
    QStringList found;
    QStringList wanted{inContent(map.title)};
    for (const Node& node : NaiveOutline(map).topics()) wanted << inAttribute(node.title) << inAttribute(node.notes);
    QXmlStreamReader xml(exportOPML(map));
    while (!xml.atEnd()) {
      if (xml.readNext() != QXmlStreamReader::StartElement) continue;
      if (xml.name() == QLatin1String("title")) found << xml.readElementText();
      if (xml.name() == QLatin1String("outline"))
        found << xml.attributes().value(QLatin1String("text")).toString()
              << xml.attributes().value(QLatin1String("_note")).toString();
    }
    if (xml.hasError()) RC_FAIL(xml.errorString().toStdString());
    RC_ASSERT(found == wanted);
  }));
}

TEST(ExportLaws, SvgParsesAndHoldsEveryTitleInOrder) {
  EXPECT_TRUE(rc::check("SVG parses", [] {
    const MindMap map = *anyBrokenMap();
    QStringList found;
    QStringList wanted;
    for (const Node& node : map.nodes) wanted << inContent(node.title);
    QXmlStreamReader xml(exportSVG(map));
    while (!xml.atEnd()) {
      if (xml.readNext() != QXmlStreamReader::StartElement) continue;
      for (const QXmlStreamAttribute& attribute : xml.attributes()) {
        static const QStringList numbers{QStringLiteral("x"),  QStringLiteral("y"),  QStringLiteral("x1"),
                                         QStringLiteral("y1"), QStringLiteral("x2"), QStringLiteral("y2")};
        if (!numbers.contains(attribute.name())) continue;
        bool isNumber = false;
        const double number = attribute.value().toDouble(&isNumber);
        RC_ASSERT(isNumber && std::isfinite(number) && attribute.value().contains(u'.'));
      }
      if (xml.name() == QLatin1String("text")) found << xml.readElementText();
    }
    if (xml.hasError()) RC_FAIL(xml.errorString().toStdString());
    RC_ASSERT(found == wanted);
  }));
}

TEST(ExportLaws, PositionsInSvgReadBackAsTheSameNumbers) {
  EXPECT_TRUE(rc::check("positions", [] {
    const MindMap map = *anyForest();
    QXmlStreamReader xml(exportSVG(map));
    std::size_t place = 0;
    while (!xml.atEnd()) {
      if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != QLatin1String("text")) continue;
      const QPointF position = map.nodes[place++].position;
      RC_ASSERT(xml.attributes().value(QLatin1String("x")).toDouble() == position.x());
      RC_ASSERT(xml.attributes().value(QLatin1String("y")).toDouble() == position.y());
    }
    RC_ASSERT(place == map.nodes.size());
  }));
}

MindMap chainOf(int length) {
  MindMap map = test::mapOf({});
  for (int i = 0; i < length; ++i) {
    map.nodes.append(test::topic(i));
    if (i > 0) map.edges.append(test::edgeBetween(i, i - 1, i));
  }
  return map;
}

TEST(DeepExports, AChainIsIndentedAllTheWay) {
  const MindMap map = chainOf(3000);
  EXPECT_TRUE(exportOPML(map).contains('\n' + QByteArray(6002, ' ') + "<outline text=\"Topic 2999\" />\n"));
  EXPECT_TRUE(exportMarkdown(map).endsWith('\n' + QByteArray(5998, ' ') + "- **Topic 2999**\n"));
}

TEST(DeepExports, AVeryDeepChainIsOpmlWithBoundedIndentation) {
  const QByteArray opml = exportOPML(chainOf(100'000));
  EXPECT_TRUE(opml.contains('\n' + QByteArray(198, ' ') + "<outline text=\"Topic 97\">\n"));
  EXPECT_TRUE(opml.contains('\n' + QByteArray(200, ' ') + "<outline text=\"Topic 98\">\n"));
  EXPECT_TRUE(opml.contains('\n' + QByteArray(200, ' ') + "<outline text=\"Topic 99999\" />\n"));
  QXmlStreamReader xml(opml);
  int depth = 0;
  int deepest = 0;
  while (!xml.atEnd()) {
    const auto token = xml.readNext();
    if (token == QXmlStreamReader::StartElement) deepest = std::max(deepest, ++depth);
    if (token == QXmlStreamReader::EndElement) --depth;
  }
  EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
  EXPECT_EQ(deepest, 100'002);
}

TEST(DeepExports, AVeryDeepChainIsNoMarkdown) {
  try {
    exportMarkdown(chainOf(100'000));
    FAIL();
  } catch (const ExportError& error) {
    EXPECT_EQ(error.message(), QStringLiteral("the topics are nested too deeply for Markdown: its indentation alone "
                                              "would take 9999 MB"));
  }
}

TEST(DeepExports, AVeryDeepChainIsSvg) {
  const QByteArray svg = exportSVG(chainOf(100'000));
  EXPECT_EQ(svg.count("<line "), 99'999);
  EXPECT_EQ(svg.count("<g>"), 100'000);
}

// Two topics per step, each leading to both of the next: the number of paths doubles with every step.
TEST(DeepExports, ALadderOfDiamondsHoldsEveryTopicOnce) {
  constexpr int steps = 2000;
  MindMap map = test::mapOf({});
  for (int i = 0; i < 2 * steps; ++i) map.nodes.append(test::topic(i));
  int number = 0;
  for (int step = 1; step < steps; ++step)
    for (const int from : {2 * step - 2, 2 * step - 1})
      for (const int to : {2 * step, 2 * step + 1}) map.edges.append(test::edgeBetween(number++, from, to));
  EXPECT_EQ(exportOPML(map).count("<outline "), 2 * steps);
  EXPECT_EQ(exportMarkdown(map).count("- **"), 2 * steps);
  EXPECT_EQ(exportSVG(map).count("<line "), 4 * (steps - 1));
}

}  // namespace
}  // namespace quilmora
