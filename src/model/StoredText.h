#pragma once

#include <array>
#include <optional>
#include <string_view>

#include <QUuid>

#include "platform/Clock.h"

namespace quilmora {

// The stored forms of ids and dates.

// "6F9619FF-8B86-4011-B42D-00CF4FC964FF", always in upper case.
std::array<char, 36> textOfUuid(const QUuid& id);
// Accepts exactly that form, in either case; nothing for any other text.
std::optional<QUuid> uuidFromText(std::string_view text);

// "2024-02-29T23:59:59Z": UTC, rounded down to the second. A time outside the years 0 to 9999 becomes the nearest one
// inside.
std::array<char, 20> textOfTime(TimePoint time);
// Accepts exactly that form with a date that exists; nothing for any other text.
std::optional<TimePoint> timeFromText(std::string_view text);

}  // namespace quilmora
