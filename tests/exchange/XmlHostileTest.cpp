#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "exchange/XmlFiles.h"
#include "exchange/XmlText.h"

namespace quilmora {
namespace {

using namespace test;

const std::string notUtf8 = "the file is not UTF-8 text; save it as UTF-8 and import it again";

QByteArray repeated(const char* piece, int count) {
  return QByteArray(piece).repeated(count);
}

QByteArray withDocumentType(const QByteArray& declarations, const QByteArray& content) {
  return "<!DOCTYPE opml [" + declarations + "]>\n<opml>" + content + "</opml>";
}

TEST(XmlHostile, BytesThatAreNotUtf8) {
  const QByteArray latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><opml><outline text=\"\xF6\"/></opml>";
  EXPECT_EQ(refusal(latin), notUtf8);
  for (const char* bytes : {"\x80", "\xC3", "\xC0\xAF", "\xE2\x82", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF"})
    EXPECT_EQ(refusal("<opml>" + QByteArray(bytes) + "</opml>"), notUtf8);
  try {
    parsedOpml(latin);
    FAIL();
  } catch (const ImportError& error) {
    EXPECT_EQ(error.kind(), ImportError::Case::invalidData);
  }
}

TEST(XmlHostile, Utf16) {
  const QString text = QStringLiteral("<opml/>");
  const QByteArray little(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
  EXPECT_EQ(refusal("\xFF\xFE" + little), notUtf8);
  EXPECT_EQ(refusal(little), "line 1: Expected '?', '!', or '[a-zA-Z]', but got 'U+0000'.");
}

TEST(XmlHostile, TextIsUtf8WhateverIsDeclared) {
  for (const char* encoding : {"UTF-8", "utf-8", "ISO-8859-1", "UTF-16", "US-ASCII", "x-unknown"}) {
    const QByteArray declaration = "<?xml version=\"1.0\" encoding=\"" + QByteArray(encoding) + "\"?>";
    EXPECT_EQ(titles(parsedOpml(declaration + "<opml><outline text=\"é😀\"/></opml>")), std::vector<std::string>{"é😀"})
        << encoding;
  }
}

TEST(XmlHostile, AByteOrderMarkIsNoText) {
  EXPECT_EQ(titles(parsedOpml("\xEF\xBB\xBF<?xml version=\"1.0\"?><opml><outline text=\"A\"/></opml>")),
            std::vector<std::string>{"A"});
  EXPECT_EQ(titles(parsedOpml("\xEF\xBB\xBF<outline text=\"A\"/>")), std::vector<std::string>{"A"});
}

TEST(XmlHostile, EmptyAndForeignFiles) {
  EXPECT_EQ(refusal(""), "line 1: Premature end of document.");
  EXPECT_EQ(refusal(" \n\n"), "line 3: Premature end of document.");
  EXPECT_EQ(refusal("hello"), "line 1: Start tag expected.");
  EXPECT_EQ(refusal("{\"version\": 1}"), "line 1: Start tag expected.");
  EXPECT_NE(refusal("\n<?xml version=\"1.0\"?><opml/>"), "");
}

TEST(XmlHostile, NamesTheLineWhereTheParserStopped) {
  EXPECT_EQ(refusal("<opml>\n<outline text=\"A\">\n</opml>"), "line 3: Opening and ending tag mismatch.");
  EXPECT_EQ(refusal("<opml>\r\n<outline>\r\n"), "line 3: Premature end of document.");
  EXPECT_EQ(refusal("<opml>\n\n<outline text=\"A"), "line 3: Premature end of document.");
  EXPECT_EQ(refusal("<opml/>\n<opml/>"), "line 2: Extra content at end of document.");
  EXPECT_EQ(refusal("<opml>\n<outline text=\"A\" text=\"B\"/></opml>"), "line 2: Attribute 'text' redefined.");
  EXPECT_EQ(refusal("<opml>\n\n&nbsp;</opml>"), "line 3: Entity 'nbsp' not declared.");
  EXPECT_EQ(refusal("<opml>\n<outline text=\"&#xd835;&#xdecc;\"/></opml>"), "line 2: Invalid character reference.");
}

TEST(XmlHostile, CountsTheLineEndsOfValuesToo) {
  EXPECT_EQ(refusal("<opml>\n<outline text=\"ä\n😀\r\nc\"\n/>\n<b></opml>"), "line 6: Opening and ending tag mismatch.");
  EXPECT_EQ(refusal("<opml><outline text=\"a\nb\"/>\n<b c=\"d\ne\"></opml>"),
            "line 4: Opening and ending tag mismatch.");
  EXPECT_EQ(refusal("<opml><outline text=\"a\nb &c; \nd\"/></opml>"), "line 2: Entity 'c' not declared.");
}

TEST(XmlHostile, SaysHowToWriteAnAmpersand) {
  EXPECT_EQ(refusal("<opml>\n<outline text=\"R & D\"/></opml>"),
            "line 2: Expected '#' or '[a-zA-Z]', but got ' '. A bare “&” must be written as “&amp;”.");
}

TEST(XmlHostile, CharactersThatXmlDoesNotHold) {
  EXPECT_EQ(refusal(QByteArray("<opml><outline text=\"a\0b\"/></opml>", 32)), "line 1: Unexpected 'U+0000'.");
  EXPECT_EQ(refusal("<opml>\x01</opml>"), "line 1: Unexpected 'U+0001'.");
  EXPECT_EQ(refusal("<opml><outline text=\"\xEF\xBF\xBF\"/></opml>"), "line 1: Unexpected 'U+FFFF'.");
  EXPECT_EQ(refusal("<opml><outline text=\"&#0;\"/></opml>"), "line 1: Invalid character reference.");
}

TEST(XmlHostile, ErrorsAreShortAndVisible) {
  const QByteArray mark = "\xE2\x80\xAE";  // reverses the direction of the text that follows
  EXPECT_EQ(refusal("<a b" + mark + "='' b" + mark + "=''/>"), "line 1: Attribute 'bU+202E' redefined.");
  const QByteArray name = repeated("b", 4000);
  EXPECT_EQ(refusal("<a " + name + "='' " + name + "=''/>"), "line 1: Attribute '" + std::string(289, 'b') + "…");
}

TEST(XmlHostile, AHundredThousandLevels) {
  const MindMap map = parsedOpml(repeated("<outline text=\"a\">", 100'000) + repeated("</outline>", 100'000));
  EXPECT_EQ(map.nodes.size(), 100'000u);
  EXPECT_EQ(map.nodes.back().position.x(), 99'999.0 * 200.0 + 100.0);
  EXPECT_EQ(refusal(repeated("<outline>", 100'000)), "line 1: Premature end of document.");
  EXPECT_EQ(parsedFreeMind(repeated("<node>", 100'000) + repeated("</node>", 100'000)).edges.size(), 99'999u);
}

TEST(XmlHostile, AnAttributeOfManyMegabytes) {
  const QByteArray large = repeated("x", 20'000'000);
  EXPECT_EQ(outlines("<outline text=\"" + large + "\"/>").nodes[0].title.size(), 20'000'000);
  EXPECT_EQ(refusal("<opml><outline text=\"" + large), "line 1: Premature end of document.");
}

TEST(XmlHostile, AttributesOfOneElementAreLimited) {
  const auto element = [](int count) {
    QByteArray xml = "<opml>\n<outline";
    for (int i = 0; i < count; ++i) xml += " a" + QByteArray::number(i) + "='x'";
    return xml + "/></opml>";
  };
  EXPECT_EQ(parsedOpml(element(256)).nodes.size(), 1u);
  EXPECT_EQ(refusal(element(257)), "line 2: an element has more than 256 attributes");
  EXPECT_EQ(refusal(element(200'000)), "line 2: an element has more than 256 attributes");
  EXPECT_EQ(refusal("<!DOCTYPE a [<!ENTITY b \"<c>\">]>" + element(200'000)),
            "line 2: an element has more than 256 attributes");
}

TEST(XmlHostile, EntitiesOfTheFileAreResolved) {
  const MindMap map = parsedOpml(withDocumentType("<!ENTITY nbsp \"&#160;\"><!ENTITY both \"a&nbsp;b\">",
                                                  "<outline text=\"&both;!\">&nbsp;</outline>"));
  EXPECT_EQ(map.nodes[0].title, QStringLiteral("a\u00A0b!"));
}

TEST(XmlHostile, ABombOfEntitiesIsRefused) {
  QByteArray declarations = "<!ENTITY a0 \"aaaaaaaaaa\">";
  for (int i = 1; i < 12; ++i)
    declarations += "<!ENTITY a" + QByteArray::number(i) + " \"" +
                    repeated(("&a" + QByteArray::number(i - 1) + ";").constData(), 10) + "\">";
  const std::string reason = "line 2: Entity expands to more characters than the entity expansion limit.";
  EXPECT_EQ(refusal(withDocumentType(declarations, "<outline text=\"&a11;\"/>")), reason);
  EXPECT_EQ(refusal(withDocumentType(declarations, "&a11;")), reason);
}

TEST(XmlHostile, OneLargeEntityUsedVeryOftenIsRefused) {
  const QByteArray declaration = "<!ENTITY a \"" + repeated("a", 4000) + "\">";
  EXPECT_EQ(outlines("").nodes.size(), 0u);
  EXPECT_EQ(parsedOpml(withDocumentType(declaration, repeated("<outline text=\"&a;\"/>", 100))).nodes[99].title.size(),
            4000);
  EXPECT_NE(refusal(withDocumentType(declaration, "<outline text=\"" + repeated("&a;", 200'000) + "\"/>")), "");
  EXPECT_NE(
      refusal(withDocumentType(declaration + "<!ATTLIST outline text CDATA \"" + repeated("&a;", 200'000) + "\">", "")),
      "");
}

TEST(XmlHostile, AnEntityOfItself) {
  EXPECT_EQ(refusal(withDocumentType("<!ENTITY a \"&b;\"><!ENTITY b \"&a;\">", "&a;")),
            "line 2: Self-referencing entity detected.");
}

TEST(XmlHostile, ExternalEntitiesAreNeverRead) {
  const QTemporaryDir folder;
  QFile secret(folder.filePath(QStringLiteral("secret")));
  ASSERT_TRUE(secret.open(QIODevice::WriteOnly));
  secret.write("<outline text=\"secret\"/>");
  secret.close();
  const QByteArray declaration = "<!ENTITY a SYSTEM \"file://" + secret.fileName().toUtf8() + "\">";
  EXPECT_EQ(titles(parsedOpml(withDocumentType(declaration, "<outline text=\"A\"/>&a;"))),
            std::vector<std::string>{"A"});
  EXPECT_EQ(refusal(withDocumentType(declaration, "<outline text=\"&a;\"/>")),
            "line 2: Reference to external entity 'a' in attribute value.");
  EXPECT_EQ(titles(parsedOpml("<!DOCTYPE opml SYSTEM \"file://" + secret.fileName().toUtf8() +
                              "\"><opml><outline text=\"A\"/></opml>")),
            std::vector<std::string>{"A"});
}

TEST(XmlHostile, ParameterEntitiesAreRefused) {
  EXPECT_EQ(refusal("<!DOCTYPE a [\n<!ENTITY % p \"]><a>\"> %p;]><a/>"),
            "line 2: parameter entities are not supported");
}

TEST(XmlHostile, ADocumentTypeMayHoldAnyMark) {
  const MindMap map = parsedOpml(withDocumentType(
      "<!-- ]> \" ' % --><?pi ]> \" ' % ?><!ELEMENT a (b|c)*><!ENTITY q \"]> '\"><!NOTATION n SYSTEM '\"'>"
      "<!ATTLIST outline text CDATA \"by default\">",
      "<outline/><outline text=\"A\nB\"/>"));
  EXPECT_EQ(titles(map), (std::vector<std::string>{"by default", "A\nB"}));
}

TEST(XmlHostile, ADocumentTypeStandsOnceAndBeforeTheRoot) {
  const std::string reason = "line 2: a document type stands only once, and before the first element";
  EXPECT_EQ(refusal("<!DOCTYPE a>\n<!DOCTYPE b><a/>"), reason);
  EXPECT_EQ(refusal("<!DOCTYPE a><a>\n<!DOCTYPE b></a>"), reason);
  EXPECT_EQ(refusal("<a/>\n<!DOCTYPE a>"), reason);
}

TEST(XmlHostile, ControlCharactersWithinNames) {
  const std::string reason = "line 2: XML cannot hold the character U+0001";
  EXPECT_EQ(refusal("<opml>\n<outline te\x01xt=\"a\"/></opml>"), reason);
}

TEST(XmlHostile, DefaultsOfAttributesAreLimited) {
  QByteArray declarations = "<!ATTLIST outline";
  for (int i = 0; i < 20'000; ++i) declarations += " a" + QByteArray::number(i) + " CDATA \"\"";
  EXPECT_EQ(refusal(withDocumentType(declarations + ">", repeated("<outline/>", 20'000))),
            "line 1: the document type declares too many attributes");
  const QByteArray longDefault = "<!ATTLIST outline text CDATA \"" + repeated("a", 3000) + "\">";
  EXPECT_EQ(refusal(withDocumentType(longDefault, repeated("<outline/>", 20'000))),
            "line 2: The document type gives too much text.");
}

TEST(XmlHostile, AMillionTopicsAreTheMost) {
  const QByteArray million = repeated("<outline/>", 1'000'000);
  EXPECT_EQ(refusal("<opml>" + million + "<outline/></opml>"), "line 1: More than 1,000,000 topics.");
}

TEST(XmlHostile, EveryTruncationIsRefused) {
  const QByteArray whole =
      "<?xml version=\"1.0\"?><!DOCTYPE o [<!ENTITY a 'b'>]><o><!-- c --><?d e?><![CDATA[f]]>"
      "<outline text=\"&a;&amp;&#10;\n\" _note='ä😀'>g</outline></o>";
  ASSERT_EQ(refusal(whole), "");
  for (qsizetype size = 0; size < whole.size(); ++size) EXPECT_NE(refusal(whole.first(size)), "") << size;
}

TEST(XmlHostile, LongRunsOfOneMark) {
  for (const char* mark :
       {"<", "&", "]", "<!--", "<![CDATA[", "<!DOCTYPE a [", "<a ", "<a b='", "%", "&#", "\r", "\"", "<?"})
    EXPECT_NE(refusal("<opml>" + repeated(mark, 1'000'000)), "") << mark;
}

}  // namespace
}  // namespace quilmora
