#pragma once

#include <QString>

namespace quilmora {

// A number with this many decimals. A number exactly between two texts gets the one with the even last digit.
QString fixedText(double value, int decimals);

}  // namespace quilmora
