#include "exchange/ExportText.h"
#include "exchange/TextExports.h"
#include "exchange/TopicTable.h"
#include "model/DocumentError.h"
#include "model/DocumentWriter.h"
#include "model/StoredText.h"

namespace quilmora {

namespace {

constexpr qsizetype blanksOfLevel = 2;
// A chain of n topics is indented by about n² spaces: 10 GB for 100,000 topics.
constexpr qsizetype maxIndentation = qsizetype{512} << 20;
constexpr qsizetype deepestBoundedLevel = 100;

class OpmlWriter {
 public:
  QByteArray write(const MindMap& map) {
    const std::vector<OutlineTopic> outline = outlineOf(map);
    m_maxIndent = indentationOf(outline) > maxIndentation ? blanksOfLevel * deepestBoundedLevel : maxIndentation;
    putHead(map);
    std::vector<std::uint32_t> open;  // depths of the outlines that are still open
    const auto closeDownTo = [&](std::uint32_t depth) {
      for (; !open.empty() && open.back() >= depth; open.pop_back()) {
        putIndent(open.back());
        m_buffer.put(std::string_view("</outline>\n"));
      }
    };
    for (const OutlineTopic& topic : outline) {
      closeDownTo(topic.depth);
      putTopic(topic);
      if (topic.hasChildren) open.push_back(topic.depth);
    }
    closeDownTo(0);
    m_buffer.put(std::string_view("  </body>\n</opml>"));
    return m_buffer.take();
  }

 private:
  static qsizetype indentOf(std::uint32_t depth) { return blanksOfLevel * (qsizetype{depth} + 2); }

  static qsizetype indentationOf(const std::vector<OutlineTopic>& outline) {
    qsizetype total = 0;
    for (const OutlineTopic& topic : outline) total += indentOf(topic.depth) * (topic.hasChildren ? 2 : 1);
    return total;
  }

  void putIndent(std::uint32_t depth) { m_buffer.putBlanks(std::min(indentOf(depth), m_maxIndent)); }

  void putHead(const MindMap& map) {
    const auto created = textOfTime(map.createdAt);
    m_buffer.put(
        std::string_view("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<opml version=\"2.0\">\n  <head>\n    <title>"));
    putXmlText(m_buffer, map.title);
    m_buffer.put(std::string_view("</title>\n    <dateCreated>"));
    m_buffer.put(std::string_view(created.data(), created.size()));
    m_buffer.put(std::string_view("</dateCreated>\n  </head>\n  <body>"));
  }

  void putTopic(const OutlineTopic& topic) {
    putIndent(topic.depth);
    m_buffer.put(std::string_view("<outline text=\""));
    putXmlText(m_buffer, topic.node->title);
    m_buffer.put('"');
    if (!topic.node->notes.isEmpty()) {
      m_buffer.put(std::string_view(" _note=\""));
      putXmlText(m_buffer, topic.node->notes);
      m_buffer.put('"');
    }
    m_buffer.put(topic.hasChildren ? std::string_view(">\n") : std::string_view(" />\n"));
  }

  ByteBuffer m_buffer;
  qsizetype m_maxIndent = 0;
};

void requireBoundedIndentation(const std::vector<OutlineTopic>& outline) {
  qsizetype total = 0;
  for (const OutlineTopic& topic : outline)
    total += blanksOfLevel * qsizetype{topic.depth} * (topic.node->notes.isEmpty() ? 1 : 2);
  if (total <= maxIndentation) return;
  throw ExportError(
      QStringLiteral("the topics are nested too deeply for Markdown: its indentation alone would take %1 MB")
          .arg(total / 1'000'000));
}

}  // namespace

QByteArray exportJSON(const MindMap& map) {
  try {
    return encodeDocument(map);
  } catch (const DocumentError& error) {
    throw ExportError(error.message());
  }
}

QByteArray exportOPML(const MindMap& map) {
  return OpmlWriter().write(map);
}

QByteArray exportMarkdown(const MindMap& map) {
  const std::vector<OutlineTopic> outline = outlineOf(map);
  requireBoundedIndentation(outline);
  ByteBuffer buffer;
  buffer.put(std::string_view("# "));
  putText(buffer, map.title);
  buffer.put(std::string_view("\n\n"));
  for (const auto& [node, depth, hasChildren] : outline) {
    const qsizetype indent = blanksOfLevel * qsizetype{depth};
    buffer.putBlanks(indent);
    buffer.put(std::string_view("- **"));
    putText(buffer, node->title);
    buffer.put(std::string_view("**"));
    if (!node->notes.isEmpty()) {
      buffer.put('\n');
      buffer.putBlanks(indent + 2);
      putText(buffer, node->notes);
    }
    buffer.put('\n');
  }
  return buffer.take();
}

std::vector<Node> rootNodes(const MindMap& map) {
  const TopicTable table(map);
  const ChildTable children(table.index());
  std::vector<Node> roots;
  for (std::size_t i = 0; i < table.topics().size(); ++i)
    if (!children.isTarget[table.index().numberOfNode()[i]]) roots.push_back(*table.topics()[i]);
  return roots;
}

std::vector<Node> childNodes(const Node& node, const MindMap& map) {
  const TopicTable table(map);
  const ChildTable childTable(table.index());
  std::vector<Node> children;
  const std::uint32_t number = table.index().ids()->find(node.id);
  if (number == MapIndex::npos) return children;
  for (std::uint32_t i = childTable.start[number]; i < childTable.start[number + 1]; ++i)
    if (const Node* child = table.find(childTable.numbers[i])) children.push_back(*child);
  return children;
}

}  // namespace quilmora
