#include "model/StoredText.h"

#include <algorithm>
#include <cstdint>

namespace quilmora {

namespace {

constexpr bool isHyphenPlace(std::size_t i) {
  return i == 8 || i == 13 || i == 18 || i == 23;
}

constexpr auto hexValues = [] {
  std::array<std::int16_t, 256> values{};
  values.fill(-1);
  for (std::size_t i = 0; i < 10; ++i) values[std::size_t{'0'} + i] = static_cast<std::int16_t>(i);
  for (std::size_t i = 0; i < 6; ++i) {
    values[std::size_t{'a'} + i] = static_cast<std::int16_t>(10 + i);
    values[std::size_t{'A'} + i] = static_cast<std::int16_t>(10 + i);
  }
  return values;
}();

void putDigits(char* at, int width, unsigned value) {
  for (int i = width - 1; i >= 0; --i, value /= 10) at[i] = static_cast<char>('0' + value % 10);
}

// The number of `width` decimal digits at `at`, or -1.
int digits(const char* at, int width) {
  int value = 0;
  for (int i = 0; i < width; ++i) {
    if (at[i] < '0' || at[i] > '9') return -1;
    value = value * 10 + (at[i] - '0');
  }
  return value;
}

}  // namespace

std::array<char, 36> textOfUuid(const QUuid& id) {
  std::array<std::uint8_t, 16> bytes{};
  for (std::size_t i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(id.data1 >> (24 - 8 * i));
  for (std::size_t i = 0; i < 2; ++i) bytes[4 + i] = static_cast<std::uint8_t>(id.data2 >> (8 - 8 * i));
  for (std::size_t i = 0; i < 2; ++i) bytes[6 + i] = static_cast<std::uint8_t>(id.data3 >> (8 - 8 * i));
  std::copy(std::begin(id.data4), std::end(id.data4), bytes.begin() + 8);
  std::array<char, 36> text;
  std::size_t at = 0;
  for (const std::uint8_t byte : bytes) {
    if (isHyphenPlace(at)) text[at++] = '-';
    text[at++] = "0123456789ABCDEF"[byte >> 4];
    text[at++] = "0123456789ABCDEF"[byte & 15];
  }
  return text;
}

std::optional<QUuid> uuidFromText(std::string_view text) {
  if (text.size() != 36) return std::nullopt;
  std::array<std::uint8_t, 16> bytes{};
  std::size_t count = 0;
  for (std::size_t at = 0; at < 36;) {
    if (isHyphenPlace(at)) {
      if (text[at++] != '-') return std::nullopt;
      continue;
    }
    const int high = hexValues[static_cast<std::uint8_t>(text[at])];
    const int low = hexValues[static_cast<std::uint8_t>(text[at + 1])];
    if (high < 0 || low < 0) return std::nullopt;
    bytes[count++] = static_cast<std::uint8_t>(high * 16 + low);
    at += 2;
  }
  const auto wide = [&](std::size_t i) { return static_cast<ushort>(bytes[i] << 8 | bytes[i + 1]); };
  return QUuid(static_cast<uint>(wide(0)) << 16 | wide(2), wide(4), wide(6), bytes[8], bytes[9], bytes[10], bytes[11],
               bytes[12], bytes[13], bytes[14], bytes[15]);
}

std::array<char, 20> textOfTime(TimePoint time) {
  using namespace std::chrono;
  constexpr sys_seconds first = sys_days(year(0) / January / 1);
  constexpr sys_seconds last = sys_days(year(9999) / December / 31) + hours(24) - seconds(1);
  const sys_seconds second = std::clamp(floor<seconds>(time), first, last);
  const sys_days day = floor<days>(second);
  const year_month_day date(day);
  const hh_mm_ss clock(second - day);
  std::array<char, 20> text{'Y', 'Y', 'Y', 'Y', '-', 'M', 'M', '-', 'D', 'D',
                            'T', 'H', 'H', ':', 'M', 'M', ':', 'S', 'S', 'Z'};
  putDigits(&text[0], 4, static_cast<unsigned>(static_cast<int>(date.year())));
  putDigits(&text[5], 2, static_cast<unsigned>(date.month()));
  putDigits(&text[8], 2, static_cast<unsigned>(date.day()));
  putDigits(&text[11], 2, static_cast<unsigned>(clock.hours().count()));
  putDigits(&text[14], 2, static_cast<unsigned>(clock.minutes().count()));
  putDigits(&text[17], 2, static_cast<unsigned>(clock.seconds().count()));
  return text;
}

std::optional<TimePoint> timeFromText(std::string_view text) {
  using namespace std::chrono;
  if (text.size() != 20) return std::nullopt;
  if (text[4] != '-' || text[7] != '-' || text[10] != 'T' || text[13] != ':' || text[16] != ':' || text[19] != 'Z')
    return std::nullopt;
  const int years = digits(&text[0], 4);
  const int month = digits(&text[5], 2);
  const int day = digits(&text[8], 2);
  const int hour = digits(&text[11], 2);
  const int minute = digits(&text[14], 2);
  const int second = digits(&text[17], 2);
  if (std::min({years, month, day, hour, minute, second}) < 0 || hour > 23 || minute > 59 || second > 59)
    return std::nullopt;
  const year_month_day date{year(years), std::chrono::month(static_cast<unsigned>(month)),
                            std::chrono::day(static_cast<unsigned>(day))};
  if (!date.ok()) return std::nullopt;
  return TimePoint(sys_days(date) + hours(hour) + minutes(minute) + seconds(second));
}

}  // namespace quilmora
