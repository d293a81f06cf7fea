#include <set>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "ai/AIProviderError.h"
#include "ai/AITreeConverter.h"
#include "ai/ReplyParsing.h"
#include "ai/TopicCount.h"
#include "support/Corpus.h"

namespace quilmora {

namespace {

// A tree of any shape: each topic after the first goes below an existing one.
AITreeNode anyTree() {
  const auto parents = *rc::gen::container<std::vector<std::uint16_t>>(rc::gen::arbitrary<std::uint16_t>());
  std::vector<AITreeNode> topics;
  for (std::size_t i = 0; i <= parents.size(); ++i) {
    topics.emplace_back(QString::number(i) + QString(1, QChar(*rc::gen::inRange(1, 0xD800))));
    if (*rc::gen::arbitrary<bool>()) topics.back().notes = QStringLiteral("n%1").arg(i);
    if (*rc::gen::inRange(0, 4) == 0) topics.back().children.emplace();
  }
  for (std::size_t i = parents.size(); i > 0; --i) {
    AITreeNode& parent = topics[parents[i - 1] % i];
    if (!parent.children) parent.children.emplace();
    parent.children->push_back(std::move(topics[i]));
  }
  return std::move(topics.front());
}

// Every reader returns a tree or throws one of its errors.
void readInEveryVariant(const QString& reply) {
  for (const ReplyVariant variant : {ReplyVariant::claude, ReplyVariant::openAI, ReplyVariant::onDevice}) {
    try {
      const AITreeNode tree = parseTreeReply(reply, variant);
      RC_ASSERT(decodeTree(encodeTree(tree)) == tree);
    } catch (const AITreeError& error) {
      RC_ASSERT(variant != ReplyVariant::claude);
      RC_ASSERT(!errorDescription(error).isEmpty());
    } catch (const AIProviderError& error) {
      RC_ASSERT(error.kind() == AIProviderError::Case::invalidResponse);
    }
  }
  if (const auto action = detectChatAction(reply)) RC_ASSERT(!action->children->empty());
}

}  // namespace

TEST(AiLaws, DecodingIsTheInverseOfEncoding) {
  EXPECT_TRUE(rc::check("decode(encode(tree)) == tree, also through a fence", [] {
    const AITreeNode tree = anyTree();
    const QByteArray json = encodeTree(tree);
    RC_ASSERT(decodeTree(json) == tree);
    RC_ASSERT(encodeTree(tree) == json);
    const QString fenced = QStringLiteral("```json\n") + QString::fromUtf8(json) + QStringLiteral("\n```");
    RC_ASSERT(parseTreeReply(fenced, ReplyVariant::claude) == tree);
  }));
}

TEST(AiLaws, NoDamageToAReplyIsTooMuch) {
  EXPECT_TRUE(rc::check("every damaged reply is read or refused", [] {
    QByteArray json = encodeTree(anyTree());
    const int damages = *rc::gen::inRange(0, 4);
    for (int i = 0; i < damages && !json.isEmpty(); ++i) {
      const auto at = *rc::gen::inRange<qsizetype>(0, json.size());
      switch (*rc::gen::inRange(0, 4)) {
        case 0:
          json.truncate(at);
          break;
        case 1:
          json[at] = *rc::gen::elementOf(std::string("{}[]\",:\\`\n\0x1", 13));
          break;
        case 2:
          json.remove(at, 1);
          break;
        default:
          json.insert(at, json.mid(*rc::gen::inRange<qsizetype>(0, json.size()), 40));
      }
    }
    readInEveryVariant(QString::fromUtf8(json));
  }));
}

TEST(AiLaws, ConvertingLosesNoTopic) {
  const MemorySettingsStore settings;
  const ManualClock clock;
  EXPECT_TRUE(rc::check("as many topics as the tree, one edge fewer, each below its parent", [&] {
    const AITreeNode tree = anyTree();
    const auto layout = static_cast<MindMap::Layout>(*rc::gen::inRange(0, 6));
    const MindMap map = AITreeConverter{QSizeF(1200, 800), layout, {}}.convert(tree, settings, clock);
    RC_ASSERT(map.nodes.size() == topicCount(tree));
    RC_ASSERT(map.edges.size() == map.nodes.size() - 1);
    std::set<QUuid> ids;
    for (const Node& node : map.nodes) ids.insert(node.id);
    RC_ASSERT(ids.size() == map.nodes.size());
    for (std::size_t i = 0; i < map.edges.size(); ++i) {
      RC_ASSERT(map.edges[i].to == map.nodes[i + 1].id);
      RC_ASSERT(ids.count(map.edges[i].from) == 1u);
    }
  }));
}

TEST(AiLaws, RepliesBearTheSeedsOfTheirFuzzer) {
  const auto seeds = corpusOf("ai_reply");
  EXPECT_FALSE(seeds.empty());
  for (const auto& [name, bytes] : seeds) readInEveryVariant(QString::fromUtf8(bytes));
}

}  // namespace quilmora
