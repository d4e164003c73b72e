#include "app/update/fetch.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QSslConfiguration>

#include "tests/app/update/loopback_server.h"
#include "tests/fakes/files.h"
#include "tests/fakes/temporary_folder.h"

namespace horalo {
namespace {

using namespace std::chrono_literals;

constexpr auto kLong = 60'000ms;

class FetchTest : public testing::Test {
 protected:
  FetchTest() {
    limits_.bytes = 100'000;
    // So long that no test ends by them that is not about them.
    limits_.idle = limits_.total = kLong;
  }

  // What fetching comes to; nothing where it never says.
  std::optional<Outcome<QByteArray>> fetch(const QUrl& url) {
    std::optional<Outcome<QByteArray>> result;
    QEventLoop loop;
    Fetch fetch(network_, url, limits_);
    QObject::connect(&fetch, &Fetch::finished, &loop, [&](const Outcome<QByteArray>& outcome) {
      result = outcome;
      loop.quit();
    });
    QTimer::singleShot(kLong * 2, &loop, &QEventLoop::quit);
    QElapsedTimer time;
    time.start();
    loop.exec();
    took_ = std::chrono::milliseconds(time.elapsed());
    return result;
  }

  // The message of the problem; empty where it worked, "nothing" where it never ended.
  std::string failure(const QString& path) {
    const auto result = fetch(server_.url(path));
    if (!result) return "nothing";
    const auto* const problem = std::get_if<Problem>(&*result);
    return problem != nullptr ? problem->message.toStdString() : "";
  }

  void serveEndlessly(const QString& path, const QByteArray& head, const QByteArray& block,
                      std::chrono::milliseconds pause) {
    server_.on(path, [head, block, pause](QTcpSocket& socket) {
      socket.write(head);
      auto* const timer = new QTimer(&socket);
      QObject::connect(timer, &QTimer::timeout, &socket, [&socket, block] {
        if (socket.bytesToWrite() < (1 << 22)) socket.write(block);
      });
      timer->start(pause);
    });
  }

  LoopbackServer server_;
  QNetworkAccessManager network_;
  FetchLimits limits_;
  std::chrono::milliseconds took_{};
};

const QString kPath = QStringLiteral("f");
const QByteArray kHead = "HTTP/1.1 200 OK\r\n";

TEST_F(FetchTest, bringsTheBytes) {
  const QByteArray body(100'000, 'x');
  server_.serve(kPath, body);
  const auto result = fetch(server_.url(kPath));
  ASSERT_TRUE(result && std::holds_alternative<QByteArray>(*result));
  EXPECT_EQ(std::get<QByteArray>(*result), body);
}

TEST_F(FetchTest, followsARedirectThatIsAllowed) {
  server_.serve(kPath, "body");
  server_.serveRaw(
      QStringLiteral("r"),
      "HTTP/1.1 302 x\r\nLocation: /f\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
  const auto result = fetch(server_.url(QStringLiteral("r")));
  ASSERT_TRUE(result && std::holds_alternative<QByteArray>(*result));
  EXPECT_EQ(std::get<QByteArray>(*result), "body");
}

TEST_F(FetchTest, followsNoOther) {
  const std::string unsafe = problem::badRedirect().message.toStdString();
  for (const QByteArray target : {"file:///etc/passwd", "http://example.org/", "ftp://127.0.0.1/",
                                  "data:text/plain,evil", "/f"}) {
    server_.serveRaw(kPath, "HTTP/1.1 302 x\r\nLocation: " + target +
                                "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    EXPECT_EQ(failure(kPath), unsafe) << target.toStdString();
  }
  EXPECT_LT(server_.requests(kPath), 20) << "a loop ends";
}

TEST_F(FetchTest, stopsAtTheLimit) {
  const std::string tooLong = problem::tooLong().message.toStdString();
  server_.serve(kPath, QByteArray(100'001, 'x'));
  EXPECT_EQ(failure(kPath), tooLong);
  server_.serveRaw(kPath, kHead + "\r\n" + QByteArray(100'001, 'x'));
  EXPECT_EQ(failure(kPath), tooLong);
  server_.serveRaw(kPath, kHead + "Content-Length: 99999999999\r\n\r\nx");
  EXPECT_EQ(failure(kPath), tooLong);
  serveEndlessly(kPath, kHead + "\r\n", QByteArray(1 << 16, 'x'), 0ms);
  EXPECT_EQ(failure(kPath), tooLong);
  serveEndlessly(kPath, kHead + "Transfer-Encoding: chunked\r\n\r\n",
                 "10000\r\n" + QByteArray(1 << 16, 'x') + "\r\n", 0ms);
  EXPECT_EQ(failure(kPath), tooLong);
}

TEST_F(FetchTest, unpacksNothingOnTheWay) {
  const QByteArray packed = QByteArray::fromHex("1f8b08000000000000034b04004d6fd3be01000000");
  server_.serveRaw(kPath, kHead + "Content-Encoding: gzip\r\nContent-Length: " +
                              QByteArray::number(packed.size()) + "\r\n\r\n" + packed);
  const auto result = fetch(server_.url(kPath));
  ASSERT_TRUE(result && std::holds_alternative<QByteArray>(*result));
  EXPECT_EQ(std::get<QByteArray>(*result), packed);
}

TEST_F(FetchTest, wantsTheExactLengthWhereItKnowsIt) {
  limits_.exact = true;
  limits_.bytes = 10;
  server_.serve(kPath, "0123456789");
  EXPECT_EQ(failure(kPath), "");
  server_.serve(kPath, "012345678");
  EXPECT_EQ(failure(kPath), problem::wrongLength().message.toStdString());
  server_.serveRaw(kPath, kHead + "\r\n012345678");
  EXPECT_EQ(failure(kPath), problem::wrongLength().message.toStdString());
}

TEST_F(FetchTest, takesNoHalfAnswer) {
  for (const QByteArray& answer :
       {QByteArray(kHead + "Content-Length: 10\r\n\r\n01234"), QByteArray(kHead + "Content-"),
        QByteArray("HTTP/1.1"), QByteArray("nonsense\r\n\r\n"), QByteArray()}) {
    server_.serveRaw(kPath, answer);
    EXPECT_NE(failure(kPath), "") << answer.toStdString();
  }
}

TEST_F(FetchTest, takesNoErrorForAnAnswer) {
  int cases = 0;
  for (const int status : {201, 204, 206, 400, 401, 403, 404, 407, 410, 500, 503}) {
    server_.serve(kPath, status == 204 ? "" : "body", status);
    EXPECT_NE(failure(kPath), "") << status;
    ++cases;
  }
  EXPECT_EQ(cases, 11);
  server_.serve(kPath, "", 404);
  EXPECT_EQ(failure(kPath), problem::refusedByServer(404).message.toStdString());
}

TEST_F(FetchTest, givesUpOnAServerThatStalls) {
  const std::string slow = problem::tooSlow().message.toStdString();
  limits_.idle = 400ms;
  server_.on(kPath, [](QTcpSocket&) {});
  EXPECT_EQ(failure(kPath), slow);
  EXPECT_LT(took_, kLong);
  server_.on(kPath, [](QTcpSocket& socket) { socket.write(kHead); });
  EXPECT_EQ(failure(kPath), slow);
  server_.on(kPath, [](QTcpSocket& socket) { socket.write(kHead + "Content-Length: 9\r\n\r\n1"); });
  EXPECT_EQ(failure(kPath), slow);
  EXPECT_LT(took_, kLong);
}

TEST_F(FetchTest, givesUpOnAServerThatDrips) {
  limits_.total = 1000ms;
  serveEndlessly(kPath, kHead + "Content-Length: 9999\r\n\r\n", "x", 100ms);
  EXPECT_EQ(failure(kPath), problem::tooSlow().message.toStdString());
  EXPECT_GE(took_, 900ms);
  EXPECT_LT(took_, kLong);
  serveEndlessly(kPath, kHead, "X-Header: more\r\n", 100ms);
  EXPECT_NE(failure(kPath), "");
  EXPECT_NE(failure(kPath), "nothing");
  EXPECT_LT(took_, kLong);
}

TEST_F(FetchTest, leavesTheWindowAliveUnderAnEndlessAnswer) {
  limits_.bytes = 1 << 28;
  limits_.total = 1500ms;
  int ticks = 0;
  QTimer ticker;
  QObject::connect(&ticker, &QTimer::timeout, &ticker, [&ticks] { ++ticks; });
  constexpr auto beat = 50ms;
  ticker.start(beat);
  serveEndlessly(kPath, kHead + "\r\n", QByteArray(1 << 18, 'x'), 0ms);
  EXPECT_NE(failure(kPath), "");
  EXPECT_GT(4 * ticks * beat, took_) << "of four beats it may miss three";
}

TEST_F(FetchTest, saysThatNobodyIsThere) {
  QTcpServer gone;
  ASSERT_TRUE(gone.listen(QHostAddress::LocalHost));
  const QUrl url(QStringLiteral("http://127.0.0.1:%1/").arg(gone.serverPort()));
  gone.close();
  const auto result = fetch(url);
  ASSERT_TRUE(result && std::holds_alternative<Problem>(*result));
  EXPECT_EQ(std::get<Problem>(*result).message, problem::unreachable({}).message);
}

// A certificate that its server has made for itself.
class SelfSigned {
 public:
  SelfSigned() {
    const auto path = [this](const char* name) {
      return QString::fromStdString((folder_ / name).string());
    };
    QStringList words = QStringLiteral(
                            "req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 "
                            "-nodes -days 2 -subj /CN=localhost -addext "
                            "subjectAltName=IP:127.0.0.1")
                            .split(QLatin1Char(' '));
    words << QStringLiteral("-keyout") << path("key") << QStringLiteral("-out") << path("cert");
    EXPECT_EQ(QProcess::execute(QStringLiteral("openssl"), words), 0);
    certificate = QSslCertificate::fromPath(path("cert")).value(0);
    key = QSslKey(QByteArray::fromStdString(textOf(folder_ / "key")), QSsl::Ec);
  }

  QSslCertificate certificate;
  QSslKey key;

 private:
  TemporaryFolder folder_;
};

TEST_F(FetchTest, trustsNoCertificateThatNobodyVouchesFor) {
  const SelfSigned self;
  LoopbackServer server(self.certificate, self.key);
  server.serve(kPath, "body");
  auto result = fetch(server.url(kPath));
  ASSERT_TRUE(result && std::holds_alternative<Problem>(*result));
  EXPECT_EQ(std::get<Problem>(*result).message, problem::untrustedServer({}).message);
  EXPECT_EQ(server.requests(kPath), 0);

  // The same server, once somebody does.
  const auto before = QSslConfiguration::defaultConfiguration();
  auto trusting = before;
  trusting.addCaCertificate(self.certificate);
  QSslConfiguration::setDefaultConfiguration(trusting);
  network_.clearConnectionCache();
  result = fetch(server.url(kPath));
  QSslConfiguration::setDefaultConfiguration(before);
  ASSERT_TRUE(result && std::holds_alternative<QByteArray>(*result));
  EXPECT_EQ(std::get<QByteArray>(*result), "body");
}

TEST_F(FetchTest, speaksNothingButTlsWhereItIsAskedFor) {
  server_.serve(kPath, "body");
  limits_.idle = 400ms;  // the two understand nothing of each other and wait
  QUrl url = server_.url(kPath);
  url.setScheme(QStringLiteral("https"));
  const auto result = fetch(url);
  ASSERT_TRUE(result && std::holds_alternative<Problem>(*result));
}

TEST_F(FetchTest, canBeStoppedAtAnyMoment) {
  serveEndlessly(kPath, kHead + "\r\n", QByteArray(1000, 'x'), 1ms);
  for (int i = 0; i < 20; ++i) {
    QEventLoop loop;
    auto fetch = std::make_unique<Fetch>(network_, server_.url(kPath), limits_);
    QTimer::singleShot(i, &loop, &QEventLoop::quit);
    loop.exec();
    fetch.reset();
  }
}

}  // namespace
}  // namespace horalo
