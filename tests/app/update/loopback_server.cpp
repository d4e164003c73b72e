#include "tests/app/update/loopback_server.h"

#include <gtest/gtest.h>

#include <QSslConfiguration>
#include <QSslServer>

namespace horalo {

LoopbackServer::LoopbackServer() : server_(std::make_unique<QTcpServer>()) {
  listen();
}

LoopbackServer::LoopbackServer(const QSslCertificate& certificate, const QSslKey& key)
    : scheme_(QStringLiteral("https")) {
  auto server = std::make_unique<QSslServer>();
  QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
  configuration.setLocalCertificate(certificate);
  configuration.setPrivateKey(key);
  server->setSslConfiguration(configuration);
  server_ = std::move(server);
  listen();
}

void LoopbackServer::listen() {
  EXPECT_TRUE(server_->listen(QHostAddress::LocalHost));
  connect(server_.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
    QTcpSocket* const socket = server_->nextPendingConnection();
    connect(socket, &QTcpSocket::readyRead, this, [this, socket] { answer(*socket); });
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    if (socket->bytesAvailable() > 0) answer(*socket);
  });
}

QUrl LoopbackServer::url(const QString& path) const {
  return QUrl(
      QStringLiteral("%1://127.0.0.1:%2/%3").arg(scheme_).arg(server_->serverPort()).arg(path));
}

void LoopbackServer::on(const QString& path, Behaviour behaviour) {
  behaviours_.insert(path, std::move(behaviour));
}

void LoopbackServer::serve(const QString& path, const QByteArray& body, int status) {
  serveRaw(path, "HTTP/1.1 " + QByteArray::number(status) + " x\r\nContent-Length: " +
                     QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
}

void LoopbackServer::serveRaw(const QString& path, const QByteArray& bytes) {
  on(path, [bytes](QTcpSocket& socket) {
    socket.write(bytes);
    socket.disconnectFromHost();
  });
}

void LoopbackServer::answer(QTcpSocket& socket) {
  QByteArray request = socket.property("request").toByteArray() + socket.readAll();
  socket.setProperty("request", request);
  if (!request.contains("\r\n\r\n")) return;
  socket.disconnect(this);
  const QString path = QString::fromLatin1(request.split(' ').value(1)).mid(1);
  ++requests_[path];
  const auto behaviour = behaviours_.find(path);
  if (behaviour != behaviours_.end()) {
    (*behaviour)(socket);
  } else {
    socket.abort();
  }
}

}  // namespace horalo
