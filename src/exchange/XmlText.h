#pragma once

#include <vector>

#include <QByteArray>

namespace quilmora {

// An XML text in UTF-8, prepared for the parser. A raw line end inside an attribute's value becomes a character
// reference, because a parser would turn it into a space and exports write the lines of a note that way. Refuses what a
// well-formed file could use to keep the parser busy or fill the memory: parsing time grows with the square of an
// element's attributes, and entities and attribute defaults multiply the text. Any other fault is left to the parser.
class XmlText {
 public:
  // No topic, and no real file, comes near these limits.
  static constexpr int maxAttributes = 256;
  static constexpr qsizetype maxExpansion = 4'000'000;  // characters that all entities of a file expand to together
  static constexpr double maxDefaultSearches = 400'000'000;  // characters of the document type times elements

  // Throws ImportError::parseError.
  explicit XmlText(const QByteArray& xml);

  const QByteArray& text() const { return m_text; }
  // Throws ImportError::parseError at a control character, which the parser overlooks within a name.
  void requireXmlCharacters() const;
  // How many characters one entity may expand to.
  int entityExpansionLimit() const { return m_entityExpansionLimit; }
  // The line in the original text, from the parser's line and its offset in text(), in UTF-16 units.
  qint64 lineAt(qint64 parserLine, qint64 offset) const;

 private:
  qsizetype past(QByteArrayView end, qsizetype from) const;
  qsizetype pastTag(qsizetype at);
  qsizetype pastValue(qsizetype at);
  qsizetype pastDocumentType(qsizetype at);
  void scan();
  void limitExpansion();
  [[noreturn]] void fail(qsizetype at, const QString& reason) const;

  QByteArrayView m_xml;
  QByteArray m_text;
  qsizetype m_copied = 0;                  // how much of m_xml has been copied to m_text
  std::vector<qsizetype> m_movedLineEnds;  // offsets in m_text
  qsizetype m_tags = 0;
  QByteArrayView m_documentType;
  int m_entityExpansionLimit = 0;
};

}  // namespace quilmora
