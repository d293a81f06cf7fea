#pragma once

#include <string>
#include <utility>
#include <vector>

#include "exchange/FreeMindParser.h"
#include "exchange/ImportError.h"
#include "exchange/OPMLParser.h"
#include "model/MapIndex.h"
#include "support/QtPrinters.h"

// Helpers for the tests of the XML imports.
namespace quilmora::test {

inline MindMap parsedOpml(const QByteArray& xml) {
  return OPMLParser(xml, ManualClock()).parse();
}

inline MindMap parsedFreeMind(const QByteArray& xml) {
  return FreeMindParser(xml, ManualClock()).parse();
}

// The map from these outlines, wrapped in a complete OPML file.
inline MindMap outlines(const QByteArray& body) {
  return parsedOpml("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\"><body>" + body +
                    "</body></opml>");
}

// The error with which the text is refused; empty if it is read.
template <class Parser = OPMLParser>
std::string refusal(const QByteArray& xml) {
  try {
    Parser(xml, ManualClock()).parse();
    return "";
  } catch (const ImportError& error) {
    return error.what();
  }
}

inline std::vector<std::string> titles(const MindMap& map) {
  std::vector<std::string> found;
  for (const Node& node : map.nodes) found.push_back(node.title.toStdString());
  return found;
}

inline std::vector<std::pair<double, double>> places(const MindMap& map) {
  std::vector<std::pair<double, double>> found;
  for (const Node& node : map.nodes) found.emplace_back(node.position.x(), node.position.y());
  return found;
}

// Each edge as the ordinals of its ends in the topics, in the order of the edges.
inline std::vector<std::pair<int, int>> links(const MindMap& map) {
  const MapIndex index(map.nodes, map.edges);
  std::vector<std::pair<int, int>> found;
  for (const Edge& edge : map.edges)
    found.emplace_back(static_cast<int>(index.find(edge.from)), static_cast<int>(index.find(edge.to)));
  return found;
}

}  // namespace quilmora::test
