#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "model/DocumentWindows.h"
#include "model/MindMapDocument.h"
#include "support/Corpus.h"
#include "support/RandomMap.h"

// Documents larger than a window are read in parts. Nothing else distinguishes the two ways.

namespace quilmora {
namespace {

constexpr std::size_t wholeText = static_cast<std::size_t>(-1);

MindMap decoded(const QByteArray& json, std::size_t window) {
  return decodePadded(PaddedText::copyOf({json.constData(), static_cast<std::size_t>(json.size())}), window);
}

// The map, or nothing if the text is refused.
std::optional<MindMap> mapOf(const QByteArray& json, std::size_t window) {
  try {
    return decoded(json, window);
  } catch (const DocumentError&) {
    return std::nullopt;
  }
}

std::string refusalOf(const QByteArray& json, std::size_t window) {
  try {
    decoded(json, window);
    return "no error";
  } catch (const DocumentError& error) {
    return error.what();
  }
}

QByteArray textOf(std::initializer_list<const char*> titles) {
  const SystemClock clock;
  MindMap map = MindMap::blankMap(clock);
  const Node first = map.nodes[0];
  map.nodes.clear();
  for (const char* title : titles) {
    Node node = first;
    node.title = QString::fromUtf8(title);
    map.nodes.append(node);
  }
  return encodeDocument(map);
}

TEST(DocumentWindows, RecordsThatNoWindowTakesAreRefusedByTheWriter) {
  MindMap map = decodeDocument(textOf({"one", "two"}));
  const auto refusal = [&map] {
    try {
      streamDocument(
          map, [](std::string_view) { return true; }, 1000);
      return QString();
    } catch (const DocumentError& error) {
      return error.message();
    }
  };
  EXPECT_EQ(refusal(), QString());
  map.nodes.update(1, [](Node& node) { node.notes = QString(1000, u'x'); });
  EXPECT_EQ(refusal(), QStringLiteral("One of its topics is larger than 4 GB and could not be opened again."));
  map.nodes.update(1, [](Node& node) { node.notes.clear(); });
  map.edges.append({map.nodes[0].id, map.nodes[0].id, map.nodes[1].id, QString(1000, u'x'), {}, {}});
  EXPECT_EQ(refusal(), QStringLiteral("One of its connectors is larger than 4 GB and could not be opened again."));
}

TEST(DocumentWindows, WhatTheReaderCannotTakeIsRefusedInEitherForm) {
  const MindMap small = decodeDocument(textOf({"one", "two"}));
  const auto refusal = [](const MindMap& map, JsonForm form) {
    try {
      encodeDocument(map, form, 2000);
      return QString();
    } catch (const DocumentError& error) {
      return error.message();
    }
  };
  for (const JsonForm form : {JsonForm::pretty, JsonForm::compact}) {
    EXPECT_EQ(refusal(small, form), QString());
    MindMap map = small;
    map.nodes.update(0, [](Node& node) { node.notes = QString(2000, u'x'); });
    EXPECT_EQ(refusal(map, form),
              QStringLiteral("One of its topics is larger than 4 GB and could not be opened again."));
    map = small;
    map.title = QString(2000, u'x');
    EXPECT_EQ(refusal(map, form), QStringLiteral("The map's title is larger than 4 GB and could not be opened again."));
  }
}

TEST(DocumentWindows, AnOverlongTitleIsRefusedHoweverManyPiecesComeBeforeIt) {
  MindMap map = decodeDocument(textOf({"one"}));
  const Node first = map.nodes[0];
  for (int count = 0; count < 5000; ++count) map.nodes.append(first);
  const auto write = [&map] {
    streamDocument(
        map, [](std::string_view) { return true; }, 2000);
  };
  EXPECT_NO_THROW(write());
  map.title = QString(2000, u'x');
  EXPECT_THROW(write(), DocumentError);
}

TEST(DocumentWindows, GiveEveryMapThatTheWholeTextGives) {
  EXPECT_TRUE(rc::check("decode(encode(map), window) == map", [] {
    const MindMap map = *anyDamagedMap();
    const auto window = static_cast<std::size_t>(*rc::gen::inRange(0, 3000));
    for (const JsonForm form : {JsonForm::pretty, JsonForm::compact}) {
      const MindMap read = decoded(encodeDocument(map, form), window);
      RC_ASSERT(read == map);
      RC_ASSERT(read.createdAt == map.createdAt && read.updatedAt == map.updatedAt);
    }
  }));
}

TEST(DocumentWindows, RefuseWhatTheWholeTextIsRefusedFor) {
  EXPECT_TRUE(rc::check("a damaged text is refused in both ways or in none", [] {
    QByteArray text = encodeDocument(*anyForest());
    const auto window = static_cast<std::size_t>(*rc::gen::inRange(0, 2000));
    const int damages = *rc::gen::inRange(1, 4);
    for (int damage = 0; damage < damages; ++damage) {
      const qsizetype at = *rc::gen::inRange(0, static_cast<int>(text.size()));
      const char byte = *rc::gen::elementOf(std::string("{}[],:\"\\ 0a\xFF\n"));
      switch (*rc::gen::inRange(0, 3)) {
        case 0:
          text[at] = byte;
          break;
        case 1:
          text.insert(at, byte);
          break;
        default:
          text.remove(at, 1);
      }
    }
    const std::optional<MindMap> whole = mapOf(text, wholeText);
    RC_ASSERT(mapOf(text, window) == whole);
  }));
}

TEST(DocumentWindows, ReadTheSeedsOfTheFuzzerAlike) {
  const auto seeds = corpusOf("document");
  ASSERT_FALSE(seeds.empty());
  for (const auto& [name, text] : seeds)
    for (const std::size_t window : {std::size_t{0}, std::size_t{100}, std::size_t{5000}})
      EXPECT_EQ(mapOf(text, window), mapOf(text, wholeText)) << name.toStdString() << ", " << window;
}

TEST(DocumentWindows, TellThePlaceOfAFaultInTheWholeDocument) {
  QByteArray text = textOf({"a", "b", "c"});
  text.replace("\"title\": \"c\"", "\"title\": 3");
  EXPECT_EQ(refusalOf(text, 1), "nodes[2].title: expected a text");
  EXPECT_EQ(refusalOf(text, wholeText), "nodes[2].title: expected a text");

  text = textOf({"a", "b", "c"});
  text.replace("\"title\": \"c\"", "\"title\": ,");
  const std::string whole = refusalOf(text, wholeText);
  EXPECT_TRUE(whole.ends_with("expected a value")) << whole;
  EXPECT_EQ(refusalOf(text, 1), whole);

  text = textOf({"a", "\xF0\x9F\x98\x80"});
  text.replace("\xF0\x9F\x98\x80", "\xF0\x9F\x98");
  EXPECT_EQ(refusalOf(text, 1), refusalOf(text, wholeText));
}

TEST(DocumentWindows, TakeNoCommaForARecord) {
  const QByteArray text = textOf({"a", "b"});
  const qsizetype end = text.indexOf("\n  ],\n  \"regions\"");
  ASSERT_GT(end, 0);
  QByteArray trailing = text;
  trailing.insert(end, ",");
  EXPECT_FALSE(mapOf(trailing, 1).has_value());
  EXPECT_FALSE(mapOf(trailing, 100'000).has_value());
  QByteArray twice = text;
  twice.replace("},\n    {", "},,\n    {");
  EXPECT_FALSE(mapOf(twice, 1).has_value());
}

TEST(DocumentWindows, KnowKeysThatAreWrittenWithEscapes) {
  QByteArray text = textOf({"a", "b"});
  text.replace("\"nodes\"", "\"n\\u006fdes\"");
  ASSERT_TRUE(mapOf(text, wholeText).has_value());
  EXPECT_EQ(mapOf(text, 1), mapOf(text, wholeText));
  QByteArray twice = text;
  twice.replace("\"edges\"", "\"nodes\"");
  EXPECT_EQ(refusalOf(twice, 1), refusalOf(twice, wholeText));
}

TEST(DocumentWindows, TakeNumbersOfManyDigits) {
  QByteArray text = textOf({"a", "b"});
  text.replace("\"iconSize\": 20", "\"iconSize\": 20000000000000000000");
  ASSERT_TRUE(mapOf(text, wholeText).has_value());
  EXPECT_EQ(mapOf(text, 1), mapOf(text, wholeText));
}

TEST(DocumentWindows, HoldARecordThatIsLargerThanAWindow) {
  const QString title(200'000, u'x');
  MindMap map = decoded(textOf({"a", "b", "c"}), wholeText);
  map.nodes.update(1, [&](Node& node) { node.title = title; });
  EXPECT_EQ(decoded(encodeDocument(map), 1000), map);
}

}  // namespace
}  // namespace quilmora
