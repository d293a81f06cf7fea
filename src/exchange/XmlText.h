#pragma once

#include <vector>

#include <QByteArray>

namespace quilmora {

// An XML text in UTF-8 as it goes to the parser. A raw line end inside an attribute's value becomes a character
// reference, because a parser makes a blank of it and exports write the lines of a note so. Refuses what well-formed
// files could use to keep the parser busy or to fill the memory: its time grows with the square of an element's
// attributes, and entities and attribute defaults multiply the text. Any other fault is left to the parser.
class XmlText {
 public:
  // No topic, and nothing real, comes near these.
  static constexpr int maxAttributes = 256;
  static constexpr qsizetype maxExpansion = 4'000'000;       // characters that all entities of a file give together
  static constexpr double maxDefaultSearches = 400'000'000;  // characters of the document type times elements

  // Throws ImportError::parseError.
  explicit XmlText(const QByteArray& xml);

  const QByteArray& text() const { return m_text; }
  // Throws ImportError::parseError at a control character, which the parser overlooks within a name.
  void requireXmlCharacters() const;
  // How many characters one entity may give.
  int entityExpansionLimit() const { return m_entityExpansionLimit; }
  // The line in the text as given, from the parser's line and its offset in text(), in units of UTF-16.
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
  qsizetype m_copied = 0;                  // how much of m_xml is in m_text
  std::vector<qsizetype> m_movedLineEnds;  // offsets in m_text
  qsizetype m_tags = 0;
  QByteArrayView m_documentType;
  int m_entityExpansionLimit = 0;
};

}  // namespace quilmora
