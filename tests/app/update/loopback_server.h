#pragma once

#include <QByteArray>
#include <QHash>
#include <QObject>
#include <QSslCertificate>
#include <QSslKey>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>
#include <functional>
#include <memory>

namespace horalo {

// A web server on this computer that says, and does, whatever a test tells it to.
class LoopbackServer : public QObject {
 public:
  // Answers one request by writing to the socket, now or later; closes it, or not.
  using Behaviour = std::function<void(QTcpSocket& socket)>;

  LoopbackServer();
  // Over https, with this certificate.
  LoopbackServer(const QSslCertificate& certificate, const QSslKey& key);

  QUrl url(const QString& path) const;
  std::string address(const QString& path) const { return url(path).toString().toStdString(); }

  void on(const QString& path, Behaviour behaviour);
  // An ordinary answer with a body.
  void serve(const QString& path, const QByteArray& body, int status = 200);
  // Exactly these bytes, headers included, then the end of the connection.
  void serveRaw(const QString& path, const QByteArray& bytes);

  int requests(const QString& path) const { return requests_.value(path); }

 private:
  void listen();
  void answer(QTcpSocket& socket);

  std::unique_ptr<QTcpServer> server_;
  QString scheme_ = QStringLiteral("http");
  QHash<QString, Behaviour> behaviours_;
  QHash<QString, int> requests_;
};

}  // namespace horalo
