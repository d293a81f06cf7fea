#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include "platform/LocalModelServer.h"
#include "platform/NetworkTransport.h"
#include "platform/OnDeviceText.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"
#include "support/Await.h"
#include "support/WebServer.h"

namespace {

using namespace quilmora;

constexpr const char* tags = R"({"models":[{"name":"llama3:latest","size":1},{"name":"phi3:mini"}]})";
constexpr const char* models = R"({"object":"list","data":[{"id":"small.gguf"}]})";

QByteArray completion(const QString& text) {
  const QJsonObject message{{QStringLiteral("role"), QStringLiteral("assistant")}, {QStringLiteral("content"), text}};
  const QJsonObject choice{{QStringLiteral("index"), 0}, {QStringLiteral("message"), message}};
  return QJsonDocument(QJsonObject{{QStringLiteral("choices"), QJsonArray{choice}}}).toJson();
}

// Two servers such as people run, one listing by tags and one by models; both silent at first.
class LocalModelServerTest : public testing::Test {
 protected:
  static QUrl root(const WebServer& server) { return QUrl(QStringLiteral("http://") + server.host()); }
  // Lists models only at `path`, and answers the completions.
  static void serve(WebServer& server, const QByteArray& path, const QByteArray& list) {
    server.onRequest = [=](QTcpSocket& socket, const WebServer::Request& request) {
      QByteArray reply = WebServer::reply(404, "not found");
      if (request.line == "GET " + path + " HTTP/1.1") reply = WebServer::reply(200, list);
      if (request.line == "POST /v1/chat/completions HTTP/1.1")
        reply = WebServer::reply(200, completion(QStringLiteral("hello from here")));
      socket.write(reply);
      socket.disconnectFromHost();
    };
  }
  bool looked() {
    QFuture<bool> look = server.lookUp();
    return ends(look) && look.result();
  }

  WebServer first{WebServer::Security::plain};
  WebServer second{WebServer::Security::plain};
  MemorySettingsStore settings;
  NetworkTransport transport{WebServer::clientConfiguration()};
  LocalModelServer server{
      transport, settings, {{root(first), QStringLiteral("/api/tags")}, {root(second), QStringLiteral("/v1/models")}}};
};

TEST_F(LocalModelServerTest, LooksAtTheUsualPlaces) {
  const auto places = LocalModelServer::usualPlaces();
  ASSERT_EQ(places.size(), 2u);
  EXPECT_EQ(places[0].address.toString() + places[0].list, QStringLiteral("http://127.0.0.1:11434/api/tags"));
  EXPECT_EQ(places[1].address.toString() + places[1].list, QStringLiteral("http://127.0.0.1:8080/v1/models"));
}

TEST_F(LocalModelServerTest, TakesTheFirstModelThatIsThere) {
  serve(first, "/api/tags", tags);
  serve(second, "/v1/models", models);
  EXPECT_EQ(server.isThere(), std::nullopt);
  EXPECT_TRUE(looked());
  EXPECT_EQ(server.modelName(), QStringLiteral("llama3:latest"));
  EXPECT_EQ(server.address(), root(first));
  first.answerWith(500, "");
  EXPECT_TRUE(looked());
  EXPECT_EQ(server.modelName(), QStringLiteral("small.gguf"));
  EXPECT_EQ(server.address(), root(second));
}

TEST_F(LocalModelServerTest, WithoutAServerOrAModelNothingIsThere) {
  first.answerWith(200, R"({"models":[]})");
  second.answerWith(503, R"({"error":{"message":"Loading model","code":503}})");
  EXPECT_FALSE(looked());
  EXPECT_EQ(server.isThere(), false);
  EXPECT_EQ(server.address(), QUrl());
  EXPECT_EQ(failureOf(server.respond(QStringLiteral("hi"))),
            QStringLiteral("The local model is not available: no server answers."));
}

TEST_F(LocalModelServerTest, ASilentServerHoldsALookUpThreeTenthsOfASecondAtMost) {
  serve(second, "/v1/models", models);
  QElapsedTimer timer;
  timer.start();
  EXPECT_TRUE(looked()) << "the second is taken once the first is given up";
  EXPECT_EQ(server.modelName(), QStringLiteral("small.gguf"));
  EXPECT_GE(timer.elapsed(), 290);
  EXPECT_LT(timer.elapsed(), 3000);
}

TEST_F(LocalModelServerTest, AskedWithOneUserMessageItGivesItsText) {
  serve(first, "/api/tags", tags);
  ASSERT_TRUE(looked());
  QFuture<QString> reply = server.respond(QStringLiteral("Prompt\nof lines"));
  EXPECT_EQ(failureOf(reply), QString());
  EXPECT_EQ(reply.result(), QStringLiteral("hello from here"));
  const WebServer::Request& request = first.requests().back();
  EXPECT_EQ(request.line, "POST /v1/chat/completions HTTP/1.1");
  EXPECT_EQ(request.headers.at("content-type"), "application/json");
  const QJsonObject message{{QStringLiteral("role"), QStringLiteral("user")},
                            {QStringLiteral("content"), QStringLiteral("Prompt\nof lines")}};
  EXPECT_EQ(QJsonDocument::fromJson(request.body).object(),
            (QJsonObject{{QStringLiteral("model"), QStringLiteral("llama3:latest")},
                         {QStringLiteral("messages"), QJsonArray{message}}}));
}

TEST_F(LocalModelServerTest, AModelThatWentOrLoadsIsNotAvailable) {
  serve(first, "/api/tags", tags);
  ASSERT_TRUE(looked());
  first.answerWith(503, "Loading model");
  EXPECT_EQ(failureOf(server.respond(QStringLiteral("x"))),
            QStringLiteral("The local model is not available: HTTP 503: Loading model"));
  first.answerWith(404, "model not found");
  EXPECT_EQ(failureOf(server.respond(QStringLiteral("x"))),
            QStringLiteral("The local model is not available: HTTP 404: model not found"));
  first.answerWith(500, "out of memory");
  EXPECT_EQ(failureOf(server.respond(QStringLiteral("x"))), QStringLiteral("HTTP 500: out of memory"));
  first.answerWith(200, "{}");
  EXPECT_EQ(failureOf(server.respond(QStringLiteral("x"))), QStringLiteral("The model server's reply holds no text."));
  first.onRequest = [](QTcpSocket& socket, const WebServer::Request&) { socket.abort(); };
  EXPECT_TRUE(
      failureOf(server.respond(QStringLiteral("x"))).startsWith(QStringLiteral("The local model is not available: ")));
}

TEST_F(LocalModelServerTest, TheSettingsChooseAddressAndModel) {
  serve(first, "/api/tags", tags);
  serve(second, "/v1/models", models);
  settings.setText(settings::localModelName, QStringLiteral("phi3:mini"));
  EXPECT_TRUE(looked());
  EXPECT_EQ(server.modelName(), QStringLiteral("phi3:mini"));
  settings.setText(settings::localModelName, QStringLiteral("llama3"));
  EXPECT_TRUE(looked());
  EXPECT_EQ(server.modelName(), QStringLiteral("llama3:latest"));
  settings.setText(settings::localModelName, QStringLiteral("absent"));
  EXPECT_FALSE(looked());
  settings.remove(settings::localModelName);
  settings.setText(settings::localModelAddress, root(second).toString() + u'/');
  EXPECT_TRUE(looked());
  EXPECT_EQ(server.modelName(), QStringLiteral("small.gguf"));
  settings.setText(settings::localModelAddress, root(first).toString());
  EXPECT_TRUE(looked());
  EXPECT_EQ(server.modelName(), QStringLiteral("llama3:latest")) << "either list will do";
}

TEST(LocalModelAddress, BeyondThisMachineOnlyHttpsIsTaken) {
  MemorySettingsStore settings;
  MemoryHttpTransport transport;
  LocalModelServer server(transport, settings);
  for (const char* address : {"http://192.168.1.5:11434", "http://example.org", "ftp://127.0.0.1", "127.0.0.1:11434",
                              "http://127.0.0.1.example.org", "nonsense", "http://", "https://"}) {
    settings.setText(settings::localModelAddress, QString::fromLatin1(address));
    QFuture<bool> look = server.lookUp();
    ASSERT_TRUE(look.isFinished()) << address;
    EXPECT_FALSE(look.result()) << address;
  }
  EXPECT_EQ(transport.count(), 0u);
  settings.setText(settings::localModelAddress, QStringLiteral("https://models.example.org/mine?x=1"));
  QFuture<bool> look = server.lookUp();
  ASSERT_EQ(transport.count(), 2u);
  EXPECT_EQ(transport.request(0).url, QUrl(QStringLiteral("https://models.example.org/mine/v1/models")));
  EXPECT_EQ(transport.request(0).method, "GET");
  EXPECT_EQ(transport.request(0).timeout, std::chrono::milliseconds(300));
  transport.answer(0, {200, models});
  ASSERT_TRUE(ends(look));
  EXPECT_TRUE(look.result());
  EXPECT_EQ(server.address(), QUrl(QStringLiteral("https://models.example.org/mine")));
}

TEST(LocalModelList, AnythingElseHasNoModels) {
  for (const char* list : {"", "[]", "{}", "null", R"({"models":{}})", R"({"models":[1,{"name":2},{"name":""}]})",
                           R"({"data":[{"name":"x"}]})", "<html>"})
    EXPECT_TRUE(modelNames(list).empty()) << list;
  EXPECT_EQ(modelNames(models), std::vector<QString>{QStringLiteral("small.gguf")});
  EXPECT_EQ(modelNames(tags), (std::vector<QString>{QStringLiteral("llama3:latest"), QStringLiteral("phi3:mini")}));
}

TEST(OnDeviceText, TellsOfAModelServerInsteadOfAnotherSystem) {
  EXPECT_EQ(onDeviceText(QStringLiteral("Apple")), QStringLiteral("On-Device"));
  EXPECT_EQ(onDeviceText(QStringLiteral("Apple (On-Device)")), QStringLiteral("On-Device"));
  EXPECT_EQ(onDeviceText(QStringLiteral("Apple (On-Device) — unavailable")),
            QStringLiteral("On-Device — no model server"));
  EXPECT_EQ(onDeviceText(QStringLiteral("Requires macOS 26 — using Offline mode")),
            QStringLiteral("No local model server answers — using Offline mode"));
  EXPECT_EQ(onDeviceText(QStringLiteral("Error: Could not parse AI response: Apple Intelligence is not enabled. Go to "
                                        "System Settings → Apple Intelligence & Siri → turn ON Appl")),
            QStringLiteral("Error: Could not parse AI response: No local model answers. Start a model server on this "
                           "machine, wait until its model is loaded, and try again."));
}

TEST(OnDeviceText, LeavesWhatPeopleWroteAlone) {
  for (const char* text : {"Apple pie", "An Apple", "apple", "Claude (Anthropic)", "", "Apple Intelligence is"})
    EXPECT_EQ(onDeviceText(QString::fromUtf8(text)), QString::fromUtf8(text));
}

}  // namespace
