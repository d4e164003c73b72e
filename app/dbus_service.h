#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <functional>
#include <memory>
#include <string>

namespace horalo {

// The program on the session bus: the name org.horalo.Horalo, which says that it is ready, and the
// object /org/horalo/Horalo. A desktop entry's launch and its actions come this way.
class DBusService : public QObject {
  Q_OBJECT
 public:
  struct Operations {
    // toggle, show, hide, settings, check-updates or quit; false for any other command.
    std::function<bool(const std::string& command)> run;
    std::function<std::string()> statusJson;
  };

  explicit DBusService(Operations operations);
  ~DBusService() override;

  // Takes the name on a bus, after the one before has gone. Where a program on another display has
  // it, the name is taken when that one ends.
  void serveOn(const QDBusConnection& bus);

  const Operations& operations() const { return operations_; }

 private:
  Operations operations_;
  std::unique_ptr<QDBusServiceWatcher> nameWatcher_;
};

// org.freedesktop.Application, as desktops launch programs.
class ApplicationAdaptor : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
 public:
  explicit ApplicationAdaptor(DBusService& service);

 public Q_SLOTS:
  // Shows the panel.
  void Activate(const QVariantMap& platformData);
  // Files and addresses mean nothing to the converter; it shows the panel.
  void Open(const QStringList& uris, const QVariantMap& platformData);
  void ActivateAction(const QString& actionName, const QVariantList& parameter,
                      const QVariantMap& platformData);

 private:
  DBusService& service_;
};

// org.horalo.Horalo1.
class HoraloAdaptor : public QDBusAbstractAdaptor {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.horalo.Horalo1")
 public:
  explicit HoraloAdaptor(DBusService& service);

 public Q_SLOTS:
  // What `horalo status --json` prints.
  QString Status();

 private:
  DBusService& service_;
};

}  // namespace horalo
