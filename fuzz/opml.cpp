#include <cstdint>
#include <cstdlib>

#include "exchange/ImportError.h"
#include "exchange/OPMLParser.h"
#include "exchange/TextExports.h"
#include "model/MindMapDocument.h"

namespace {

using namespace quilmora;

MindMap parse(const QByteArray& xml) {
  return OPMLParser(xml, ManualClock()).parse();
}

// XML has one kind of line end, and no raw tabs in attribute values.
QString carried(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  text.replace(u'\r', u'\n');
  return text.replace(u'\t', u' ');
}

}  // namespace

// Any bytes give an error, or a forest that can be written as a document and read back, and survives its own export.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  MindMap map;
  try {
    map = parse(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  } catch (const ImportError&) {
    return 0;
  }
  if (!map.nodes.empty() && map.edges.size() >= map.nodes.size()) std::abort();
  if (!(decodeDocument(encodeDocument(map)) == map)) std::abort();
  const MindMap back = parse(exportOPML(map));
  if (back.nodes.size() != map.nodes.size() || back.edges.size() != map.edges.size()) std::abort();
  for (auto was = map.nodes.begin(), is = back.nodes.begin(); was != map.nodes.end(); ++was, ++is)
    if (is->title != carried(was->title) || is->notes != carried(was->notes)) std::abort();
  return 0;
}
