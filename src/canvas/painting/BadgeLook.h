#pragma once

#include <QColor>
#include <QString>

#include "model/Records.h"

namespace quilmora {

// How a badge looks wherever it shows: its symbol, to be drawn in white, and the colour of the disc behind it.
struct BadgeLook {
  QString symbol;
  QColor color;
};

const BadgeLook& badgeLook(Badge badge);

}  // namespace quilmora
