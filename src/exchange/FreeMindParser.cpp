#include "exchange/FreeMindParser.h"

#include "exchange/ImportedMap.h"

namespace quilmora {

FreeMindParser::FreeMindParser(QByteArray xml, const Clock& clock)
    : XmlOutlineParser(std::move(xml), clock,
                       {QStringLiteral("Imported from FreeMind"), u"node", u"TEXT", QStringView(), placeDepthFirst}) {}

}  // namespace quilmora
