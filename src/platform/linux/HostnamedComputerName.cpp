#include "platform/linux/HostnamedComputerName.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QSysInfo>

namespace brenvale {

namespace {

const QString hostnamedService = QStringLiteral("org.freedesktop.hostname1");
const QString hostnamedPath = QStringLiteral("/org/freedesktop/hostname1");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString prettyHostname = QStringLiteral("PrettyHostname");

} // namespace

HostnamedComputerName::HostnamedComputerName() {
    auto bus = QDBusConnection::systemBus();
    if (bus.isConnected()) {
        bus.connect(hostnamedService, hostnamedPath, propertiesInterface, QStringLiteral("PropertiesChanged"),
                    this, SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
        ask();
    }
}

QString HostnamedComputerName::localizedName() const {
    const std::scoped_lock lock(mutex_);
    return prettyName_.isEmpty() ? QSysInfo::machineHostName() : prettyName_;
}

void HostnamedComputerName::propertiesChanged(const QString& interface, const QVariantMap& changed,
                                              const QStringList& invalidated) {
    if (interface == hostnamedService &&
        (changed.contains(prettyHostname) || invalidated.contains(prettyHostname))) {
        ask();
    }
}

void HostnamedComputerName::ask() {
    auto call = QDBusMessage::createMethodCall(hostnamedService, hostnamedPath, propertiesInterface,
                                               QStringLiteral("Get"));
    call << hostnamedService << prettyHostname;
    auto* watcher = new QDBusPendingCallWatcher(QDBusConnection::systemBus().asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        finished->deleteLater();
        if (!reply.isError()) {
            setPrettyName(reply.value().variant().toString());
        }
    });
}

void HostnamedComputerName::setPrettyName(const QString& name) {
    const std::scoped_lock lock(mutex_);
    prettyName_ = name;
}

} // namespace brenvale
