#include "platform/dbus/desktop_settings.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMap>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace horalo {
namespace {

using Spaces = QMap<QString, QVariantMap>;

const QString kService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString kAppearance = QStringLiteral("org.freedesktop.appearance");
const QString kGnome = QStringLiteral("org.gnome.desktop.interface");

// Three numbers from 0 to 1 as 0xRRGGBB; a number beyond says that there is no accent.
std::optional<std::uint32_t> colorOf(const QVariant& value) {
  if (value.userType() != qMetaTypeId<QDBusArgument>()) return std::nullopt;
  const auto argument = value.value<QDBusArgument>();
  if (argument.currentSignature() != QStringLiteral("(ddd)")) return std::nullopt;
  std::array<double, 3> parts{};
  argument.beginStructure();
  for (double& part : parts) argument >> part;
  argument.endStructure();
  std::uint32_t color = 0;
  for (const double part : parts) {
    if (!(part >= 0 && part <= 1)) return std::nullopt;
    color = color << 8U | static_cast<std::uint32_t>(std::lround(part * 255));
  }
  return color;
}

bool isNumber(const QVariant& value) {
  return value.userType() == QMetaType::UInt || value.userType() == QMetaType::Double;
}

}  // namespace

void PortalAppearance::set(const QString& space, const QString& key, const QVariant& value) {
  if (space == kAppearance && key == QStringLiteral("color-scheme") && isNumber(value)) {
    constexpr unsigned noPreference = 0;
    constexpr unsigned dark = 1;
    const unsigned scheme = value.toUInt();
    appearance_.dark = scheme == noPreference ? std::nullopt : std::optional(scheme == dark);
  } else if (space == kAppearance && key == QStringLiteral("accent-color")) {
    appearance_.accent = colorOf(value);
  } else if (space == kAppearance && key == QStringLiteral("reduced-motion") && isNumber(value)) {
    reducedMotion_ = value.toUInt() == 1;
  } else if (space == kGnome && key == QStringLiteral("enable-animations") &&
             value.userType() == QMetaType::Bool) {
    animations_ = value.toBool();
  } else if (space == kGnome && key == QStringLiteral("text-scaling-factor") && isNumber(value)) {
    const double scale = value.toDouble();
    appearance_.textScale = scale > 0 ? std::clamp(scale, 0.5, 3.0) : 1;
  }
}

DesktopAppearance PortalAppearance::appearance() const {
  DesktopAppearance result = appearance_;
  result.reducedMotion = reducedMotion_.value_or(!animations_.value_or(true));
  return result;
}

DesktopSettings::DesktopSettings(SessionBus& bus, Observer changed) : changed_(std::move(changed)) {
  qDBusRegisterMetaType<Spaces>();
  bus.onConnected([this](const QDBusConnection& connection) { follow(connection); });
}

void DesktopSettings::follow(const QDBusConnection& bus) {
  QDBusConnection(bus).connect(kService, kPath, kInterface, QStringLiteral("SettingChanged"), this,
                               SLOT(settingChanged(QString, QString, QDBusVariant)));
  auto question =
      QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("ReadAll"));
  question << QStringList{kAppearance, kGnome};
  auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    answer->deleteLater();
    const QDBusPendingReply<Spaces> reply = *answer;
    if (!reply.isValid()) return;
    const Spaces spaces = reply.value();
    for (auto space = spaces.begin(); space != spaces.end(); ++space) {
      for (auto setting = space->begin(); setting != space->end(); ++setting) {
        portal_.set(space.key(), setting.key(), setting.value());
      }
    }
    tell();
  });
}

void DesktopSettings::settingChanged(const QString& space, const QString& key,
                                     const QDBusVariant& value) {
  portal_.set(space, key, value.variant());
  tell();
}

void DesktopSettings::tell() {
  const DesktopAppearance now = portal_.appearance();
  if (now == told_) return;
  told_ = now;
  changed_(now);
}

}  // namespace horalo
