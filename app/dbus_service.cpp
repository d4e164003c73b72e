#include "app/dbus_service.h"

#include <QDBusConnectionInterface>
#include <utility>

namespace horalo {
namespace {

const QString kName = QStringLiteral("org.horalo.Horalo");
const QString kPath = QStringLiteral("/org/horalo/Horalo");

}  // namespace

DBusService::DBusService(Operations operations) : operations_(std::move(operations)) {
  new ApplicationAdaptor(*this);
  new HoraloAdaptor(*this);
}

DBusService::~DBusService() = default;

void DBusService::serveOn(const QDBusConnection& bus) {
  QDBusConnection connection = bus;
  connection.registerObject(kPath, this, QDBusConnection::ExportAdaptors);
  connection.registerService(kName);
  nameWatcher_ = std::make_unique<QDBusServiceWatcher>(kName, connection,
                                                       QDBusServiceWatcher::WatchForUnregistration);
  connect(nameWatcher_.get(), &QDBusServiceWatcher::serviceUnregistered, this,
          [connection]() mutable { connection.registerService(kName); });
}

ApplicationAdaptor::ApplicationAdaptor(DBusService& service)
    : QDBusAbstractAdaptor(&service), service_(service) {}

void ApplicationAdaptor::Activate(const QVariantMap&) {
  service_.operations().run("show");
}

void ApplicationAdaptor::Open(const QStringList&, const QVariantMap&) {
  service_.operations().run("show");
}

void ApplicationAdaptor::ActivateAction(const QString& actionName, const QVariantList&,
                                        const QVariantMap&) {
  service_.operations().run(actionName.toStdString());
}

HoraloAdaptor::HoraloAdaptor(DBusService& service)
    : QDBusAbstractAdaptor(&service), service_(service) {}

QString HoraloAdaptor::Status() {
  return QString::fromStdString(service_.operations().statusJson());
}

}  // namespace horalo
