#include "platform/dbus/desktop_notice.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace horalo {

void showDesktopNotice(const QDBusConnection& bus, const std::string& title,
                       const std::string& text) {
  const QString service = QStringLiteral("org.freedesktop.Notifications");
  constexpr unsigned replacesNone = 0;
  constexpr int asLongAsUsual = -1;
  auto call = QDBusMessage::createMethodCall(
      service, QStringLiteral("/org/freedesktop/Notifications"), service, QStringLiteral("Notify"));
  call << QStringLiteral("Horalo") << replacesNone << QStringLiteral("org.horalo.Horalo")
       << QString::fromStdString(title) << QString::fromStdString(text) << QStringList()
       << QVariantMap{{QStringLiteral("desktop-entry"), QStringLiteral("org.horalo.Horalo")}}
       << asLongAsUsual;
  bus.asyncCall(call);
}

}  // namespace horalo
