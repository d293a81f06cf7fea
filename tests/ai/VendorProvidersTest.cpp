#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include "ai/ClaudeProvider.h"
#include "ai/OpenAIProvider.h"
#include "ai/Prompts.h"
#include "ai/VendorReply.h"
#include "platform/NetworkTransport.h"
#include "support/Await.h"
#include "support/Corpus.h"
#include "support/WebServer.h"

namespace {

using namespace quilmora;

const QString key = QStringLiteral("sk-test-1234567890");
const AIRequest request = GenerateMapRequest{QStringLiteral("tea")};

QJsonObject message(const char* role, const QString& content) {
  return {{QStringLiteral("role"), QString::fromLatin1(role)}, {QStringLiteral("content"), content}};
}

QByteArray json(const QJsonObject& object) {
  return QJsonDocument(object).toJson();
}

QByteArray claudeBody(const QStringList& texts) {
  QJsonArray blocks;
  for (const QString& text : texts)
    blocks.append(QJsonObject{{QStringLiteral("type"), QStringLiteral("text")}, {QStringLiteral("text"), text}});
  return json({{QStringLiteral("type"), QStringLiteral("message")}, {QStringLiteral("content"), blocks}});
}

QByteArray openAIBody(const QString& text) {
  const QJsonObject choice{{QStringLiteral("index"), 0}, {QStringLiteral("message"), message("assistant", text)}};
  return json({{QStringLiteral("choices"), QJsonArray{choice}}});
}

std::vector<ChatMessage> dialogue() {
  return {ChatMessage::create(ChatRole::user, QStringLiteral("hello"), {}),
          ChatMessage::create(ChatRole::assistant, QStringLiteral("hi"), {}),
          ChatMessage::create(ChatRole::user, QStringLiteral("more"), {})};
}

// The vendors' providers over an in-memory transport, for what is sent and how replies are read.
class VendorProvidersTest : public testing::Test {
 protected:
  QJsonObject sentBody() const {
    return QJsonDocument::fromJson(transport.request(transport.count() - 1).body).object();
  }
  void everyReplyIs(int status, const QByteArray& body) { transport.answerAll({status, body}); }
  QString generateFailure(AIProvider& provider) { return failureOf(provider.generate(request, {})); }
  QString chatReply(AIProvider& provider) {
    QFuture<QString> reply = provider.chat(dialogue(), QStringLiteral("Title: T"), {});
    const QString failure = failureOf(reply);
    return failure.isEmpty() ? reply.result() : QStringLiteral("failed: ") + failure;
  }

  MemoryHttpTransport transport;
  ClaudeProvider claude{transport, key};
  OpenAIProvider openAI{transport, key};
};

TEST_F(VendorProvidersTest, TellWhoTheyAre) {
  EXPECT_EQ(claude.name(), QStringLiteral("Claude"));
  EXPECT_EQ(openAI.name(), QStringLiteral("OpenAI"));
  EXPECT_TRUE(claude.requiresAPIKey());
  EXPECT_TRUE(openAI.requiresAPIKey());
  EXPECT_EQ(claude.model(), QStringLiteral("claude-sonnet-4-20250514"));
  EXPECT_EQ(openAI.model(), QStringLiteral("gpt-4o"));
}

TEST_F(VendorProvidersTest, ClaudeIsAskedForAMapByItsTable) {
  claude.generate(request, {});
  ASSERT_EQ(transport.count(), 1u);
  const HttpRequest& sent = transport.request(0);
  EXPECT_EQ(sent.method, "POST");
  EXPECT_EQ(sent.url, QUrl(QStringLiteral("https://api.anthropic.com/v1/messages")));
  EXPECT_EQ(sent.timeout, std::chrono::seconds(60));
  EXPECT_EQ(sent.maxReplySize, 32 * 1024 * 1024);
  EXPECT_EQ(sent.headers, (std::vector<std::pair<QByteArray, QByteArray>>{{"content-type", "application/json"},
                                                                          {"x-api-key", "sk-test-1234567890"},
                                                                          {"anthropic-version", "2023-06-01"}}));
  EXPECT_EQ(sentBody(), (QJsonObject{{QStringLiteral("model"), QStringLiteral("claude-sonnet-4-20250514")},
                                     {QStringLiteral("max_tokens"), 4096},
                                     {QStringLiteral("system"), systemPrompt(request)},
                                     {QStringLiteral("messages"), QJsonArray{message("user", userPrompt(request))}}}));
}

TEST_F(VendorProvidersTest, OpenAIIsAskedForAMapByItsTable) {
  openAI.generate(request, {});
  ASSERT_EQ(transport.count(), 1u);
  const HttpRequest& sent = transport.request(0);
  EXPECT_EQ(sent.url, QUrl(QStringLiteral("https://api.openai.com/v1/chat/completions")));
  EXPECT_EQ(sent.headers, (std::vector<std::pair<QByteArray, QByteArray>>{
                              {"Content-Type", "application/json"}, {"Authorization", "Bearer sk-test-1234567890"}}));
  EXPECT_EQ(sentBody(), (QJsonObject{{QStringLiteral("model"), QStringLiteral("gpt-4o")},
                                     {QStringLiteral("max_tokens"), 4096},
                                     {QStringLiteral("messages"), QJsonArray{message("system", systemPrompt(request)),
                                                                             message("user", userPrompt(request))}},
                                     {QStringLiteral("response_format"),
                                      QJsonObject{{QStringLiteral("type"), QStringLiteral("json_object")}}}}));
}

TEST_F(VendorProvidersTest, BothAreToldTheChatByTheirTables) {
  const QString system = chatPrompt() + QStringLiteral("Title: T");
  const QJsonArray told{message("user", QStringLiteral("hello")), message("assistant", QStringLiteral("hi")),
                        message("user", QStringLiteral("more"))};
  claude.chat(dialogue(), QStringLiteral("Title: T"), {});
  EXPECT_EQ(sentBody(), (QJsonObject{{QStringLiteral("model"), QStringLiteral("claude-sonnet-4-20250514")},
                                     {QStringLiteral("max_tokens"), 4096},
                                     {QStringLiteral("system"), system},
                                     {QStringLiteral("messages"), told}}));
  openAI.chat(dialogue(), QStringLiteral("Title: T"), {});
  QJsonArray withSystem = told;
  withSystem.prepend(message("system", system));
  EXPECT_EQ(sentBody(), (QJsonObject{{QStringLiteral("model"), QStringLiteral("gpt-4o")},
                                     {QStringLiteral("max_tokens"), 2048},
                                     {QStringLiteral("messages"), withSystem}}));
}

TEST_F(VendorProvidersTest, AnEmptyListOfMessagesIsSentAsSuch) {
  claude.chat({}, QString(), {});
  EXPECT_EQ(sentBody()[u"messages"], QJsonArray());
  openAI.chat({}, QString(), {});
  EXPECT_EQ(sentBody()[u"messages"], (QJsonArray{message("system", chatPrompt())}));
}

TEST_F(VendorProvidersTest, WithoutAKeyNothingIsSent) {
  ClaudeProvider keyless(transport, QString());
  OpenAIProvider keylessToo(transport, QString());
  const QString words = QStringLiteral("No API key configured. Set it in Settings > AI.");
  EXPECT_EQ(generateFailure(keyless), words);
  EXPECT_EQ(generateFailure(keylessToo), words);
  EXPECT_EQ(failureOf(keyless.chat({}, {}, {})), words);
  EXPECT_EQ(transport.count(), 0u);
}

TEST_F(VendorProvidersTest, AKeyOfBlanksIsSent) {
  everyReplyIs(401, "{}");
  ClaudeProvider blank(transport, QStringLiteral("   "));
  EXPECT_EQ(generateFailure(blank), QStringLiteral("Invalid API key"));
  EXPECT_EQ(transport.count(), 1u);
}

TEST_F(VendorProvidersTest, ALineBreakPastedBehindTheKeyIsNoPartOfIt) {
  ClaudeProvider pasted(transport, key + u'\n');
  pasted.generate(request, {});
  EXPECT_EQ(transport.request(0).headers[1].second, "sk-test-1234567890");
}

TEST_F(VendorProvidersTest, EveryStatusBut200Fails) {
  for (AIProvider* provider : {static_cast<AIProvider*>(&claude), static_cast<AIProvider*>(&openAI)}) {
    everyReplyIs(401, "{\"error\":1}");
    EXPECT_EQ(generateFailure(*provider), QStringLiteral("Invalid API key"));
    EXPECT_EQ(chatReply(*provider), QStringLiteral("failed: Invalid API key"));
    everyReplyIs(429, "");
    EXPECT_EQ(generateFailure(*provider), QStringLiteral("Rate limited — try again shortly"));
    everyReplyIs(201, "made");
    EXPECT_EQ(generateFailure(*provider), QStringLiteral("Could not parse AI response: HTTP 201: made"));
    everyReplyIs(302, "");
    EXPECT_EQ(generateFailure(*provider), QStringLiteral("Could not parse AI response: HTTP 302: "));
    everyReplyIs(500, "\xff\xfe");
    EXPECT_EQ(generateFailure(*provider), QStringLiteral("Could not parse AI response: HTTP 500: "));
    everyReplyIs(500, "<html>" + QByteArray(200, 'x'));
    EXPECT_EQ(generateFailure(*provider),
              QStringLiteral("Could not parse AI response: HTTP 500: <html>") + QString(84, u'x'));
  }
}

TEST_F(VendorProvidersTest, AKeyThatTheVendorSendsBackIsNotShown) {
  everyReplyIs(403, "Incorrect key: sk-test-1234567890.");
  EXPECT_EQ(generateFailure(claude), QStringLiteral("Could not parse AI response: HTTP 403: Incorrect key: [key]."));
  everyReplyIs(200, "you sent sk-test-1234567890");
  EXPECT_EQ(chatReply(openAI), QStringLiteral("you sent [key]"));
  EXPECT_EQ(withoutKey("a\\\"b-1234 and a\"b-1234", QStringLiteral("a\"b-1234")), "[key] and [key]");
  EXPECT_EQ(withoutKey("a short one is no secret", QStringLiteral("short")), "a short one is no secret");
}

TEST_F(VendorProvidersTest, TheFirstBlockIsTheReply) {
  everyReplyIs(200, claudeBody({QStringLiteral("one"), QStringLiteral("two")}));
  EXPECT_EQ(chatReply(claude), QStringLiteral("one"));
  everyReplyIs(200, openAIBody(QStringLiteral("three")));
  EXPECT_EQ(chatReply(openAI), QStringLiteral("three"));
}

TEST_F(VendorProvidersTest, AnUnexpectedBodyIsTheReplyItself) {
  for (const char* body : {"", "not JSON", "[]", "{}", R"({"content":[]})", R"({"content":{"text":"x"}})",
                           R"({"content":["x"]})", R"({"content":[{"text":7}]})", R"({"content":[{"text":null}]})",
                           R"({"content":[{"type":"tool_use"},{"text":"second"}]})", R"({"content":[{"text":"cut)"}) {
    EXPECT_EQ(claudeReplyText(body), QString::fromLatin1(body));
    everyReplyIs(200, body);
    EXPECT_EQ(chatReply(claude), QString::fromLatin1(body));
  }
  for (const char* body : {"", "null", R"({"choices":[]})", R"({"choices":[{"message":"x"}]})",
                           R"({"choices":[{"message":{"content":null}}]})", R"({"choices":[{"text":"x"}]})"})
    EXPECT_EQ(openAIReplyText(body), QString::fromLatin1(body));
  EXPECT_EQ(claudeReplyText("\xff{}"), QString());
  EXPECT_EQ(openAIReplyText("\xff{}"), QString());
}

TEST_F(VendorProvidersTest, EverySeedOfTheFuzzerIsRead) {
  const auto seeds = corpusOf("vendor_reply");
  ASSERT_GE(seeds.size(), 11u);
  for (const auto& [name, body] : seeds) {
    for (const QString& text : {claudeReplyText(body), openAIReplyText(body)})
      EXPECT_TRUE(text.size() <= body.size()) << name.toStdString();
    EXPECT_FALSE(withoutKey(body, QStringLiteral("sk-secret")).contains("sk-secret")) << name.toStdString();
  }
}

TEST_F(VendorProvidersTest, AMapIsReadFromTheReplyAndTheWholeBodyIsKept) {
  const QByteArray body = claudeBody({QStringLiteral("{\"title\":\"Tea\",\"children\":[{\"title\":\"Green\"}]}")});
  everyReplyIs(200, body);
  QFuture<AIResponse> reply = claude.generate(request, {});
  ASSERT_EQ(failureOf(reply), QString());
  EXPECT_EQ(reply.result().treeNode, AITreeNode(QStringLiteral("Tea"), {AITreeNode(QStringLiteral("Green"))}));
  EXPECT_EQ(reply.result().rawText, QString::fromUtf8(body));
}

TEST_F(VendorProvidersTest, AnUnreadableMapFailsInTheWordsOfItsVendor) {
  everyReplyIs(200, claudeBody({QStringLiteral("Sure! {\"title\":\"Tea\"}")}));
  EXPECT_EQ(generateFailure(claude), QStringLiteral("Could not parse AI response: Sure! {\"title\":\"Tea\"}"));
  everyReplyIs(200, openAIBody(QStringLiteral("Sure! {\"title\":\"Tea\"}")));
  const QString words = generateFailure(openAI);
  EXPECT_FALSE(words.isEmpty());
  EXPECT_FALSE(words.startsWith(QStringLiteral("Could not parse AI response")));
}

TEST_F(VendorProvidersTest, AFailedTransportPassesUnchanged) {
  QFuture<AIResponse> reply = claude.generate(request, {});
  transport.fail(0, HttpError(HttpError::Kind::connection, QStringLiteral("Connection refused")));
  EXPECT_EQ(failureOf(reply), QStringLiteral("Connection refused"));
  QFuture<AIResponse> other = openAI.generate(request, {});
  transport.fail(1, HttpError(HttpError::Kind::notHttp, QStringLiteral("no web")));
  EXPECT_EQ(failureOf(other), QStringLiteral("Network error: no web"));
}

TEST_F(VendorProvidersTest, CancellingStopsTheExchange) {
  Cancellation cancellation;
  QFuture<QString> reply = openAI.chat(dialogue(), QString(), cancellation);
  cancellation.cancel();
  EXPECT_TRUE(transport.isCancelled(0));
  EXPECT_THROW(reply.waitForFinished(), AICancelled);
}

// --- Over a real connection ---

TEST(VendorConnection, BothAreServedOverTls) {
  WebServer server;
  NetworkTransport network(WebServer::clientConfiguration());
  ClaudeProvider claude(network, key, server.host());
  server.answerWith(200, claudeBody({QStringLiteral("hello")}), "Content-Type: application/json\r\n");
  QFuture<QString> reply = claude.chat(dialogue(), QStringLiteral("Title: T"), {});
  ASSERT_EQ(failureOf(reply), QString());
  EXPECT_EQ(reply.result(), QStringLiteral("hello"));
  EXPECT_EQ(server.requests().back().line, "POST /v1/messages HTTP/1.1");
  EXPECT_EQ(server.requests().back().headers.at("x-api-key"), "sk-test-1234567890");
  EXPECT_EQ(server.requests().back().headers.at("anthropic-version"), "2023-06-01");

  OpenAIProvider openAI(network, key, server.host());
  server.answerWith(200, openAIBody(QStringLiteral("{\"title\":\"Tea\"}")));
  QFuture<AIResponse> map = openAI.generate(request, {});
  ASSERT_EQ(failureOf(map), QString());
  EXPECT_EQ(map.result().treeNode, AITreeNode(QStringLiteral("Tea")));
  EXPECT_EQ(server.requests().back().line, "POST /v1/chat/completions HTTP/1.1");
  EXPECT_EQ(server.requests().back().headers.at("authorization"), "Bearer sk-test-1234567890");
}

TEST(VendorConnection, AKeyNeverTravelsToAnotherHost) {
  WebServer server;
  WebServer other;
  NetworkTransport network(WebServer::clientConfiguration());
  ClaudeProvider claude(network, key, server.host());
  server.answerWith(307, "", "Location: " + other.url(QStringLiteral("/v1/messages")).toEncoded() + "\r\n");
  EXPECT_EQ(failureOf(claude.generate(request, {})), QStringLiteral("Could not parse AI response: HTTP 307: "));
  EXPECT_EQ(other.connectionCount(), 0);
}

TEST(VendorConnection, CancellingReachesTheSocket) {
  WebServer server;
  NetworkTransport network(WebServer::clientConfiguration());
  OpenAIProvider openAI(network, key, server.host());
  Cancellation cancellation;
  QFuture<QString> reply = openAI.chat(dialogue(), QString(), cancellation);
  ASSERT_TRUE(QTest::qWaitFor([&] { return server.requests().size() == 1; }));
  cancellation.cancel();
  EXPECT_TRUE(QTest::qWaitFor([&] { return server.openConnectionCount() == 0; }));
}

}  // namespace
