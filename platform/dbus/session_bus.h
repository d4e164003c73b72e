#pragma once

#include <QDBusConnection>
#include <QFileSystemWatcher>
#include <QObject>
#include <functional>
#include <memory>
#include <vector>

namespace horalo {

// The session bus: missing, there, gone, or back again. Nothing here waits for a bus that does not
// exist; one that went away is looked for when its socket's folder changes.
class SessionBus : public QObject {
  Q_OBJECT
 public:
  using Observer = std::function<void(const QDBusConnection& bus)>;

  // Not connected yet.
  SessionBus();
  ~SessionBus() override;

  // Connects, once. Connecting takes a moment, which the program's start need not wait for.
  void open();
  bool isOpen() const { return isOpen_; }

  bool isConnected() const { return bus_.isConnected(); }
  const QDBusConnection& connection() const { return bus_; }

  // Called at once where there is a bus, and again with every new one. Where there is none when the
  // bus is opened, onDisconnected's are called instead.
  void onConnected(Observer connected);
  // Called after the bus went away.
  void onDisconnected(std::function<void()> disconnected);

 private Q_SLOTS:
  void disconnected();

 private:
  void announce();
  void connectAnew();
  void watchSocket();

  QDBusConnection bus_;
  bool isOpen_ = false;
  int connections_ = 0;
  std::vector<Observer> connectedObservers_;
  std::vector<std::function<void()>> disconnectedObservers_;
  std::unique_ptr<QFileSystemWatcher> socketWatcher_;  // only while there is no bus
};

}  // namespace horalo
