#include <QElapsedTimer>
#include <gtest/gtest.h>

#include "DocumentText.h"

namespace quilmora {
namespace {

std::string refusalOf(const char* before, const char* after) {
  return refusal(documentWithText(before, after));
}

QByteArray repeated(const char* piece, int count) {
  return QByteArray(piece).repeated(count);
}

// The document with a value under an unknown key.
QByteArray documentAround(const QByteArray& value) {
  return documentWithText("\"version\": 1", ("\"version\": 1, \"later\": " + value).constData());
}

TEST(DocumentHostile, EmptyFile) {
  EXPECT_EQ(refusal(QByteArray()), "the file is empty");
  EXPECT_EQ(refusal(" \n\t\r\n "), "the file is empty");
}

TEST(DocumentHostile, ByteOrderMark) {
  EXPECT_EQ(refusal("\xEF\xBB\xBF" + fullDocument()), "the file begins with a byte-order mark");
  EXPECT_EQ(refusal("\xEF\xBB\xBF"), "the file begins with a byte-order mark");
  EXPECT_EQ(refusal(QByteArray("\xFF\xFE{\0}\0", 6)), "invalid UTF-8 at byte 0");
}

TEST(DocumentHostile, InvalidUtf8) {
  const qsizetype at = fullDocument().indexOf("Trip");
  for (const char* bytes :
       {"\x80", "\xC3", "\xC0\xAF", "\xE2\x82", "\xED\xA0\x80", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xFF"})
    EXPECT_EQ(refusalOf("Trip", bytes), "invalid UTF-8 at byte " + std::to_string(at));
  EXPECT_EQ(refusalOf("\"Trip\"", "\"Trip\"\xFF"), "invalid UTF-8 at byte " + std::to_string(at + 5));
}

TEST(DocumentHostile, TrailingText) {
  EXPECT_EQ(refusal("{}\n\nx"), "line 3, column 1: trailing text after the document");
  EXPECT_EQ(refusal("{} {}"), "line 1, column 4: trailing text after the document");
  EXPECT_EQ(refusal(fullDocument() + " \n "), "");
  EXPECT_NE(refusal(fullDocument() + QByteArray(1, '\0')), "");
}

TEST(DocumentHostile, NoObjectAtTheTop) {
  for (const char* json : {"[]", "1", "\"text\"", "true", "null"})
    EXPECT_EQ(refusal(json), "the document: expected an object") << json;
  EXPECT_EQ(refusal("{}"), "version: missing");
}

TEST(DocumentHostile, NamesTheFirstFaultOfTheSyntax) {
  EXPECT_EQ(refusal("{"), "line 1, column 2: the document ends too early");
  EXPECT_EQ(refusal("{\"a\""), "line 1, column 5: the document ends too early");
  EXPECT_EQ(refusal("{\"a\": "), "line 1, column 7: the document ends too early");
  EXPECT_EQ(refusal("{\"a\": 1"), "line 1, column 8: the document ends too early");
  EXPECT_EQ(refusal("{\"a\": 1,"), "line 1, column 9: the document ends too early");
  EXPECT_EQ(refusal("{\"a\": 1,}"), "line 1, column 9: expected a key in quotation marks");
  EXPECT_EQ(refusal("{a: 1}"), "line 1, column 2: expected a key in quotation marks");
  EXPECT_EQ(refusal("{\"a\" 1}"), "line 1, column 6: expected a colon");
  EXPECT_EQ(refusal("{\n  \"a\": 1\n  \"b\": 2\n}"), "line 3, column 3: expected a comma or a closing brace");
  EXPECT_EQ(refusal("{\"ä\": [1 2]}"), "line 1, column 10: expected a comma or a closing bracket");
  EXPECT_EQ(refusal("{\"a\": [1}"), "line 1, column 9: expected a comma or a closing bracket");
  EXPECT_EQ(refusal("{\"a\": [1,]}"), "line 1, column 10: expected a value");
  EXPECT_EQ(refusal("{\"a\": nul}"), "line 1, column 7: expected a value");
  EXPECT_EQ(refusal("{\"a\": NaN}"), "line 1, column 7: expected a value");
  EXPECT_EQ(refusal("{\"a\": Infinity}"), "line 1, column 7: expected a value");
  EXPECT_EQ(refusal("{\"a\": 'b'}"), "line 1, column 7: expected a value");
  EXPECT_EQ(refusal("{\"a\": /* b */ 1}"), "line 1, column 7: expected a value");
  EXPECT_EQ(refusal("{\"a\": \"b}"), "line 1, column 7: the text has no closing quotation mark");
  EXPECT_EQ(refusal("{\"a\": \"b\nc\"}"), "line 1, column 9: a control character inside a text");
  EXPECT_EQ(refusal("{\"a\": \"\\x\"}"), "line 1, column 8: an unknown escape inside a text");
  EXPECT_EQ(refusal("{\"a\": \"\\u12g4\"}"), "line 1, column 8: an unknown escape inside a text");
  EXPECT_EQ(refusal("{\"a\": \"\\ud83d\"}"), "line 1, column 8: half of a surrogate pair");
  EXPECT_EQ(refusal("{\"a\": \"\\ud83dx\"}"), "line 1, column 8: half of a surrogate pair");
  for (const char* number : {"01", "+1", "1.", ".5", "1e", "1e+", "-", "--1", "0x10", "1_000"})
    EXPECT_NE(refusal(documentAround(number)), "") << number;
  EXPECT_EQ(refusal("{\"a\": 01}"), "line 1, column 7: malformed number");
  EXPECT_EQ(refusal("{\"a\": 1.}"), "line 1, column 9: malformed number");
}

TEST(DocumentHostile, HalfASurrogatePair) {
  for (const char* title : {"\"\\ud83d\"", "\"\\ude80\"", "\"\\ude80\\ud83d\"", "\"\\ud83d\\ud83d\\ude80\""})
    EXPECT_NE(refusalOf("\"Topic\"", title).find("half of a surrogate pair"), std::string::npos) << title;
  EXPECT_EQ(refusalOf("\"Topic\"", "\"\\ud83d\\ude80\""), "");
}

TEST(DocumentHostile, NumbersOutOfRange) {
  EXPECT_EQ(refusal("{\"a\": 1e999}"), "line 1, column 7: number out of range");
  EXPECT_EQ(refusal("{\"a\": -1e999}"), "line 1, column 7: number out of range");
  EXPECT_EQ(refusal("{\"a\": 1" + repeated("0", 400) + "}"), "line 1, column 7: number out of range");
  EXPECT_NE(refusalOf("[1.5, -2]", "[1e999, 0]").find("number out of range"), std::string::npos);
  EXPECT_EQ(refusalOf("[1.5, -2]", "[1e308, 0]"), "");
}

TEST(DocumentHostile, LongWholeNumbersStandBesideEachOther) {
  const MindMap map =
      decodeDocument(documentWithText("[1.5, -2]", "[123456789012345678901234567890, -98765432109876543210]"));
  EXPECT_EQ(map.nodes[0].position, QPointF(123456789012345678901234567890.0, -98765432109876543210.0));
  EXPECT_EQ(map.edges.size(), 1u);
  // Digits inside a text are not a number.
  EXPECT_EQ(
      decodeDocument(documentWithText("[1.5, -2]", "[123456789012345678901, 0], \"later\": \"12345678901234567890\""))
          .nodes.size(),
      1u);
}

TEST(DocumentHostile, KeysThatStandTwice) {
  EXPECT_EQ(refusalOf("\"version\": 1", "\"version\": 1, \"title\": \"a\""), "title: the key stands twice");
  EXPECT_EQ(refusalOf("\"notes\": \"Note\"", "\"notes\": \"a\", \"notes\": \"a\""),
            "nodes[0].notes: the key stands twice");
  EXPECT_EQ(refusalOf("\"notes\": \"Note\"", "\"notes\": null, \"notes\": \"a\""),
            "nodes[0].notes: the key stands twice");
  EXPECT_EQ(refusalOf("\"dashed\": true", "\"dashed\": true, \"later\": 1, \"later\": 2"),
            "edges[0].style.later: the key stands twice");
  EXPECT_EQ(refusalOf("\"easing\": \"linear\"", "\"easing\": \"linear\", \"e\\u0061sing\": \"linear\""),
            "edges[0].style.taper.easing: the key stands twice");
  EXPECT_EQ(refusalOf("\"rect\"", "\"imageRef\": 1, \"imageRef\": 1, \"rect\""),
            "regions[0].imageRef: the key stands twice");
  // Nothing inside an unread value is examined.
  EXPECT_EQ(refusalOf("\"version\": 1", "\"version\": 1, \"later\": {\"a\": 1, \"a\": 2}"), "");
}

TEST(DocumentHostile, KeysInAnyOrder) {
  const QByteArray json =
      documentWithText("{\"fill\": \"#111111\", \"stroke\": \"#222222\", \"textColor\": \"#333333\"",
                       "{\"textColor\": \"#333333\", \"stroke\": \"#222222\", \"fill\": \"#111111\"");
  EXPECT_EQ(decodeDocument(json), decodeDocument(fullDocument()));
}

TEST(DocumentHostile, NestingALittleIsBorneAndNestingDeepIsRefused) {
  const auto nested = [](const char* open, const char* close, int depth) {
    return documentAround(repeated(open, depth) + "1" + repeated(close, depth));
  };
  EXPECT_EQ(refusal(nested("[", "]", 1000)), "");
  EXPECT_NE(refusal(nested("[", "]", 1100)).find("nested deeper than 1024 levels"), std::string::npos);
  EXPECT_NE(refusal(nested("[", "]", 100'000)).find("nested deeper than 1024 levels"), std::string::npos);
  EXPECT_NE(refusal(nested("{\"a\":", "}", 100'000)).find("nested deeper than 1024 levels"), std::string::npos);
  EXPECT_EQ(refusal(repeated("[", 100'000)), "line 1, column 1025: nested deeper than 1024 levels");
  EXPECT_NE(refusal(repeated("{\"a\":", 100'000)), "");
}

TEST(DocumentHostile, LongUnknownValuesAreQuotedInPart) {
  const std::string complaint = refusalOf("\"tree\"", ("\"" + repeated("x", 100'000) + "\"").constData());
  EXPECT_EQ(complaint.find("layout: unknown value \"xxx"), 0u);
  EXPECT_LT(complaint.size(), 200u);
  EXPECT_EQ(refusalOf("\"tree\"", "\"spiral\""), "layout: unknown value \"spiral\"");
  EXPECT_EQ(refusalOf("\"tree\"", "\"Tree\""), "layout: unknown value \"Tree\"");
  EXPECT_EQ(refusalOf("\"tree\"", "\"a\\nb\""), "layout: unknown value \"a\uFFFDb\"");
}

TEST(DocumentHostile, ManyUnknownKeysTakeNoQuadraticTime) {
  QByteArray keys = "\"version\": 1";
  for (int i = 0; i < 200'000; ++i) keys += ", \"k" + QByteArray::number(i) + "\": 0";
  const QByteArray json = documentWithText("\"version\": 1", keys.constData());
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(refusal(json), "");
  EXPECT_LT(timer.elapsed(), 10'000);  // quadratic comparing takes minutes
}

TEST(DocumentHostile, FarCoordinatesSurviveARoundTrip) {
  for (const double far : {1e9, -1e9, 1e300, -1e300, 1.7976931348623157e308, 5e-324}) {
    MindMap map = decodeDocument(fullDocument());
    map.nodes.update(0, [&](Node& node) { node.position = QPointF(far, -far); });
    map.regions.update(0, [&](Region& region) { region.rect = QRectF(far, far, far, far); });
    EXPECT_EQ(decodeDocument(encodeDocument(map)), map);
  }
}

}  // namespace
}  // namespace quilmora
