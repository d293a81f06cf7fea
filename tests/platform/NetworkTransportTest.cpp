#include <QElapsedTimer>
#include <QSslSocket>
#include <QTimer>
#include <gtest/gtest.h>

#include "platform/Futures.h"
#include "platform/NetworkTransport.h"
#include "support/Await.h"
#include "support/WebServer.h"

namespace {

using namespace quilmora;
using namespace std::chrono_literals;

class NetworkTransportTest : public testing::Test {
 protected:
  HttpRequest request(const WebServer& to) const {
    HttpRequest made;
    made.url = to.url(QStringLiteral("/v1/messages"));
    made.headers = {{"x-api-key", "sk-test-1234567890"}};
    made.body = "{}";
    made.timeout = 5s;
    return made;
  }
  QFuture<HttpReply> send() { return transport.send(request(server)); }
  // The kind of error that the exchange failed with.
  static std::optional<HttpError::Kind> kindOf(QFuture<HttpReply> future) {
    if (!ends(future)) return std::nullopt;
    try {
      future.waitForFinished();
    } catch (const HttpError& error) {
      EXPECT_FALSE(QByteArray(error.what()).contains("sk-test"));
      return error.kind();
    }
    return std::nullopt;
  }

  WebServer server;
  NetworkTransport transport{WebServer::clientConfiguration()};
};

TEST_F(NetworkTransportTest, AReplyOfAnyStatusIsAReply) {
  for (const int status : {200, 201, 204, 400, 401, 403, 404, 407, 409, 418, 429, 500, 503, 529}) {
    server.answerWith(status, status == 204 ? "" : "body");
    QFuture<HttpReply> future = send();
    ASSERT_TRUE(ends(future));
    if (status == 407) {  // claims a proxy that does not exist
      EXPECT_EQ(kindOf(future), HttpError::Kind::connection);
      continue;
    }
    EXPECT_EQ(failureOf(future), QString()) << status;
    EXPECT_EQ(future.result().status, status);
    EXPECT_EQ(future.result().body, status == 204 ? "" : "body") << status;
  }
}

TEST_F(NetworkTransportTest, MethodHeadersAndBodyArriveAsGiven) {
  server.answerWith(200, "");
  ASSERT_TRUE(ends(send()));
  ASSERT_EQ(server.requests().size(), 1u);
  const WebServer::Request& received = server.requests().front();
  EXPECT_EQ(received.line, "POST /v1/messages HTTP/1.1");
  EXPECT_EQ(received.headers.at("x-api-key"), "sk-test-1234567890");
  EXPECT_EQ(received.headers.at("accept-encoding"), "identity");
  EXPECT_EQ(received.headers.count("cookie"), 0u);
  EXPECT_EQ(received.body, "{}");
}

TEST_F(NetworkTransportTest, ACertificateThatNobodyTrustsIsAFailure) {
  NetworkTransport careful;
  EXPECT_EQ(kindOf(careful.send(request(server))), HttpError::Kind::certificate);
  EXPECT_TRUE(server.requests().empty());
}

TEST_F(NetworkTransportTest, PlainHttpGoesToThisMachineOnly) {
  HttpRequest plain = request(server);
  for (const char* url : {"http://example.org/v1", "ftp://127.0.0.1/", "file:///etc/passwd", "https:///v1", ""}) {
    plain.url = QUrl(QString::fromLatin1(url));
    EXPECT_EQ(kindOf(transport.send(plain)), HttpError::Kind::notAllowed) << url;
  }
  WebServer open(WebServer::Security::plain);
  open.answerWith(200, "yes");
  EXPECT_EQ(failureOf(transport.send(request(open))), QString());
}

TEST_F(NetworkTransportTest, LoopbackIsToldByTheHost) {
  for (const char* url : {"http://127.0.0.1", "http://127.8.9.1:80", "http://[::1]:11434", "http://LocalHost:8080"})
    EXPECT_TRUE(isLoopback(QUrl(QString::fromLatin1(url)))) << url;
  for (const char* url : {"http://example.org", "http://127.0.0.1.example.org", "http://localhost.example.org",
                          "http://10.0.0.1", "http://0x7f000001.org", ""})
    EXPECT_FALSE(isLoopback(QUrl(QString::fromLatin1(url)))) << url;
}

TEST_F(NetworkTransportTest, AHeaderCannotSmuggleAnother) {
  HttpRequest bad = request(server);
  bad.headers = {{"x-api-key", "a\r\nHost: evil"}};
  EXPECT_EQ(kindOf(transport.send(bad)), HttpError::Kind::notAllowed);
  EXPECT_EQ(server.connectionCount(), 0);
}

TEST_F(NetworkTransportTest, RedirectsAreNotFollowed) {
  WebServer other;
  other.answerWith(200, "stolen");
  for (const int status : {301, 302, 303, 307, 308}) {
    server.answerWith(status, "", "Location: " + other.url(QStringLiteral("/")).toEncoded() + "\r\n");
    QFuture<HttpReply> future = send();
    EXPECT_EQ(failureOf(future), QString());
    EXPECT_EQ(future.result().status, status);
  }
  EXPECT_EQ(other.connectionCount(), 0);
}

TEST_F(NetworkTransportTest, TheTimeOutIsForTheWholeRequest) {
  HttpRequest hasty = request(server);
  hasty.timeout = 400ms;
  // An occasional byte keeps no exchange alive.
  server.onRequest = [](QTcpSocket& socket, const WebServer::Request&) {
    socket.write("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n");
    auto* drip = new QTimer(&socket);
    QObject::connect(drip, &QTimer::timeout, &socket, [&socket] { socket.write("."); });
    drip->start(20);
  };
  QElapsedTimer timer;
  timer.start();
  QFuture<HttpReply> slow = transport.send(hasty);
  EXPECT_EQ(kindOf(slow), HttpError::Kind::timedOut);
  EXPECT_EQ(failureOf(slow), QStringLiteral("The request timed out."));
  EXPECT_GE(timer.elapsed(), 390);
  EXPECT_TRUE(QTest::qWaitFor([&] { return server.openConnectionCount() == 0; }));
}

TEST_F(NetworkTransportTest, AHangAtAnyStageTimesOut) {
  HttpRequest hasty = request(server);
  hasty.timeout = 200ms;
  EXPECT_EQ(kindOf(transport.send(hasty)), HttpError::Kind::timedOut) << "before the head";
  for (const char* bytes :
       {"HTTP/1.1 2", "HTTP/1.1 200 OK\r\nContent-Le", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n",
        "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf"}) {
    server.answerRaw(bytes, false);
    EXPECT_EQ(kindOf(transport.send(hasty)), HttpError::Kind::timedOut) << bytes;
  }
  QTcpServer silent;  // accepts connections but never completes a handshake
  ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
  hasty.url = QUrl(QStringLiteral("https://127.0.0.1:%1/").arg(silent.serverPort()));
  EXPECT_EQ(kindOf(transport.send(hasty)), HttpError::Kind::timedOut) << "before the handshake";
}

TEST_F(NetworkTransportTest, AResetAtAnyStageIsAFailure) {
  for (const char* bytes : {"", "HTTP/1.1 200 OK\r\nContent-Le", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n",
                            "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nhalf",
                            "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n9\r\nhalf"}) {
    server.onRequest = [bytes](QTcpSocket& socket, const WebServer::Request&) {
      socket.write(bytes);
      socket.flush();
      socket.abort();
    };
    EXPECT_EQ(kindOf(send()), HttpError::Kind::connection) << bytes;
  }
  server.onConnection = [](QTcpSocket& socket) { socket.abort(); };
  EXPECT_EQ(kindOf(send()), HttpError::Kind::connection) << "after the handshake";
}

TEST_F(NetworkTransportTest, NobodyThereIsAFailure) {
  QUrl gone;
  {
    const WebServer shortLived;
    gone = shortLived.url(QStringLiteral("/"));
  }
  HttpRequest lost = request(server);
  lost.url = gone;
  EXPECT_EQ(kindOf(transport.send(lost)), HttpError::Kind::connection);
}

TEST_F(NetworkTransportTest, WhatIsNotHttpIsAFailure) {
  server.answerRaw("220 mail ready\r\n\r\n", true);
  EXPECT_NE(kindOf(send()), std::nullopt);
}

TEST_F(NetworkTransportTest, ARequestIsNeverSentTwice) {
  server.onRequest = [](QTcpSocket& socket, const WebServer::Request&) { socket.abort(); };
  EXPECT_EQ(kindOf(send()), HttpError::Kind::connection);
  EXPECT_EQ(server.requests().size(), 1u);
  server.answerRaw("220 mail ready\r\n\r\n", true);
  EXPECT_EQ(kindOf(send()), HttpError::Kind::connection);
  EXPECT_EQ(server.requests().size(), 2u);
}

TEST_F(NetworkTransportTest, AShortContentLengthCutsAndALongOneFails) {
  server.answerRaw("HTTP/1.1 200 OK\r\nContent-Length: 4\r\nConnection: close\r\n\r\n{\"a\":1}", true);
  QFuture<HttpReply> cut = send();
  EXPECT_EQ(failureOf(cut), QString());
  EXPECT_EQ(cut.result().body, "{\"a\"");
  server.answerRaw("HTTP/1.1 200 OK\r\nContent-Length: 400\r\nConnection: close\r\n\r\n{\"a\":1}", true);
  EXPECT_EQ(kindOf(send()), HttpError::Kind::connection);
}

TEST_F(NetworkTransportTest, AReplyWithoutEndIsRefusedAtItsLimit) {
  qint64 sent = 0;
  server.onRequest = [&](QTcpSocket& socket, const WebServer::Request&) {
    socket.write("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n");
    auto* pump = new QTimer(&socket);
    QObject::connect(pump, &QTimer::timeout, &socket, [&] {
      if (static_cast<QSslSocket&>(socket).encryptedBytesToWrite() > 0) return;
      sent += socket.write("100000\r\n" + QByteArray(1 << 20, 'x') + "\r\n");
    });
    pump->start(0);
  };
  HttpRequest patient = request(server);
  patient.timeout = 60s;
  QFuture<HttpReply> endless = transport.send(patient);
  ASSERT_TRUE(ends(endless, 60'000));
  EXPECT_EQ(kindOf(endless), HttpError::Kind::tooLarge);
  EXPECT_EQ(failureOf(endless), QStringLiteral("The reply is larger than 32 MB."));
  EXPECT_LT(sent, qint64(48) << 20) << "the socket is closed, not drained";
}

TEST_F(NetworkTransportTest, ACompressedReplyIsRefused) {
  // "{}" and a thousand times as many zeros would look the same from here: content that was not requested in this form
  // is not unpacked.
  server.answerWith(200, QByteArray::fromHex("1f8b0800000000000003abae050043bfa6a302000000"),
                    "Content-Encoding: gzip\r\n");
  EXPECT_EQ(kindOf(send()), HttpError::Kind::compressed);
}

TEST_F(NetworkTransportTest, CancellingClosesTheSocketAtOnce) {
  QFuture<HttpReply> future = send();
  ASSERT_TRUE(QTest::qWaitFor([&] { return server.requests().size() == 1; }));
  QElapsedTimer timer;
  timer.start();
  future.cancel();
  ASSERT_TRUE(QTest::qWaitFor([&] { return server.openConnectionCount() == 0 && future.isFinished(); }));
  RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
  EXPECT_LT(timer.elapsed(), 1000) << "100 on a machine that has nothing else to do";
  EXPECT_EQ(failureOf(future), QStringLiteral("dropped"));
}

TEST_F(NetworkTransportTest, ATransportThatGoesDropsWhatIsUnderWay) {
  auto shortLived = std::make_unique<NetworkTransport>(WebServer::clientConfiguration());
  QFuture<HttpReply> future = shortLived->send(request(server));
  ASSERT_TRUE(QTest::qWaitFor([&] { return server.requests().size() == 1; }));
  shortLived.reset();
  EXPECT_EQ(failureOf(future), QStringLiteral("dropped"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return server.openConnectionCount() == 0; }));
}

TEST(Futures, AResultReachesOnlyAContextThatIsStillThere) {
  QPromise<int> promise;
  promise.start();
  QObject stays;
  auto goes = std::make_unique<QObject>();
  int received = 0;
  bool isGoneCalled = false;
  QString failure;
  const auto failed = [&](const std::exception& error) { failure = QString::fromUtf8(error.what()); };
  whenFinished(
      promise.future(), goes.get(), [&](int) { isGoneCalled = true; }, failed);
  whenFinished(
      promise.future(), &stays, [&](int value) { received = value; }, failed);
  goes.reset();
  promise.addResult(7);
  promise.finish();
  EXPECT_EQ(received, 0) << "not before a later turn";
  ASSERT_TRUE(QTest::qWaitFor([&] { return received == 7; }));
  EXPECT_FALSE(isGoneCalled);
  EXPECT_EQ(failure, QString());
}

TEST(Futures, WorkThatEndsWithoutAResultHasFailed) {
  QObject context;
  QString failure;
  const auto failed = [&](const std::exception& error) { failure = QString::fromUtf8(error.what()); };
  auto promise = std::make_unique<QPromise<int>>();
  promise->start();
  whenFinished(
      promise->future(), &context, [](int) { ADD_FAILURE(); }, failed);
  promise.reset();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !failure.isEmpty(); }));
  EXPECT_EQ(failure, QStringLiteral("cancelled"));
}

}  // namespace
