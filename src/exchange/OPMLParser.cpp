#include "exchange/OPMLParser.h"

namespace quilmora {

OPMLParser::OPMLParser(QByteArray xml, const Clock& clock)
    : XmlOutlineParser(std::move(xml), clock, {QStringLiteral("Imported from OPML"), u"outline", u"text", u"_note"}) {}

}  // namespace quilmora
