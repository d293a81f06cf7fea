#include "exchange/XmlText.h"

#include <algorithm>
#include <array>

#include "exchange/ImportError.h"

namespace quilmora {

namespace {

constexpr qsizetype notFound = -1;
constexpr int maxEntitySize = 4096;
// The shortest element that an entity can contain.
constexpr int minElementLength = 4;

bool isQuote(char character) {
  return character == '"' || character == '\'';
}

bool isPredefined(QByteArrayView reference) {
  static constexpr std::array names{"&amp;", "&lt;", "&gt;", "&quot;", "&apos;"};
  return std::any_of(names.begin(), names.end(), [&](const char* name) { return reference.startsWith(name); });
}

// References to entities that the file itself declares.
qsizetype countReferences(QByteArrayView xml) {
  qsizetype count = 0;
  for (qsizetype at = xml.indexOf('&'); at >= 0; at = xml.indexOf('&', at + 1)) {
    const QByteArrayView reference = xml.sliced(at);
    if (!reference.startsWith("&#") && !isPredefined(reference)) ++count;
  }
  return count;
}

// How many bytes of UTF-8 the first `units` UTF-16 units take.
qsizetype bytesOf(QByteArrayView text, qint64 units) {
  qsizetype at = 0;
  while (at < text.size() && units > 0) {
    const auto lead = static_cast<uchar>(text[at]);
    const int length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    at += length;
    units -= length == 4 ? 2 : 1;
  }
  return at;
}

qint64 countLineEnds(QByteArrayView text) {
  qint64 count = 0;
  for (qsizetype at = 0; at < text.size(); ++at) {
    const bool isPair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
    if (!isPair && (text[at] == '\r' || text[at] == '\n')) ++count;
  }
  return count;
}

}  // namespace

XmlText::XmlText(const QByteArray& xml) : m_xml(xml) {
  scan();
  limitExpansion();
  if (m_copied == 0)
    m_text = xml;
  else
    m_text += m_xml.sliced(m_copied);
}

qint64 XmlText::lineAt(qint64 parserLine, qint64 offset) const {
  const auto moved = std::upper_bound(m_movedLineEnds.begin(), m_movedLineEnds.end(), bytesOf(m_text, offset));
  return parserLine + (moved - m_movedLineEnds.begin());
}

void XmlText::scan() {
  for (qsizetype at = m_xml.indexOf('<'); at >= 0; at = m_xml.indexOf('<', at)) {
    const QByteArrayView rest = m_xml.sliced(at);
    if (rest.startsWith("<!--"))
      at = past("-->", at + 4);
    else if (rest.startsWith("<![CDATA["))
      at = past("]]>", at + 9);
    else if (rest.startsWith("<?"))
      at = past("?>", at + 2);
    else if (rest.startsWith("<!"))
      at = pastDocumentType(at);
    else
      at = pastTag(at + 1);
    if (at == notFound) return;
  }
}

// Each of these returns the end of what starts before or at `at`, or notFound if the parser will stop first.

qsizetype XmlText::past(QByteArrayView end, qsizetype from) const {
  const qsizetype at = m_xml.indexOf(end, from);
  return at < 0 ? notFound : at + end.size();
}

qsizetype XmlText::pastTag(qsizetype at) {
  ++m_tags;
  int attributes = 0;
  while (at < m_xml.size()) {
    const char character = m_xml[at];
    if (character == '>') return at + 1;
    if (character == '<') return notFound;
    if (!isQuote(character)) {
      ++at;
      continue;
    }
    if (++attributes > maxAttributes)
      fail(at, QStringLiteral("an element has more than %1 attributes").arg(maxAttributes));
    at = pastValue(at);
    if (at == notFound) return notFound;
  }
  return notFound;
}

qsizetype XmlText::pastValue(qsizetype at) {
  const char quote = m_xml[at];
  for (++at; at < m_xml.size(); ++at) {
    const char character = m_xml[at];
    if (character == quote) return at + 1;
    if (character == '<') return notFound;
    if (character != '\n' && character != '\r') continue;
    m_text += m_xml.sliced(m_copied, at - m_copied);
    m_movedLineEnds.push_back(m_text.size());
    m_text += "&#10;";
    if (m_xml.sliced(at).startsWith("\r\n")) ++at;
    m_copied = at + 1;
  }
  return notFound;
}

qsizetype XmlText::pastDocumentType(qsizetype begin) {
  // The parser accepts any number of them anywhere, and each would hide from the limits what the previous one declared.
  if (m_xml.sliced(begin).startsWith("<!DOCTYPE") && (!m_documentType.isEmpty() || m_tags > 0))
    fail(begin, QStringLiteral("a document type stands only once, and before the first element"));
  bool isInSubset = false;
  qsizetype at = begin + 2;
  while (at != notFound && at < m_xml.size()) {
    const char character = m_xml[at];
    const QByteArrayView rest = m_xml.sliced(at);
    if (isQuote(character)) {
      at = past(QByteArrayView(&character, 1), at + 1);
    } else if (rest.startsWith("<!--")) {
      at = past("-->", at + 4);
    } else if (rest.startsWith("<?")) {
      at = past("?>", at + 2);
    } else if (character == '>' && !isInSubset) {
      m_documentType = m_xml.sliced(begin, at - begin);
      return at + 1;
    } else {
      // Their content could end the document type, and then its end would be unknown here.
      if (character == '%') fail(at, QStringLiteral("parameter entities are not supported"));
      if (character == '[') isInSubset = true;
      if (character == ']') isInSubset = false;
      ++at;
    }
  }
  return notFound;
}

void XmlText::limitExpansion() {
  m_entityExpansionLimit = maxEntitySize;
  if (m_documentType.isEmpty()) return;
  const qsizetype references = countReferences(m_xml);
  if (references > 0)
    m_entityExpansionLimit = static_cast<int>(std::clamp<qsizetype>(maxExpansion / references, 1, maxEntitySize));
  if (!m_documentType.contains("<!ATTLIST")) return;
  const double elements =
      static_cast<double>(m_tags) + static_cast<double>(references) * m_entityExpansionLimit / minElementLength;
  if (elements * static_cast<double>(m_documentType.size()) > maxDefaultSearches)
    fail(m_documentType.data() - m_xml.data(), QStringLiteral("the document type declares too many attributes"));
}

void XmlText::requireXmlCharacters() const {
  for (qsizetype at = 0; at < m_xml.size(); ++at) {
    const auto byte = static_cast<uchar>(m_xml[at]);
    if (byte >= 0x20 || byte == '\t' || byte == '\n' || byte == '\r') continue;
    const QString code = QStringLiteral("%1").arg(uint{byte}, 4, 16, QLatin1Char('0')).toUpper();
    fail(at, QStringLiteral("XML cannot hold the character U+%1").arg(code));
  }
}

void XmlText::fail(qsizetype at, const QString& reason) const {
  throw ImportError::parseError(QStringLiteral("line %1: %2").arg(countLineEnds(m_xml.first(at)) + 1).arg(reason));
}

}  // namespace quilmora
