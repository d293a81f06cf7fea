#pragma once

#include "exchange/XmlOutlineParser.h"

namespace quilmora {

// FreeMind and Freeplane: `node` elements, the title in `TEXT`. Notes are elements there and are left out.
class FreeMindParser final : public XmlOutlineParser {
 public:
  FreeMindParser(QByteArray xml, const Clock& clock);
};

}  // namespace quilmora
