#pragma once

#include "exchange/XmlOutlineParser.h"

namespace quilmora {

// FreeMind and Freeplane: `node` elements with the title in `TEXT`. Notes are elements there and are ignored.
class FreeMindParser final : public XmlOutlineParser {
 public:
  FreeMindParser(QByteArray xml, const Clock& clock);
};

}  // namespace quilmora
