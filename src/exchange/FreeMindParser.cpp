#include "exchange/FreeMindParser.h"

namespace quilmora {

FreeMindParser::FreeMindParser(QByteArray xml, const Clock& clock)
    : XmlOutlineParser(std::move(xml), clock,
                       {QStringLiteral("Imported from FreeMind"), u"node", u"TEXT", QStringView()}) {}

}  // namespace quilmora
