#pragma once

#include "exchange/XmlOutlineParser.h"

namespace quilmora {

// OPML: `outline` elements with the title in `text` and the notes in `_note`.
class OPMLParser final : public XmlOutlineParser {
 public:
  OPMLParser(QByteArray xml, const Clock& clock);
};

}  // namespace quilmora
