#include "exchange/MarkdownImport.h"

#include <algorithm>
#include <vector>

#include <QStringDecoder>
#include <simdjson.h>

#include "exchange/ImportError.h"
#include "exchange/ImportedMap.h"

namespace quilmora {

namespace {

constexpr qsizetype blanksPerLevel = 2;

// The length of the line end at the start of the text, or 0: line feed, vertical tab, form feed, carriage return, next
// line, line separator or paragraph separator. A carriage return followed by a line feed counts as two.
qsizetype lineEndLength(QByteArrayView text) {
  if (text[0] >= '\n' && text[0] <= '\r') return 1;
  if (text.startsWith("\xC2\x85")) return 2;
  if (text.startsWith("\xE2\x80\xA8") || text.startsWith("\xE2\x80\xA9")) return 3;
  return 0;
}

// Calls visit(line) for each line in order.
template <class Visit>
void visitLines(QByteArrayView text, Visit&& visit) {
  qsizetype start = 0;
  for (qsizetype at = 0; at < text.size();) {
    // No other byte starts a line end.
    const char byte = text[at];
    const bool mayEnd = (byte >= '\n' && byte <= '\r') || byte == '\xC2' || byte == '\xE2';
    const qsizetype length = mayEnd ? lineEndLength(text.sliced(at)) : 0;
    if (length == 0) {
      ++at;
      continue;
    }
    visit(text.sliced(start, at - start));
    at += length;
    start = at;
  }
  visit(text.sliced(start));
}

QByteArrayView withoutBlanksAndTabs(QByteArrayView text) {
  const auto isBlankOrTab = [](char byte) { return byte == ' ' || byte == '\t'; };
  const auto begin = std::find_if_not(text.begin(), text.end(), isBlankOrTab);
  auto end = text.end();
  while (end != begin && isBlankOrTab(*(end - 1))) --end;
  return QByteArrayView(begin, end);
}

qsizetype countLeading(QByteArrayView text, char wanted) {
  return std::find_if(text.begin(), text.end(), [wanted](char byte) { return byte != wanted; }) - text.begin();
}

// A byte order mark inside the file is text.
QString textOf(QByteArrayView utf8) {
  QStringDecoder decoder(QStringDecoder::Utf8,
                         QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
  return decoder.decode(utf8);
}

QString withoutBoldMarks(QByteArrayView text) {
  static constexpr QByteArrayView mark = "**";
  QByteArray kept;
  kept.reserve(text.size());
  for (qsizetype found = text.indexOf(mark); found >= 0; found = text.indexOf(mark)) {
    kept.append(text.first(found).data(), found);
    text = text.sliced(found + mark.size());
  }
  kept.append(text.data(), text.size());
  return textOf(kept);
}

class MarkdownReader {
 public:
  explicit MarkdownReader(MindMap& map) : m_map(map) {}

  void readLine(QByteArrayView line) {
    const QByteArrayView trimmed = withoutBlanksAndTabs(line);
    if (trimmed.startsWith('#')) {
      const qsizetype level = countLeading(trimmed, '#');
      const QString text = textOf(withoutBlanksAndTabs(trimmed.sliced(level)));
      if (level == 1)
        m_map.title = text;
      else
        addTopic(text, level);
    } else if (trimmed.startsWith("- ") || trimmed.startsWith("* ")) {
      const qsizetype level = countLeading(line, ' ') / blanksPerLevel + 1;
      addTopic(withoutBoldMarks(withoutBlanksAndTabs(trimmed.sliced(2))), level);
    }
  }

 private:
  struct Open {
    qsizetype level;
    QUuid id;
  };

  void addTopic(const QString& title, qsizetype level) {
    if (m_map.nodes.size() == maxImportedTopics)
      throw ImportError::parseError(QStringLiteral("More than %L1 topics.").arg(maxImportedTopics));
    while (!m_open.empty() && m_open.back().level >= level) m_open.pop_back();
    Node node = importedNode(title, QString());
    node.position = m_places.next(m_open.size());
    if (!m_open.empty()) m_map.edges.append(importedEdge(m_open.back().id, node.id));
    m_open.push_back({level, node.id});
    m_map.nodes.append(std::move(node));
  }

  MindMap& m_map;
  LevelPlaces m_places;
  std::vector<Open> m_open;  // from the outermost to the innermost
};

}  // namespace

MindMap importMarkdown(QByteArrayView bytes, const Clock& clock) {
  if (!simdjson::validate_utf8(bytes.data(), static_cast<std::size_t>(bytes.size()))) throw ImportError::invalidData();
  if (bytes.startsWith("\xEF\xBB\xBF")) bytes = bytes.sliced(3);
  MindMap map = importedMap(QStringLiteral("Imported from Markdown"), clock);
  MarkdownReader reader(map);
  visitLines(bytes, [&](QByteArrayView line) { reader.readLine(line); });
  return map;
}

}  // namespace quilmora
