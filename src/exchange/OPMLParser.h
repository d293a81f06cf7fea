#pragma once

#include "exchange/XmlOutlineParser.h"

namespace quilmora {

// OPML: `outline` elements, the title in `text`, the notes in `_note`.
class OPMLParser final : public XmlOutlineParser {
 public:
  OPMLParser(QByteArray xml, const Clock& clock);
};

}  // namespace quilmora
