#pragma once

#include <optional>
#include <vector>

#include <QByteArray>

#include "exchange/ImportedMap.h"

class QXmlStreamReader;

namespace quilmora {

class XmlText;

// Reads a map from XML in which nested elements of one name are the topics. An object serves one parse.
class XmlOutlineParser {
 public:
  // More would take gigabytes.
  static constexpr std::size_t maxTopics = maxImportedTopics;

  // Throws ImportError: parseError, whose text begins with the line where the parser stopped, or invalidData if the
  // text is not UTF-8, whatever encoding it declares.
  MindMap parse();

 protected:
  // What differs between the formats. Names are compared exactly, including their prefix.
  struct Form {
    QString mapTitle;
    QStringView element;
    QStringView titleAttribute;
    QStringView notesAttribute;  // empty if there is none
  };

  XmlOutlineParser(QByteArray xml, const Clock& clock, const Form& form);

 private:
  void run(QXmlStreamReader& reader);
  void didStartElement(const QXmlStreamReader& reader);
  void didEndElement(const QXmlStreamReader& reader);

  Form m_form;
  QByteArray m_xml;
  MindMap m_mindMap;               // has no topics until the end
  std::vector<QUuid> m_nodeStack;  // open elements from the outermost to the innermost
  LevelPlaces m_places;
  SharedArray<Node> m_nodes;  // in the order of the opening tags
  SharedArray<Edge> m_edges;  // in the order of the opening tags of the children
};

}  // namespace quilmora
