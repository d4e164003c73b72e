#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <functional>
#include <memory>

#include "platform/dbus/session_bus.h"

namespace horalo {

// Whether a StatusNotifier host shows tray icons. The name of its watcher alone says nothing: a
// desktop's panel owns it for a while before its icons are there.
class StatusNotifierWatch : public QObject {
  Q_OBJECT
 public:
  // `bus` must outlive this object. `changed` is called, from the event loop, when an answer of
  // isThere() or isKnown() has changed.
  StatusNotifierWatch(SessionBus& bus, std::function<void()> changed);

  // Whether the question has been answered, as it is at once where there is no session bus.
  bool isKnown() const { return isKnown_; }
  bool isThere() const { return isThere_; }

 private Q_SLOTS:
  void ask();

 private:
  void watch(const QDBusConnection& bus);
  void learn(bool isThere);

  SessionBus& bus_;
  std::function<void()> changed_;
  std::unique_ptr<QDBusServiceWatcher> names_;
  bool isKnown_ = false;
  bool isThere_ = false;
  int questions_ = 0;  // only the last one's answer counts
};

}  // namespace horalo
