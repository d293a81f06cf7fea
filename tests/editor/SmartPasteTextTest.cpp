#include <QStringList>
#include <gtest/gtest.h>

#include "editor/edits/SmartPaste.h"
#include "support/QtPrinters.h"

using namespace quilmora;

namespace {

QStringList texts(const std::vector<QStringView>& lines) {
  QStringList result;
  for (const QStringView line : lines) result.append(line.toString());
  return result;
}

// Parts joined by one of the characters that end a line.
QString joined(char16_t lineEnd) {
  return QStringLiteral("a") + QChar(lineEnd) + QStringLiteral("b");
}

}  // namespace

TEST(SmartPasteText, EveryNewlineCharacterEndsALine) {
  for (const char16_t lineEnd : {0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029})
    EXPECT_EQ(texts(linesWithText(joined(lineEnd))), QStringList({QStringLiteral("a"), QStringLiteral("b")}))
        << int(lineEnd);
  for (const char16_t other : {0x09, 0x1F, 0x20, 0xA0, 0x2000, 0x2027, 0x202A})
    EXPECT_EQ(smartPasteLineCount(joined(other)), 1) << int(other);
  EXPECT_EQ(texts(linesWithText(u"a\r\nb\n\nc\r\r")),
            QStringList({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
}

TEST(SmartPasteText, LinesKeepTheirWhiteSpace) {
  EXPECT_EQ(texts(linesWithText(u"  a \n\tb\t\n \t\n")),
            QStringList({QStringLiteral("  a "), QStringLiteral("\tb\t")}));
}

TEST(SmartPasteText, OnlyBlanksAndTabsMakeALineBlank) {
  EXPECT_EQ(smartPasteLineCount(u""), 0);
  EXPECT_EQ(smartPasteLineCount(u" \n\t \n"), 0);
  EXPECT_EQ(smartPasteLineCount(u"a\n\u00A0\n\u3000\n\u200B"), 4);
  EXPECT_EQ(withoutBlanksAndTabs(u" \t a b \t").toString(), QStringLiteral("a b"));
  EXPECT_EQ(withoutBlanksAndTabs(u"\u00A0a\u00A0").toString(), QStringLiteral("\u00A0a\u00A0"));
  EXPECT_EQ(withoutBlanksAndTabs(u" \t ").toString(), QString());
}

TEST(SmartPasteText, TheCountIsOfLinesThatAreNotBlank) {
  EXPECT_EQ(smartPasteLineCount(u"xy\n"), 1);
  EXPECT_EQ(smartPasteLineCount(u"a\n\n  b\n\t\nc"), 3);
}

TEST(SmartPasteText, AnIndentIsTwoBlanksATabOrADash) {
  EXPECT_TRUE(smartPasteHasIndent(u"a\n  b"));
  EXPECT_TRUE(smartPasteHasIndent(u"a\n\tb"));
  EXPECT_TRUE(smartPasteHasIndent(u"a\n- b"));
  EXPECT_TRUE(smartPasteHasIndent(u"- a"));
  EXPECT_TRUE(smartPasteHasIndent(u"a\n  \nb")) << "a blank line counts too";
  EXPECT_FALSE(smartPasteHasIndent(u"a\n b"));
  EXPECT_FALSE(smartPasteHasIndent(u"a\n \tb"));
  EXPECT_FALSE(smartPasteHasIndent(u"a\n-b\n* c\n -"));
  EXPECT_FALSE(smartPasteHasIndent(u"a  b\tc - d"));
  EXPECT_FALSE(smartPasteHasIndent(u"a\n\u00A0\u00A0b"));
  EXPECT_FALSE(smartPasteHasIndent(u""));
}

TEST(SmartPasteText, SuitsWithALineFeedAndMoreThanOneCharacter) {
  EXPECT_TRUE(suitsSmartPaste(u"xy\n"));
  EXPECT_TRUE(suitsSmartPaste(u"a\nb"));
  EXPECT_TRUE(suitsSmartPaste(u"\nxy"));
  EXPECT_FALSE(suitsSmartPaste(u"x\n"));
  EXPECT_FALSE(suitsSmartPaste(u" \u00A0x \r\n\u2028"));
  EXPECT_FALSE(suitsSmartPaste(u"xy"));
  EXPECT_FALSE(suitsSmartPaste(u"x\ry"));
  EXPECT_FALSE(suitsSmartPaste(u"\n \n"));
  EXPECT_FALSE(suitsSmartPaste(u""));
}

TEST(SmartPasteText, ACharacterIsWhatAPersonSeesAsOne) {
  EXPECT_FALSE(suitsSmartPaste(u"\U0001F468\u200D\U0001F469\u200D\U0001F467\n"));
  EXPECT_FALSE(suitsSmartPaste(u"e\u0301\n"));
  EXPECT_TRUE(suitsSmartPaste(u"e\u0301x\n"));
  EXPECT_TRUE(suitsSmartPaste(u"\U0001F468\U0001F469\n"));
}
