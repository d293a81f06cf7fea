#pragma once

#include <QString>

namespace quilmora {

// A number with so many decimals. What lies right between two texts goes to the one with the even last digit.
QString fixedText(double value, int decimals);

}  // namespace quilmora
