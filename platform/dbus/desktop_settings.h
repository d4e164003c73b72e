#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QVariant>
#include <functional>
#include <optional>

#include "base/desktop_appearance.h"
#include "platform/dbus/session_bus.h"

namespace horalo {

// What the desktop's settings portal tells about the looks that the user wants, one setting at a
// time. Settings that mean nothing here, and values of an unexpected type, change nothing.
class PortalAppearance {
 public:
  void set(const QString& space, const QString& key, const QVariant& value);
  DesktopAppearance appearance() const;

 private:
  DesktopAppearance appearance_;
  // The portal's own setting, which wins, and the desktop's older one.
  std::optional<bool> reducedMotion_;
  std::optional<bool> animations_;
};

// Follows org.freedesktop.portal.Settings, beside the event loop: a desktop that takes its time, or
// has no portal, delays nothing.
class DesktopSettings : public QObject {
  Q_OBJECT
 public:
  using Observer = std::function<void(const DesktopAppearance& appearance)>;

  // `bus` must outlive this object. `changed` is called from the event loop.
  DesktopSettings(SessionBus& bus, Observer changed);

 private Q_SLOTS:
  void settingChanged(const QString& space, const QString& key, const QDBusVariant& value);

 private:
  void follow(const QDBusConnection& bus);
  void tell();

  Observer changed_;
  PortalAppearance portal_;
  DesktopAppearance told_;
};

}  // namespace horalo
