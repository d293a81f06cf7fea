#include "exchange/XmlOutlineParser.h"

#include <QXmlStreamReader>
#include <simdjson.h>

#include "exchange/ImportError.h"
#include "exchange/XmlText.h"

namespace quilmora {

namespace {

constexpr qsizetype maxDescriptionLength = 300;

QString codePoint(uint character) {
  return QStringLiteral("U+") + QStringLiteral("%1").arg(character, 4, 16, QLatin1Char('0')).toUpper();
}

// The first character that XML does not allow; U+0000 if there is none.
uint firstForbidden(QByteArrayView utf8) {
  for (qsizetype at = 0; at < utf8.size(); ++at) {
    const auto byte = static_cast<uchar>(utf8[at]);
    if (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r') return byte;
    if (byte == 0xEF && utf8.sliced(at).startsWith("\xEF\xBF\xBE")) return 0xFFFE;
    if (byte == 0xEF && utf8.sliced(at).startsWith("\xEF\xBF\xBF")) return 0xFFFF;
  }
  return 0;
}

// The parser's own message, made readable: the parser omits the character it failed at if XML does not allow it, and
// names may contain invisible characters.
QString visibleDescription(QString text, QByteArrayView utf8) {
  text.replace(QLatin1String("''."), u'\'' + codePoint(firstForbidden(utf8)) + QLatin1String("'."));
  QString shown;
  for (const QChar character : text.left(maxDescriptionLength)) {
    if (character.isPrint() || character.isSurrogate())
      shown += character;
    else
      shown += codePoint(character.unicode());
  }
  return text.size() > maxDescriptionLength ? shown + u'…' : shown;
}

ImportError parserError(const QXmlStreamReader& reader, const XmlText& xml) {
  QString text = visibleDescription(reader.errorString(), xml.text());
  if (text.isEmpty()) return ImportError::parseError(QString());
  if (text.startsWith(QLatin1String("Expected '#' or '[a-zA-Z]'")))
    text += QStringLiteral(" A bare “&” must be written as “&amp;”.");
  const qint64 line = xml.lineAt(reader.lineNumber(), reader.characterOffset());
  return ImportError::parseError(QStringLiteral("line %1: %2").arg(QString::number(line), text));
}

}  // namespace

XmlOutlineParser::XmlOutlineParser(QByteArray xml, const Clock& clock, const Form& form)
    : m_form(form), m_xml(std::move(xml)), m_mindMap(importedMap(form.mapTitle, clock)) {}

MindMap XmlOutlineParser::parse() {
  if (!simdjson::validate_utf8(m_xml.constData(), static_cast<std::size_t>(m_xml.size())))
    throw ImportError::invalidData();
  const XmlText xml(m_xml);
  QXmlStreamReader reader;
  // Passing a text makes the reader use UTF-8, whatever encoding the XML declares.
  reader.addData(QString());
  reader.addData(xml.text());
  reader.setNamespaceProcessing(false);
  reader.setEntityExpansionLimit(xml.entityExpansionLimit());
  run(reader);
  if (reader.hasError()) throw parserError(reader, xml);
  xml.requireXmlCharacters();
  m_mindMap.nodes = std::move(m_nodes);
  m_mindMap.edges = std::move(m_edges);
  return m_mindMap;
}

void XmlOutlineParser::run(QXmlStreamReader& reader) {
  // Attributes that the document type gives to every element add to what the file itself contains.
  qsizetype textLeft = m_xml.size() + XmlText::maxExpansion;
  while (!reader.atEnd()) {
    switch (reader.readNext()) {
      case QXmlStreamReader::StartElement:
        if (reader.qualifiedName() != m_form.element) break;
        didStartElement(reader);
        textLeft -= m_nodes.back().title.size() + m_nodes.back().notes.size();
        if (textLeft < 0) reader.raiseError(QStringLiteral("The document type gives too much text."));
        if (m_nodes.size() > maxTopics) reader.raiseError(QStringLiteral("More than %L1 topics.").arg(maxTopics));
        break;
      case QXmlStreamReader::EndElement:
        didEndElement(reader);
        break;
      default:
        break;
    }
  }
}

void XmlOutlineParser::didStartElement(const QXmlStreamReader& reader) {
  static const QString defaultTitle = QStringLiteral("Untitled");
  Node node = importedNode(defaultTitle, QString());
  node.position = m_places.next(m_nodeStack.size());
  for (const QXmlStreamAttribute& attribute : reader.attributes()) {
    if (attribute.qualifiedName() == m_form.titleAttribute)
      node.title = attribute.value().toString();
    else if (!m_form.notesAttribute.isEmpty() && attribute.qualifiedName() == m_form.notesAttribute)
      node.notes = attribute.value().toString();
  }
  if (!m_nodeStack.empty()) m_edges.append(importedEdge(m_nodeStack.back(), node.id));
  m_nodeStack.push_back(node.id);
  m_nodes.append(std::move(node));
}

void XmlOutlineParser::didEndElement(const QXmlStreamReader& reader) {
  if (reader.qualifiedName() == m_form.element) m_nodeStack.pop_back();
}

}  // namespace quilmora
