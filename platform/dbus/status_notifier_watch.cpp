#include "platform/dbus/status_notifier_watch.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QTimer>
#include <QVariant>
#include <utility>

namespace horalo {
namespace {

const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kPath = QStringLiteral("/StatusNotifierWatcher");
constexpr int kPatience = 2000;  // milliseconds

QDBusMessage hostQuestion() {
  auto question = QDBusMessage::createMethodCall(
      kWatcher, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  question << kWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
  question.setAutoStartService(false);
  return question;
}

}  // namespace

StatusNotifierWatch::StatusNotifierWatch(SessionBus& bus, std::function<void()> changed)
    : bus_(bus), changed_(std::move(changed)) {
  isKnown_ = bus.isOpen() && !bus.isConnected();
  bus.onConnected([this](const QDBusConnection& connection) { watch(connection); });
  bus.onDisconnected([this] { learn(false); });
}

void StatusNotifierWatch::watch(const QDBusConnection& bus) {
  names_ = std::make_unique<QDBusServiceWatcher>(kWatcher, bus);
  connect(names_.get(), &QDBusServiceWatcher::serviceOwnerChanged, this, [this] { ask(); });
  QDBusConnection(bus).connect(kWatcher, kPath, kWatcher,
                               QStringLiteral("StatusNotifierHostRegistered"), this, SLOT(ask()));
  ask();
}

void StatusNotifierWatch::ask() {
  const int question = ++questions_;
  auto* answer =
      new QDBusPendingCallWatcher(bus_.connection().asyncCall(hostQuestion(), kPatience), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, question] {
    answer->deleteLater();
    if (question != questions_) return;
    const QDBusPendingReply<QDBusVariant> reply = *answer;
    learn(reply.isValid() && reply.value().variant().toBool());
  });
}

void StatusNotifierWatch::learn(bool isThere) {
  const bool isNews = !isKnown_ || isThere != isThere_;
  isKnown_ = true;
  isThere_ = isThere;
  if (isNews) changed_();
}

}  // namespace horalo
