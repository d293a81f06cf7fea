#include <algorithm>
#include <cmath>

#include "exchange/ExportText.h"
#include "exchange/TextExports.h"
#include "exchange/TopicTable.h"

namespace quilmora {

namespace {

constexpr QSizeF emptyArea(800.0, 600.0);
constexpr double areaMargin = 200.0;  // beyond the extent of the topics' centres
constexpr double halfTopicWidth = 60.0;
constexpr double halfTopicHeight = 30.0;

QSizeF areaOf(const MindMap& map) {
  if (map.nodes.empty()) return emptyArea;
  QPointF low = map.nodes.front().position;
  QPointF high = low;
  for (const Node& node : map.nodes) {
    low = QPointF(std::fmin(low.x(), node.position.x()), std::fmin(low.y(), node.position.y()));
    high = QPointF(std::fmax(high.x(), node.position.x()), std::fmax(high.y(), node.position.y()));
  }
  return {high.x() - low.x() + areaMargin, high.y() - low.y() + areaMargin};
}

bool isSafeColor(QStringView text) {
  const auto isHexDigit = [](QChar c) {
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
  };
  return text.size() == 7 && text[0] == u'#' && std::all_of(text.begin() + 1, text.end(), isHexDigit);
}

QStringView safeColorView(QStringView text) {
  const QStringView trimmed = text.trimmed();
  return isSafeColor(trimmed) ? trimmed : QStringView(u"#808080");
}

class SvgWriter {
 public:
  QByteArray write(const MindMap& map, QSizeF area) {
    putHead(map, area);
    const TopicTable table(map);
    std::size_t ordinal = 0;
    for (const Edge& edge : map.edges) {
      const Node* from = table.find(table.index().edgeFrom()[ordinal]);
      const Node* to = table.find(table.index().edgeTo()[ordinal]);
      ++ordinal;
      if (from != nullptr && to != nullptr) putLine(edge.style, from->position, to->position);
    }
    for (const Node* node : table.topics()) putTopic(*node);
    put("</svg>");
    return m_buffer.take();
  }

 private:
  void put(std::string_view text) { m_buffer.put(text); }
  void putNumber(double value) { putReal(m_buffer, value); }
  void putColor(const QString& text) { putText(m_buffer, safeColorView(text)); }

  void putHead(const MindMap& map, QSizeF area) {
    put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"\n     width=\"");
    putWhole(m_buffer, area.width());
    put("\"\n     height=\"");
    putWhole(m_buffer, area.height());
    put("\"\n     viewBox=\"0 0 ");
    putWhole(m_buffer, area.width());
    put(" ");
    putWhole(m_buffer, area.height());
    put("\">\n  <rect width=\"100%\" height=\"100%\" fill=\"");
    putColor(map.canvas.background);
    put("\"/>\n");
  }

  void putLine(const EdgeStyle& style, QPointF from, QPointF to) {
    put("  <line x1=\"");
    putNumber(from.x());
    put("\" y1=\"");
    putNumber(from.y());
    put("\"\n        x2=\"");
    putNumber(to.x());
    put("\" y2=\"");
    putNumber(to.y());
    put("\"\n        stroke=\"");
    putColor(style.color);
    put("\"\n        stroke-width=\"");
    putNumber(style.taper.startWidth);
    put("\"\n        marker-end=\"url(#arrowhead)\"/>\n");
  }

  void putTopic(const Node& node) {
    put("  <g>\n    <rect x=\"");
    putNumber(node.position.x() - halfTopicWidth);
    put("\" y=\"");
    putNumber(node.position.y() - halfTopicHeight);
    put("\"\n          width=\"120.0\" height=\"60.0\"\n          rx=\"8\"\n          fill=\"");
    putColor(node.style.fill);
    put("\"\n          stroke=\"");
    putColor(node.style.stroke);
    put("\"\n          stroke-width=\"2\"/>\n    <text x=\"");
    putNumber(node.position.x());
    put("\" y=\"");
    putNumber(node.position.y());
    put("\"\n          text-anchor=\"middle\"\n          dominant-baseline=\"middle\"\n          font-size=\"14\"\n"
        "          fill=\"#000000\">");
    putXmlText(m_buffer, node.title);
    put("</text>\n  </g>\n");
  }

  ByteBuffer m_buffer;
};

}  // namespace

QByteArray exportSVG(const MindMap& map, const std::optional<QRectF>& area) {
  return SvgWriter().write(map, area ? area->size() : areaOf(map));
}

QString safeColor(const QString& text) {
  return safeColorView(text).toString();
}

}  // namespace quilmora
