#pragma once

#include <QDBusConnection>
#include <string>

namespace horalo {

// Shows a notice of the desktop (org.freedesktop.Notifications), where there is a service for
// them. Waits for nothing.
void showDesktopNotice(const QDBusConnection& bus, const std::string& title,
                       const std::string& text);

}  // namespace horalo
