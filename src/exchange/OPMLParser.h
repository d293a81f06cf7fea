#pragma once

#include "exchange/XmlOutlineParser.h"

namespace quilmora {

// OPML: `outline` elements, the title in `text`, the notes in `_note`. The slots of a level follow no told order.
class OPMLParser final : public XmlOutlineParser {
 public:
  OPMLParser(QByteArray xml, const Clock& clock);
};

}  // namespace quilmora
