#include "ai/SubjectTable.h"

namespace quilmora {

namespace {

// Countries, each with its capital, and travel between them.
constexpr WrittenSubject placeRows[] = {
    {u"capitals", u"Europe, Asia, North America, South America, Africa, Oceania, Middle East"},
    {u"countries", u"Europe, Asia, North America, South America, Africa, Oceania, Middle East"},
    {u"geography", u"Mountains, Rivers, Ocean, Countries, Climate Zones, Population, Cartography"},
    {u"europe",
     u"France — Paris, Germany — Berlin, Italy — Rome, Spain — Madrid, UK — London, Poland — Warsaw, "
     u"Netherlands — Amsterdam"},
    {u"asia",
     u"China — Beijing, Japan — Tokyo, India — New Delhi, South Korea — Seoul, Indonesia — Jakarta, "
     u"Thailand — Bangkok, Vietnam — Hanoi"},
    {u"north america", u"USA — Washington DC, Canada — Ottawa, Mexico — Mexico City, Cuba — Havana"},
    {u"south america",
     u"Brazil — Brasília, Argentina — Buenos Aires, Chile — Santiago, Peru — Lima, Colombia — Bogotá, "
     u"Ecuador — Quito, Uruguay — Montevideo"},
    {u"africa",
     u"Egypt — Cairo, Nigeria — Abuja, Kenya — Nairobi, Morocco — Rabat, Ethiopia — Addis Ababa, "
     u"Ghana — Accra, Senegal — Dakar"},
    {u"oceania", u"Australia — Canberra, New Zealand — Wellington, Fiji — Suva, Samoa — Apia, Tonga — Nukuʻalofa"},
    {u"middle east", u"Turkey — Ankara, Saudi Arabia — Riyadh, UAE — Abu Dhabi, Israel — Jerusalem, Iran — Tehran"},
};

}  // namespace

std::span<const WrittenSubject> placeSubjects() {
  return placeRows;
}

}  // namespace quilmora
