#include "platform/dbus/session_bus.h"

#include <QFileInfo>
#include <QString>
#include <utility>

namespace horalo {
namespace {

// The path in an address such as "unix:path=/run/user/1000/bus,guid=..."; empty where the bus has
// no file, which cannot be watched.
QString socketPath() {
  const QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  const QString prefix = QStringLiteral("unix:path=");
  if (!address.startsWith(prefix)) return {};
  return address.mid(prefix.size()).section(u',', 0, 0).section(u';', 0, 0);
}

}  // namespace

SessionBus::SessionBus() : bus_(QString()) {}

SessionBus::~SessionBus() = default;

void SessionBus::open() {
  isOpen_ = true;
  bus_ = QDBusConnection::sessionBus();
  if (isConnected()) {
    announce();
  } else {
    disconnected();
  }
}

void SessionBus::onConnected(Observer connected) {
  if (isConnected()) connected(bus_);
  connectedObservers_.push_back(std::move(connected));
}

void SessionBus::onDisconnected(std::function<void()> disconnected) {
  disconnectedObservers_.push_back(std::move(disconnected));
}

// Follows a connection that was just made.
void SessionBus::announce() {
  socketWatcher_.reset();
  bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
               QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
               SLOT(disconnected()));
  for (const Observer& connected : connectedObservers_) connected(bus_);
}

void SessionBus::disconnected() {
  for (const auto& gone : disconnectedObservers_) gone();
  watchSocket();
}

void SessionBus::connectAnew() {
  // Qt keeps a connection by its name for ever, a dead one too.
  const QString name = QStringLiteral("horalo-%1").arg(++connections_);
  QDBusConnection next = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
  if (!next.isConnected()) {
    QDBusConnection::disconnectFromBus(name);
    return;
  }
  bus_ = next;
  announce();
}

void SessionBus::watchSocket() {
  const QString path = socketPath();
  if (path.isEmpty() || socketWatcher_) return;
  socketWatcher_ = std::make_unique<QFileSystemWatcher>();
  socketWatcher_->addPath(QFileInfo(path).path());
  connect(socketWatcher_.get(), &QFileSystemWatcher::directoryChanged, this,
          &SessionBus::connectAnew, Qt::QueuedConnection);
}

}  // namespace horalo
