#include "app/look/NumberText.h"

#include <array>
#include <charconv>

namespace quilmora {

QString fixedText(double value, int decimals) {
  // The longest number has 309 digits before its point. The toolkit would round up a number exactly between two texts.
  std::array<char, 400> text{};
  const auto [end, error] =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
  return QString::fromLatin1(text.data(), end - text.data());
}

}  // namespace quilmora
