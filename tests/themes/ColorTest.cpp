#include <array>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "themes/Color.h"

using namespace quilmora;

namespace {

QColor read(const char16_t* text) {
  return colorFromHex(QString::fromUtf16(text));
}
QColor rgb(int red, int green, int blue) {
  return QColor(red, green, blue);
}
const QColor grey(128, 128, 128);
const QColor black(0, 0, 0);

QString written(std::initializer_list<double> components) {
  return hexFromColor(std::span<const double>(components.begin(), components.size()));
}

}  // namespace

TEST(ColorFromHex, StripsWhatSurroundsTheDigits) {
  for (const char16_t* text : {u"#1A5276", u"1A5276", u" #1A5276 ", u"#1A5276#", u"\t##1A5276\n", u"-1A5276;"})
    EXPECT_EQ(read(text), rgb(0x1A, 0x52, 0x76)) << QString::fromUtf16(text).toStdString();
}

TEST(ColorFromHex, StripsSymbolsBeyondTheBasicPlane) {
  EXPECT_EQ(read(u"\U0001F600#1A5276\U0001F600"), rgb(0x1A, 0x52, 0x76));
  EXPECT_EQ(read(u"\U0001F600"), grey);
}

TEST(ColorFromHex, LoneSurrogatesAreNoLetters) {
  const QString lone = QString(QChar(0xD800)) + QStringLiteral("1A5276") + QChar(0xDC00);
  EXPECT_EQ(colorFromHex(lone), rgb(0x1A, 0x52, 0x76));
  EXPECT_EQ(colorFromHex(QString(QChar(0xD800))), grey);
}

TEST(ColorFromHex, LowerCaseDigitsAreRead) {
  EXPECT_EQ(read(u"#1a5276"), read(u"#1A5276"));
}

TEST(ColorFromHex, OtherLengthsAreGrey) {
  for (const char16_t* text : {u"", u"#", u"#FFF", u"#FF000080", u"red", u"#12345", u"#1234567", u"      ", u"######"})
    EXPECT_EQ(read(text), grey) << QString::fromUtf16(text).toStdString();
}

TEST(ColorFromHex, SixCharactersThatAreNoDigitsAreBlack) {
  EXPECT_EQ(read(u"ZZZZZZ"), black);
  EXPECT_EQ(read(u"#GGGGGG"), black);
}

TEST(ColorFromHex, ReadingStopsAtTheFirstOtherCharacter) {
  EXPECT_EQ(read(u"12ZZZZ"), rgb(0, 0, 0x12));
  EXPECT_EQ(read(u"12 456"), rgb(0, 0, 0x12));
  EXPECT_EQ(read(u"12345Z"), rgb(0x01, 0x23, 0x45));
  EXPECT_EQ(read(u"Z23456"), black);
}

TEST(ColorFromHex, NumberPrefixIsAccepted) {
  EXPECT_EQ(read(u"0x12AB"), rgb(0, 0x12, 0xAB));
  EXPECT_EQ(read(u"0X12AB"), rgb(0, 0x12, 0xAB));
  EXPECT_EQ(read(u"#0xFFFF"), rgb(0, 0xFF, 0xFF));
  EXPECT_EQ(read(u"0xZZZZ"), black);
  EXPECT_EQ(read(u"0x12ZZ"), rgb(0, 0, 0x12));
  EXPECT_EQ(read(u"0x1A5276"), grey);
}

TEST(ColorFromHex, LettersOfEveryScriptStay) {
  EXPECT_EQ(read(u"é1A5276"), grey);
  EXPECT_EQ(read(u"1A5276中"), grey);
  EXPECT_EQ(read(u"1A527中"), rgb(0x01, 0xA5, 0x27));
  EXPECT_EQ(read(u"１1A5276"), grey);
  EXPECT_EQ(read(u"１A5276"), black);
  EXPECT_EQ(read(u"1A527６"), rgb(0x01, 0xA5, 0x27));
  EXPECT_EQ(read(u"𐐀A5276"), black);
}

TEST(ColorFromHex, CountsCharactersAsAPersonDoes) {
  EXPECT_EQ(read(u"12345e\u0301"), rgb(0x12, 0x34, 0x5E));
  EXPECT_EQ(read(u"1A5276\u0301\u0302"), rgb(0x1A, 0x52, 0x76));
  EXPECT_EQ(read(u"A\r\nB345"), rgb(0, 0, 0x0A));
  EXPECT_EQ(read(u"A\r\nB3456"), grey);
}

TEST(ColorFromHex, IsAlwaysOpaqueSrgb) {
  for (const char16_t* text : {u"#1A5276", u"#FF000080", u"ZZZZZZ"}) {
    EXPECT_EQ(read(text).alphaF(), 1.0f);
    EXPECT_EQ(read(text).spec(), QColor::Rgb);
  }
}

TEST(ColorFromHex, EveryByteOfEachComponent) {
  for (int value = 0; value < 256; ++value) {
    const QString digits = QString::asprintf("%02x", value);
    EXPECT_EQ(colorFromHex(u'#' + digits + QStringLiteral("0000")), rgb(value, 0, 0));
    EXPECT_EQ(colorFromHex(QStringLiteral("00") + digits + QStringLiteral("00")), rgb(0, value, 0));
    EXPECT_EQ(colorFromHex(QStringLiteral("#0000") + digits), rgb(0, 0, value));
  }
}

TEST(ColorFromHex, BearsAnyText) {
  EXPECT_TRUE(rc::check("any text gives an opaque colour", [] {
    const auto units = *rc::gen::container<std::vector<char16_t>>(
        rc::gen::oneOf(rc::gen::arbitrary<char16_t>(), rc::gen::inRange<char16_t>(u' ', u'z')));
    const QString text = QString::fromUtf16(units.data(), static_cast<qsizetype>(units.size()));
    RC_ASSERT(colorFromHex(text).isValid());
    RC_ASSERT(colorFromHex(text).alpha() == 255);
  }));
  EXPECT_EQ(colorFromHex(QString(1'000'000, u'F')), grey);
  EXPECT_EQ(colorFromHex(QString(1'000'000, u'#')), grey);
  EXPECT_EQ(colorFromHex(QStringLiteral("e") + QString(100'000, QChar(0x0301))), grey);
}

TEST(HexFromColor, WritesUpperCaseDigits) {
  EXPECT_EQ(hexFromColor(rgb(0x1A, 0x52, 0x76)), QStringLiteral("#1A5276"));
  EXPECT_EQ(hexFromColor(colorFromHex(QStringLiteral("#abcdef"))), QStringLiteral("#ABCDEF"));
  EXPECT_EQ(hexFromColor(rgb(0, 0, 0)), QStringLiteral("#000000"));
  EXPECT_EQ(hexFromColor(rgb(255, 255, 255)), QStringLiteral("#FFFFFF"));
}

TEST(HexFromColor, AColorReadFromTextKeepsEveryStepThatTruncationLeaves) {
  for (int value = 0; value < 256; ++value) {
    const int printed = static_cast<int>(value / 255.0 * 255.0);
    EXPECT_EQ(hexFromColor(rgb(value, 0, 0)), QString::asprintf("#%02X0000", printed));
    EXPECT_GE(printed, value - 1);
  }
  EXPECT_EQ(hexFromColor(colorFromHex(QStringLiteral("#808080"))), QStringLiteral("#808080"));
}

TEST(HexFromColor, Truncates) {
  EXPECT_EQ(written({0.5, 0.5, 0.5}), QStringLiteral("#7F7F7F"));
  EXPECT_EQ(written({0.999, 0.0039, 0.004}), QStringLiteral("#FE0001"));
  EXPECT_EQ(hexFromColor(QColor::fromRgba64(0x8000, 0x7FFF, 0xFFFE)), QStringLiteral("#7F7FFE"));
}

TEST(HexFromColor, TakesTheFirstThreeComponents) {
  EXPECT_EQ(written({1.0, 0.0, 1.0}), QStringLiteral("#FF00FF"));
  EXPECT_EQ(written({1.0, 0.0, 1.0, 0.5}), QStringLiteral("#FF00FF"));
  EXPECT_EQ(written({1.0, 0.0, 1.0, 0.5, 0.25}), QStringLiteral("#FF00FF"));
}

TEST(HexFromColor, OneOrTwoComponentsAreAGrey) {
  EXPECT_EQ(written({0.5}), QStringLiteral("#7F7F7F"));
  EXPECT_EQ(written({1.0, 0.5}), QStringLiteral("#FFFFFF"));
}

TEST(HexFromColor, NoComponentIsMidGrey) {
  EXPECT_EQ(written({}), QStringLiteral("#808080"));
  EXPECT_EQ(hexFromColor(QColor()), QStringLiteral("#808080"));
}

TEST(HexFromColor, DoesNotClamp) {
  EXPECT_EQ(written({2.0, 0.0, 0.0}), QStringLiteral("#1FE0000"));
  EXPECT_EQ(written({-1.0, 0.0, 0.0}), QStringLiteral("#FFFFFF010000"));
  EXPECT_EQ(written({-0.001, 0.0, 0.0}), QStringLiteral("#000000"));
}

TEST(HexFromColor, BearsNumbersThatNoIntegerHolds) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(written({std::nan(""), 0.0, 0.0}), QStringLiteral("#000000"));
  EXPECT_EQ(written({infinity, -infinity, 0.0}), QStringLiteral("#FFFFFFFF0000"));
  EXPECT_EQ(written({1e300, -1e300, 0.0}), QStringLiteral("#FFFFFFFF0000"));
}

TEST(HexFromColor, ConvertsOtherColorModels) {
  EXPECT_EQ(hexFromColor(QColor::fromHsv(0, 255, 255)), QStringLiteral("#FF0000"));
  EXPECT_EQ(hexFromColor(QColor::fromCmyk(0, 255, 255, 0)), QStringLiteral("#FF0000"));
  EXPECT_EQ(hexFromColor(QColor::fromRgbF(2.0f, 0.0f, -1.0f)), QStringLiteral("#1FE00FFFFFF01"));
}

TEST(HexFromColor, LeavesOpacityOut) {
  EXPECT_EQ(hexFromColor(QColor(1, 2, 3, 0)), QStringLiteral("#010203"));
}
